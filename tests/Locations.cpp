// The one file that knows where this build lies, so that all others compile alike in every checkout.

#include "tests/Locations.h"

namespace testing_locations {

std::string Sample(const std::string& name) {
    return QUILLARA_SAMPLES "/" + name;
}

std::string Program() {
    return QUILLARA_PROGRAM;
}

std::string Replayer() {
    return QUILLARA_SAMPLES "/../tests/workbench/recording/replay.py";
}

std::string Library(const std::string& name) {
    return QUILLARA_LIBRARIES "/" + name;
}

}  // namespace testing_locations
