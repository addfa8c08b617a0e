#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// The cases that a plot is made of, as indexes of rows, ascending.
using PlotRows = std::vector<std::uint32_t>;

/// The valid values of a variable in some rows, in their order.
[[nodiscard]] std::vector<double> ValidValues(const Variable& variable, const PlotRows& rows);

/// Count, range, mean and sum of squared deviations of values; of none, all are 0.
struct ValueMoments {
    std::int64_t Cases = 0;
    double Min = 0.0;
    double Max = 0.0;
    double Mean = 0.0;
    double SumSquares = 0.0;

    /// With n - 1 in the denominator; 0 for fewer than two values.
    [[nodiscard]] double StandardDeviation() const;
};

[[nodiscard]] ValueMoments MomentsOf(std::span<const double> values);

/// Intervals (a, b] of round bounds over a range, about `parts` of them.
struct NeatBins {
    double Low = 0.0;
    double Step = 1.0;
    std::vector<double> UpperBounds;  ///< at least one

    /// The place of a value of the range, from 0.
    [[nodiscard]] std::size_t PlaceOf(double value) const;
};

[[nodiscard]] NeatBins NeatBinsOver(double min, double max, int parts);

}  // namespace quillara
