#include <algorithm>
#include <cmath>
#include <cstddef>

#include "engine/DisplayNames.h"
#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "resources/StringTable.h"
#include "results/tables/ResultTable.h"
#include "results/texts/ResultSubjects.h"
#include "results/texts/ResultTexts.h"

using namespace drilldown;

namespace {

/// What sets the two kinds of frequency tables apart.
struct FrequencyRules {
    CDrillDown::DrillSet* CDrillDown::*Set;
    std::int16_t (CDrillDown::*HasLongLabels)(std::int16_t var, std::int16_t type);
    const char* TitleSeparator;  ///< between the short and the long name of the variable
};

// Intended: the separator is ": ", unlike in RVFrequency; scripts that find a table by its title depend on it.
constexpr FrequencyRules DrillFrequencies{&CDrillDown::DrillDowns, &CDrillDown::LongDescription, ": "};
// Intended: the separator is " : ", unlike in DDNFrequency; scripts that find a table by its title depend on it.
constexpr FrequencyRules ReviewFrequencies{&CDrillDown::Reviews, &CDrillDown::LongDescriptionReviews, " : "};

constexpr std::size_t CountColumn = 0;
constexpr std::size_t CumulativeCountColumn = 1;
constexpr std::size_t PercentColumn = 2;
constexpr std::size_t CumulativePercentColumn = 3;
constexpr std::size_t DescriptionColumn = 4;

// Intended: a literal, unlike in the summary, whose column takes its name from the string table; translations of the
// table don't reach this column.
constexpr const char* DescriptionName = "Description";

/// Writes the rows of one table from the top down.
struct TableRows {
    ResultTable& Table;
    double Total = 0;  ///< what the percents are of
    bool& AnyFractional;
    std::size_t Row = 0;
    double Cumulative = 0.0;

    void Write(const std::string& name, double count) {
        Cumulative += count;
        Table.SetRowName(Row, name);
        // Intended: no limit of magnitude, unlike in the descriptives; large counts depend on being shown whole.
        AnyFractional = AnyFractional || !NearlyEqual(count, std::floor(count));
        Table.SetNumber(Row, CountColumn, count);
        Table.SetNumber(Row, CumulativeCountColumn, Cumulative);
        if (IsNonZero(Total)) {
            Table.SetNumber(Row, PercentColumn, count / Total * 100.0);
            Table.SetNumber(Row, CumulativePercentColumn, Cumulative / Total * 100.0);
        }
        ++Row;
    }
};

void WriteHeadings(CDrillDown& analysis, const FrequencyRules& rules, std::int16_t var, ResultTable& table) {
    table.SetTitle(0, VariableTitle(analysis, FrequencyTitleText, var, rules.TitleSeparator));
    table.SetTitle(1, analysis.DrillString());
    table.SetColumnName(CountColumn, analysis.GetResourceString(CountText));
    table.SetColumnName(CumulativeCountColumn, analysis.GetResourceString(CumulativeCountText));
    table.SetColumnName(PercentColumn, analysis.GetResourceString(PercentText));
    table.SetColumnName(CumulativePercentColumn, analysis.GetResourceString(CumulativePercentText));
}

void WriteDescriptions(CDrillDown& analysis, const Drill& record, ResultTable& table, char* label) {
    table.SetColumnName(DescriptionColumn, DescriptionName);
    std::size_t row = 0;
    for (const Categories& category : record.CategorySet) {
        if (FindLongLabel(analysis, record, category, label)) {
            table.SetCellText(row, DescriptionColumn, label);
        }
        ++row;
    }
}

// Intended: the option of the drill variables decides for review variables too, unlike casewise deletion, which has one
// option for each side; the dialog has the one check box.
bool HasMissingRow(const CDrillDown& analysis, const Drill& record) {
    return analysis.CountMD == 1 && IsNonZero(record.MissingWeight);
}

void WriteRows(CDrillDown& analysis, const Drill& record, ResultTable& table, bool& anyFractional) {
    // Intended: the total holds the missing weight, unlike the rows, which may leave it out; percents that fall short
    // of 100 by the missing share depend on it.
    TableRows rows{table, record.MissingWeight + record.ValidWeight, anyFractional};
    for (const Categories& category : record.CategorySet) {
        rows.Write(CategoryName(record, category), category.Count);
    }
    if (HasMissingRow(analysis, record)) {
        rows.Write(analysis.GetResourceString(MissingText), record.MissingWeight);
    }
}

/// False when memory is missing.
bool ShowTable(CDrillDown& analysis, const FrequencyRules& rules, const Drill& record, bool& anyFractional) {
    const std::size_t rows = record.CategorySet.size() + (HasMissingRow(analysis, record) ? 1 : 0);
    const bool described = (analysis.*rules.HasLongLabels)(record.VarNo, record.VarType) == 1;
    ResultTable table(analysis, rows, described ? DescriptionColumn + 1 : DescriptionColumn);
    if (!table) {
        return false;
    }
    if (described) {
        const HostBuffer<char> label(analysis, NameFieldSize);
        if (!label) {
            return false;
        }
        WriteDescriptions(analysis, record, table, label.data());
    }
    WriteHeadings(analysis, rules, record.VarNo, table);
    WriteRows(analysis, record, table, anyFractional);
    if (!anyFractional) {
        table.ShowWhole(CountColumn);
        table.ShowWhole(CumulativeCountColumn);
    }
    table.Subject = SubjectOf(analysis, SideOf(rules.Set), record, HasMissingRow(analysis, record));
    // Intended: a table of no rows is shown too, unlike in the summary and the descriptives; one table per variable is
    // what scripts count on.
    table.Output();
    return true;
}

// Intended: no refusal when no case remains, unlike in the descriptives; an empty subset depends on being shown as
// counts of 0.
std::int16_t ShowFrequencies(CDrillDown& analysis, const FrequencyRules& rules) {
    analysis.BringUpToDate();
    const CDrillDown::DrillSet& set = *(analysis.*rules.Set);
    if (std::any_of(set.begin(), set.end(), [](const Drill& record) { return record.Isset == 0; })) {
        analysis.ReadBeforeDrill(0);  // after a cancel the counts are shown as they stand
    }
    // Intended: one flag for all tables of a command, unlike the flags of the descriptives; a fractional count also
    // takes the display of whole numbers from the tables behind it, so that they look alike.
    bool anyFractional = false;
    const bool complete = std::all_of(
        set.begin(), set.end(), [&](const Drill& record) { return ShowTable(analysis, rules, record, anyFractional); });
    return complete ? 1 : 0;
}

}  // namespace

std::int16_t CDrillDown::DDNFrequency(HWND) {
    return ShowFrequencies(*this, DrillFrequencies);
}

std::int16_t CDrillDown::RVFrequency(HWND) {
    return ShowFrequencies(*this, ReviewFrequencies);
}
