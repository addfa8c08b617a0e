#include "workbench/formats/CellFormats.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/LetterCase.h"

namespace quillara {
namespace {

constexpr double SecondsPerDay = 86400;
constexpr double DaysTo1970 = 25569;
constexpr double DaysFrom1904To1970 = 24107;

/// A code without what is shown as it stands, blanks of a character's width and what brackets hold, but for [h].
std::string LettersOf(std::string_view code) {
    std::string letters;
    for (std::size_t at = 0; at < code.size(); ++at) {
        const char character = code[at];
        if (character == '\\' || character == '_' || character == '*') {
            ++at;
        } else if (character == '"') {
            at = std::min(code.find('"', at + 1), code.size());
        } else if (character == '[') {
            const std::size_t end = std::min(code.find(']', at), code.size());
            const std::string inside = InSmallLetters(std::string(code.substr(at + 1, end - at - 1)));
            letters += !inside.empty() && inside.find_first_not_of("hms") == std::string::npos ? inside : "";
            at = end;
        } else {
            letters += character;
        }
    }
    return InSmallLetters(letters);
}

struct BuiltInFormats {
    int First;
    int Last;
    CellContent Content;
};

// clang-format off
constexpr auto BuiltIn = std::to_array<BuiltInFormats>({
    {14, 17, CellContent::Date},
    {18, 21, CellContent::TimeOfDay},
    {22, 22, CellContent::DateTime},
    {27, 31, CellContent::Date},  // of East Asian languages
    {32, 35, CellContent::TimeOfDay},
    {36, 36, CellContent::Date},
    {45, 47, CellContent::TimeOfDay},
    {50, 54, CellContent::Date},
    {55, 56, CellContent::TimeOfDay},
    {57, 58, CellContent::Date},
});
// clang-format on

}  // namespace

CellContent ContentByCode(std::string_view code) {
    const std::string letters = LettersOf(code.substr(0, code.find(';')));
    if (letters.starts_with("general") || letters.starts_with("standard")) {
        return CellContent::Number;
    }
    const bool showsTime = letters.find_first_of("hs") != std::string::npos;
    if (letters.find_first_of("yd") != std::string::npos) {
        return showsTime ? CellContent::DateTime : CellContent::Date;
    }
    if (showsTime) {
        return CellContent::TimeOfDay;
    }
    return letters.find('m') != std::string::npos ? CellContent::Date : CellContent::Number;
}

CellContent ContentByNumber(int format) {
    const auto found = std::ranges::find_if(
        BuiltIn, [&](const BuiltInFormats& formats) { return formats.First <= format && format <= formats.Last; });
    return found == BuiltIn.end() ? CellContent::Number : found->Content;
}

std::string TextOfSerialDay(double serial, bool begins1904, bool showsTime) {
    constexpr double dayThatWasNot = 60;
    const double offset = begins1904 ? DaysFrom1904To1970 : serial < dayThatWasNot ? DaysTo1970 - 1 : DaysTo1970;
    constexpr double partsOfSecond = 1000;
    const double day = std::floor(serial);
    const double parts = std::round((serial - day) * SecondsPerDay * partsOfSecond);
    const bool isDay = parts == 0 || parts == SecondsPerDay * partsOfSecond;
    const double seconds = ((day - offset) * SecondsPerDay * partsOfSecond + parts) / partsOfSecond;
    return TextFromDateTime(seconds, 'T', isDay && !showsTime ? DateTimePrecision::Day : DateTimePrecision::Exact);
}

std::string TextOfSerialTime(double serial) {
    return TextFromSeconds(std::round(serial * SecondsPerDay));
}

std::optional<double> SerialOfDay(double days) {
    constexpr double first = 61;
    constexpr double last = 2958465;
    const double serial = days + DaysTo1970;
    return first <= serial && serial <= last ? std::optional(serial) : std::nullopt;
}

std::optional<double> SerialOfDateTime(double seconds) {
    const double day = std::floor(seconds / SecondsPerDay);
    const std::optional<double> serial = SerialOfDay(day);
    return serial ? std::optional(*serial + (seconds - day * SecondsPerDay) / SecondsPerDay) : std::nullopt;
}

double SerialOfSeconds(double seconds) {
    return seconds / SecondsPerDay;
}

}  // namespace quillara
