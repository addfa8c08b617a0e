#include "workbench/command/ListChecks.h"

#include <string>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

constexpr std::size_t MostTexts = 2047;  // one more turns categories to intervals

void CheckContinuous(const DataTable& table, const std::vector<short>& list) {
    for (const short number : list) {
        const Variable& variable = table.Variables[static_cast<std::size_t>(number) - 1];
        if (variable.Kind == ValueKind::Text) {
            throw DataError("The variable " + Quoted(variable.Name) +
                            " holds texts, which have no mean and no intervals; name it in --categorical.");
        }
    }
}

void CheckCategorical(const DataTable& table, const std::vector<short>& list) {
    for (const short number : list) {
        const Variable& variable = table.Variables[static_cast<std::size_t>(number) - 1];
        if (variable.Kind == ValueKind::Text && variable.Texts.size() > MostTexts) {
            throw DataError("The variable " + Quoted(variable.Name) + " has " + std::to_string(variable.Texts.size()) +
                            " different texts, too many for categories (" + std::to_string(MostTexts) +
                            "); group them first.");
        }
    }
}

}  // namespace

void CheckTexts(const DataTable& table, const VariableChoice& variables) {
    for (const VariableLists* lists : {&variables.Drill, &variables.Review}) {
        CheckContinuous(table, lists->Continuous);
        CheckCategorical(table, lists->Categorical);
    }
}

}  // namespace quillara
