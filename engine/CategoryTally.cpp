#include "engine/CategoryTally.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>

using namespace drilldown;

namespace {

constexpr int KnownValueBits = 11;
constexpr std::size_t KnownValues = std::size_t{1} << KnownValueBits;

/// Place of a value among the known ones. Codes of categories, small whole numbers as a rule, have a place of their
/// own; others are hashed (multiplicative hashing; Knuth, The Art of Computer Programming 3, 6.4).
std::size_t PlaceOf(double value, std::uint64_t bits) {
    if (value >= 0.0 && value < static_cast<double>(KnownValues)) {
        const auto whole = static_cast<std::size_t>(static_cast<std::int64_t>(value));
        if (static_cast<double>(static_cast<std::int64_t>(whole)) == value) {
            return whole;
        }
    }
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

CategoryTally::CategoryTally(CAnalysisSupport& host, const CategoryFeed& feed, bool shared)
    : Feed(feed), Shared(shared), Known(host, KnownRoom()), Bounds(host, IntervalRoom()), Counts(host, IntervalRoom()) {
    if (*this && PresentWay() == Way::Intervals) {
        CollectBounds();
    }
}

std::size_t CategoryTally::KnownRoom() const {
    const Way way = PresentWay();
    return !Shared && (way == Way::Distinct || way == Way::WholeDistinct) ? KnownValues : 1;
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
    switch (FactsOf(Feed.Feeder->Method).Values) {
        case ValuesTaken::Every:
            return Way::Distinct;
        case ValuesTaken::Whole:
            return Way::WholeDistinct;
        case ValuesTaken::None:
            break;
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
        next = AddDistinct(column, rows);
    }
    if (PresentWay() == Way::Intervals) {
        AddIntervals(column, rows, next);
    }
}

/// Counts distinct values up to the end or until the record takes them no longer. Gives the number of rows counted.
std::size_t CategoryTally::AddDistinct(const TallyColumn& column, const WeightedRows& rows) {
    const Way way = PresentWay();
    const TallyColumn local = column;
    for (std::size_t i = 0; i < rows.Count; ++i) {
        const double value = local.Values[rows.Rows[i]];
        if (local.Missing.Contains(value)) {
            continue;
        }
        const auto bits = std::bit_cast<std::uint64_t>(value);
        KnownValue& known = Known[PlaceOf(value, bits)];
        if (known.Count != nullptr && known.Bits == bits) {
            *known.Count += rows.Weights[i];
        } else if (way == Way::Distinct || IsWhole(value)) {
            AddNewDistinct(value, rows.Weights[i], known);
            if (PresentWay() != way) {
                return i + 1;
            }
        }
    }
    return rows.Count;
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
    if (Intervals == 0) {
        return;
    }
    // A value on an upper bound belongs to the interval that it ends unless the method closes intervals below.
    if (FactsOf(Feed.Target->Method).Rule == KeepRule::ClosedOpen) {
        AddIntervalsBelow(column, rows, next, std::less_equal<double>());
    } else {
        AddIntervalsBelow(column, rows, next, std::less<double>());
    }
}

/// Counts values in the first interval whose bound isn't below them. A NaN is in none.
template <typename Below>
void CategoryTally::AddIntervalsBelow(const TallyColumn& column, const WeightedRows& rows, std::size_t next,
                                      Below below) {
    const double* const bounds = Bounds.data();
    for (; next < rows.Count; ++next) {
        const double value = column.Values[rows.Rows[next]];
        if (column.Missing.Contains(value) || std::isnan(value)) {
            continue;
        }
        const std::size_t interval = FirstNotBelow(bounds, Intervals, value, below);
        if (interval < Intervals) {
            *Counts[interval] += rows.Weights[next];
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
