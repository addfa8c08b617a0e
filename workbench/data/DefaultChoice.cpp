#include "workbench/data/DefaultChoice.h"

#include "workbench/data/DefaultRole.h"

namespace quillara {

VariableChoice ChooseByContent(const DataTable& table) {
    VariableChoice choice;
    for (std::size_t index = 0; index < table.Variables.size(); ++index) {
        const DefaultRole role = DefaultRoleOf(table.Variables[index]);
        if (role != DefaultRole::None) {
            auto& list = role == DefaultRole::Continuous ? choice.Drill.Continuous : choice.Drill.Categorical;
            list.push_back(static_cast<short>(index + 1));
        }
    }
    return choice;
}

}  // namespace quillara
