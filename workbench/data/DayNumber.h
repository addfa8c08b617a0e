#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "workbench/numbers/DigitWords.h"

namespace quillara {

inline constexpr std::size_t YearsOfDays = 10000;  // those of four digits

/// Days from 1970-01-01 to the first day of each year of the Gregorian calendar, times two; 1 more of a leap year.
inline constexpr auto BeginsOfYears = [] {
    std::array<int, YearsOfDays> begins{};
    int days = -719528;
    for (std::size_t year = 0; year < YearsOfDays; ++year) {
        const bool isLeap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        begins[year] = 2 * days + (isLeap ? 1 : 0);
        days += isLeap ? 366 : 365;
    }
    return begins;
}();

/// The days of a year before a month, and those of the month.
struct MonthOfYear {
    int DaysBefore;
    int Days;
};
/// By whether it is a leap year, and month.
inline constexpr std::array<std::array<MonthOfYear, 12>, 2> MonthsOfYears = {{{{{0, 31},
                                                                                {31, 28},
                                                                                {59, 31},
                                                                                {90, 30},
                                                                                {120, 31},
                                                                                {151, 30},
                                                                                {181, 31},
                                                                                {212, 31},
                                                                                {243, 30},
                                                                                {273, 31},
                                                                                {304, 30},
                                                                                {334, 31}}},
                                                                              {{{0, 31},
                                                                                {31, 29},
                                                                                {60, 31},
                                                                                {91, 30},
                                                                                {121, 31},
                                                                                {152, 30},
                                                                                {182, 31},
                                                                                {213, 31},
                                                                                {244, 30},
                                                                                {274, 31},
                                                                                {305, 30},
                                                                                {335, 31}}}}};

/// What DayNumber gives for a text that is no day.
inline constexpr std::int32_t NoDay = std::numeric_limits<std::int32_t>::min();

/// Days since 1970-01-01 of a date YYYY-MM-DD of the Gregorian calendar; NoDay when the text is no such day.
inline std::int32_t DayNumber(std::string_view text) {
    constexpr std::uint64_t separators = 0x0000FF0000FF0000;
    if (text.size() != 10) {
        return NoDay;
    }
    // The values of the digits, the first one lowest, and 0 for a separator.
    const std::uint64_t century = (WordAt(text.data()) ^ Repeated('0')) & 0xFFFF;
    const std::uint64_t rest = WordAt(text.data() + 2) ^ WordAt("00-00-00");
    const std::uint64_t pairs = 10 * rest + (rest >> 8);
    const std::uint64_t month = (pairs >> 24 & 0xFF) - 1;
    if (!AreDigits(century) || !AreDigits(rest) || (rest & separators) != 0 || month >= 12) {
        return NoDay;
    }
    const int begin = BeginsOfYears[1000 * (century & 0xFF) + 100 * (century >> 8) + (pairs & 0xFF)];
    const MonthOfYear& inYear = MonthsOfYears[begin & 1][month];
    const int day = static_cast<int>(pairs >> 48 & 0xFF) - 1;
    return day >= 0 && day < inYear.Days ? (begin >> 1) + inYear.DaysBefore + day : NoDay;
}

}  // namespace quillara
