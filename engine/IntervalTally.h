#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/Drill.h"
#include "engine/HostBuffer.h"
#include "engine/IntervalGrid.h"
#include "engine/TallyRows.h"

namespace drilldown {

/// Counts values into the intervals of a record, with the outcome of Drill::AddToInterval value by value. The intervals
/// stay as they are while it lives.
class IntervalTally {
  public:
    /// `record` null: no intervals.
    IntervalTally(CAnalysisSupport& host, const Drill* record);

    /// False when there was no memory.
    explicit operator bool() const noexcept { return Bounds && Counts && Grid; }
    [[nodiscard]] std::size_t Size() const noexcept { return Intervals; }
    /// Place of the interval that a value counts in; Size() when there is none. A NaN is in none.
    [[nodiscard]] std::size_t PlaceOf(double value) const noexcept;
    /// The count of the interval at a place, in the record.
    [[nodiscard]] double& CountAt(std::size_t place) const noexcept { return *Counts[place]; }
    /// Finds the places of at most GatheredValuesLimit values; of missing ones Size().
    void FindPlaces(const TallyColumn& column, const WeightedRows& rows, IntervalPlaces& places) const;
    /// Counts the values of some rows, each as one case; missing ones are passed over.
    void Add(const TallyColumn& column, const WeightedRows& rows) const;

  private:
    [[nodiscard]] std::size_t CollectBounds(const Drill* record) const;
    void AddByBounds(const TallyColumn& column, const WeightedRows& rows) const;
    [[nodiscard]] bool HasFewBounds() const;
    void CountPlaces(const IntervalPlaces& places, std::size_t count) const;
    template <typename Below>
    void FindPlacesBelow(std::span<const double> values, const NearlyEqualRange& missing, IntervalPlaces& places,
                         Below below) const;

    HostBuffer<double> Bounds;  // Upper of the intervals, ascending, without NaN
    HostBuffer<double*> Counts;
    std::size_t Intervals;
    IntervalGrid Grid;
    bool ClosedBelow;  // a value on a bound belongs to the interval that it begins
};

}  // namespace drilldown
