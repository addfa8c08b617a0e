#include "engine/IntervalGrid.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace drilldown;

namespace {

constexpr std::size_t MostBounds = 16'384;
constexpr std::size_t MostCells = 4 * MostBounds - 1;
/// Bounds at odd distances may have so many cells, also if they are few.
constexpr std::size_t CellsOfFewBounds = 4096;

double SmallestDistance(std::span<const double> bounds) {
    double smallest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 1; i < bounds.size(); ++i) {
        smallest = std::min(smallest, bounds[i] - bounds[i - 1]);
    }
    return smallest;
}

/// Number of cells narrower than any interval; 0 when there are none or they would be too many.
std::size_t CellsFor(std::span<const double> bounds) {
    if (bounds.empty() || bounds.size() > MostBounds || !std::isfinite(bounds.front()) ||
        !std::isfinite(bounds.back())) {
        return 0;
    }
    const double needed = std::ceil((bounds.back() - bounds.front()) / SmallestDistance(bounds)) + 2.0;
    const auto most = static_cast<double>(std::clamp(4 * bounds.size(), CellsOfFewBounds, MostCells));
    return needed <= most ? static_cast<std::size_t>(needed) : 0;  // none for a NaN
}

}  // namespace

IntervalGrid::IntervalGrid(CAnalysisSupport& host, std::span<const double> bounds)
    : Bounds(bounds.data()),
      Count(bounds.size()),
      Firsts(host, CellsFor(bounds) + 2),
      MissingCell(*this ? LayCells() : 0) {}

/// Gives the cell behind the last one; 0 where two bounds share a cell after all.
std::int32_t IntervalGrid::LayCells() {
    const std::size_t cells = CellsFor({Bounds, Count});
    if (cells == 0) {
        return 0;
    }
    const double range = Bounds[Count - 1] - Bounds[0];
    const double scale = range > 0.0 ? static_cast<double>(cells - 1) / range : 0.0;
    Cells = {Bounds[0], scale, std::trunc(range * scale)};
    if (!std::isfinite(scale) || !(Cells.Last <= static_cast<double>(cells))) {
        return 0;
    }
    std::size_t next = 0;
    for (std::size_t place = 0; place < Count; ++place) {
        const auto cell = static_cast<std::size_t>(Cells.CellOf(Bounds[place]));
        if (cell < next) {
            return 0;
        }
        while (next <= cell) {
            Firsts[next++] = static_cast<std::uint32_t>(place);
        }
    }
    Firsts[next] = static_cast<std::uint32_t>(Count);
    return static_cast<std::int32_t>(next);
}

/// Looks nothing up and branches nowhere, so that several values go at once.
void IntervalGrid::FindCells(std::span<const double> values, const NearlyEqualRange& missing,
                             IntervalPlaces& cells) const {
    const IntervalCells grid = Cells;
    const NearlyEqualRange range = missing;
    const auto missingCell = static_cast<double>(MissingCell);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): all is written before it is read, for each block
    std::array<std::int32_t, GatheredValuesLimit> found;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double value = values[i];
        const double cell = grid.CellOf(value);
        const bool passedOver = ((range.Lowest <= value) & (value <= range.Highest)) | !(value == value);
        found[i] = static_cast<std::int32_t>(passedOver ? missingCell : cell);
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        cells[i] = static_cast<std::uint32_t>(found[i]);
    }
}
