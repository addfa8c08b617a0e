#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/GatheredValues.h"
#include "engine/HostBuffer.h"
#include "platform/OrderedBits.h"

namespace drilldown {

/// Places of some values among bounds, in the order of their rows.
using IntervalPlaces = std::array<std::uint32_t, GatheredValuesLimit>;

/// Cells of one width, which begin with that of the first bound and end with that of the last. Values beyond are in
/// these.
struct IntervalCells {
    [[nodiscard]] double CellOf(double value) const noexcept {
        const double cell = (value - Low) * Scale;
        const double above = cell > 0.0 ? cell : 0.0;  // a NaN too
        return above < Last ? above : Last;
    }

    double Low = 0.0;
    double Scale = 0.0;  ///< cells per unit
    double Last = 0.0;
};

/// Finds the first of some ascending bounds that isn't below a value, by arithmetic in place of a search: cells of one
/// width lie over the bounds, at most one bound in each. Whatever is rounded, the cell of a greater value is no lower,
/// so that bounds in cells below are below the value, those in cells above are above it, and the one in its cell, if
/// any, is compared. (Bucketing, as in Knuth, The Art of Computer Programming 3, 5.2.5, with cells in place of digits.)
class IntervalGrid {
  public:
    /// The bounds are ascending, outlive the grid and have a NaN behind the last one.
    IntervalGrid(CAnalysisSupport& host, std::span<const double> bounds);

    /// False when there was no memory.
    explicit operator bool() const noexcept { return static_cast<bool>(Firsts); }
    /// Whether the bounds lie so that a grid finds them; places can't be asked for if not.
    [[nodiscard]] bool Works() const noexcept { return MissingCell > 0; }
    /// Places of at most GatheredValuesLimit values by `below(bound, value)`: the number of bounds when all are below,
    /// and for missing values and NaN.
    template <typename Below>
    void FindPlaces(std::span<const double> values, const NearlyEqualRange& missing, IntervalPlaces& places,
                    Below below) const {
        FindCells(values, missing, places);
        for (std::size_t i = 0; i < values.size(); ++i) {
            const std::uint32_t first = Firsts[places[i]];
            places[i] = first + (below(Bounds[first], values[i]) ? 1 : 0);
        }
    }

  private:
    void FindCells(std::span<const double> values, const NearlyEqualRange& missing, IntervalPlaces& cells) const;
    [[nodiscard]] std::int32_t LayCells();

    const double* Bounds;
    std::size_t Count;
    IntervalCells Cells;
    HostBuffer<std::uint32_t> Firsts;  // of each cell, the place of the first bound in it or above
    std::int32_t MissingCell;  // whose first is behind the last bound; 0: there are no cells
};

}  // namespace drilldown
