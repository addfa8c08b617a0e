#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/HostBuffer.h"
#include "engine/MomentKernel.h"
#include "engine/TallyRows.h"

namespace drilldown {

/// Statistics of one variable at the end of a pass.
struct MomentStatistics {
    double Min;
    double Max;
    double Mean;
    double SumSquares;
    std::int32_t MissingCount;
    double MissingWeight;
    std::int32_t ValidCount;
    double ValidWeight;
};

/// Range, weighted mean, sum of squared deviations and counts of several variables, updated case by case:
///
///     W += w;  d = (x - Mean) * w;  Mean += d / W;  SumSquares += (x - Mean) * d
///
/// (West, "Updating mean and variance estimates: an improved method", CACM 22:9, 1979.) The update is a chain of
/// divisions for each variable, so variables are taken several at a time and their chains overlap. The result of a
/// variable doesn't depend on which others are taken with it.
class MomentTally {
  public:
    /// A tally of so many variables, all empty: Min 1.7e+308, Max -1.7e+308, the rest zero.
    MomentTally(CAnalysisSupport& host, std::size_t variables);

    /// False when there was no memory.
    explicit operator bool() const noexcept { return HasMemory; }
    /// Counts cases for consecutive variables from `first` on: a missing value by its weight, any other in full.
    /// Several threads may do so at once for different variables.
    void Add(std::size_t first, std::span<const TallyColumn> columns, const WeightedRows& rows);
    /// Counts cases as missing for consecutive variables.
    void AddMissing(std::size_t first, std::size_t count, const WeightedRows& rows);
    [[nodiscard]] MomentStatistics Of(std::size_t variable) const;

  private:
    void AddLanes(std::size_t first, std::span<const TallyColumn> columns, const WeightedRows& rows);
    void LoadLane(MomentLanes& lanes, std::size_t lane, std::size_t variable) const;
    void StoreLane(const MomentLanes& lanes, std::size_t lane, std::size_t variable) const;

    HostBuffer<double> Mean;
    HostBuffer<double> SumSquares;
    HostBuffer<double> Min;
    HostBuffer<double> Max;
    HostBuffer<double> SumWeights;
    HostBuffer<double> MissingWeight;
    HostBuffer<std::int32_t> ValidCount;
    HostBuffer<std::int32_t> MissingCount;
    bool HasMemory;
};

}  // namespace drilldown
