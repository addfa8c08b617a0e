#pragma once

#include <vector>

#include "workbench/charts/NumberAxis.h"

namespace quillara {

// Round values of an axis between two bounds, both included, at most `most` of them. `low` lies below `high`.

/// Days since 1970-01-01 on which a day, week, month, quarter, year, ... begins, as 2024-02-29, 2024-02 or 2024.
/// None where the calendar ends.
[[nodiscard]] std::vector<AxisMark> RoundDates(double low, double high, int most);

/// Seconds since midnight at round seconds, minutes or hours, as 08:30, 08:30:15 or, of lengths of time, 36:00.
/// None where seconds can't be told.
[[nodiscard]] std::vector<AxisMark> RoundTimes(double low, double high, int most);

/// Seconds since 1970-01-01T00:00:00 at round seconds, minutes or hours, as 08:30 with the day where it begins, or at
/// round dates. None where the calendar ends.
[[nodiscard]] std::vector<AxisMark> RoundDateTimes(double low, double high, int most);

}  // namespace quillara
