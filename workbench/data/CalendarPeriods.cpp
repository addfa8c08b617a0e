#include "workbench/data/CalendarPeriods.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace quillara {
namespace {

constexpr int MonthsOfYear = 12;
constexpr double HoursADay = 24.0;

/// Either the months of a period or its length and where the one with 1970-01-01 begins.
struct PeriodRule {
    int Months;
    double Days;
    double FirstDay;
};

// clang-format off
constexpr std::array<PeriodRule, 6> PeriodRules{{  // in the order of CalendarPeriod
    {0,            1.0 / HoursADay, 0.0},
    {0,            1.0,              0.0},
    {0,            7.0,             -3.0},  // Monday
    {1,            0.0,              0.0},
    {3,            0.0,              0.0},
    {MonthsOfYear, 0.0,              0.0},
}};
// clang-format on

const PeriodRule& PeriodRuleOf(CalendarPeriod period) {
    return PeriodRules[static_cast<std::size_t>(period)];
}

/// Hours, days or weeks since the one of 1970-01-01, months since January of the year 0 by the period's number of them.
std::int64_t PlaceOf(CalendarPeriod period, double day) {
    using namespace std::chrono;
    const PeriodRule& rule = PeriodRuleOf(period);
    if (rule.Months == 0) {
        constexpr double rounding = 1e-9;  // of days that were seconds
        return static_cast<std::int64_t>(std::floor((day - rule.FirstDay) / rule.Days + rounding));
    }
    const auto whole = static_cast<std::int64_t>(std::floor(day));
    const year_month_day date{sys_days{days{whole}}};
    const int months = static_cast<int>(date.year()) * MonthsOfYear + static_cast<int>(unsigned{date.month()}) - 1;
    return static_cast<std::int64_t>(std::floor(static_cast<double>(months) / rule.Months));
}

double FirstDayAt(CalendarPeriod period, std::int64_t place) {
    using namespace std::chrono;
    const PeriodRule& rule = PeriodRuleOf(period);
    if (rule.Months == 0) {
        return static_cast<double>(place) * rule.Days + rule.FirstDay;
    }
    const year_month january{year{0}, January};
    return static_cast<double>(
        sys_days{(january + months{static_cast<int>(place) * rule.Months}) / 1}.time_since_epoch().count());
}

}  // namespace

double DaysIn(CalendarPeriod period) {
    return PeriodRuleOf(period).Days;
}

double FirstDayOf(CalendarPeriod period, double day) {
    return FirstDayAt(period, PlaceOf(period, day));
}

std::size_t CountPeriods(CalendarPeriod period, double first, double last) {
    return static_cast<std::size_t>(PlaceOf(period, last) - PlaceOf(period, first)) + 1;
}

std::vector<double> PeriodBegins(CalendarPeriod period, double first, double last) {
    const std::int64_t begin = PlaceOf(period, first);
    const std::int64_t end = std::max(PlaceOf(period, last), begin + 1);
    std::vector<double> begins;
    for (std::int64_t place = begin + 1; place <= end; ++place) {
        begins.push_back(FirstDayAt(period, place));
    }
    return begins;
}

}  // namespace quillara
