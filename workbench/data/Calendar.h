#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillara {

/// Days since 1970-01-01 of a date YYYY-MM-DD of the Gregorian calendar; nothing when the text is no such day.
[[nodiscard]] std::optional<double> DaysFromText(std::string_view text);

/// A date as YYYY-MM-DD, or as YYYYMMDD when `separator` is empty. A part of a day counts for nothing.
[[nodiscard]] std::string TextFromDays(double days, std::string_view separator = "-");

/// A time of day as HH:MM:SS. A part of a second counts for nothing.
[[nodiscard]] std::string TextFromSeconds(double seconds);

}  // namespace quillara
