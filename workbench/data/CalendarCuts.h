#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "host/CaseBlocks.h"
#include "workbench/data/CalendarPeriods.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// Where the dates of some cases are cut by the calendar.
struct CalendarCuts {
    double FirstDay = 0.0;  ///< of the first period
    std::vector<double> LastDays;  ///< of the periods but the last one, or of the only one
};

/// The period of a word: week, month, quarter or year. Throws UsageError for another one.
[[nodiscard]] CalendarPeriod CalendarPeriodNamed(std::string_view word);

/// The cuts for a variable over the selected cases (`selection` has an entry for each case, or none). Throws DataError
/// when it holds no dates, when none are selected, and when there are more periods than intervals can be made: 2,048
/// weeks, 100 others.
[[nodiscard]] CalendarCuts CutByCalendar(const Variable& variable, CalendarPeriod period,
                                         std::span<const CaseResult> selection);

}  // namespace quillara
