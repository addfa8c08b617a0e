#pragma once

#include <sys/wait.h>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/Locations.h"
#include "tests/workbench/Files.h"

/// What one run of the program left behind.
struct Outcome {
    int Status = -1;  ///< as a shell tells it: 128 and the signal for a run that a signal ended
    std::string Out;
    std::string Errors;
};

/// Runs the program in a folder and waits for its end. Arguments are written, and what stands before the program is
/// read, as a shell reads them.
inline Outcome Quillara(const TemporaryFolder& folder, const std::string& arguments, const std::string& before = "") {
    const TemporaryFolder results;
    const std::string out = results.Path("out");
    const std::string errors = results.Path("errors");
    const std::string line =
        "cd " + folder.Path("") + "; " + before + " " + testing_locations::Program() + " " + arguments;
    const int status = std::system(("(" + line + ") >" + out + " 2>" + errors).c_str());
    return {WEXITSTATUS(status), ContentOf(out), ContentOf(errors)};
}
