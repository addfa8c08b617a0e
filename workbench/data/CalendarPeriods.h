#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillara {

/// Into which dates are cut by the calendar.
enum class CalendarPeriod : std::uint8_t { Week, Month, Quarter, Year };

/// The first day of the period that a day lies in, as days since 1970-01-01; weeks begin on Monday.
[[nodiscard]] double FirstDayOf(CalendarPeriod period, double day);

/// How many periods two days and those between them lie in; `last` isn't before `first`.
[[nodiscard]] std::size_t CountPeriods(CalendarPeriod period, double first, double last);

/// The last days of these periods but the last one, or of the only one.
[[nodiscard]] std::vector<double> PeriodEnds(CalendarPeriod period, double first, double last);

}  // namespace quillara
