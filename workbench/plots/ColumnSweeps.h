#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/OrderedBits.h"

namespace quillara {

// Sweeps over whole columns in which cases that aren't valid are NaN. Values are taken side by side, in the registers
// that the processor has; sums are made in the same order on each.

/// Values that are taken side by side: columns have a multiple of so many.
inline constexpr std::size_t SweepLanes = 8;

/// What is known of a column.
struct ColumnRange {
    std::int64_t Cases = 0;  ///< valid ones
    double Min = 0.0;  ///< of none, both are 0
    double Max = 0.0;
};

/// Makes values that are missing or not finite NaN, and finds the range of the others.
ColumnRange KeepValid(std::span<double> column, const NearlyEqualRange& missing);

/// The sum of the valid values, each times `scale`.
[[nodiscard]] double ScaledSum(std::span<const double> column, double scale);

/// How many values lie above each bound.
[[nodiscard]] std::vector<std::int64_t> CasesAbove(std::span<const double> column, std::span<const double> bounds);

/// Writes (value * scale - low) * factor for each value; `places` has as many.
void WritePlaces(std::span<const double> column, double scale, double low, double factor, std::span<float> places);

/// A column as pairs are summed: deviation = value * Scale - Centre.
struct CentredColumn {
    std::span<const double> Values;
    double Scale = 1.0;
    double Centre = 0.0;
};

/// Sums over the cases in which two columns are valid.
struct PairSums {
    double Cases = 0.0;
    double X = 0.0;  ///< of deviations
    double Y = 0.0;
    double XX = 0.0;  ///< of their products
    double YY = 0.0;
    double XY = 0.0;

    PairSums& operator+=(const PairSums& other);
};

/// The sums of each column y with each x up to itself over some cases, whose number is a multiple of SweepLanes: (0,
/// 0), (1, 0), (1, 1), (2, 0) and so on.
[[nodiscard]] std::vector<PairSums> SumsOfPairs(std::span<const CentredColumn> columns, std::size_t first,
                                                std::size_t count);

}  // namespace quillara
