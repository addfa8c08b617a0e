#include "workbench/formats/DisplayFormats.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace quillara {
namespace {

constexpr int Widest = 40;

struct SavFormat {
    std::string_view Name;
    int LeastWidth;
};

// clang-format off
constexpr auto SavFormats = std::to_array<SavFormat>({
    {"F",        1},
    {"COMMA",    1},
    {"DOT",      1},
    {"DOLLAR",   2},
    {"PCT",      2},
    {"E",        6},
    {"N",        1},
    {"DATE",     9},
    {"ADATE",    8},
    {"EDATE",    8},
    {"SDATE",    8},
    {"JDATE",    5},
    {"QYR",      4},
    {"MOYR",     6},
    {"WKYR",     6},
    {"WKDAY",    2},
    {"MONTH",    3},
    {"DATETIME", 17},
    {"TIME",     5},
    {"DTIME",    8},
});
// clang-format on

/// The parts of F8.2 (sav) or %8.2f (dta).
struct WidthAndDecimals {
    int Width = 0;
    int Decimals = 0;
    std::string_view Before{};
    std::string_view Behind{};
};

/// The parts of a format around its first number; nothing when it has none.
std::optional<WidthAndDecimals> PartsOf(std::string_view format) {
    const std::size_t begin = format.find_first_of("0123456789");
    if (begin == std::string_view::npos) {
        return {};
    }
    WidthAndDecimals parts{.Before = format.substr(0, begin)};
    const char* const end = format.data() + format.size();
    const char* place = std::from_chars(format.data() + begin, end, parts.Width).ptr;
    if (place != end && *place == '.') {
        place = std::from_chars(place + 1, end, parts.Decimals).ptr;
    }
    parts.Behind = format.substr(static_cast<std::size_t>(place - format.data()));
    const bool isSound = 0 < parts.Width && parts.Width <= Widest && 0 <= parts.Decimals && parts.Decimals <= 16;
    return isSound ? std::optional(parts) : std::nullopt;
}

bool IsSavFormat(std::string_view format) {
    const std::optional<WidthAndDecimals> parts = PartsOf(format);
    return parts && parts->Behind.empty() && std::ranges::any_of(SavFormats, [&](const SavFormat& known) {
               return known.Name == parts->Before && known.LeastWidth <= parts->Width;
           });
}

bool IsDtaNumberFormat(std::string_view format) {
    constexpr auto letters = std::to_array<std::string_view>({"f", "g", "e", "fc", "gc"});
    const std::optional<WidthAndDecimals> parts = PartsOf(format);
    return parts && (parts->Before == "%" || parts->Before == "%-" || parts->Before == "%0") &&
           std::ranges::find(letters, parts->Behind) != letters.end();
}

bool IsFormatOf(std::string_view extension, std::string_view format) {
    return extension == "dta" ? IsDtaNumberFormat(format) || format.starts_with("%t") : IsSavFormat(format);
}

/// %8.2f for F8.2 in a dta file and the other way round; empty for any other format.
std::string Translated(std::string_view format, std::string_view extension) {
    const std::optional<WidthAndDecimals> parts = PartsOf(format);
    const bool isSav = parts && parts->Before == "F" && parts->Behind.empty();
    const bool isDta = parts && parts->Before == "%" && parts->Behind == "f";
    const std::string numbers =
        parts ? std::to_string(parts->Width) + "." + std::to_string(parts->Decimals) : std::string();
    if (extension == "dta") {
        return isSav ? "%" + numbers + "f" : "";
    }
    return isDta ? "F" + numbers : "";
}

template <typename Conversion>
bool ConvertsEach(const Variable& variable, Conversion conversion) {
    return HoldsForAll(variable.Values, [&](double value) { return variable.IsMissing(value) || conversion(value); });
}

DisplayFormat FormatOfNumber(const Variable& variable, std::string_view extension) {
    if (!IsFormatOf(extension, variable.Format)) {
        return {Translated(variable.Format, extension), {}};
    }
    // A format of dates would make the numbers dates on reading.
    const std::optional<ForeignTime> time = ForeignTime::Find(extension, variable.Format);
    const auto wouldBecome = [&](const std::optional<ForeignTime>& kind) {
        return kind && ConvertsEach(variable, [&](double value) { return kind->Convert(value).has_value(); });
    };
    const bool wouldBecomeTimes = wouldBecome(time) || (time && wouldBecome(time->WithTimes()));
    return {wouldBecomeTimes ? "" : variable.Format, {}};
}

std::optional<ForeignTime> TimeFor(ValueKind kind, std::string_view extension, std::string_view format) {
    const std::optional<ForeignTime> time = ForeignTime::Find(extension, format);
    return time && kind == ValueKind::DateTime ? time->WithTimes() : time;
}

}  // namespace

DisplayFormat FormatInFile(const Variable& variable, std::string_view extension, std::string_view ordinary) {
    if (variable.Kind == ValueKind::Number) {
        return FormatOfNumber(variable, extension);
    }
    const std::optional<ForeignTime> own = TimeFor(variable.Kind, extension, variable.Format);
    if (own && own->Kind() == variable.Kind && IsFormatOf(extension, variable.Format) &&
        ConvertsEach(variable, [&](double value) { return own->Invert(value).has_value(); })) {
        return {variable.Format, own};
    }
    return {std::string(ordinary), TimeFor(variable.Kind, extension, ordinary)};
}

}  // namespace quillara
