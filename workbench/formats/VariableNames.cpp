#include "workbench/formats/VariableNames.h"

#include <map>
#include <set>

namespace quillara {

std::vector<std::string> VariableNames(std::vector<std::string> fields) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (fields[i].empty()) {
            fields[i] = "Var" + std::to_string(i + 1);
        }
    }
    // A name that stands in the file itself is not given to another variable.
    std::set<std::string> taken(fields.begin(), fields.end());
    std::map<std::string, int> timesMet;
    for (std::string& name : fields) {
        int& number = timesMet[name];
        if (++number == 1) {
            continue;
        }
        while (!taken.insert(name + "_" + std::to_string(number)).second) {
            ++number;
        }
        name += "_" + std::to_string(number);
    }
    return fields;
}

}  // namespace quillara
