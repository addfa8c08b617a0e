#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillara {

/// Whole days since 1970-01-01, the one behind the last excluded.
struct DayRange {
    double First = 0.0;
    double Behind = 0.0;
};

/// What days are called together that are one year, quarter, month, week or day of the calendar: 2025, 2025-Q3,
/// 2025-07, 2025-W27 (of ISO 8601, from Monday), 2025-07-01. Nothing for any others.
[[nodiscard]] std::optional<std::string> NameOfPeriod(const DayRange& days);

/// The days of such a name; nothing for any other text.
[[nodiscard]] std::optional<DayRange> PeriodNamed(std::string_view name);

}  // namespace quillara
