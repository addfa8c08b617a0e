#include "workbench/formats/ReasonLosses.h"

#include <algorithm>

#include "workbench/data/MissingReasons.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

constexpr std::size_t MostCodes = 3;
constexpr std::size_t MostTextBytes = 8;

bool CanDeclareTexts(const MissingReasons& missing) {
    return missing.Reasons.size() <= MostCodes && std::ranges::all_of(missing.Reasons, [](const auto& reason) {
               return reason.Text.size() <= MostTextBytes && !reason.Text.ends_with(' ');
           });
}

bool CanDeclareNumbers(const MissingReasons& missing) {
    const auto isSpan = [](const MissingRange& range) { return range.Lowest != range.Highest; };
    const auto spans = std::ranges::count_if(missing.Ranges, isSpan);
    const bool hasRoom = spans == 0 ? missing.Ranges.size() <= MostCodes : spans == 1 && missing.Ranges.size() <= 2;
    return hasRoom && std::ranges::all_of(missing.Reasons, [&](const MissingReason& reason) {
               return reason.Number && missing.Declares(*reason.Number);
           });
}

bool CanBeDeclared(const Variable& variable) {
    return variable.Kind == ValueKind::Text ? CanDeclareTexts(*variable.Reasons) : CanDeclareNumbers(*variable.Reasons);
}

bool AreMarks(const Variable& variable) {
    return variable.Kind != ValueKind::Text && variable.Reasons->Ranges.empty() &&
           std::ranges::all_of(variable.Reasons->Reasons, [](const MissingReason& reason) {
               return !reason.Number && reason.Text.size() == 2 && 'a' <= reason.Text[1] && reason.Text[1] <= 'z';
           });
}

}  // namespace

bool HasRoomForReasons(const Variable& variable, bool declaresMissing) {
    return !variable.Reasons || (declaresMissing ? CanBeDeclared(variable) : AreMarks(variable));
}

std::string LostReasons(const Variable& variable, std::string_view extension) {
    const std::string list = ListOfReasons(variable);
    const char* const keepers = CanBeDeclared(variable) ? "sav and qtable keep"
                                : AreMarks(variable)    ? "dta and qtable keep"
                                                        : "qtable keeps";
    return "The missing values of " + Quoted(variable.Name) + (list.empty() ? "" : " (" + list + ")") +
           " become blank fields in " + std::string(extension) + "; " + keepers + " them.";
}

std::vector<std::string> LostReasonsOf(const DataTable& table, std::string_view extension) {
    std::vector<std::string> lines;
    for (const Variable& variable : table.Variables) {
        if (variable.Reasons && !variable.Reasons->Places.empty()) {
            lines.push_back(LostReasons(variable, extension));
        }
    }
    return lines;
}

}  // namespace quillara
