#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "engine/TallyRows.h"

namespace drilldown {

/// Variables whose chains of updates are taken side by side at most. The state of more of them no longer fits the
/// registers, which costs more than overlapping gains.
inline constexpr std::size_t MomentLaneLimit = 8;

/// Running statistics of some variables side by side. Lanes that no variable uses may hold anything and get anything.
struct MomentLanes {
    template <typename T>
    using Lanes = std::array<T, MomentLaneLimit>;

    alignas(32) Lanes<double> Mean;
    alignas(32) Lanes<double> SumSquares;
    alignas(32) Lanes<double> SumWeights;
    alignas(32) Lanes<double> Min;
    alignas(32) Lanes<double> Max;
    alignas(32) Lanes<double> LowestMissing;  ///< values from here
    alignas(32) Lanes<double> HighestMissing;  ///< up to here are missing
    Lanes<double> MissingWeight;
    Lanes<std::int32_t> MissingCount;
    Lanes<const double*> Values;  ///< columns; every lane has one
};

/// Updates the first `variables` lanes, at most MomentLaneLimit, with some cases, given by rows and weights. Every lane
/// does the arithmetic of plain doubles in the order of the cases, on any processor.
void UpdateMoments(MomentLanes& lanes, std::size_t variables, const WeightedRows& rows);

}  // namespace drilldown
