#include "workbench/charts/CalendarAxis.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <limits>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"

namespace quillara {
namespace {

using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr double FirstDay = -12687428;  // of the calendar, and its last
constexpr double LastDay = 11248737;
constexpr double MostSeconds = 1e12;
constexpr std::array<int, 4> DaySteps = {1, 2, 7, 14};
constexpr std::array<int, 4> MonthSteps = {1, 2, 3, 6};
constexpr int MonthsOfYear = 12;
constexpr double DaysOfMonth = 28.0;  // at least
constexpr double DaysOfYear = 366.0;  // at most
constexpr int Monday = 4;  // a day whose number is 4, 11, 18, ...
constexpr std::array<double, 16> TimeSteps = {1,   2,   5,   10,   15,   30,   60,    120,
                                              300, 600, 900, 1800, 3600, 7200, 10800, 21600};
constexpr double HalfDay = 43200;

std::vector<AxisMark> DaysEvery(int step, double low, double high) {
    const int first = step % 7 == 0 ? Monday : 0;
    std::vector<AxisMark> marks;
    for (double day = std::ceil((low - first) / step) * step + first; day <= high; day += step) {
        marks.push_back({day, QString::fromStdString(TextFromDays(day))});
    }
    return marks;
}

year_month_day DateOf(double day) {
    return year_month_day{sys_days{std::chrono::days{static_cast<int>(std::floor(day))}}};
}

/// The day on which a month begins, counted from the beginning of year 0.
double DayOfMonth(int months) {
    const int yearNumber = (months >= 0 ? months : months - MonthsOfYear + 1) / MonthsOfYear;
    if (yearNumber < static_cast<int>(year::min()) || yearNumber > static_cast<int>(year::max())) {
        return std::copysign(std::numeric_limits<double>::infinity(), yearNumber);
    }
    const auto month = static_cast<unsigned>(months - yearNumber * MonthsOfYear + 1);
    return static_cast<double>(sys_days{year(yearNumber) / std::chrono::month(month) / 1}.time_since_epoch().count());
}

/// "2024" or "2024-02".
QString MonthText(double day, int step) {
    const QString text = QString::fromStdString(TextFromDays(day));
    return text.chopped(step % MonthsOfYear == 0 ? 6 : 3);
}

std::vector<AxisMark> MonthsEvery(int step, double low, double high) {
    const year_month_day date = DateOf(low);
    const int months = static_cast<int>(date.year()) * MonthsOfYear + static_cast<int>(unsigned{date.month()}) - 1;
    std::vector<AxisMark> marks;
    for (int at = static_cast<int>(std::floor(static_cast<double>(months) / step)) * step; DayOfMonth(at) <= high;
         at += step) {
        if (const double day = DayOfMonth(at); day >= low) {
            marks.push_back({day, MonthText(day, step)});
        }
    }
    return marks;
}

/// 1, 2, 5, 10, 20, 50, ...
int NextRound(int number) {
    int power = 1;
    while (power * 10 <= number) {
        power *= 10;
    }
    return number == 2 * power ? 5 * power : number == power ? 2 * power : 10 * power;
}

std::vector<AxisMark> YearsOrMonths(double low, double high, std::size_t most) {
    for (const int step : MonthSteps) {
        if ((high - low) / DaysOfMonth / step <= static_cast<double>(most) + 1) {
            std::vector<AxisMark> marks = MonthsEvery(step, low, high);
            if (marks.size() <= most) {
                return marks;
            }
        }
    }
    int years = 1;
    while (std::floor((high - low) / DaysOfYear / years) > static_cast<double>(most)) {
        years = NextRound(years);
    }
    std::vector<AxisMark> marks = MonthsEvery(years * MonthsOfYear, low, high);
    while (marks.size() > most) {
        years = NextRound(years);
        marks = MonthsEvery(years * MonthsOfYear, low, high);
    }
    return marks;
}

double TimeStepFor(double width, int most) {
    for (const double step : TimeSteps) {
        if (std::floor(width / step) + 1 <= most) {
            return step;
        }
    }
    int halfDays = 1;
    while (std::floor(width / (halfDays * HalfDay)) + 1 > most) {
        halfDays = halfDays == 1 ? 2 : 2 * NextRound(halfDays / 2);  // half a day, then 1, 2, 5, 10, ... days
    }
    return halfDays * HalfDay;
}

}  // namespace

std::vector<AxisMark> RoundDates(double low, double high, int most) {
    if (low < FirstDay + 366 || high > LastDay - 366) {
        return {};
    }
    for (const int step : DaySteps) {
        if (std::floor((high - low) / step) + 1 <= most) {
            return DaysEvery(step, low, high);
        }
    }
    std::vector<AxisMark> marks = YearsOrMonths(low, high, static_cast<std::size_t>(most));
    return marks.empty() ? DaysEvery(static_cast<int>((high - low) / most) + 1, low, high) : marks;
}

std::vector<AxisMark> RoundDateTimes(double low, double high, int most) {
    const double step = TimeStepFor(high - low, most);
    if (step > HalfDay || step <= 0.0) {
        std::vector<AxisMark> marks = RoundDates(low / SecondsOfDay, high / SecondsOfDay, most);
        std::ranges::for_each(marks, [](AxisMark& mark) { mark.At *= SecondsOfDay; });
        return marks;
    }
    if (high - low < 1.0) {
        return {};
    }
    std::vector<AxisMark> marks;
    constexpr qsizetype beginOfClock = 11;
    QString day;
    for (double k = std::ceil(low / step); k * step <= high; ++k) {
        const auto precision = step < 60.0 ? DateTimePrecision::Second : DateTimePrecision::Minute;
        const QString text = QString::fromStdString(TextFromDateTime(k * step, ' ', precision));
        const bool isSameDay = !marks.empty() && text.startsWith(day);
        const bool isMidnight = std::fmod(k * step, SecondsOfDay) == 0.0 && precision == DateTimePrecision::Minute;
        day = text.first(std::min(text.size(), beginOfClock));
        marks.push_back({k * step, isSameDay ? text.sliced(beginOfClock) : isMidnight ? day.trimmed() : text});
    }
    return marks;
}

std::vector<AxisMark> RoundTimes(double low, double high, int most) {
    if (!(std::fabs(low) < MostSeconds && std::fabs(high) < MostSeconds)) {
        return {};
    }
    constexpr double minute = 60.0;
    const double step = TimeStepFor(high - low, most);
    std::vector<AxisMark> marks;
    for (double k = std::ceil(low / step); k * step <= high; ++k) {
        const QString text = QString::fromStdString(TextFromSeconds(k * step));
        marks.push_back({k * step, step < minute ? text : text.chopped(3)});
    }
    return marks;
}

}  // namespace quillara
