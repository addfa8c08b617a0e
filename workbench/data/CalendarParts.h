#pragma once

#include <array>
#include <string_view>

namespace quillara {

// Parts of a date, given in days since 1970-01-01, a part of a day counting for nothing. NaN where there is no such
// day.

[[nodiscard]] double YearOfDays(double days);
[[nodiscard]] double QuarterOfDays(double days);  ///< 1 to 4
[[nodiscard]] double MonthOfDays(double days);  ///< 1 to 12
[[nodiscard]] double DayOfMonth(double days);  ///< 1 to 31
[[nodiscard]] double WeekdayOfDays(double days);  ///< 1 to 7, Monday to Sunday

// Parts of a time of day, given in seconds. The hours of durations go on beyond 23.

[[nodiscard]] double HourOfSeconds(double seconds);
[[nodiscard]] double MinuteOfSeconds(double seconds);

inline constexpr std::array<std::string_view, 7> WeekdayNames{"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                              "Friday", "Saturday", "Sunday"};
inline constexpr std::array<std::string_view, 12> MonthNames{"January",   "February", "March",    "April",
                                                             "May",       "June",     "July",     "August",
                                                             "September", "October",  "November", "December"};

}  // namespace quillara
