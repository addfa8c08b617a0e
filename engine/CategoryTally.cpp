#include "engine/CategoryTally.h"

#include <algorithm>
#include <bit>
#include <cmath>

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

}  // namespace

CategoryTally::CategoryTally(CAnalysisSupport& host, const CategoryFeed& feed, bool shared)
    : Feed(feed), Shared(shared), Known(host, KnownRoom()), Intervals(host, IntervalRecord()) {}

std::size_t CategoryTally::KnownRoom() const {
    const Way way = PresentWay();
    return !Shared && (way == Way::Distinct || way == Way::WholeDistinct) ? KnownValues : 1;
}

const Drill* CategoryTally::IntervalRecord() const {
    return !Shared && PresentWay() == Way::Intervals ? Feed.Target : nullptr;
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
    switch (PresentWay()) {
        case Way::Nothing:
            return;
        case Way::Intervals:
            // Without effect on a record that has turned to neat intervals on the way: its set is empty.
            Intervals.Add(column, rows);
            return;
        case Way::Distinct:
        case Way::WholeDistinct:
            AddDistinct(column, rows);
    }
}

/// Counts distinct values up to the end or until the record takes them no longer, when it turns to neat intervals and
/// has none.
void CategoryTally::AddDistinct(const TallyColumn& column, const WeightedRows& rows) {
    WithValues(column.Entries, [&](auto valueOf) {
        const Way way = PresentWay();
        const NearlyEqualRange missing = column.Missing;
        for (std::size_t i = 0; i < rows.Count; ++i) {
            const double value = valueOf(rows.RowAt(i));
            if (missing.Contains(value)) {
                continue;
            }
            const auto bits = std::bit_cast<std::uint64_t>(value);
            KnownValue& known = Known[PlaceOf(value, bits)];
            if (known.Count != nullptr && known.Bits == bits) {
                *known.Count += rows.WeightAt(i);
            } else if (way == Way::Distinct || IsWhole(value)) {
                AddNewDistinct(value, rows.WeightAt(i), known);
                if (PresentWay() != way) {
                    return;
                }
            }
        }
    });
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

void CategoryTally::AddShared(const TallyColumn& column, const WeightedRows& rows) {
    for (std::size_t i = 0; i < rows.Count; ++i) {
        const double value = column.Entries.At(rows.RowAt(i));
        const Way way = PresentWay();
        if (way == Way::Nothing || column.Missing.Contains(value)) {
            continue;
        }
        if (way == Way::Intervals) {
            // By its own method a record counts in its own intervals, whichever record comes first.
            Drill* record = Feed.Counting == CategoryCounting::ByMethod ? Feed.Feeder : Feed.Target;
            record->AddToInterval(value, rows.WeightAt(i));
        } else if (way == Way::Distinct || IsWhole(value)) {
            Feed.Target->AddDistinctValue(value, Feed.Kind, rows.WeightAt(i), "");
        }
    }
}
