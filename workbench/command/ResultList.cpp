#include "workbench/command/ResultList.h"

#include <algorithm>
#include <array>
#include <string>

#include "resources/ControlIds.h"
#include "workbench/command/QuotedText.h"
#include "workbench/command/VariableChoice.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

struct NamedResult {
    std::string_view Name;
    int Button;
};

// clang-format off
constexpr std::array<NamedResult, 5> Results{{
    // Name                 Button
    {"summary",             SummaryButton},
    {"frequencies",         FrequenciesButton},
    {"descriptives",        DescriptivesButton},
    {"review-frequencies",  ReviewFrequenciesButton},
    {"review-descriptives", ReviewDescriptivesButton},
}};
// clang-format on

std::string KnownNames() {
    std::string names;
    for (const NamedResult& result : Results) {
        names += (names.empty() ? "" : ", ") + std::string(result.Name);
    }
    return names;
}

int ButtonOf(std::string_view name) {
    const auto* result = std::ranges::find(Results, name, &NamedResult::Name);
    if (result == Results.end()) {
        throw UsageError("Unknown result " + Quoted(name) + "; choose from " + KnownNames() + ".");
    }
    return result->Button;
}

}  // namespace

std::vector<int> ParseResultList(std::string_view list) {
    std::vector<int> buttons;
    for (const std::string& name : ParseNames(list)) {
        buttons.push_back(ButtonOf(name));
    }
    if (buttons.empty()) {
        throw UsageError("No result is named; choose from " + KnownNames() + ".");
    }
    return buttons;
}

std::vector<int> DefaultResults() {
    std::vector<int> buttons;
    std::ranges::transform(Results, std::back_inserter(buttons), &NamedResult::Button);
    return buttons;
}

}  // namespace quillara
