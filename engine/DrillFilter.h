#pragma once

#include <cstddef>
#include <span>

#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "host/CaseConditions.h"

namespace drilldown {

/// The steps of an analysis as conditions, made once for a pass.
/// Intended: a missing value is tested like any other, unlike in the counting, which passes it over; a missing code
/// inside the chosen interval stays in the subset.
class CompiledFilter {
  public:
    explicit CompiledFilter(CDrillDown& analysis);

    /// False when there was no memory.
    explicit operator bool() const noexcept { return static_cast<bool>(Conditions); }
    [[nodiscard]] const CaseCondition* begin() const noexcept { return Conditions.data(); }
    [[nodiscard]] const CaseCondition* end() const noexcept { return Conditions.data() + Count; }
    [[nodiscard]] std::span<const CaseCondition> All() const noexcept { return {begin(), end()}; }

  private:
    HostBuffer<CaseCondition> Conditions;
    std::size_t Count = 0;
};

}  // namespace drilldown
