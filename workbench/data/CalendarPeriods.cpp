#include "workbench/data/CalendarPeriods.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace quillara {
namespace {

constexpr int DaysOfWeek = 7;
constexpr int MonthsOfYear = 12;

/// Of the periods in the order of CalendarPeriod; 0: it isn't made of months.
constexpr std::array<int, 4> MonthsOf{0, 1, 3, MonthsOfYear};

int MonthsIn(CalendarPeriod period) {
    return MonthsOf[static_cast<std::size_t>(period)];
}

/// Weeks since the one of 1969-12-29, months since January of the year 0 by the period's number of them.
std::int64_t PlaceOf(CalendarPeriod period, double day) {
    using namespace std::chrono;
    const auto whole = static_cast<std::int64_t>(std::floor(day));
    if (period == CalendarPeriod::Week) {
        constexpr std::int64_t mondayBefore = -3;
        return static_cast<std::int64_t>(std::floor(static_cast<double>(whole - mondayBefore) / DaysOfWeek));
    }
    const year_month_day date{sys_days{days{whole}}};
    const int months = static_cast<int>(date.year()) * MonthsOfYear + static_cast<int>(unsigned{date.month()}) - 1;
    return static_cast<std::int64_t>(std::floor(static_cast<double>(months) / MonthsIn(period)));
}

double FirstDayAt(CalendarPeriod period, std::int64_t place) {
    using namespace std::chrono;
    if (period == CalendarPeriod::Week) {
        return static_cast<double>(place * DaysOfWeek - 3);
    }
    const year_month january{year{0}, January};
    return static_cast<double>(
        sys_days{(january + months{static_cast<int>(place) * MonthsIn(period)}) / 1}.time_since_epoch().count());
}

}  // namespace

double FirstDayOf(CalendarPeriod period, double day) {
    return FirstDayAt(period, PlaceOf(period, day));
}

std::size_t CountPeriods(CalendarPeriod period, double first, double last) {
    return static_cast<std::size_t>(PlaceOf(period, last) - PlaceOf(period, first)) + 1;
}

std::vector<double> PeriodEnds(CalendarPeriod period, double first, double last) {
    const std::int64_t begin = PlaceOf(period, first);
    const std::int64_t end = std::max(PlaceOf(period, last), begin + 1);
    std::vector<double> ends;
    for (std::int64_t place = begin + 1; place <= end; ++place) {
        ends.push_back(FirstDayAt(period, place) - 1.0);
    }
    return ends;
}

}  // namespace quillara
