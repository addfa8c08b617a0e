#include "workbench/data/DateIntervals.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "workbench/data/Calendar.h"
#include "workbench/data/CalendarPeriods.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/PeriodName.h"
#include "workbench/data/ValueText.h"
#include "workbench/numbers/DecimalNumber.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

constexpr double Day = 1.0;
constexpr double MinuteOfDay = Day / (24 * 60);
constexpr double SecondOfDay = MinuteOfDay / 60;
constexpr double Second = 1.0;
constexpr double Rounding = 1e-9;  ///< of bounds that were added up
constexpr double RoundingOfDateTimes = 1e-5;

/// The forms of names that an analysis gives to intervals, with a hash for each bound.
enum class Bounds : std::uint8_t { Both, Lower, Upper };

struct IntervalForm {
    std::string_view Sign;
    Bounds Named;
    bool ExcludesUpper;  ///< [a, b), so that a part of a unit counts as the next one; else (a, b]
};

// clang-format off
constexpr std::array<IntervalForm, 5> IntervalForms{{
    // Sign    Bounds         Excludes
    {"<x<=",  Bounds::Both,  false},
    {"<=x<",  Bounds::Both,  true},
    {"x<=",   Bounds::Upper, false},
    {"<x",    Bounds::Lower, false},
    {"x=",    Bounds::Upper, false},
}};

struct TimeUnit {
    ValueKind Kind;
    double Length;
};

/// In which bounds are shown, the coarsest first.
constexpr std::array<TimeUnit, 4> TimeUnits{{
    {ValueKind::Date,      Day},
    {ValueKind::Date,      MinuteOfDay},
    {ValueKind::Date,      SecondOfDay},
    {ValueKind::TimeOfDay, Second},
}};
// clang-format on

/// The unit that tells the bounds of an interval from each other; its length is 0 when none does.
TimeUnit UnitFor(ValueKind kind, double width) {
    const auto* found = std::ranges::find_if(
        TimeUnits, [&](const TimeUnit& unit) { return unit.Kind == kind && width >= unit.Length - Rounding; });
    return found == TimeUnits.end() ? TimeUnit{kind, 0.0} : *found;
}

std::string BoundText(const TimeUnit& unit, double bound, bool countsAsNext) {
    if (unit.Length == 0.0) {
        return ExactNumberText(bound);
    }
    const double nearest = std::round(bound / unit.Length) * unit.Length;
    if (std::fabs(bound - nearest) <= Rounding) {
        return TextOfValue(unit.Kind, nearest, unit.Length);
    }
    const double units = bound / unit.Length;
    return TextOfValue(unit.Kind, (countsAsNext ? std::ceil(units) : std::floor(units)) * unit.Length, unit.Length);
}

constexpr std::array<double, 3> PartsOfSecond{1.0, 1e3, 1e6};

/// How many parts of a second tell the bounds of date-times from each other; 0 where none do.
double PartsFor(double width) {
    const auto* found = std::ranges::find_if(
        PartsOfSecond, [width](double parts) { return width * parts >= 1.0 - RoundingOfDateTimes; });
    return found == PartsOfSecond.end() ? 0.0 : *found;
}

/// How many parts of a second tell the bounds that end a thousandth or millionth of one before a whole second, as those
/// of calendar periods do; nothing for others.
std::optional<double> PartsOfEnds(std::span<const double> bounds) {
    constexpr double longestGap = 1.5e-3;
    const auto isEnd = [](double bound) {
        const double gap = std::ceil(bound) - bound;
        return gap > 0.0 && gap <= longestGap;
    };
    if (!std::ranges::all_of(bounds, isEnd)) {
        return std::nullopt;
    }
    const double gap = std::ceil(bounds.front()) - bounds.front();
    return gap > longestGap / 2 ? PartsOfSecond[1] : PartsOfSecond[2];
}

/// The whole part of a second that gives an interval the same date-times.
double RoundedBound(double parts, double bound, bool countsAsNext) {
    const double nearest = std::round(bound * parts) / parts;
    if (std::fabs(bound - nearest) <= std::min(RoundingOfDateTimes, 0.1 / parts)) {
        return nearest;
    }
    return (countsAsNext ? std::ceil(bound * parts) : std::floor(bound * parts)) / parts;
}

std::string NameInDateTimes(const IntervalForm& form, double lower, double upper) {
    const bool hasLower = form.Named != Bounds::Upper;
    const bool hasUpper = form.Named != Bounds::Lower;
    const std::array<double, 2> bounds{hasLower ? lower : upper, hasUpper ? upper : lower};
    const double byWidth = form.Named == Bounds::Both ? PartsFor(upper - lower) : 1.0;
    const double parts = PartsOfEnds(bounds).value_or(byWidth);
    const auto rounded = [&](double bound) {
        return parts == 0.0 ? bound : RoundedBound(parts, bound, form.ExcludesUpper);
    };
    DateTimePrecision precision = DateTimePrecision::Day;
    for (const auto& [isThere, bound] : {std::pair(hasLower, lower), std::pair(hasUpper, upper)}) {
        precision = isThere ? std::max(precision, PrecisionOf(rounded(bound))) : precision;
    }
    const auto text = [&](double bound) {
        const std::string dateTime = parts == 0.0 ? "" : TextFromDateTime(rounded(bound), ' ', precision);
        return dateTime.empty() ? ExactNumberText(bound) : dateTime;
    };
    return (hasLower ? text(lower) : "") + std::string(form.Sign) + (hasUpper ? text(upper) : "");
}

