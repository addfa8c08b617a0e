#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "host/CaseBlocks.h"
#include "workbench/data/CalendarPeriods.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// Where the values of some cases are cut by the calendar.
struct CalendarCuts {
    double Start = 0.0;  ///< of the first period
    double Step = 0.0;  ///< length of the periods; 0: they differ, and Ends has them
    std::vector<double> Ends;  ///< the last value of each period but the last one, or of the only one
};

/// The period of a word: hour, day, week, month, quarter or year. Throws UsageError for another one.
[[nodiscard]] CalendarPeriod CalendarPeriodNamed(std::string_view word);

/// The cuts for a variable over the selected cases (`selection` has an entry for each case, or none). Dates are cut by
/// all periods but hours. A period of dates with times ends a second before the next begins, and where there are parts
/// of a second a thousandth or millionth. Throws DataError when the variable holds neither, when no dates are selected,
/// and when there are more periods than intervals can be made: 2,048 hours, days or weeks, 100 others.
[[nodiscard]] CalendarCuts CutByCalendar(const Variable& variable, CalendarPeriod period,
                                         std::span<const CaseResult> selection);

}  // namespace quillara
