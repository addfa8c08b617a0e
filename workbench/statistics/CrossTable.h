#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "workbench/plots/CaseColumns.h"
#include "workbench/statistics/ValueGroups.h"

namespace quillara {

/// One side of a cross table: the groups of a variable that have cases in it.
struct CrossSide {
    std::string Variable;
    std::string LongName;  ///< may be empty
    std::vector<std::string> Names;
    std::vector<double> Totals;  ///< of each group
    std::size_t Empty = 0;  ///< groups without cases, which aren't shown
};

/// How many cases have a value of one variable together with a value of another; under weights the sums of these.
struct CrossTable {
    CrossSide Rows;
    CrossSide Columns;
    std::vector<double> Counts;  ///< row by row
    double Total = 0.0;
    std::int64_t Cases = 0;  ///< counted, whatever they weigh
    std::int64_t LeftOut = 0;  ///< cases of the subset that lack one of the values
    /// Pearson's, over the counts as they are; NaN with fewer than two rows or columns.
    double ChiSquare = 0.0;
    int Freedom = 0;  ///< its degrees
    /// The probability that chance gives as large a chi-square to variables that have nothing to do with each other;
    /// NaN without one. Weights are taken for numbers of cases.
    double Chance = 0.0;
    /// How many cases of equal weight would tell as much (Kish: the squared sum of weights over the sum of their
    /// squares), and the same probability with the counts scaled to them: for weights that balance a sample.
    double EffectiveCases = 0.0;
    double EffectiveChance = 0.0;
    /// Cramer's: the root of chi-square over the total and over the lesser number of rows or columns less 1.
    double CramersV = 0.0;

    [[nodiscard]] double CountAt(std::size_t row, std::size_t column) const {
        return Counts[row * Columns.Names.size() + column];
    }
    /// What would be there if the variables had nothing to do with each other.
    [[nodiscard]] double ExpectedAt(std::size_t row, std::size_t column) const {
        return Rows.Totals[row] * Columns.Totals[column] / Total;
    }
    [[nodiscard]] double SmallestExpected() const;  ///< NaN of a table without cells
};

/// A variable of a cross table, by its index, and how it is cut.
struct CrossVariable {
    std::size_t Index = 0;
    std::optional<Cut> How{};
};

/// Throws as ValueGroups.
[[nodiscard]] CrossTable CrossTableOf(const DataTable& table, const CrossVariable& rows, const CrossVariable& columns,
                                      const RowSet& cases, const CaseWeights& weights = {});

/// Chi-square of counts, row by row, over rows and columns that have some; and Cramer's V. NaN as in CrossTable.
struct Association {
    double ChiSquare;
    double CramersV;
};

[[nodiscard]] Association AssociationOf(const std::vector<double>& counts, std::size_t columns);

}  // namespace quillara
