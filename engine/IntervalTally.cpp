#include "engine/IntervalTally.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>

#include "engine/FewBounds.h"
#include "engine/MomentKernel.h"

using namespace drilldown;

namespace {

/// So many intervals are counted in tables by turns, so that neighbours in one interval don't wait for each other.
constexpr std::size_t FewIntervals = 63;
constexpr std::size_t Turns = 4;

/// Sums of whole numbers are exact below this.
constexpr double LargestWholeCount = 4503599627370496.0;

std::size_t RoomFor(const Drill* record) {
    return record == nullptr ? 1 : record->CategorySet.size() + 1;
}

/// Place of the first of `count` ascending bounds that isn't below the value; `count` when all are. A binary search
/// without branches on the data, since values in no order make such branches slow.
template <typename Below>
std::size_t FirstNotBelow(const double* bounds, std::size_t count, double value, Below below) {
    std::size_t first = 0;
    while (count > 1) {
        const std::size_t half = count / 2;
        first += below(bounds[first + half - 1], value) ? half : 0;
        count -= half;
    }
    return first + (below(bounds[first], value) ? 1 : 0);
}

/// Counts cases of weight 1.0 that are known by number only.
void AddOnes(double& count, std::uint32_t ones) {
    if (std::fabs(count) < LargestWholeCount && count == std::trunc(count)) {
        count += ones;
        return;
    }
    for (; ones > 0; --ones) {
        count += 1.0;
    }
}

/// Counts of few intervals, and of none behind the last.
class FewCounts {
  public:
    void Add(const IntervalPlaces& places, std::size_t rows) {
        std::size_t i = 0;
        for (; i + Turns <= rows; i += Turns) {
            for (std::size_t turn = 0; turn < Turns; ++turn) {
                ++Tables[turn][places[i + turn]];
            }
        }
        for (; i < rows; ++i) {
            ++Tables[0][places[i]];
        }
    }
    [[nodiscard]] std::uint32_t Of(std::size_t place) const {
        return Tables[0][place] + Tables[1][place] + Tables[2][place] + Tables[3][place];
    }

  private:
    std::array<std::array<std::uint32_t, FewIntervals + 1>, Turns> Tables{};
};

}  // namespace

IntervalTally::IntervalTally(CAnalysisSupport& host, const Drill* record)
    : Bounds(host, RoomFor(record)),
      Counts(host, RoomFor(record)),
      Intervals(CollectBounds(record)),
      Grid(host, {Bounds.data(), Intervals}),
      ClosedBelow(record != nullptr && FactsOf(record->Method).Rule == KeepRule::ClosedOpen) {}

std::size_t IntervalTally::CollectBounds(const Drill* record) const {
    std::size_t intervals = 0;
    if (record != nullptr && Bounds && Counts) {
        for (const Categories& interval : record->CategorySet) {
            if (!std::isnan(interval.Upper)) {
                Bounds[intervals] = interval.Upper;
                Counts[intervals++] = &Editable(interval).Count;
            }
        }
    }
    if (Bounds) {
        Bounds[intervals] = std::numeric_limits<double>::quiet_NaN();
    }
    return intervals;
}

std::size_t IntervalTally::PlaceOf(double value) const noexcept {
    if (Intervals == 0 || std::isnan(value)) {
        return Intervals;
    }
    return ClosedBelow ? FirstNotBelow(Bounds.data(), Intervals, value, std::less_equal<double>())
                       : FirstNotBelow(Bounds.data(), Intervals, value, std::less<double>());
}

bool IntervalTally::HasFewBounds() const {
    return Intervals <= FewBounds::MostBounds && HasRegisters(MomentRegisters::Widest);
}

void IntervalTally::Add(const TallyColumn& column, const WeightedRows& rows) const {
    if (Intervals == 0) {
        return;
    }
    if (HasFewBounds()) {
        AddByBounds(column, rows);
        return;
    }
    const bool few = Intervals <= FewIntervals;
    FewCounts counts;
    IntervalPlaces places;
    for (std::size_t done = 0; done < rows.Count; done += GatheredValuesLimit) {
        const std::size_t count = std::min(GatheredValuesLimit, rows.Count - done);
        FindPlaces(column, rows.Part(done, count), places);
        if (few) {
            counts.Add(places, count);
        } else {
            CountPlaces(places, count);
        }
    }
    for (std::size_t place = 0; few && place < Intervals; ++place) {
        AddOnes(*Counts[place], counts.Of(place));
    }
}

void IntervalTally::AddByBounds(const TallyColumn& column, const WeightedRows& rows) const {
    FewBounds counts(Bounds.data(), Intervals, column.Missing, ClosedBelow);
    std::array<double, GatheredValuesRoom> room{};
    for (std::size_t done = 0; done < rows.Count; done += GatheredValuesLimit) {
        const WeightedRows part = rows.Part(done, std::min(GatheredValuesLimit, rows.Count - done));
        counts.Count(GatherValues(column.Entries, WithoutList(part), room.data()), part.Count);
    }
    for (std::size_t place = 0; place < Intervals; ++place) {
        AddOnes(*Counts[place], static_cast<std::uint32_t>(counts.UpTo(place)));
    }
}

void IntervalTally::CountPlaces(const IntervalPlaces& places, std::size_t count) const {
    for (std::size_t i = 0; i < count; ++i) {
        if (places[i] < Intervals) {
            *Counts[places[i]] += 1.0;
        }
    }
}

void IntervalTally::FindPlaces(const TallyColumn& column, const WeightedRows& rows, IntervalPlaces& places) const {
    std::array<double, GatheredValuesRoom> room{};
    const std::span values(GatherValues(column.Entries, WithoutList(rows), room.data()), rows.Count);
    if (Intervals == 0) {
        places.fill(0);
    } else if (HasFewBounds()) {
        FewBounds(Bounds.data(), Intervals, column.Missing, ClosedBelow)
            .FindPlaces(values.data(), values.size(), places.data());
    } else if (ClosedBelow) {
        // A value on an upper bound belongs to the interval that it ends unless the method closes intervals below.
        FindPlacesBelow(values, column.Missing, places, std::less_equal<double>());
    } else {
        FindPlacesBelow(values, column.Missing, places, std::less<double>());
    }
}

template <typename Below>
void IntervalTally::FindPlacesBelow(std::span<const double> values, const NearlyEqualRange& missing,
                                    IntervalPlaces& places, Below below) const {
    if (Grid.Works()) {
        Grid.FindPlaces(values, missing, places, below);
        return;
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        const bool counts = !missing.Contains(values[i]) && !std::isnan(values[i]);
        const std::size_t place = counts ? FirstNotBelow(Bounds.data(), Intervals, values[i], below) : Intervals;
        places[i] = static_cast<std::uint32_t>(place);
    }
}
