#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillara {

/// What the number of a cell is by the way it is shown.
enum class CellContent { Number, Date, TimeOfDay, DateTime };

/// By the code of a format of one's own: "yyyy-mm-dd", "0.00", "[h]:mm", ...
[[nodiscard]] CellContent ContentByCode(std::string_view code);

/// By the number of a format that is built in.
[[nodiscard]] CellContent ContentByNumber(int format);

/// Days since 1899-12-30, or since 1904-01-01, as YYYY-MM-DD, with a part of a day, or where it is shown, as
/// YYYY-MM-DDTHH:MM:SS with up to thousandths of a second. Earlier days than 1900-03-01 count the day that wasn't,
/// 1900-02-29. Empty for what is no day.
[[nodiscard]] std::string TextOfSerialDay(double serial, bool begins1904, bool showsTime = false);

/// A part of a day, or some days, as HH:MM:SS.
[[nodiscard]] std::string TextOfSerialTime(double serial);

/// The number of a day that is so many days after 1970-01-01, from 1900-03-01 to 9999-12-31; nothing for others.
[[nodiscard]] std::optional<double> SerialOfDay(double days);
[[nodiscard]] double SerialOfSeconds(double seconds);
/// The same of a date-time.
[[nodiscard]] std::optional<double> SerialOfDateTime(double seconds);

}  // namespace quillara
