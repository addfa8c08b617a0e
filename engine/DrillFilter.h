#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "platform/OrderedBits.h"

namespace drilldown {

/// One drill step as a condition on one variable.
struct FilterCondition {
    std::int16_t VarNo;
    KeepRule Rule;
    double Lower;
    double Upper;

    /// Whether a value passes. A NaN passes an interval, which excludes only what lies outside its bounds.
    /// Intended: a missing value is tested like any other, unlike in the counting, which passes it over; a missing code
    /// inside the chosen interval stays in the subset.
    [[nodiscard]] bool Keeps(double x) const noexcept {
        switch (Rule) {
            case KeepRule::MissingOnly:
                return Lower <= x && x <= Upper;
            case KeepRule::Equal:
                // Intended: exact, unlike the counting of values, which takes nearly equal ones together; a drill
                // keeps the value that was met first.
                return x == Upper;
            case KeepRule::OpenClosed:
                // Intended: Lower is tested, unlike in the counting, where the first interval takes what lies below; a
                // step keeps what the name of its interval says.
                return !(x > Upper || Lower >= x);
            case KeepRule::ClosedOpen:
                return !(x >= Upper || Lower > x);
            case KeepRule::Nothing:
                return false;
            case KeepRule::Everything:
                break;
        }
        return true;
    }
};

/// The steps of an analysis as conditions, made once for a pass.
class CompiledFilter {
  public:
    explicit CompiledFilter(CDrillDown& analysis);

    /// False when there was no memory.
    explicit operator bool() const noexcept { return static_cast<bool>(Conditions); }
    [[nodiscard]] const FilterCondition* begin() const noexcept { return Conditions.data(); }
    [[nodiscard]] const FilterCondition* end() const noexcept { return Conditions.data() + Count; }

  private:
    HostBuffer<FilterCondition> Conditions;
    std::size_t Count = 0;
};

}  // namespace drilldown
