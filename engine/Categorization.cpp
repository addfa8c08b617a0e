// How a record cuts the range of its variable into categories, one builder per method.

#include <algorithm>
#include <optional>
#include <string>

#include "engine/Drill.h"
#include "engine/NumberTexts.h"

using namespace drilldown;

namespace {

/// Building ends behind this many intervals; a step size far too small for the range would fill the memory.
constexpr int IntervalLimit = 1'000'000;
constexpr std::int32_t IntervalKind = 1;

using BoundText = std::string (*)(double);

struct Interval {
    double Lower;
    double Upper;
};

void AddInterval(std::set<Categories>& set, const Interval& interval, std::string name, double count = 0.0) {
    set.insert(set.end(), Categories{IntervalKind, count, interval.Upper, std::move(name), interval.Lower});
}

/// "a<x<=b" or "a<=x<b".
std::string IntervalName(const Interval& interval, const char* relation, BoundText text) {
    return text(interval.Lower) + relation + text(interval.Upper);
}

bool HasNoRange(const Drill& record) {
    return ClearlyBelow(record.Max, record.Min);
}

bool HasSingleValue(const Drill& record) {
    return NearlyEqual(record.Min, record.Max);
}

/// What Methods 1 and 2 begin with: empties the categories, and deals with a range that can't be cut. Gives the result
/// of the builder in that case: 0 without a range, 1 with the one category of a single value.
std::optional<int> StartCutting(Drill& record) {
    record.ClearCategories();
    if (HasNoRange(record)) {
        return 0;
    }
    if (HasSingleValue(record)) {
        AddInterval(record.CategorySet, {record.Min - 1.0, record.Max}, "x=" + FieldBoundText(record.Max));
        return 1;
    }
    return std::nullopt;
}

/// How a range is cut into intervals of one width.
struct EqualCut {
    Interval Range{};
    double Step = 0;
    int Fewest = 0;
};

/// Intervals (a, b] from the lower end of the range on, at least the fewest, until a bound lies clearly above the upper
/// end. An interval without width isn't made and ends the building.
void AddEqualIntervals(Drill& record, const EqualCut& cut, BoundText text) {
    double lower = cut.Range.Lower;
    for (int made = 0; made < IntervalLimit; ++made) {
        const double upper = lower + cut.Step;
        if ((made >= cut.Fewest && ClearlyBelow(cut.Range.Upper, upper)) || !(upper > lower)) {
            return;
        }
        AddInterval(record.CategorySet, {lower, upper}, IntervalName({lower, upper}, "<x<=", text));
        lower = upper;
    }
}

}  // namespace

int Drill::ClearCategories() {
    CategorySet.clear();
    Isset = 0;
    return 1;
}

int Drill::MakeExactCategories() {
    if (const auto result = StartCutting(*this)) {
        return *result;
    }
    if (ExactCount < 1) {
        return -1;
    }
    const double step = (Max - Min) / (ExactCount - 1);
    // Rounding may carry the last bounds clearly past the end; without their intervals the largest values had no row.
    AddEqualIntervals(*this, {{Min - step * 0.5, step * 0.5 + Max}, step, ExactCount}, FieldBoundText);
    return 1;
}

int Drill::MakeNeatCategories() {
    if (const auto result = StartCutting(*this)) {
        return *result;
    }
    double low = Min;
    double high = Max;
    double step = (high - low) / NeatCount;
    scling_double_QUA(&low, &high, &step, static_cast<short>(ValidCount), static_cast<short>(NeatCount));
    AddEqualIntervals(*this, {{low, high}, step}, RealBoundText);
    return 1;
}

int Drill::MakeStepCategories() {
    ClearCategories();
    if (HasSingleValue(*this)) {
        // Intended: [Min, Max) admits no value, unlike the single category of the other methods; the half-open rule
        // of this method holds for every interval.
        AddInterval(CategorySet, {Min, Max}, FieldBoundText(Max));
        return 1;
    }
    double lower = StartAtMin == 1 ? Min : StepStart;
    for (int made = 0; made < IntervalLimit && lower <= Max; ++made) {
        const double upper = StepSize + lower;
        if (!(upper > lower)) {
            break;
        }
        AddInterval(CategorySet, {lower, upper}, IntervalName({lower, upper}, "<=x<", RealBoundText));
        lower = upper;
    }
    return 1;
}

int Drill::MakeUserCategories() {
    // Intended: nothing changes without boundaries, unlike in the other builders; the categories shown stay until the
    // user has given some.
    if (NU == 0) {
        return 0;
    }
    ClearCategories();
    // Intended: counts start at 1.0, unlike those of the other methods; the recount before they are shown resets them.
    constexpr double startCount = 1.0;
    const double first = UserInterv[0];
    const double last = UserInterv[static_cast<std::size_t>(NU) - 1];
    const double margin = (last - first) / NU;
    AddInterval(CategorySet, {std::min(Min, first) - margin, first}, "x<=" + FieldBoundText(first), startCount);
    for (std::size_t i = 1; i < static_cast<std::size_t>(NU); ++i) {
        const Interval interval{UserInterv[i - 1], UserInterv[i]};
        AddInterval(CategorySet, interval, IntervalName(interval, "<x<=", FieldBoundText), startCount);
    }
    AddInterval(CategorySet, {last, std::max(Max, last) + margin}, FieldBoundText(last) + "<x", startCount);
    return 1;
}

int Drill::RebuildCategories() {
    if (const auto build = FactsOf(Method).Build; build != nullptr) {
        (this->*build)();
    }
    return 1;
}
