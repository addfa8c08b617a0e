// The members for the category of the next step down.

#include <algorithm>
#include <iterator>

#include "automation/OwnMembers.h"
#include "dialogs/DefineTask.h"
#include "host/LittleParser.h"
#include "host/ScriptValues.h"
#include "platform/OrderedBits.h"
#include "resources/StringTable.h"

namespace drilldown {
namespace {

constexpr std::int32_t NoneSelected = -1;
constexpr char SelectionEnds[] = " |";

bool CanBeRead(const CDrillDown& analysis) {
    return !analysis.DrillDowns->empty() && analysis.Selected != NoneSelected;
}

/// The name of a category by its place among all, when it has cases; else empty.
std::string NameAt(const CDrillDown::CategorySetType& categories, std::int32_t place) {
    if (place < 0 || place >= std::ssize(categories)) {
        return {};
    }
    const auto category = std::next(categories.begin(), place);
    return IsNonZero(category->Count) ? category->Name : std::string();
}

std::string NumberedName(std::size_t number, const std::string& name) {
    return std::to_string(number) + ' ' + name;
}

/// What stands behind a colon isn't read.
HRESULT ChooseRow(CDrillDown& analysis, CLittleParser& parser) {
    const std::int32_t row = parser.GetLastNumber();
    const int behind = parser.GetSymbol();
    if (behind != CLittleParser::End && behind != ':') {
        return E_FAIL;
    }
    analysis.Selected = row;
    return S_OK;
}

/// Intended: the place among all categories is stored, unlike the row of the non-empty ones that the category dialog
/// stores and the step reads; the two are alike where no category before the one named is empty.
HRESULT ChooseCategory(CDrillDown& analysis, const std::string& name) {
    const CDrillDown::CategorySetType& categories = *analysis.GetCurrentCategories();
    if (EqualButForCase(name, analysis.GetResourceString(MissingText))) {
        analysis.Selected = static_cast<std::int32_t>(categories.size());
        return S_OK;
    }
    const auto category =
        std::ranges::find_if(categories, [&](const Categories& each) { return EqualButForCase(each.Name, name); });
    if (category == categories.end()) {
        return E_FAIL;
    }
    analysis.Selected = static_cast<std::int32_t>(std::distance(categories.begin(), category));
    return S_OK;
}

}  // namespace

// Intended: under any method but that of distinct values the number chosen is read, unlike what was written; intervals
// are chosen by number.
HRESULT ReadDrillDownCategory(CDefineTask& task, std::string& text) {
    CDrillDown& analysis = *task.Analysis;
    if (!CanBeRead(analysis)) {
        return E_FAIL;
    }
    if (analysis.GetCurrentMethod() != DistinctValues) {
        text = std::to_string(analysis.Selected);
        return S_OK;
    }
    text = NameAt(*analysis.GetCurrentCategories(), analysis.Selected);
    if (text.empty()) {
        text = analysis.GetResourceString(MissingText);
    }
    return S_OK;
}

HRESULT WriteDrillDownCategory(CDefineTask& task, const VARIANT& value) {
    CDrillDown& analysis = *task.Analysis;
    std::string text;
    if (!VariantToTextList(value, text)) {
        return E_FAIL;
    }
    CleanText(task, text);
    if (text.empty()) {
        analysis.Selected = 0;
        return S_OK;
    }
    CLittleParser parser(1, text.c_str(), nullptr, 0);
    switch (parser.GetSymbol()) {
        case CLittleParser::Number:
            return ChooseRow(analysis, parser);
        case CLittleParser::BareText:
        case CLittleParser::QuotedText:
            return ChooseCategory(analysis, parser.GetLastTextVal());
        default:
            return E_FAIL;
    }
}

HRESULT ReadCategorySelections(CDefineTask& task, std::string& text) {
    CDrillDown& analysis = *task.Analysis;
    if (!CanBeRead(analysis)) {
        return E_FAIL;
    }
    const std::string missing = analysis.GetResourceString(MissingText);
    std::size_t place = 0;
    for (const Categories& category : *analysis.GetCurrentCategories()) {
        if (IsNonZero(category.Count)) {
            text += NumberedName(place, category.Name) + " | ";
        }
        ++place;
    }
    if (IsNonZero(analysis.GetCurrentMCount())) {
        text += NumberedName(place, missing);
    }
    // Intended: blanks and bars at the end of the last name go with the bar behind it, unlike those of the others; the
    // text ends in no bar.
    text.erase(text.find_last_not_of(SelectionEnds) + 1);
    if (text.empty()) {
        text = missing;
    }
    return S_OK;
}

// Intended: changes nothing, unlike the other members that can be written; a recorded script writes back what it has
// read.
HRESULT WriteCategorySelections(CDefineTask& /*task*/, const VARIANT& /*value*/) {
    return S_OK;
}

}  // namespace drilldown
