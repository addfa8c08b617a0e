#include "workbench/scripting/ListChecks.h"

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

constexpr std::size_t MostTexts = 2047;  // one more turns categories to intervals

void CheckContinuous(const Variable& variable, const std::string& categorical) {
    if (variable.Kind == ValueKind::Text) {
        const std::size_t texts = variable.Texts.size();
        throw DataError("The variable " + Quoted(variable.Name) + " holds texts (" + std::to_string(texts) +
                        (texts == 1 ? " value" : " different ones") +
                        "), which have no mean and no intervals; name it " + categorical + '.');
    }
}

void CheckCategorical(const Variable& variable) {
    if (variable.Kind == ValueKind::Text && variable.Texts.size() > MostTexts) {
        throw DataError("The variable " + Quoted(variable.Name) + " has " + std::to_string(variable.Texts.size()) +
                        " different texts, too many for categories (" + std::to_string(MostTexts) +
                        "); group them first.");
    }
}

}  // namespace

void CheckTexts(const DataTable& table, const TwoLists& lists, const std::string& categorical) {
    const auto variable = [&table](short number) -> const Variable& {
        return table.Variables[static_cast<std::size_t>(number) - 1];
    };
    for (const short number : lists[1]) {
        CheckContinuous(variable(number), categorical);
    }
    for (const short number : lists[0]) {
        CheckCategorical(variable(number));
    }
}

}  // namespace quillara