/// A bound as it stands in a name; nothing when that is no number, or a text where the form has none.
std::optional<double> BoundIn(const IntervalForm& form, Bounds side, std::string_view text) {
    if (form.Named != Bounds::Both && form.Named != side) {
        return text.empty() ? std::optional(0.0) : std::nullopt;
    }
    return DecimalNumber(text);
}

/// "20190323" as "2019-03-23"; any other text as it is.
std::string DayWithHyphens(const std::string& name) {
    constexpr std::size_t lengthOfDay = 8;
    if (name.size() != lengthOfDay) {
        return name;
    }
    const std::string day = name.substr(0, 4) + '-' + name.substr(4, 2) + '-' + name.substr(6);
    return DaysFromText(day) ? day : name;
}

const IntervalForm* FormOf(std::string_view name) {
    const auto* form = std::ranges::find_if(
        IntervalForms, [&name](const IntervalForm& each) { return name.find(each.Sign) != std::string::npos; });
    return form == IntervalForms.end() ? nullptr : form;
}

/// The first day that begins behind a bound, of (a, b], or at it.
double FirstDayFrom(const IntervalForm& form, ValueKind kind, double bound) {
    if (kind == ValueKind::Date) {
        return form.ExcludesUpper ? std::ceil(bound) : std::floor(bound) + 1;
    }
    return std::ceil(bound / SecondsOfDay);
}

/// Whether a bound of date-times is where a day ends: at its midnight or, of (a, b], within a second before it.
bool EndsDay(const IntervalForm& form, double bound) {
    const double before = std::ceil(bound / SecondsOfDay) * SecondsOfDay - bound;
    return form.ExcludesUpper ? before == 0.0 : before > 0.0 && before <= 1.0;
}

/// "2025-07" of an interval that has the dates of a month, and likewise; "to 2025-07" and "from 2025-08" of all up to
/// the end, or from the beginning, of one.
std::optional<std::string> PeriodOf(const IntervalForm& form, ValueKind kind, double lower, double upper) {
    const double day = kind == ValueKind::Date ? Day : SecondsOfDay;
    const bool hasLower = form.Named != Bounds::Upper;
    const bool hasUpper = form.Named != Bounds::Lower;
    const bool isTooShort = hasLower && hasUpper && upper - lower < day - Rounding;
    const bool isWithinDay =
        kind == ValueKind::DateTime && ((hasLower && !EndsDay(form, lower)) || (hasUpper && !EndsDay(form, upper)));
    if ((kind != ValueKind::Date && kind != ValueKind::DateTime) || isTooShort || isWithinDay) {
        return std::nullopt;
    }
    const double first = hasLower ? FirstDayFrom(form, kind, lower) : 0.0;
    const double behind = hasUpper ? FirstDayFrom(form, kind, upper) : 0.0;
    if (form.Named == Bounds::Both) {
        return NameOfPeriod({first, behind});
    }
    const double edge = hasLower ? first : behind;
    if (!std::isfinite(edge) || FirstDayOf(CalendarPeriod::Month, edge) != edge) {
        return std::nullopt;
    }
    const std::optional<std::string> month =
        hasLower ? NameOfPeriod({edge, PeriodBegins(CalendarPeriod::Month, edge, edge).front()})
                 : NameOfPeriod({FirstDayOf(CalendarPeriod::Month, edge - 1), edge});
    return month ? std::optional((hasLower ? "from " : "to ") + *month) : std::nullopt;
}

}  // namespace

std::string NameByBounds(ValueKind kind, const std::string& name, double lower, double upper) {
    const IntervalForm* form = FormOf(name);
    if (form == nullptr) {
        // Values that differ by less than is shown of others have names of their own.
        const std::string whole = kind == ValueKind::DateTime ? TextFromDateTime(upper) : std::string();
        return whole.empty() ? TextOfValue(kind, upper) : whole;
    }
    if (kind == ValueKind::DateTime) {
        return NameInDateTimes(*form, lower, upper);
    }
    const double width = form->Named == Bounds::Both ? upper - lower : Day;
    const TimeUnit unit = UnitFor(kind, width);
    const auto text = [&](double bound) { return BoundText(unit, bound, form->ExcludesUpper); };
    return (form->Named == Bounds::Upper ? "" : text(lower)) + std::string(form->Sign) +
           (form->Named == Bounds::Lower ? "" : text(upper));
}

std::string NameInDates(ValueKind kind, const std::string& name, double lower, double upper) {
    const IntervalForm* form = FormOf(name);
    const std::optional<std::string> period = form == nullptr ? std::nullopt : PeriodOf(*form, kind, lower, upper);
    return period ? *period : NameByBounds(kind, name, lower, upper);
}

std::string NameInDates(ValueKind kind, const std::string& name) {
    if (kind != ValueKind::Date && kind != ValueKind::TimeOfDay) {
        return name;
    }
    for (const IntervalForm& form : IntervalForms) {
        const std::size_t at = name.find(form.Sign);
        if (at == std::string::npos) {
            continue;
        }
        const std::optional<double> lower = BoundIn(form, Bounds::Lower, std::string_view(name).substr(0, at));
        const std::optional<double> upper =
            BoundIn(form, Bounds::Upper, std::string_view(name).substr(at + form.Sign.size()));
        return lower && upper ? NameInDates(kind, name, *lower, *upper) : name;
    }
    return kind == ValueKind::Date ? DayWithHyphens(name) : name;
}

}  // namespace quillara
