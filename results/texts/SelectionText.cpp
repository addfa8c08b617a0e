#include <algorithm>
#include <array>
#include <iterator>
#include <string>

#include "engine/DrillDown.h"
#include "resources/StringTable.h"
#include "results/texts/ResultTexts.h"

using namespace drilldown;

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

/// What a clause is put together from.
enum class Piece {
    None,  ///< fills the rest of a rule
    LineFeed,
    Name,  ///< of the variable
    Category,  ///< name of the chosen category
    Lower,  ///< its bounds
    Upper,
    Missing,  ///< the word
    Equals,
    Below,
    UpTo,
    Above,
    From,
};

struct FixedText {
    Piece Of;
    const char* Text;
};

/// Of the pieces that are the same in every clause.
constexpr std::array<FixedText, 7> FixedTexts{{
    {Piece::None, ""},
    {Piece::LineFeed, "\n"},
    {Piece::Equals, " = "},
    {Piece::Below, " < "},
    {Piece::UpTo, " <= "},
    {Piece::Above, " > "},
    {Piece::From, " >= "},
}};

/// The clause of a step is that of the first rule that holds: its Method lies in FirstMethod .. LastMethod, its chosen
/// category at Where.
struct ClauseRule {
    std::int32_t FirstMethod;
    std::int32_t LastMethod;
    Place Where;
    std::array<Piece, 6> Clause;
};

using enum Piece;

// Intended: the operators differ between the methods, unlike a common form; each is the rule by which the drill
// filter of that method admits a value, and what a reader takes from a caption depends on it.
// Intended: the first interval of Method 5 continues the line before it, unlike every other clause; captions kept by
// users and scripts depend on it.
// clang-format off
constexpr std::array<ClauseRule, 10> ClauseRules{{
    // From            To                 Where             Clause
    {DistinctValues,    UserIntervals,     Place::BehindEnd, {LineFeed, Name, Equals, Missing}},
    {DistinctValues,    DistinctValues,    Place::Anywhere,  {LineFeed, Name, Equals, Category}},
    {IntegerCategories, IntegerCategories, Place::Anywhere,  {LineFeed, Name, Equals, Category}},
    {ExactIntervals,    NeatIntervals,     Place::OneValue,  {LineFeed, Name, Equals, Upper}},
    {ExactIntervals,    NeatIntervals,     Place::Anywhere,  {LineFeed, Lower, Below, Name, UpTo, Upper}},
    {StepIntervals,     StepIntervals,     Place::Last,      {LineFeed, Name, From, Lower}},
    {StepIntervals,     StepIntervals,     Place::Anywhere,  {LineFeed, Lower, UpTo, Name, Below, Upper}},
    {UserIntervals,     UserIntervals,     Place::First,     {Name, UpTo, Upper}},
    {UserIntervals,     UserIntervals,     Place::Last,      {LineFeed, Name, Above, Lower}},
    {UserIntervals,     UserIntervals,     Place::Anywhere,  {LineFeed, Lower, Below, Name, UpTo, Upper}},
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

/// Intended: six decimals and no more, however fine the bound, unlike the names of categories; equal captions of equal
/// subsets depend on a fixed form.
std::string BoundText(double bound) {
    return ShortDecimals(bound);
}

/// The chosen category; the rules that ask for it hold only where there is one.
const Categories& ChosenCategoryOf(const Drill& step) {
    return *std::next(step.CategorySet.begin(), step.ChosenCategory);
}

std::string PieceText(CDrillDown& analysis, const CaptionRules& rules, const Drill& step, Piece piece) {
    switch (piece) {
        case Name:
            return rules.VariableName(analysis, step.VarNo);
        case Category:
            return ChosenCategoryOf(step).Name;
        case Lower:
            return BoundText(ChosenCategoryOf(step).Lower);
        case Upper:
            return BoundText(ChosenCategoryOf(step).Upper);
        case Missing:
            return analysis.GetResourceString(MissingText);
        default:
            return std::find_if(FixedTexts.begin(), FixedTexts.end(),
                                [=](const FixedText& text) { return text.Of == piece; })
                ->Text;
    }
}

/// Empty for an unknown method and for a place that is none.
std::string ClauseOf(CDrillDown& analysis, const CaptionRules& rules, const Drill& step) {
    const auto rule = std::find_if(ClauseRules.begin(), ClauseRules.end(), [&](const ClauseRule& candidate) {
        return candidate.FirstMethod <= step.Method && step.Method <= candidate.LastMethod &&
               StandsAt(step, candidate.Where);
    });
    std::string clause;
    if (rule != ClauseRules.end()) {
        for (const Piece piece : rule->Clause) {
            clause += PieceText(analysis, rules, step, piece);
        }
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
    analysis.ReadIfChanged();
    std::string text = FillFormat(analysis.GetResourceString(CountLineText),
                                  {std::to_string(analysis.Table.Cases), std::to_string(SelectedCases(analysis))});
    for (const Drill& step : *analysis.DrillUps) {
        text += ClauseOf(analysis, rules, step);
    }
    // Intended: as its key, unlike in the title of a scatterplot; a long caption passes a line of 80 bytes whole.
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
