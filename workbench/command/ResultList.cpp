#include "workbench/command/ResultList.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <ranges>
#include <string>

#include "resources/ControlIds.h"
#include "workbench/command/NamedVariables.h"
#include "workbench/command/QuotedText.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

/// A result, named as in --show.
struct NamedResult {
    std::string_view Name;
    int Button;
    int EnabledBy;  ///< the button that is enabled when the result applies
    std::string_view ChartName;  ///< one of its charts in the name of a file; empty: it makes tables
};

// clang-format off
constexpr std::array<NamedResult, 14> Results{{
    // Name                 Button                    EnabledBy                 ChartName
    {"summary",             SummaryButton,            SummaryButton,            ""},
    {"frequencies",         FrequenciesButton,        FrequenciesButton,        ""},
    {"descriptives",        DescriptivesButton,       DescriptivesButton,       ""},
    {"review-frequencies",  ReviewFrequenciesButton,  ReviewFrequenciesButton,  ""},
    {"review-descriptives", ReviewDescriptivesButton, ReviewDescriptivesButton, ""},
    {"histograms",          HistogramsButton,         HistogramsButton,         "histogram"},
    {"pies",                PieChartsButton,          PieChartsButton,          "pie"},
    {"stacked",             StackedPlotsButton,       PieChartsButton,          "stacked"},
    {"review-histograms",   ReviewHistogramsButton,   ReviewHistogramsButton,   "review-histogram"},
    {"review-pies",         ReviewPieChartsButton,    ReviewPieChartsButton,    "review-pie"},
    {"review-stacked",      ReviewStackedPlotsButton, ReviewPieChartsButton,    "review-stacked"},
    {"box",                 ReviewBoxWhiskerButton,   ReviewBoxWhiskerButton,   "box"},
    {"scatter",             ReviewScatterplotButton,  ReviewScatterplotButton,  "scatter"},
    {"hist3d",              Review3DHistogramsButton, Review3DHistogramsButton, "hist3d"},
}};
// clang-format on

constexpr std::size_t DefaultCount = 5;  // the tables
static_assert(Results[DefaultCount - 1].ChartName.empty() && !Results[DefaultCount].ChartName.empty());

const NamedResult& ResultOf(int button) {
    return *std::ranges::find(Results, button, &NamedResult::Button);
}

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
    std::ranges::transform(Results | std::views::take(DefaultCount), std::back_inserter(buttons), &NamedResult::Button);
    return buttons;
}

int EnablingButton(int button) {
    return ResultOf(button).EnabledBy;
}

std::string_view ChartFileName(int button) {
    return ResultOf(button).ChartName;
}

}  // namespace quillara
