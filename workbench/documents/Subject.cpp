#include "workbench/documents/Subject.h"

namespace quillara {

std::string Subject::Name() const {
    const ShownVariable* variable = OnlyVariable();
    std::string name = variable == nullptr ? "" : variable->Name;
    for (const std::string& by : By) {
        name += (name.empty() ? "" : " by ") + by;
    }
    return Aspect.empty() ? name : name + " " + Aspect;
}

}  // namespace quillara
