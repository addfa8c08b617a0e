#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "engine/GatheredValues.h"
#include "engine/MomentKernel.h"
#include "engine/TallyRows.h"

namespace drilldown {

/// Some cases of some variables as the update of moments wants them: doubles without gaps. Columns that stand so in the
/// table are taken from there; others are gathered here.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): all is written before it is read, for each few cases
class PlainCases {
  public:
    /// Cases taken at a time at most.
    static constexpr std::size_t Limit = GatheredValuesLimit;

    /// `columns` are at most MomentLaneLimit, at least one; `rows` 1 .. Limit. Valid until the next ones are taken.
    /// `lanes` are those that the cases will enter; how they weigh so far decides how to divide.
    const MomentCases& Take(std::span<const TallyColumn> columns, const WeightedRows& rows, const MomentLanes& lanes);

  private:
    void TakeWeights(const WeightedRows& rows, const MomentLanes& lanes);

    MomentCases Cases;
    std::array<double, Limit> Ones;
    std::array<std::array<double, GatheredValuesRoom>, MomentLaneLimit> Gathered;
};

}  // namespace drilldown
