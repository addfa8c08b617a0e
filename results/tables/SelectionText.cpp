#include <array>
#include <cstring>
#include <iterator>
#include <string_view>

#include "engine/DrillDown.h"
#include "resources/StringTable.h"
#include "results/tables/ResultTexts.h"

namespace {

/// What sets the two captions apart.
struct CaptionRules {
    std::string (*VariableName)(CDrillDown& analysis, std::int16_t var);
};

std::string DisplayName(CDrillDown& analysis, std::int16_t var) {
    return analysis.VariableDisplayName(var);
}

// Intended: names go in as the host's raw field, unlike in ScatterDrillString; captions of results depend on the host
// to expand a key and on blanks that stay.
constexpr CaptionRules ResultCaption{NameField};
// Intended: names are display names, unlike in DrillString; hosts that show the text as it stands depend on it.
constexpr CaptionRules ScatterCaption{DisplayName};

/// Where the chosen category stands in its set.
enum class Place {
    BehindEnd,  ///< the Missing item
    OneValue,  ///< anywhere in the set of a variable with a single value
    First,
    Last,
    Anywhere,
};

/// The clause of a step is that of the first rule that holds: its Method lies in FirstMethod .. LastMethod, its chosen
/// category at Where. Marks in braces stand for the variable's name, the category's name and bounds, and "Missing".
struct ClauseRule {
    std::int32_t FirstMethod;
    std::int32_t LastMethod;
    Place Where;
    const char* Pattern;
};

// Intended: the operators differ between the methods, unlike a common form; each is the rule by which the drill
// filter of that method admits a value, and what a reader takes from a caption depends on it.
// Intended: the first interval of Method 5 continues the line before it, unlike every other clause; captions kept by
// users and scripts depend on it.
// clang-format off
constexpr std::array<ClauseRule, 10> ClauseRules{{
    // From            To                 Where             Pattern
    {DistinctValues,    UserIntervals,     Place::BehindEnd, "\n{name} = {missing}"},
    {DistinctValues,    DistinctValues,    Place::Anywhere,  "\n{name} = {category}"},
    {IntegerCategories, IntegerCategories, Place::Anywhere,  "\n{name} = {category}"},
    {ExactIntervals,    NeatIntervals,     Place::OneValue,  "\n{name} = {upper}"},
    {ExactIntervals,    NeatIntervals,     Place::Anywhere,  "\n{lower} < {name} <= {upper}"},
    {StepIntervals,     StepIntervals,     Place::Last,      "\n{name} >= {lower}"},
    {StepIntervals,     StepIntervals,     Place::Anywhere,  "\n{lower} <= {name} < {upper}"},
    {UserIntervals,     UserIntervals,     Place::First,     "{name} <= {upper}"},
    {UserIntervals,     UserIntervals,     Place::Last,      "\n{name} > {lower}"},
    {UserIntervals,     UserIntervals,     Place::Anywhere,  "\n{lower} < {name} <= {upper}"},
}};
// clang-format on

bool StandsAt(const Drill& step, Place where) {
    const auto size = static_cast<std::int32_t>(step.CategorySet.size());
    const std::int32_t chosen = step.ChosenCategory;
    const bool within = chosen >= 0 && chosen < size;
    switch (where) {
        case Place::BehindEnd:
            return chosen == size;
        case Place::OneValue:
            return within && step.Min == step.Max;
        case Place::First:
            return within && chosen == 0;
        case Place::Last:
            return within && chosen == size - 1;
        case Place::Anywhere:
            return within;
    }
    return false;
}

/// Empty for an unknown method and for a place that is none.
std::string_view PatternOf(const Drill& step) {
    for (const ClauseRule& rule : ClauseRules) {
        if (rule.FirstMethod <= step.Method && step.Method <= rule.LastMethod && StandsAt(step, rule.Where)) {
            return rule.Pattern;
        }
    }
    return {};
}

/// Intended: six decimals and no more, however fine the bound, unlike the names of categories; equal captions of equal
/// subsets depend on a fixed form.
std::string BoundText(double bound) {
    std::string text = SixDecimals(bound);
    text.erase(text.find_last_not_of('0') + 1);
    text.erase(text.find_last_not_of('.') + 1);
    return text;
}

std::string MarkText(CDrillDown& analysis, const CaptionRules& rules, const Drill& step, std::string_view mark) {
    if (mark == "name") {
        return rules.VariableName(analysis, step.VarNo);
    }
    if (mark == "missing") {
        return analysis.GetResourceString(MissingText);
    }
    const auto category = std::next(step.CategorySet.begin(), step.ChosenCategory);
    if (mark == "category") {
        return category->Name;
    }
    return BoundText(mark == "lower" ? category->Lower : category->Upper);
}

std::string ClauseOf(CDrillDown& analysis, const CaptionRules& rules, const Drill& step) {
    std::string clause;
    std::string_view rest = PatternOf(step);
    while (!rest.empty()) {
        const std::size_t open = rest.find('{');
        clause += rest.substr(0, open);
        if (open == std::string_view::npos) {
            break;
        }
        const std::size_t close = rest.find('}', open);
        clause += MarkText(analysis, rules, step, rest.substr(open + 1, close - open - 1));
        rest.remove_prefix(close + 1);
    }
    return clause;
}

/// Intended: the valid cases of the first variable, unlike ValidVar, the number of cases in the subset; captions kept
/// by users depend on it. A case missing on that variable isn't in it, and the order of the lists decides.
std::int32_t SelectedCases(const CDrillDown& analysis) {
    for (const CDrillDown::DrillSet* set : {analysis.DrillDowns, analysis.Reviews}) {
        if (!set->empty()) {
            return set->begin()->ValidCount;
        }
    }
    return 0;
}

std::string Caption(CDrillDown& analysis, const CaptionRules& rules) {
    analysis.BringUpToDate();
    std::string text = FillFormat(analysis.GetResourceString(CountLineText),
                                  {std::to_string(analysis.Table.Cases), std::to_string(SelectedCases(analysis))});
    for (const Drill& step : *analysis.DrillUps) {
        text += ClauseOf(analysis, rules, step);
    }
    analysis.Get8CharHash(text);
    return text;
}

}  // namespace

std::string CDrillDown::DrillString() {
    return Caption(*this, ResultCaption);
}

std::string CDrillDown::ScatterDrillString() {
    return Caption(*this, ScatterCaption);
}
