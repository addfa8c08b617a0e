#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillara {

/// Days since 1970-01-01 of a date YYYY-MM-DD of the Gregorian calendar; nothing when the text is no such day.
[[nodiscard]] std::optional<double> DaysFromText(std::string_view text);

/// Seconds since midnight of a time HH:MM:SS, as TextFromSeconds writes it; nothing when the text is no such time.
[[nodiscard]] std::optional<double> SecondsFromText(std::string_view text);

/// A date as YYYY-MM-DD, or as YYYYMMDD when `separator` is empty. A part of a day counts for nothing: the day is the
/// one that it belongs to, also before 1970. Empty when there is no such day: not finite, or a year beyond 32767.
[[nodiscard]] std::string TextFromDays(double value, std::string_view separator = "-");

/// A time of day as HH:MM:SS. A part of a second counts for nothing. Durations are written alike: hours beyond 23 go
/// on, a negative one begins with a minus sign. Empty when it isn't finite or can't be told to the second.
[[nodiscard]] std::string TextFromSeconds(double value);

}  // namespace quillara
