#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// The five numbers that tell where values lie.
struct FiveNumbers {
    double Smallest = 0.0;
    double LowerQuartile = 0.0;
    double Median = 0.0;
    double UpperQuartile = 0.0;
    double Largest = 0.0;
};

/// What all cases of a variable have, missing data and what isn't finite left out.
struct ValueSpread {
    std::int64_t Missing = 0;
    std::size_t Distinct = 0;
    /// Of numbers, dates and times; quartiles by linear interpolation (definition 7 of Hyndman and Fan), as
    /// distributions have them. Nothing without values.
    std::optional<FiveNumbers> Numbers;
    /// How many cases have each value or, of many numbers, lie in parts of equal width from the smallest to the
    /// largest; of many texts or labelled values the most frequent, from the first of them.
    std::vector<std::size_t> Bars;
};

/// `mostBars` is the greatest number of bars, and of parts.
[[nodiscard]] ValueSpread SpreadOf(const Variable& variable, std::size_t mostBars);

}  // namespace quillara
