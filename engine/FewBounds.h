#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <numeric>

#include "platform/OrderedBits.h"

namespace drilldown {

/// Finds and counts values among few bounds by comparing every value with every bound: nothing is looked up, and no
/// count waits for another. Only where the processor HasRegisters(MomentRegisters::Widest).
class FewBounds {
  public:
    static constexpr std::size_t MostBounds = 16;

    /// `bounds` are ascending, at most MostBounds; `closedBelow`: a value on a bound counts as above it.
    FewBounds(const double* bounds, std::size_t count, const NearlyEqualRange& missing, bool closedBelow)
        : BoundCount(count), Missing(missing), ClosedBelow(closedBelow) {
        for (std::size_t i = 0; i < MostBounds; ++i) {
            Bounds[i] = i < count ? bounds[i] : std::numeric_limits<double>::quiet_NaN();  // nothing is above
        }
    }

    /// Counts values that aren't missing; a NaN is nowhere.
    void Count(const double* values, std::size_t count);
    /// Finds how many bounds lie below each of some values; of a missing one and of a NaN as if all did.
    void FindPlaces(const double* values, std::size_t count, std::uint32_t* places) const;
    /// How many are in the interval that ends with a bound; of the first one, how many lie below it.
    [[nodiscard]] std::uint64_t UpTo(std::size_t bound) const { return Sum(bound) - Sum(bound + 1); }

  private:
    static constexpr std::size_t Lanes = 8;

    [[nodiscard]] std::uint64_t Sum(std::size_t row) const {
        return std::accumulate(std::begin(Counts[row]), std::end(Counts[row]), std::uint64_t{0});
    }

    double Bounds[MostBounds];
    std::size_t BoundCount;
    NearlyEqualRange Missing;
    bool ClosedBelow;
    alignas(64) std::uint64_t Counts[MostBounds + 1][Lanes] = {};  // of all, then of those above each bound
};

}  // namespace drilldown
