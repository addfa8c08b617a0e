#include "workbench/data/PeriodName.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "workbench/data/Calendar.h"
#include "workbench/data/CalendarParts.h"
#include "workbench/data/CalendarPeriods.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

constexpr std::array<CalendarPeriod, 5> Periods = {CalendarPeriod::Year, CalendarPeriod::Quarter, CalendarPeriod::Month,
                                                   CalendarPeriod::Week, CalendarPeriod::Day};
constexpr std::size_t LengthOfYear = 4;
constexpr std::size_t LengthOfMonth = 7;  // of YYYY-MM
constexpr std::size_t LengthOfDay = 10;
constexpr double DaysOfWeek = 7.0;
constexpr double ToThursday = 3.0;  // whose year is that of its week

bool IsPeriod(CalendarPeriod period, const DayRange& days) {
    return FirstDayOf(period, days.First) == days.First && FirstDayOf(period, days.Behind - 1) == days.First &&
           FirstDayOf(period, days.Behind) == days.Behind;
}

double FirstWeekOf(double year) {
    const std::optional<double> fourth = DaysFromText(TextFromDays(year).substr(0, LengthOfYear) + "-01-04");
    return FirstDayOf(CalendarPeriod::Week, fourth.value_or(year));
}

std::string NameOfWeek(double monday) {
    const double thursday = monday + ToThursday;
    const auto week = static_cast<int>((monday - FirstWeekOf(thursday)) / DaysOfWeek) + 1;
    constexpr int twoDigits = 10;
    return TextFromDays(thursday).substr(0, LengthOfYear) + (week < twoDigits ? "-W0" : "-W") + std::to_string(week);
}

std::string NameOf(CalendarPeriod period, double first) {
    std::string day = TextFromDays(first);
    switch (period) {
        case CalendarPeriod::Year:
            return day.substr(0, LengthOfYear);
        case CalendarPeriod::Quarter:
            return day.substr(0, LengthOfYear) + "-Q" + std::to_string(static_cast<int>(QuarterOfDays(first)));
        case CalendarPeriod::Month:
            return day.substr(0, LengthOfMonth);
        case CalendarPeriod::Week:
            return NameOfWeek(first);
        case CalendarPeriod::Day:
        case CalendarPeriod::Hour:
            break;
    }
    return day;
}

/// The first day of a period so named; what is no day at all for a text that isn't.
std::optional<double> FirstDayNamed(std::string_view name) {
    const std::string year(name.substr(0, LengthOfYear));
    const std::string_view rest = name.substr(std::min(LengthOfYear, name.size()));
    if (rest.empty()) {
        return DaysFromText(year + "-01-01");
    }
    if (rest.starts_with("-W")) {
        const std::optional<int> week = WholeNumber(rest.substr(2));
        const std::optional<double> january = DaysFromText(year + "-01-01");
        return week && january ? std::optional(FirstWeekOf(*january) + (*week - 1) * DaysOfWeek) : std::nullopt;
    }
    if (rest.starts_with("-Q")) {
        constexpr std::array<std::string_view, 4> begins = {"-01-01", "-04-01", "-07-01", "-10-01"};
        const std::optional<int> quarter = WholeNumber(rest.substr(2));
        const bool isOne = quarter && *quarter >= 1 && static_cast<std::size_t>(*quarter) <= begins.size();
        return isOne ? DaysFromText(year + std::string(begins[static_cast<std::size_t>(*quarter) - 1])) : std::nullopt;
    }
    return DaysFromText(std::string(name) + (name.size() == LengthOfMonth ? "-01" : ""));
}

}  // namespace

std::optional<std::string> NameOfPeriod(const DayRange& days) {
    const bool isTold = days.First < days.Behind && TextFromDays(days.First).size() == LengthOfDay &&
                        TextFromDays(days.Behind).size() == LengthOfDay;
    const auto* period = isTold
                             ? std::ranges::find_if(Periods, [&](CalendarPeriod each) { return IsPeriod(each, days); })
                             : Periods.end();
    return period == Periods.end() ? std::nullopt : std::optional(NameOf(*period, days.First));
}

std::optional<DayRange> PeriodNamed(std::string_view name) {
    const std::optional<double> first = FirstDayNamed(name);
    for (const CalendarPeriod period : Periods) {
        if (first && NameOf(period, *first) == name) {
            return DayRange{*first, PeriodBegins(period, *first, *first).front()};
        }
    }
    return std::nullopt;
}

}  // namespace quillara
