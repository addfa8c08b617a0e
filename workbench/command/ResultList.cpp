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
#include "workbench/data/Suggestion.h"
#include "workbench/documents/ResultNames.h"

namespace quillara {
namespace {

/// What a result needs of the analysis, for people, and what gives it.
struct Need {
    std::string_view What;
    std::string_view Advice;
};

constexpr Need AnyStep{"a step that isn't undone", "Take one with --down."};
constexpr Need AnyDrill{"a drill variable without a step", "Name one more in --categorical or --continuous."};
constexpr Need AnyStatistics{"a continuous drill variable without a step, and no step on Missing",
                             "Name one in --continuous; in place of a step on Missing, --select 'missing(VAR)' and "
                             "--review-continuous show such cases."};
constexpr Need AnyReview{"a review variable", "Name some in --review-categorical or --review-continuous."};
constexpr Need ContinuousReview{"a continuous review variable", "Name some in --review-continuous."};
constexpr Need TwoContinuousReviews{"two continuous review variables", "Name them in --review-continuous."};
constexpr Need TwoReviews{"two review variables", "Name them in --review-categorical or --review-continuous."};
constexpr Need AnyVariable{"a variable without a step", "Name one more in --categorical or --continuous."};
constexpr Need AnyRest{"a step that drops cases, and a variable without a step", "Take one with --down."};

/// A result in the order of ResultNames.
struct ListedResult {
    int Button;
    int EnabledBy;  ///< the button that is enabled when the result applies
    std::string_view ChartName;  ///< one of its charts in the name of a file; empty: it makes tables
    Need Needed;
};

// clang-format off
constexpr std::array<ListedResult, 16> Results{{
    // Button                    EnabledBy                 ChartName           Need
    {SummaryButton,            SummaryButton,            "",                 AnyStep},
    {FrequenciesButton,        FrequenciesButton,        "",                 AnyDrill},
    {DescriptivesButton,       DescriptivesButton,       "",                 AnyStatistics},
    {ReviewFrequenciesButton,  ReviewFrequenciesButton,  "",                 AnyReview},
    {ReviewDescriptivesButton, ReviewDescriptivesButton, "",                 ContinuousReview},
    {HistogramsButton,         HistogramsButton,         "histogram",        AnyDrill},
    {PieChartsButton,          PieChartsButton,          "pie",              AnyDrill},
    {StackedPlotsButton,       PieChartsButton,          "stacked",          AnyDrill},
    {ReviewHistogramsButton,   ReviewHistogramsButton,   "review-histogram", AnyReview},
    {ReviewPieChartsButton,    ReviewPieChartsButton,    "review-pie",       AnyReview},
    {ReviewStackedPlotsButton, ReviewPieChartsButton,    "review-stacked",   AnyReview},
    {ReviewBoxWhiskerButton,   ReviewBoxWhiskerButton,   "box",              ContinuousReview},
    {ReviewScatterplotButton,  ReviewScatterplotButton,  "scatter",          TwoContinuousReviews},
    {Review3DHistogramsButton, Review3DHistogramsButton, "hist3d",           TwoReviews},
    {DistributionResult,       DistributionResult,       "",                 AnyVariable},
    {WhatDiffersResult,        WhatDiffersResult,        "",                 AnyRest},
}};
// clang-format on

constexpr std::size_t DefaultCount = 5;  // the tables
static_assert(std::ranges::equal(Results, ResultNames, {}, &ListedResult::Button, &ResultName::Command));
static_assert(Results[DefaultCount - 1].ChartName.empty() && !Results[DefaultCount].ChartName.empty());

const ListedResult& ResultOf(int button) {
    return *std::ranges::find(Results, button, &ListedResult::Button);
}

std::vector<std::string> KnownNames() {
    std::vector<std::string> names;
    for (const ResultName& result : ResultNames) {
        names.emplace_back(result.Name);
    }
    return names;
}

int ButtonOf(std::string_view name) {
    const auto* result = std::ranges::find(ResultNames, name, &ResultName::Name);
    if (result == ResultNames.end()) {
        throw UsageError("Unknown result " + Quoted(name) + EndWithChoice(name, KnownNames()));
    }
    return result->Command;
}

}  // namespace

std::vector<int> ParseResultList(std::string_view list) {
    std::vector<int> buttons;
    for (const std::string& name : ParseNames(list)) {
        buttons.push_back(ButtonOf(name));
    }
    if (buttons.empty()) {
        throw UsageError("No result is named" + EndWithChoice("", KnownNames()));
    }
    return buttons;
}

std::vector<int> DefaultResults() {
    std::vector<int> buttons;
    std::ranges::transform(std::span(Results).first(DefaultCount), std::back_inserter(buttons), &ListedResult::Button);
    return buttons;
}

int EnablingButton(int button) {
    return ResultOf(button).EnabledBy;
}

std::string_view NeedOf(int button) {
    return ResultOf(button).Needed.What;
}

std::string_view AdviceFor(int button) {
    return ResultOf(button).Needed.Advice;
}

std::string_view ChartFileName(int button) {
    return ResultOf(button).ChartName;
}

}  // namespace quillara
