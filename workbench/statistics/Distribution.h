#pragma once

#include <cstdint>
#include <limits>

#include "workbench/data/DataTable.h"
#include "workbench/data/RowSet.h"
#include "workbench/plots/CaseColumns.h"

namespace quillara {

/// A statistic that isn't defined.
inline constexpr double Undefined = std::numeric_limits<double>::quiet_NaN();

/// How the values of a variable are distributed over some cases. What isn't defined is Undefined: all but the counts
/// where no value is valid, the deviation of one case, the skewness of fewer than three or of a constant.
///
/// Under weights a case counts as so many equal cases, fractions as they are, whatever the weights sum to: the
/// deviation divides by the sum of the weights less 1, and quantiles are those of definition 7 of Hyndman and Fan;
/// neither is defined where the weights of several cases sum to no more than 1. (Box plots scale weights up that sum to
/// less than the number of cases; all other definitions are theirs, see BoxPlotOf.) Skewness is the adjusted one of
/// Fisher and Pearson, sqrt(n (n - 1)) / (n - 2) times the mean cube of the deviations over the 3/2th power of their
/// mean square, n being the sum of the weights.
struct Distribution {
    std::int64_t Cases = 0;  ///< valid ones, without those that have no positive weight
    double Weight = 0.0;  ///< the sum of their weights; their number without weights
    double Sum = Undefined;  ///< of the values, each times its weight
    double Mean = Undefined;
    double StandardDeviation = Undefined;
    double Minimum = Undefined;
    double LowerQuartile = Undefined;
    double Median = Undefined;
    double UpperQuartile = Undefined;
    double Maximum = Undefined;
    double Skewness = Undefined;
    std::int64_t Missing = 0;  ///< cases of a positive weight without a valid value
    double MissingWeight = 0.0;
};

/// The distribution of a variable of numbers in some rows of its table.
[[nodiscard]] Distribution DistributionOf(const Variable& variable, const RowSet& rows,
                                          const CaseWeights& weights = {});

/// The standard deviation; Undefined of one case, and where the cases stand for no more than one.
[[nodiscard]] double DeviationOf(const ValueMoments& moments);

/// Cases that count in some rows: all of them, or those of a positive weight.
struct CountedCases {
    std::int64_t Cases = 0;
    double Weight = 0.0;  ///< the sum of their weights; their number without weights
};

[[nodiscard]] CountedCases CountCases(const RowSet& rows, const CaseWeights& weights = {});

}  // namespace quillara
