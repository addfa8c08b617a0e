#include "engine/CategoryTally.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <span>
#include <vector>

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

/// Whether two ascending values lie so near that a third one may count with both.
bool AreNeighbours(double left, double right) {
    return static_cast<std::uint64_t>(OrderedBits(right)) - static_cast<std::uint64_t>(OrderedBits(left)) <=
           2 * BitTolerance;
}

/// Whether a value known to count in the category behind `inserted` may be nearly equal to the new one too, which comes
/// first.
bool CrowdsTheNext(const std::set<Categories>& set, std::set<Categories>::const_iterator inserted) {
    const auto next = std::next(inserted);
    return next != set.end() && AreNeighbours(inserted->Upper, next->Upper);
}

/// Sums of whole numbers are exact below twice this, so that a sum may be added to a count.
constexpr double LargestExactCount = 4503599627370496.0;

bool CountsAreWhole(const std::set<Categories>& set) {
    return std::ranges::all_of(set, [](const Categories& category) {
        return std::fabs(category.Count) < LargestExactCount && category.Count == std::trunc(category.Count);
    });
}

}  // namespace

CategoryTally::CategoryTally(CAnalysisSupport& host, const CategoryFeed& feed, const TallyRoad& road, bool shared)
    : Feed(feed),
      Road(road),
      Shared(shared),
      IsCoded(HasCodes()),
      IsApart(IsCoded && CountsDistinct() && ValuesAreApart()),
      IsByCode(IsCoded && (IsApart || !CountsDistinct()) && CountsAreWhole(Feed.Target->CategorySet)),
      Intervals(host, !Shared && PresentWay() == Way::Intervals ? Feed.Target : nullptr),
      Known(host, KnownRoom()),
      KnownCodes(host, CodeRoom()),
      Uncounted(host, 1),
      ByCode(host, IsByCode ? Codes() : 0, Road.Threads, Road.Weighted),
      PlacesOfCodes(host, IsCoded && !CountsDistinct() ? Codes() + 1 : 1),
      Sums(host, SumRoom()) {
    if (*this && !IsByCode && IsCoded) {
        ForgetKnown();
    }
    if (*this && !IsCoded && Road.Weighted && Intervals.Size() > 0) {
        StartSums();
    }
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

bool CategoryTally::CountsDistinct() const {
    const Way way = PresentWay();
    return way == Way::Distinct || way == Way::WholeDistinct;
}

bool CategoryTally::HasCodes() const {
    return !Shared && PresentWay() != Way::Nothing && Road.Whole.Entries != nullptr && Road.Whole.Values != nullptr;
}

std::size_t CategoryTally::KnownRoom() const {
    return !Shared && CountsDistinct() && !IsCoded ? KnownValues : 1;
}

std::size_t CategoryTally::CodeRoom() const {
    return IsCoded && !IsByCode ? Codes() + 1 : 1;
}

/// Where values go that are counted in the order of the cases: distinct values by their code.
std::size_t CategoryTally::Places() const {
    return CountsDistinct() ? Codes() : Intervals.Size();
}

/// Codes counted in tables may have to be counted in order later, where cases have weights.
std::size_t CategoryTally::SumRoom() const {
    return Road.Weighted && (IsByCode || Intervals.Size() > 0) ? Places() + 1 : 1;
}

/// Whether a value can be counted at all.
bool CategoryTally::IsCounted(double value) const {
    return !Road.Missing.Contains(value) && (PresentWay() != Way::WholeDistinct || IsWhole(value));
}

/// Whether no valid value is passed over.
bool CategoryTally::CountsAllValues() const {
    const std::span<const double> values(Road.Whole.Values, Codes());
    return std::ranges::all_of(values, [&](double value) { return IsCounted(value) || Road.Missing.Contains(value); });
}

bool CategoryTally::WouldRecountAlike(CategoryCounting counting) const {
    if (!CountsDistinct()) {
        return PresentWay() == Way::Intervals && !Shared;
    }
    // Counted as intervals, what is no whole number would count too.
    return IsApart && (counting != CategoryCounting::IntoIntervals || CountsAllValues());
}

/// Whether the values of all codes and those of the categories are so few, and so far from each other, that none counts
/// in the category of another.
bool CategoryTally::ValuesAreApart() const {
    const std::set<Categories>& set = Feed.Target->CategorySet;
    std::vector<double> values;
    for (std::size_t code = 0; code < Codes() && set.size() + values.size() < DistinctValueLimit; ++code) {
        const double value = Road.Whole.Values[code];
        const auto category = Feed.Target->FindDistinctValue(value);
        if (IsCounted(value) && (category == set.end() || category->Upper != value)) {
            values.push_back(value);
        }
    }
    if (set.size() + values.size() >= DistinctValueLimit) {
        return false;
    }
    std::ranges::transform(set, std::back_inserter(values), &Categories::Upper);
    if (std::ranges::any_of(values, HasFullExponent)) {
        return false;
    }
    std::ranges::sort(values);
    return std::ranges::adjacent_find(values, AreNeighbours) == values.end();
}

void CategoryTally::ForgetKnown() {
    if (!IsCoded) {
        std::fill_n(Known.data(), KnownValues, KnownValue{});
        return;
    }
    for (std::size_t code = 0; code < Codes(); ++code) {
        const double value = Road.Whole.Values[code];
        const std::size_t interval = Intervals.PlaceOf(value);
        if (!IsCounted(value) || (!CountsDistinct() && interval == Intervals.Size())) {
            KnownCodes[code] = Uncounted.data();
        } else {
            KnownCodes[code] = CountsDistinct() ? nullptr : &Intervals.CountAt(interval);
        }
    }
}

void CategoryTally::KeepOrder() {
    if (IsByCode) {
        FinishCodes();
        IsByCode = false;
        StartSums();
    }
}

/// Goes on from what the record has.
void CategoryTally::StartSums() {
    ByPlace = true;
    for (std::size_t code = 0; IsCoded && !CountsDistinct() && code < Codes(); ++code) {
        const double value = Road.Whole.Values[code];
        PlacesOfCodes[code] = static_cast<std::uint32_t>(IsCounted(value) ? Intervals.PlaceOf(value) : Places());
    }
    for (std::size_t place = 0; place < Places(); ++place) {
        if (!CountsDistinct()) {
            Sums[place] = Intervals.CountAt(place);
            continue;
        }
        const auto category = Feed.Target->FindDistinctValue(Road.Whole.Values[place]);
        Sums[place] = category == Feed.Target->CategorySet.end() ? 0.0 : category->Count;
    }
}

void CategoryTally::FinishSums() {
    for (std::size_t place = 0; place < Places(); ++place) {
        if (!CountsDistinct()) {
            Intervals.CountAt(place) = Sums[place];
        } else if (Sums[place] > 0.0 && IsCounted(Road.Whole.Values[place])) {
            FinishDistinct(Road.Whole.Values[place], Sums[place]);
        }
    }
}

void CategoryTally::FinishDistinct(double value, double sum) {
    const auto category = Feed.Target->FindDistinctValue(value);
    if (category != Feed.Target->CategorySet.end()) {
        Editable(*category).Count = sum;
    } else {
        Feed.Target->AddDistinctValue(value, Feed.Kind, sum, "");
    }
}

OrderedSums CategoryTally::SumsOf(const TallyColumn& column, const WeightedRows& rows, IntervalPlaces& places) const {
    if (!IsCoded) {
        Intervals.FindPlaces(column, rows, places);
    } else if (column.Entries.Form == ColumnForm::Codes8) {
        FindPlaces(column.Entries.As<std::uint8_t>(), rows, places);
    } else {
        FindPlaces(column.Entries.As<std::uint16_t>(), rows, places);
    }
    return {Sums.data(), places.data()};
}

template <typename Code>
void CategoryTally::FindPlaces(const Code* codes, const WeightedRows& rows, IntervalPlaces& places) const {
    for (std::size_t i = 0; i < rows.Count; ++i) {
        places[i] = codes[rows.RowAt(i)];
    }
    if (CountsDistinct()) {
        return;
    }
    for (std::size_t i = 0; i < rows.Count; ++i) {
        places[i] = PlacesOfCodes[places[i]];
    }
}

void CategoryTally::Add(const TallyColumn& column, const WeightedRows& rows, std::size_t thread) {
    if (Shared) {
        AddShared(column, rows);
    } else if (IsByCode) {
        ByCode.Add(column.Entries, rows, thread);
    } else if (PresentWay() == Way::Nothing) {
        return;
    } else if (IsCoded && column.Entries.Form == ColumnForm::Codes8) {
        AddCodes(column.Entries.As<std::uint8_t>(), rows);
    } else if (IsCoded) {
        AddCodes(column.Entries.As<std::uint16_t>(), rows);
    } else if (CountsDistinct()) {
        AddDistinct(column, rows);
    } else {
        // Without effect on a record that has turned to neat intervals on the way: its set is empty.
        Intervals.Add(column, rows);
    }
}

void CategoryTally::Finish() {
    if (IsByCode) {
        FinishCodes();
    } else if (ByPlace) {
        FinishSums();
    }
}

void CategoryTally::FinishCodes() {
    for (std::size_t code = 0; code < Codes(); ++code) {
        const double value = Road.Whole.Values[code];
        const double count = ByCode.Of(code);
        if (count > 0.0 && IsCounted(value)) {
            FinishCode(value, count);
        }
    }
}

void CategoryTally::FinishCode(double value, double count) {
    if (CountsDistinct()) {
        Feed.Target->AddDistinctValue(value, Feed.Kind, count, "");
    } else if (const std::size_t interval = Intervals.PlaceOf(value); interval < Intervals.Size()) {
        Intervals.CountAt(interval) += count;
    }
}

/// Counts codes in the order of the cases, up to the end or until the record takes their values no longer.
template <typename Code>
void CategoryTally::AddCodes(const Code* codes, const WeightedRows& rows) {
    const Way way = PresentWay();
    if (way == Way::Intervals && Intervals.Size() == 0) {
        return;
    }
    for (std::size_t i = 0; i < rows.Count; ++i) {
        const Code code = codes[rows.RowAt(i)];
        if (double* count = KnownCodes[code]; count != nullptr) {
            *count += rows.WeightAt(i);
            continue;
        }
        KnownCodes[code] = CountNewDistinct(Road.Whole.Values[code], rows.WeightAt(i));
        if (PresentWay() != way) {
            return;
        }
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
                known = {bits, CountNewDistinct(value, rows.WeightAt(i))};
                if (PresentWay() != way) {
                    return;
                }
            }
        }
    });
}

/// Counts a value that isn't known. Gives the count that it may be known by from now on; null: none.
double* CategoryTally::CountNewDistinct(double value, double weight) {
    const int result = Feed.Target->AddDistinctValue(value, Feed.Kind, weight, "");
    const std::set<Categories>& set = Feed.Target->CategorySet;
    const auto category = Feed.Target->FindDistinctValue(value);
    const bool found = category != set.end();
    // The next value that meets a full set empties it, also a known one, so none may be known.
    const bool full = set.size() >= DistinctValueLimit;
    if (result == SetEmptied || full || (result == ValueInserted && found && CrowdsTheNext(set, category))) {
        ForgetKnown();
    }
    return found && !full ? &Editable(*category).Count : nullptr;
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
