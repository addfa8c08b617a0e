#include "workbench/data/CalendarParts.h"

#include <chrono>
#include <cmath>
#include <limits>

namespace quillara {
namespace {

using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr double EarliestDay = sys_days{year::min() / 1 / 1}.time_since_epoch().count();
constexpr double LatestDay = sys_days{year::max() / 12 / 31}.time_since_epoch().count();

constexpr double SecondsOfHour = 3600;
constexpr double SecondsOfMinute = 60;

/// What a function says of the day, if there is one.
template <class Function>
double OfDay(double value, Function function) {
    const double whole = std::floor(value);
    if (!(whole >= EarliestDay && whole <= LatestDay)) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return static_cast<double>(function(sys_days{std::chrono::days{static_cast<int>(whole)}}));
}

unsigned MonthOf(sys_days day) {
    return static_cast<unsigned>(year_month_day{day}.month());
}

}  // namespace

double YearOfDays(double days) {
    return OfDay(days, [](sys_days day) { return static_cast<int>(year_month_day{day}.year()); });
}

double QuarterOfDays(double days) {
    return OfDay(days, [](sys_days day) { return (MonthOf(day) + 2) / 3; });
}

double MonthOfDays(double days) {
    return OfDay(days, MonthOf);
}

double DayOfMonth(double days) {
    return OfDay(days, [](sys_days day) { return static_cast<unsigned>(year_month_day{day}.day()); });
}

double WeekdayOfDays(double days) {
    return OfDay(days, [](sys_days day) { return std::chrono::weekday{day}.iso_encoding(); });
}

double HourOfSeconds(double seconds) {
    return std::trunc(seconds / SecondsOfHour);
}

double MinuteOfSeconds(double seconds) {
    return std::trunc(std::fmod(seconds, SecondsOfHour) / SecondsOfMinute);
}

}  // namespace quillara
