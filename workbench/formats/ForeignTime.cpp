#include "workbench/formats/ForeignTime.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <span>
#include <string>

#include "workbench/data/LetterCase.h"

namespace quillara {
namespace {

using Scale = ForeignTime::Scale;

constexpr double Day1582 = -141428;  // 1582-10-14, from which sav and por count
constexpr double Day1960 = -3653;  // 1960-01-01, from which dta, sas7bdat and xpt count
constexpr double FirstDay = -719162;  // 0001-01-01
constexpr double LastDay = 2932896;  // 9999-12-31
constexpr double SecondsPerDay = 86400;
constexpr double MillisecondsPerDay = 1000 * SecondsPerDay;

struct NamedFormat {
    std::string_view Name;
    Scale Shown;
};

// clang-format off
constexpr std::array SavTimeFormats = std::to_array<NamedFormat>({
    {"DATE",     Scale::DateOfSeconds},
    {"ADATE",    Scale::DateOfSeconds},
    {"EDATE",    Scale::DateOfSeconds},
    {"SDATE",    Scale::DateOfSeconds},
    {"JDATE",    Scale::DateOfSeconds},
    {"QYR",      Scale::DateOfSeconds},
    {"MOYR",     Scale::DateOfSeconds},
    {"WKYR",     Scale::DateOfSeconds},
    {"DATETIME", Scale::DateAndTimeOfSeconds},
    {"YMDHMS",   Scale::DateAndTimeOfSeconds},
    {"TIME",     Scale::ClockOfSeconds},
    {"DTIME",    Scale::ClockOfSeconds},
    {"MTIME",    Scale::ClockOfSeconds},
});

constexpr std::array SasFormats = std::to_array<NamedFormat>({
    {"DATE",      Scale::Days},
    {"DAY",       Scale::Days},
    {"DDMMYY",    Scale::Days},
    {"DDMMYYB",   Scale::Days},
    {"DDMMYYC",   Scale::Days},
    {"DDMMYYD",   Scale::Days},
    {"DDMMYYN",   Scale::Days},
    {"DDMMYYP",   Scale::Days},
    {"DDMMYYS",   Scale::Days},
    {"DOWNAME",   Scale::Days},
    {"B8601DA",   Scale::Days},
    {"E8601DA",   Scale::Days},
    {"IS8601DA",  Scale::Days},
    {"JULDAY",    Scale::Days},
    {"JULIAN",    Scale::Days},
    {"MMDDYY",    Scale::Days},
    {"MMDDYYB",   Scale::Days},
    {"MMDDYYC",   Scale::Days},
    {"MMDDYYD",   Scale::Days},
    {"MMDDYYN",   Scale::Days},
    {"MMDDYYP",   Scale::Days},
    {"MMDDYYS",   Scale::Days},
    {"MMYY",      Scale::Days},
    {"MONNAME",   Scale::Days},
    {"MONTH",     Scale::Days},
    {"MONYY",     Scale::Days},
    {"NLDATE",    Scale::Days},
    {"QTR",       Scale::Days},
    {"WEEKDATE",  Scale::Days},
    {"WEEKDATX",  Scale::Days},
    {"WEEKDAY",   Scale::Days},
    {"WORDDATE",  Scale::Days},
    {"WORDDATX",  Scale::Days},
    {"YEAR",      Scale::Days},
    {"YYMM",      Scale::Days},
    {"YYMMDD",    Scale::Days},
    {"YYMMDDB",   Scale::Days},
    {"YYMMDDC",   Scale::Days},
    {"YYMMDDD",   Scale::Days},
    {"YYMMDDN",   Scale::Days},
    {"YYMMDDP",   Scale::Days},
    {"YYMMDDS",   Scale::Days},
    {"YYMON",     Scale::Days},
    {"YYQ",       Scale::Days},
    {"DTDATE",    Scale::DateOfSeconds},
    {"DTMONYY",   Scale::DateOfSeconds},
    {"DTYEAR",    Scale::DateOfSeconds},
    {"E8601DN",   Scale::DateOfSeconds},
    {"B8601DN",   Scale::DateOfSeconds},
    {"DATETIME",  Scale::DateAndTimeOfSeconds},
    {"DATEAMPM",  Scale::DateAndTimeOfSeconds},
    {"MDYAMPM",   Scale::DateAndTimeOfSeconds},
    {"NLDATM",    Scale::DateAndTimeOfSeconds},
    {"B8601DT",   Scale::DateAndTimeOfSeconds},
    {"E8601DT",   Scale::DateAndTimeOfSeconds},
    {"IS8601DT",  Scale::DateAndTimeOfSeconds},
    {"TIME",      Scale::ClockOfSeconds},
    {"TIMEAMPM",  Scale::ClockOfSeconds},
    {"HHMM",      Scale::ClockOfSeconds},
    {"HOUR",      Scale::ClockOfSeconds},
    {"MMSS",      Scale::ClockOfSeconds},
    {"TOD",       Scale::ClockOfSeconds},
    {"B8601TM",   Scale::ClockOfSeconds},
    {"E8601TM",   Scale::ClockOfSeconds},
    {"IS8601TM",  Scale::ClockOfSeconds},
});

constexpr std::array DtaFormats = std::to_array<NamedFormat>({
    {"td", Scale::Days},
    {"d",  Scale::Days},
    {"tc", Scale::DateAndTimeOfMilliseconds},
    {"tC", Scale::DateAndTimeOfLeapMilliseconds},
    {"tw", Scale::Weeks},
    {"tm", Scale::Months},
    {"tq", Scale::Quarters},
    {"th", Scale::HalfYears},
});
// clang-format on

std::optional<Scale> FindByName(std::span<const NamedFormat> formats, std::string_view name) {
    const auto found = std::ranges::find(formats, name, &NamedFormat::Name);
    return found == formats.end() ? std::nullopt : std::optional(found->Shown);
}

/// DATETIME of "datetime20.3": a format without its width and decimals.
std::string NameOfFormat(std::string_view format) {
    const std::size_t end = format.find_last_not_of("0123456789.");
    // A point parts the width from the decimals; letters stand before it only.
    return InCapitals(format.substr(0, end == std::string_view::npos ? 0 : end + 1));
}

/// Whether the pattern behind %tc shows the clock only: hours, minutes, seconds, am or pm.
bool ShowsClockOnly(std::string_view pattern) {
    return !pattern.empty() && pattern.find_first_not_of("HhMmSs:_.aApP!0123456789") == std::string_view::npos;
}

bool IsOfMilliseconds(std::optional<Scale> scale) {
    return scale == Scale::DateAndTimeOfMilliseconds || scale == Scale::DateAndTimeOfLeapMilliseconds;
}

std::optional<Scale> FindInDta(std::string_view format) {
    format.remove_prefix(std::min(format.find_first_not_of("%-"), format.size()));
    // %9.0g begins with its width, so a format that begins with d is the old form of td.
    const std::size_t length = format.starts_with('t') ? 2 : 1;
    const std::optional<Scale> scale = FindByName(DtaFormats, format.substr(0, length));
    if (IsOfMilliseconds(scale) && ShowsClockOnly(format.substr(length))) {
        return Scale::ClockOfDateMilliseconds;
    }
    return scale;
}

std::optional<double> WithinCalendar(double days) {
    return FirstDay <= days && days <= LastDay ? std::optional(days) : std::nullopt;
}

std::optional<double> FirstDayOfMonth(double monthsSince1960) {
    using namespace std::chrono;
    constexpr double furthest = 12 * 10000;
    if (std::abs(monthsSince1960) > furthest) {
        return {};
    }
    const auto month = year{1960} / January + months{static_cast<int>(std::floor(monthsSince1960))};
    return WithinCalendar(static_cast<double>(sys_days{month / 1}.time_since_epoch().count()));
}

/// A year has 52 weeks, counted from its first day; the last is the longer.
std::optional<double> FirstDayOfWeek(double weeksSince1960) {
    const double years = std::floor(weeksSince1960 / 52);
    const std::optional<double> newYear = FirstDayOfMonth(12 * years);
    return newYear ? std::optional(*newYear + 7 * std::floor(weeksSince1960 - 52 * years)) : std::nullopt;
}

/// The first days behind leap seconds, as days since 1970-01-01.
constexpr auto DaysBehindLeapSeconds =
    std::to_array<double>({912,  1096, 1461, 1826, 2191, 2557, 2922,  3287,  3652,  4199,  4564,  4929,  5660, 6574,
                           7305, 7670, 8217, 8582, 8947, 9496, 10043, 10592, 13149, 14245, 15522, 16617, 17167});

/// Leap seconds before a moment of clocks that count them, or of those that don't.
double LeapSecondsBefore(double seconds, bool areCounted) {
    double leaps = 0;
    for (const double day : DaysBehindLeapSeconds) {
        const double begin = day * SecondsPerDay + (areCounted ? leaps + 1 : 0);
        leaps += begin <= seconds ? 1 : 0;
    }
    return leaps;
}

/// How far a double is from the next one.
double LastDigit(double value) {
    return std::nextafter(std::abs(value), HUGE_VAL) - std::abs(value);
}

/// Seconds since 1970 of a value that counts parts of a second from an epoch: whole thousandths or millionths where the
/// value is the double next to them.
double MomentOf(double value, double partsOfSecond, double epoch) {
    const double seconds = value / partsOfSecond + epoch * SecondsPerDay;
    const double digit = std::max(LastDigit(value) / partsOfSecond, LastDigit(seconds));
    for (const double parts : {1e3, 1e6}) {
        const double rounded = std::round(seconds * parts) / parts;
        if (std::abs(rounded - seconds) <= digit) {
            return rounded;
        }
    }
    return seconds;
}

/// Those that a value in milliseconds counts.
double LeapSecondsOf(double value, double epoch) {
    return LeapSecondsBefore(value / 1000 + epoch * SecondsPerDay, true);
}

std::optional<double> MomentWithinCalendar(double seconds) {
    return WithinCalendar(std::floor(seconds / SecondsPerDay)) ? std::optional(seconds) : std::nullopt;
}

std::optional<double> WithinDay(double seconds) {
    return 0 <= seconds && seconds < SecondsPerDay ? std::optional(seconds) : std::nullopt;
}

std::optional<double> WholeDays(double value, double unitsPerDay, double epoch) {
    const double days = std::floor(value / unitsPerDay);
    return days * unitsPerDay == value ? WithinCalendar(days + epoch) : std::nullopt;
}

/// The milliseconds that read as these seconds; whole ones where they do.
double MillisecondsOf(double seconds) {
    const double whole = std::round(1000 * seconds);
    return whole / 1000 == seconds ? whole : 1000 * seconds;
}

std::optional<double> InverseOf(Scale scale, double ours, double epoch) {
    switch (scale) {
        case Scale::Days:
            return ours - epoch;
        case Scale::DateOfSeconds:
        case Scale::DateAndTimeOfSeconds:
            return (ours - epoch) * SecondsPerDay;
        case Scale::DateAndTimeOfMilliseconds:
            return (ours - epoch) * MillisecondsPerDay;
        case Scale::DateAndTimeOfLeapMilliseconds:
            return (ours - epoch) * MillisecondsPerDay + 1000 * LeapSecondsBefore(ours * SecondsPerDay, false);
        case Scale::MomentOfSeconds:
            return ours - epoch * SecondsPerDay;
        case Scale::MomentOfMilliseconds:
            return MillisecondsOf(ours - epoch * SecondsPerDay);
        case Scale::MomentOfLeapMilliseconds:
            return MillisecondsOf(ours + LeapSecondsBefore(ours, false) - epoch * SecondsPerDay);
        case Scale::ClockOfSeconds:
            return ours;
        case Scale::ClockOfDateMilliseconds:
            return MillisecondsOf(ours);
        case Scale::Weeks:
        case Scale::Months:
        case Scale::Quarters:
        case Scale::HalfYears:
            break;
    }
    return {};
}

}  // namespace

std::optional<ForeignTime> ForeignTime::Find(std::string_view extension, std::string_view format) {
    const bool isSav = extension == "sav" || extension == "zsav" || extension == "por";
    const std::optional<Scale> scale = extension == "dta" ? FindInDta(format)
                                       : isSav            ? FindByName(SavTimeFormats, NameOfFormat(format))
                                                          : FindByName(SasFormats, NameOfFormat(format));
    return scale ? std::optional(ForeignTime(*scale, isSav ? Day1582 : Day1960)) : std::nullopt;
}

ValueKind ForeignTime::Kind() const {
    const bool isClock = Shown == Scale::ClockOfSeconds || Shown == Scale::ClockOfDateMilliseconds;
    const bool isMoment = Shown == Scale::MomentOfSeconds || Shown == Scale::MomentOfMilliseconds ||
                          Shown == Scale::MomentOfLeapMilliseconds;
    return isClock ? ValueKind::TimeOfDay : isMoment ? ValueKind::DateTime : ValueKind::Date;
}

std::optional<ForeignTime> ForeignTime::WithTimes() const {
    switch (Shown) {
        case Scale::DateAndTimeOfSeconds:
            return ForeignTime(Scale::MomentOfSeconds, Epoch);
        case Scale::DateAndTimeOfMilliseconds:
            return ForeignTime(Scale::MomentOfMilliseconds, Epoch);
        case Scale::DateAndTimeOfLeapMilliseconds:
            return ForeignTime(Scale::MomentOfLeapMilliseconds, Epoch);
        default:
            return {};
    }
}

std::optional<double> ForeignTime::Convert(double value) const {
    switch (Shown) {
        case Scale::Days:
            return WithinCalendar(std::floor(value) + Epoch);
        case Scale::DateOfSeconds:
            return WithinCalendar(std::floor(value / SecondsPerDay) + Epoch);
        case Scale::DateAndTimeOfSeconds:
            return WholeDays(value, SecondsPerDay, Epoch);
        case Scale::DateAndTimeOfMilliseconds:
            return WholeDays(value, MillisecondsPerDay, Epoch);
        case Scale::DateAndTimeOfLeapMilliseconds:
            return WholeDays(value - 1000 * LeapSecondsOf(value, Epoch), MillisecondsPerDay, Epoch);
        case Scale::MomentOfSeconds:
            return MomentWithinCalendar(MomentOf(value, 1, Epoch));
        case Scale::MomentOfMilliseconds:
            return MomentWithinCalendar(MomentOf(value, 1000, Epoch));
        case Scale::MomentOfLeapMilliseconds:
            return MomentWithinCalendar(MomentOf(value - 1000 * LeapSecondsOf(value, Epoch), 1000, Epoch));
        case Scale::Weeks:
            return FirstDayOfWeek(value);
        case Scale::Months:
            return FirstDayOfMonth(value);
        case Scale::Quarters:
            return FirstDayOfMonth(3 * std::floor(value));
        case Scale::HalfYears:
            return FirstDayOfMonth(6 * std::floor(value));
        case Scale::ClockOfSeconds:
            return WithinDay(value);
        case Scale::ClockOfDateMilliseconds:
            return WithinDay((value - MillisecondsPerDay * std::floor(value / MillisecondsPerDay)) / 1000);
    }
    return {};
}

std::optional<double> ForeignTime::Nearest(double ours) const {
    const std::optional<double> value = InverseOf(Shown, ours, Epoch);
    return value && std::isfinite(*value) && Convert(*value) ? value : std::nullopt;
}

std::optional<double> ForeignTime::Invert(double ours) const {
    const std::optional<double> value = Nearest(ours);
    return value && Convert(*value) == ours ? value : std::nullopt;
}

}  // namespace quillara
