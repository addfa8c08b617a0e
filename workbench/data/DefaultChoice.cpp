#include "workbench/data/DefaultChoice.h"

#include <algorithm>
#include <string>

#include "workbench/data/DefaultRole.h"
#include "workbench/data/QuotedText.h"

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

std::optional<Remark> RemarkOnLeftOut(const DataTable& table, const VariableChoice& choice) {
    std::vector<std::string> names;
    for (std::size_t index = 0; index < table.Variables.size(); ++index) {
        const auto number = static_cast<short>(index + 1);
        const bool isChosen = std::ranges::find(choice.Drill.Categorical, number) != choice.Drill.Categorical.end();
        if (!isChosen && DefaultRoleOf(table.Variables[index]) == DefaultRole::None) {
            names.push_back(table.Variables[index].Name);
        }
    }
    if (names.empty()) {
        return std::nullopt;
    }
    return Remark{"texts-left-out",
                  QuotedList(names) + (names.size() == 1 ? " is" : " are") +
                      " left out: texts of more than 100 values aren't explored unless they are named.",
                  "Name them in --categorical, with up to 2,047 values each, or group their values with --compute."};
}

}  // namespace quillara
