#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/RowSet.h"

namespace quillara {

/// The cases that a plot is made of.
using PlotRows = RowSet;

/// Does `work` for parts 0 .. parts - 1, maybe several at once. Throws what a part throws. Empty: one after the other.
using PartRunner = std::function<void(std::int32_t parts, const std::function<void(std::int32_t part)>& work)>;

void RunParts(const PartRunner& runner, std::size_t parts, const std::function<void(std::size_t part)>& work);

/// The weights of a plot's cases: a case of weight w counts as w equal cases.
struct CaseWeights {
    Column Values;  ///< one for each case of the table; empty: no weight is in force
    std::string Variable;  ///< name of the variable that they come from
};

/// Valid values of a variable, and beside them the weights of their cases; no weights: each is 1.
struct WeightedValues {
    std::vector<double> Values;
    std::vector<double> Weights;
};

/// The valid values of a variable in some rows, in their order. With weights, only cases of a positive weight.
[[nodiscard]] WeightedValues ValidValues(const Variable& variable, const PlotRows& rows,
                                         const CaseWeights& weights = {});

/// The least and the largest of values, at least one.
[[nodiscard]] std::pair<double, double> RangeOf(std::span<const double> values);

[[nodiscard]] double SumOfWeights(const WeightedValues& values);

/// How many cases weighted ones stand for.
enum class WeightedSize : std::uint8_t {
    SumOfWeights,
    NoFewerThanCases,  ///< their sum, scaled up to the number of cases where it is less
};

/// Count, range, mean and spread of values; of none, all are 0.
struct ValueMoments {
    std::int64_t Cases = 0;
    double Weight = 0.0;  ///< sum of the weights
    double Min = 0.0;
    double Max = 0.0;
    double Mean = 0.0;
    double Size = 0.0;  ///< how many cases the weights stand for
    /// The root of the weighted sum of squared deviations divided by Size - 1; 0 when that isn't positive.
    double StandardDeviation = 0.0;
};

/// `values` of any magnitude: no square is too large or too small for a double.
[[nodiscard]] ValueMoments MomentsOf(const WeightedValues& values, WeightedSize size = WeightedSize::NoFewerThanCases);

/// A power of two that brings numbers of a range to a magnitude of about 1, without rounding.
[[nodiscard]] double ScaleFor(double min, double max);

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
