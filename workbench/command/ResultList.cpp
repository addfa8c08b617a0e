#include "workbench/command/ResultList.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <string>

#include "resources/ControlIds.h"
#include "workbench/command/NamedVariables.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

// What results need of the analysis, for people.
constexpr std::string_view AnyStep = "a step that isn't undone";
constexpr std::string_view AnyDrill = "a drill variable without a step";
constexpr std::string_view AnyStatistics = "a continuous drill variable without a step, and no step on Missing";
constexpr std::string_view AnyReview = "a review variable";
constexpr std::string_view ContinuousReview = "a continuous review variable";
constexpr std::string_view TwoContinuousReviews = "two continuous review variables";
constexpr std::string_view TwoReviews = "two review variables";

/// A result, named as in --show.
struct NamedResult {
    std::string_view Name;
    int Button;
    int EnabledBy;  ///< the button that is enabled when the result applies
    std::string_view ChartName;  ///< one of its charts in the name of a file; empty: it makes tables
    std::string_view Need;
};

// clang-format off
constexpr std::array<NamedResult, 14> Results{{
    // Name                 Button                    EnabledBy                 ChartName           Need
    {"summary",             SummaryButton,            SummaryButton,            "",                 AnyStep},
    {"frequencies",         FrequenciesButton,        FrequenciesButton,        "",                 AnyDrill},
    {"descriptives",        DescriptivesButton,       DescriptivesButton,       "",                 AnyStatistics},
    {"review-frequencies",  ReviewFrequenciesButton,  ReviewFrequenciesButton,  "",                 AnyReview},
    {"review-descriptives", ReviewDescriptivesButton, ReviewDescriptivesButton, "",                 ContinuousReview},
    {"histograms",          HistogramsButton,         HistogramsButton,         "histogram",        AnyDrill},
    {"pies",                PieChartsButton,          PieChartsButton,          "pie",              AnyDrill},
    {"stacked",             StackedPlotsButton,       PieChartsButton,          "stacked",          AnyDrill},
    {"review-histograms",   ReviewHistogramsButton,   ReviewHistogramsButton,   "review-histogram", AnyReview},
    {"review-pies",         ReviewPieChartsButton,    ReviewPieChartsButton,    "review-pie",       AnyReview},
    {"review-stacked",      ReviewStackedPlotsButton, ReviewPieChartsButton,    "review-stacked",   AnyReview},
    {"box",                 ReviewBoxWhiskerButton,   ReviewBoxWhiskerButton,   "box",              ContinuousReview},
    {"scatter",             ReviewScatterplotButton,  ReviewScatterplotButton,  "scatter",          TwoContinuousReviews},
    {"hist3d",              Review3DHistogramsButton, Review3DHistogramsButton, "hist3d",           TwoReviews},
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
    std::ranges::transform(std::span(Results).first(DefaultCount), std::back_inserter(buttons), &NamedResult::Button);
    return buttons;
}

int EnablingButton(int button) {
    return ResultOf(button).EnabledBy;
}

std::string_view ResultName(int button) {
    return ResultOf(button).Name;
}

std::string_view NeedOf(int button) {
    return ResultOf(button).Need;
}

std::string_view ChartFileName(int button) {
    return ResultOf(button).ChartName;
}

}  // namespace quillara
