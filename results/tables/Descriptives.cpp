#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "engine/DrillDown.h"
#include "resources/StringTable.h"
#include "results/tables/ResultTable.h"
#include "results/texts/ResultSubjects.h"
#include "results/texts/ResultTexts.h"

using namespace drilldown;

namespace {

/// What sets the two tables of descriptives apart.
struct DescriptivesRules {
    CDrillDown::DrillSet* CDrillDown::*Set;
    bool (*Shows)(const Drill& record);
    std::string (*RowName)(CDrillDown& analysis, std::int16_t var);
    bool RefusesWithoutDrillVariables;  ///< the zero-cases test holds with no drill variables too
};

bool IsContinuous(const Drill& record) {
    return record.VarType == ContinuousVariable;
}

bool HasNeatIntervals(const Drill& record) {
    return record.Method == NeatIntervals;
}

constexpr DescriptivesRules DrillDescriptives{
    .Set = &CDrillDown::DrillDowns,
    // Intended: every continuous variable, whatever its Method, unlike in RVSummary; a drill variable keeps its
    // statistics when the user changes its categories.
    .Shows = IsContinuous,
    // Intended: trimmed, and keys expanded, unlike in RVSummary; hosts that look up a row by its name depend on it.
    .RowName = ExpandedName,
    // Intended: no cases is a refusal with or without drill variables, unlike in RVSummary; without any there is no
    // row.
    .RefusesWithoutDrillVariables = true,
};

constexpr DescriptivesRules ReviewDescriptives{
    .Set = &CDrillDown::Reviews,
    // Intended: every variable under Method 2, whatever its type, unlike in DDNDescriptive; a categorical variable of
    // too many values depends on being shown, and one moved off Method 2 isn't.
    .Shows = HasNeatIntervals,
    // Intended: the host's raw field, unlike in DDNDescriptive; hosts that look up a row by its name depend on it.
    .RowName = NameField,
    // Intended: no cases is no refusal without drill variables, unlike in DDNDescriptive; a review without a drill
    // depends on its table.
    .RefusesWithoutDrillVariables = false,
};

enum Column : std::size_t {
    MeanColumn,
    DeviationColumn,
    MinimumColumn,
    MaximumColumn,
    CasesColumn,
    MissingColumn,
    ColumnCount
};

/// The statistics that are values of their variable, and not amounts of difference or of cases.
constexpr std::array<std::size_t, 3> ValueColumns{MeanColumn, MinimumColumn, MaximumColumn};

/// The columns in front of it hold statistics, which a variable without cases doesn't have.
constexpr std::size_t StatisticsEnd = CasesColumn;

using ColumnValues = std::array<double, ColumnCount>;
using ColumnFlags = std::array<bool, ColumnCount>;

/// Largest magnitude that is shown as a whole number.
constexpr double LargestWhole = 10000000000.0;

/// Intended: the test has a limit of magnitude, unlike that of the frequency tables; the width of the columns depends
/// on it.
bool ShowsAsWhole(double value) {
    return !ClearlyBelow(value, -LargestWhole) && !ClearlyBelow(LargestWhole, value) &&
           NearlyEqual(value, std::floor(value));
}

/// Intended: the divisor is the plain number of cases less 1 also with weights, unlike SumSquares, which is weighted;
/// comparisons with results saved before depend on it.
double StandardDeviation(const Drill& record) {
    if (record.ValidCount <= 1) {
        return record.ValidCount == 1 ? 0.0 : -1.0;
    }
    // A sum that rounding has left negative counts as 0.
    return std::sqrt(std::max(record.SumSquares, 0.0) / (record.ValidCount - 1));
}

ColumnValues ValuesOf(const Drill& record) {
    return {record.Mean, StandardDeviation(record), record.Min, record.Max, record.ValidWeight, record.MissingWeight};
}

/// Intended: no cases is a refusal, unlike in the frequency tables; statistics of nothing would be start values.
bool RefusesForNoCases(CDrillDown& analysis, const DescriptivesRules& rules) {
    if (analysis.ValidVar != 0) {
        return false;
    }
    if (!rules.RefusesWithoutDrillVariables && analysis.NoCategorical + analysis.NoContinuous == 0) {
        return false;
    }
    analysis.dsplst(0, analysis.GetResourceString(NoCasesText));
    return true;
}

void WriteHeadings(CDrillDown& analysis, ResultTable& table) {
    const int cases = analysis.CaseWeight.Active != 0 ? WeightedCasesText : CasesText;
    const std::array<int, ColumnCount> names{MeanText,   StandardDeviationText, MinimumText, MaximumText, cases,
                                             MissingText};
    table.SetTitle(0, analysis.GetResourceString(DescriptivesTitleText));
    table.SetTitle(1, analysis.DrillString());
    for (std::size_t column = 0; column < ColumnCount; ++column) {
        table.SetColumnName(column, analysis.GetResourceString(names[column]));
    }
}

/// Intended: the whole-number test sees every value, also the -1.0 and the bounds that "-" replaces; "-" then takes
/// the display of whole numbers from its columns for good, unlike from the two columns of cases.
void WriteRow(ResultTable& table, std::size_t row, const Drill& record, ColumnFlags& fractional) {
    const ColumnValues values = ValuesOf(record);
    const bool hasStatistics = IsNonZero(record.ValidWeight);
    for (std::size_t column = 0; column < ColumnCount; ++column) {
        fractional[column] = fractional[column] || !ShowsAsWhole(values[column]);
        if (hasStatistics || column >= StatisticsEnd) {
            table.SetNumber(row, column, values[column]);
        } else {
            table.SetCellText(row, column, "-");
            fractional[column] = true;
        }
    }
}

void ShowWholeColumns(ResultTable& table, const ColumnFlags& fractional) {
    for (std::size_t column = 0; column < ColumnCount; ++column) {
        if (!fractional[column]) {
            table.ShowWhole(column);
        }
    }
}

std::int16_t ShowDescriptives(CDrillDown& analysis, const DescriptivesRules& rules) {
    analysis.BringUpToDate();
    if (RefusesForNoCases(analysis, rules)) {
        return 0;
    }
    const CDrillDown::DrillSet& set = *(analysis.*rules.Set);
    const auto rows = static_cast<std::size_t>(std::count_if(set.begin(), set.end(), rules.Shows));
    ResultTable table(analysis, rows, ColumnCount);
    WriteHeadings(analysis, table);
    SubjectWriter subject(analysis, SideOf(rules.Set));
    ColumnFlags fractional{};
    std::size_t row = 0;
    for (const Drill& record : set) {
        if (rules.Shows(record)) {
            subject.AddVariable(record.VarNo);
            table.SetRowName(row, rules.RowName(analysis, record.VarNo));
            WriteRow(table, row++, record, fractional);
        }
    }
    ShowWholeColumns(table, fractional);
    table.Subject = subject.Take();
    table.Subject.ValueColumns = ValueColumns;
    // Intended: nothing is shown, and nothing said, without rows, unlike the frequency tables; the commands depend on
    // being silent where no variable applies.
    if (rows > 0) {
        table.Output();
    }
    return 1;
}

}  // namespace

std::int16_t CDrillDown::DDNDescriptive(HWND) {
    return ShowDescriptives(*this, DrillDescriptives);
}

std::int16_t CDrillDown::RVSummary(HWND) {
    return ShowDescriptives(*this, ReviewDescriptives);
}
