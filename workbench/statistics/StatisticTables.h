#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/documents/GraphDocument.h"
#include "workbench/documents/SpreadsheetDocument.h"
#include "workbench/statistics/CrossTable.h"
#include "workbench/statistics/Distribution.h"
#include "workbench/statistics/SubsetContrast.h"

namespace quillara {

// Statistics that the host computes itself as tables for people and programs. Under weights their titles say so.

/// What a table of statistics is of.
struct StatisticsScope {
    const DataTable& Table;
    const RowSet& Rows;
    const CaseWeights& Weights;
};

/// One row for each variable of numbers.
[[nodiscard]] SpreadsheetDocument DistributionTable(const StatisticsScope& scope,
                                                    const std::vector<std::size_t>& variables);
/// One row for each category that has cases, and one for missing data: counts, percents, and percents of the valid
/// ones.
[[nodiscard]] SpreadsheetDocument ShareTable(const StatisticsScope& scope, std::size_t variable);

/// Counts with their totals; percents of the row, of the column and of all; what would be expected; chi-square and
/// Cramer's V in one row.
[[nodiscard]] std::vector<SpreadsheetDocument> TablesOfCross(const CrossTable& cross, const std::string& weight);

/// The same as a picture: a column for each row of the table.
[[nodiscard]] GraphDocument MosaicOf(const CrossTable& cross, const std::string& weight);

/// One row for each variable, in the order given.
[[nodiscard]] SpreadsheetDocument ContrastTable(const std::vector<VariableContrast>& contrasts,
                                                const std::string& weight);

/// "1 case", "2 cases".
[[nodiscard]] std::string CountText(std::int64_t cases);

/// A number; an empty cell where it isn't defined.
[[nodiscard]] SpreadsheetCell CellOf(double number);

/// A column of texts that are no values.
[[nodiscard]] SpreadsheetColumn WordsColumn(std::string name);

/// What is said under the title of weighted distributions.
inline constexpr const char* WeightDefinition =
    "A case counts as so many equal cases as its weight says, fractions as they are; N and missing are cases. Std.Dev. "
    "by weights divides by the sum of the weights less 1, that of descriptives by the number of cases less 1";

/// The name of a column of deviations.
inline constexpr std::string_view DeviationName = "Std.Dev.";

/// The same over the column: under a weight it isn't that of the descriptives of an analysis, and says so.
[[nodiscard]] std::string DeviationHeading(const std::string& weight);

/// " weighted by wt"; nothing without a weight.
[[nodiscard]] std::string WeightedBy(const std::string& weight);
/// How such a table takes the weight of this name; empty: there is none.
[[nodiscard]] WeightUse UseOf(const std::string& weight);

}  // namespace quillara
