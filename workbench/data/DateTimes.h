#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillara {

inline constexpr double SecondsOfDay = 86400.0;

/// How a date-time says where on earth it holds.
enum class ZoneForm : std::uint8_t { None, Utc, Shifted };

/// What the fields of a column of date-times have.
struct ZonesMet {
    bool None = false;
    bool Utc = false;
    bool Shifted = false;

    void Add(ZoneForm form);
    void Add(const ZonesMet& others);
    [[nodiscard]] friend bool operator==(const ZonesMet&, const ZonesMet&) = default;
};

/// A date-time as it is written.
struct WrittenDateTime {
    double Seconds = 0.0;  ///< since 1970-01-01T00:00:00 UTC; without a zone the clock counts as one of UTC
    ZoneForm Zone = ZoneForm::None;
};

/// A date-time of ISO 8601: YYYY-MM-DD, a T or a blank, HH:MM, HH:MM:SS or HH:MM:SS with a point or comma and up to 18
/// digits, and perhaps a zone: Z, +HH, +HHMM or +HH:MM, with - likewise and at most 23:59. 24:00:00 is the beginning of
/// the next day; there is no 60th second. Nothing for any other text.
[[nodiscard]] std::optional<WrittenDateTime> ReadDateTime(std::string_view text);

/// Its seconds; also of a day YYYY-MM-DD, which is the midnight that it begins with.
[[nodiscard]] std::optional<double> SecondsFromDateTime(std::string_view text);

/// How much of a date-time is written.
enum class DateTimePrecision : std::uint8_t {
    Day,
    Minute,
    Second,
    Exact,  ///< with the decimals, up to 18, that read back as the same number
};

/// A date-time as YYYY-MM-DD, a sign between and HH:MM:SS, cut to the precision; empty where there is no such day.
[[nodiscard]] std::string TextFromDateTime(double seconds, char between = ' ',
                                           DateTimePrecision precision = DateTimePrecision::Exact);

/// The coarsest precision that tells a date-time whole.
[[nodiscard]] DateTimePrecision PrecisionOf(double seconds);

}  // namespace quillara
