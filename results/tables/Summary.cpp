#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <string_view>

#include "engine/DisplayNames.h"
#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "resources/StringTable.h"
#include "results/tables/ResultTable.h"
#include "results/texts/ResultSubjects.h"
#include "results/texts/ResultTexts.h"

using namespace drilldown;

namespace {

constexpr std::size_t CategoryColumn = 0;
constexpr std::size_t StepDescriptionColumn = 1;
constexpr std::size_t CornerTextWidth = 12;

/// Intended: every category of every step counts, of continuous variables too, unlike in LongDescription, and not the
/// chosen ones alone; the shape of the summary depends on the variables drilled and not on what was chosen.
bool AnyLongLabel(CDrillDown& analysis, char* buffer) {
    return std::any_of(analysis.DrillUps->begin(), analysis.DrillUps->end(), [&](const Drill& step) {
        return std::any_of(step.CategorySet.begin(), step.CategorySet.end(),
                           [&](const Categories& category) { return FindLongLabel(analysis, step, category, buffer); });
    });
}

void WriteCorner(CDrillDown& analysis) {
    const std::string_view text = analysis.GetResourceString(VariableText);
    std::memset(analysis.Table.CornerLabel, 0, CornerTextWidth);
    std::memcpy(analysis.Table.CornerLabel, text.data(), std::min(text.size(), CornerTextWidth));
}

void WriteHeadings(CDrillDown& analysis, bool described, ResultTable& table) {
    table.SetTitle(0, analysis.GetResourceString(SummaryTitleText));
    WriteCorner(analysis);
    table.SetColumnName(CategoryColumn, analysis.GetResourceString(CategoryText));
    if (described) {
        // Intended: a text of the string table, unlike in the frequency tables, which have a literal; translations of
        // the table reach this column alone.
        table.SetColumnName(StepDescriptionColumn, analysis.GetResourceString(DescriptionText));
    }
}

/// A chosen place that is neither in the set nor behind its end leaves the row without a category. Without a `label`
/// to work in, there are no descriptions.
void WriteCategory(CDrillDown& analysis, ResultTable& table, std::size_t row, const Drill& step, char* label) {
    const auto size = static_cast<std::int32_t>(step.CategorySet.size());
    if (step.ChosenCategory == size) {
        table.SetCellText(row, CategoryColumn, analysis.GetResourceString(MissingText));
    } else if (step.ChosenCategory >= 0 && step.ChosenCategory < size) {
        const auto chosen = std::next(step.CategorySet.begin(), step.ChosenCategory);
        table.SetCellText(row, CategoryColumn, chosen->Name);
        if (label != nullptr && FindLongLabel(analysis, step, *chosen, label)) {
            table.SetCellText(row, StepDescriptionColumn, label);
        }
    }
}

}  // namespace

// Intended: no result prologue and no look at the number of cases, unlike in every other table; the summary depends on
// the steps alone and can be shown for an empty subset.
std::int16_t CDrillDown::DDNSummary(HWND) {
    const HostBuffer<char> label(*this, NameFieldSize);
    const HostBuffer<char> name(*this, NameFieldSize);
    if (!label || !name) {
        return 0;
    }
    const bool described = AnyLongLabel(*this, label.data());
    ResultTable table(*this, DrillUps->size(), described ? 2 : 1);
    WriteHeadings(*this, described, table);
    SubjectWriter subject(*this, ResultSide::Drill);
    std::size_t row = 0;
    for (const Drill& step : *DrillUps) {
        subject.AddVariable(step.VarNo);
        table.SetRowName(row, ExpandedName(*this, step.VarNo, name.data()));
        WriteCategory(*this, table, row++, step, described ? label.data() : nullptr);
    }
    table.Subject = subject.Take();
    // Intended: nothing is shown without rows, unlike the frequency tables; a call without a step depends on being
    // silent.
    if (!DrillUps->empty()) {
        table.Output();
    }
    return 1;
}
