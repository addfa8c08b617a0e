#include "engine/IntervalTally.h"

#include <cmath>
#include <functional>

using namespace drilldown;

namespace {

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

}  // namespace

IntervalTally::IntervalTally(CAnalysisSupport& host, const Drill* record)
    : Bounds(host, RoomFor(record)), Counts(host, RoomFor(record)) {
    if (!*this || record == nullptr) {
        return;
    }
    ClosedBelow = FactsOf(record->Method).Rule == KeepRule::ClosedOpen;
    for (const Categories& interval : record->CategorySet) {
        if (!std::isnan(interval.Upper)) {
            Bounds[Intervals] = interval.Upper;
            Counts[Intervals] = &Editable(interval).Count;
            ++Intervals;
        }
    }
}

std::size_t IntervalTally::PlaceOf(double value) const noexcept {
    if (Intervals == 0 || std::isnan(value)) {
        return Intervals;
    }
    return ClosedBelow ? FirstNotBelow(Bounds.data(), Intervals, value, std::less_equal<double>())
                       : FirstNotBelow(Bounds.data(), Intervals, value, std::less<double>());
}

void IntervalTally::Add(const TallyColumn& column, const WeightedRows& rows) const {
    if (Intervals == 0) {
        return;
    }
    WithValues(column.Entries, [&](auto valueOf) {
        for (std::size_t i = 0; i < rows.Count; ++i) {
            const double value = valueOf(rows.RowAt(i));
            const std::size_t interval = column.Missing.Contains(value) ? Intervals : PlaceOf(value);
            if (interval < Intervals) {
                *Counts[interval] += rows.WeightAt(i);
            }
        }
    });
}
