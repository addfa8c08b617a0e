#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillara {

/// Into which dates are cut by the calendar.
enum class CalendarPeriod : std::uint8_t { Hour, Day, Week, Month, Quarter, Year };

/// The length of a period in days; 0 where they differ.
[[nodiscard]] double DaysIn(CalendarPeriod period);

// A day is a number of days since 1970-01-01, with a part of it where it has a time.

/// The first day of the period that a day lies in; weeks begin on Monday.
[[nodiscard]] double FirstDayOf(CalendarPeriod period, double day);

/// How many periods two days and those between them lie in; `last` isn't before `first`.
[[nodiscard]] std::size_t CountPeriods(CalendarPeriod period, double first, double last);

/// The first days of these periods but the first one, or of the one behind the only one.
[[nodiscard]] std::vector<double> PeriodBegins(CalendarPeriod period, double first, double last);

}  // namespace quillara
