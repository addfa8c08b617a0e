#include "engine/CategoryTally.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace {

constexpr int KnownValueBits = 9;
constexpr std::size_t KnownValues = std::size_t{1} << KnownValueBits;

/// Multiplicative hashing (Knuth, The Art of Computer Programming 3, 6.4) with 2^64 divided by the golden ratio.
std::size_t PlaceOf(std::uint64_t bits) {
    return static_cast<std::size_t>((bits * 0x9E3779B97F4A7C15ULL) >> (64 - KnownValueBits));
}

bool IsWhole(double value) {
    return NearlyEqual(value, std::floor(value));
}

/// Whether a value known to count in the category behind `inserted` may be nearly equal to the new one too, which comes
/// first.
bool CrowdsTheNext(const std::set<Categories>& set, std::set<Categories>::const_iterator inserted) {
    const auto next = std::next(inserted);
    return next != set.end() && static_cast<std::uint64_t>(OrderedBits(next->Upper)) -
                                        static_cast<std::uint64_t>(OrderedBits(inserted->Upper)) <=
                                    2 * BitTolerance;
}

}  // namespace

CategoryTally::CategoryTally(CAnalysisSupport& host, const CategoryFeed& feed, bool shared)
    : Feed(feed),
      Shared(shared),
      Known(host, feed.Counting == CategoryCounting::None ? 1 : KnownValues),
      Bounds(host, IntervalRoom()),
      Counts(host, IntervalRoom()) {
    if (*this && PresentWay() == Way::Intervals) {
        CollectBounds();
    }
}

std::size_t CategoryTally::IntervalRoom() const {
    return PresentWay() == Way::Intervals ? Feed.Target->CategorySet.size() + 1 : 1;
}

void CategoryTally::CollectBounds() {
    for (const Categories& interval : Feed.Target->CategorySet) {
        if (!std::isnan(interval.Upper)) {
            Bounds[Intervals] = interval.Upper;
            Counts[Intervals] = &Editable(interval).Count;
            ++Intervals;
        }
    }
}

void CategoryTally::ForgetKnown() {
    std::fill_n(Known.data(), KnownValues, KnownValue{});
}

CategoryTally::Way CategoryTally::PresentWay() const {
    if (Feed.Target == nullptr || Feed.Counting == CategoryCounting::None) {
        return Way::Nothing;
    }
    if (Feed.Counting == CategoryCounting::EveryValue) {
        return Way::Distinct;
    }
    if (Feed.Counting == CategoryCounting::IntoIntervals) {
        return Way::Intervals;
    }
    if (Feed.Feeder->Method == DistinctValues) {
        return Way::Distinct;
    }
    if (Feed.Feeder->Method == IntegerCategories) {
        return Way::WholeDistinct;
    }
    return Feed.Counting == CategoryCounting::ByMethod ? Way::Intervals : Way::Nothing;
}

void CategoryTally::Add(const TallyColumn& column, const WeightedRows& rows) {
    if (Shared) {
        AddShared(column, rows);
        return;
    }
    std::size_t next = 0;
    // Distinct values can end on the way, when the record turns to neat intervals.
    if (const Way way = PresentWay(); way == Way::Distinct || way == Way::WholeDistinct) {
        AddDistinct(column, rows, next);
    }
    if (PresentWay() == Way::Intervals) {
        AddIntervals(column, rows, next);
    }
}

void CategoryTally::AddDistinct(const TallyColumn& column, const WeightedRows& rows, std::size_t& next) {
    const Way way = PresentWay();
    for (; next < rows.Count; ++next) {
        const double value = column.Values[rows.Rows[next]];
        if (column.Missing.Contains(value)) {
            continue;
        }
        const auto bits = std::bit_cast<std::uint64_t>(value);
        KnownValue& known = Known[PlaceOf(bits)];
        if (known.Count != nullptr && known.Bits == bits) {
            *known.Count += rows.Weights[next];
        } else if (way == Way::Distinct || IsWhole(value)) {
            AddNewDistinct(value, rows.Weights[next], known);
            if (PresentWay() != way) {
                ++next;
                return;
            }
        }
    }
}

void CategoryTally::AddNewDistinct(double value, double weight, KnownValue& known) {
    const int result = Feed.Target->AddDistinctValue(value, Feed.Kind, weight, "");
    const std::set<Categories>& set = Feed.Target->CategorySet;
    const auto category = Feed.Target->FindDistinctValue(value);
    const bool found = category != set.end();
    // The next value that meets a full set empties it, also a known one, so none may be known.
    const bool full = set.size() >= DistinctValueLimit;
    if (result == SetEmptied || full || (result == ValueInserted && found && CrowdsTheNext(set, category))) {
        ForgetKnown();
    }
    if (found && !full) {
        known = {std::bit_cast<std::uint64_t>(value), &Editable(*category).Count};
    }
}

void CategoryTally::AddIntervals(const TallyColumn& column, const WeightedRows& rows, std::size_t next) {
    const bool closedBelow = Feed.Target->Method == StepIntervals;
    const double* const first = Bounds.data();
    const double* const last = first + Intervals;
    for (; next < rows.Count; ++next) {
        const double value = column.Values[rows.Rows[next]];
        if (column.Missing.Contains(value) || std::isnan(value)) {
            continue;
        }
        const double* bound = closedBelow ? std::upper_bound(first, last, value) : std::lower_bound(first, last, value);
        if (bound != last) {
            *Counts[static_cast<std::size_t>(bound - first)] += rows.Weights[next];
        }
    }
}

void CategoryTally::AddShared(const TallyColumn& column, const WeightedRows& rows) {
    for (std::size_t i = 0; i < rows.Count; ++i) {
        const double value = column.Values[rows.Rows[i]];
        const Way way = PresentWay();
        if (way == Way::Nothing || column.Missing.Contains(value)) {
            continue;
        }
        if (way == Way::Intervals) {
            // By its own method a record counts in its own intervals, whichever record comes first.
            Drill* record = Feed.Counting == CategoryCounting::ByMethod ? Feed.Feeder : Feed.Target;
            record->AddToInterval(value, rows.Weights[i]);
        } else if (way == Way::Distinct || IsWhole(value)) {
            Feed.Target->AddDistinctValue(value, Feed.Kind, rows.Weights[i], "");
        }
    }
}
