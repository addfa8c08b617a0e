#include "workbench/data/Calendar.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace quillara {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr auto FirstDay = sys_days{year::min() / 1 / 1}.time_since_epoch().count();
constexpr auto LastDay = sys_days{year::max() / 12 / 31}.time_since_epoch().count();

constexpr double LargestSeconds = 9007199254740992;  // 2^53: beyond it a double skips seconds
constexpr std::size_t LongestHours = 12;  // keeps every time read below it

/// The number of a text that consists of digits only.
std::optional<std::int64_t> Digits(std::string_view text) {
    std::int64_t number = 0;
    for (const char digit : text) {
        if (digit < '0' || digit > '9') {
            return std::nullopt;
        }
        number = number * 10 + (digit - '0');
    }
    return number;
}

unsigned LastDayOf(unsigned year, unsigned month) {
    constexpr std::array<unsigned, 12> days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return days[month - 1] + (month == 2 && isLeap ? 1 : 0);
}

/// Days since 1970-01-01. Years are taken to begin with March, so that the day put in comes last.
int DaysOf(unsigned year, unsigned month, unsigned day) {
    constexpr int daysBefore1970 = 719468;  // from the 1st of March of the year 0
    const int years = static_cast<int>(year) - (month <= 2 ? 1 : 0);
    const int months = static_cast<int>(month) + (month <= 2 ? 9 : -3);
    const int leapDays = years < 0 ? -1 : years / 4 - years / 100 + years / 400;
    return 365 * years + leapDays + (153 * months + 2) / 5 + static_cast<int>(day) - 1 - daysBefore1970;
}

template <class... Numbers>
std::string Formatted(const char* format, Numbers... numbers) {
    std::array<char, 64> text;
    const int length = std::snprintf(text.data(), text.size(), format, numbers...);
    return {text.data(), static_cast<std::size_t>(length)};
}

}  // namespace

std::optional<double> DaysFromText(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') {
        return std::nullopt;
    }
    bool areDigits = true;
    const auto digit = [&](std::size_t place) {
        const unsigned number = static_cast<unsigned char>(text[place]) - unsigned{'0'};
        areDigits = areDigits && number <= 9;
        return number;
    };
    const unsigned yearNumber = 1000 * digit(0) + 100 * digit(1) + 10 * digit(2) + digit(3);
    const unsigned month = 10 * digit(5) + digit(6);
    const unsigned day = 10 * digit(8) + digit(9);
    if (!areDigits || month - 1 >= 12 || day == 0 || day > LastDayOf(yearNumber, month)) {
        return std::nullopt;
    }
    return DaysOf(yearNumber, month, day);
}

std::optional<double> SecondsFromText(std::string_view text) {
    const bool negative = text.starts_with('-');
    text.remove_prefix(negative ? 1 : 0);
    const std::size_t hourDigits = text.find(':');
    if (hourDigits == std::string_view::npos || hourDigits < 2 || hourDigits > LongestHours ||
        text.size() != hourDigits + 6 || text[hourDigits + 3] != ':') {
        return std::nullopt;
    }
    const auto hours = Digits(text.substr(0, hourDigits));
    const auto minutes = Digits(text.substr(hourDigits + 1, 2));
    const auto seconds = Digits(text.substr(hourDigits + 4, 2));
    if (!hours || !minutes || !seconds || *minutes > 59 || *seconds > 59) {
        return std::nullopt;
    }
    const auto total = static_cast<double>(*hours * 3600 + *minutes * 60 + *seconds);
    return negative ? 0.0 - total : total;
}

std::string TextFromDays(double value, std::string_view separator) {
    const double whole = std::floor(value);
    if (!(whole >= static_cast<double>(FirstDay) && whole <= static_cast<double>(LastDay))) {
        return {};
    }
    const year_month_day date{sys_days{days{static_cast<int>(whole)}}};
    const int yearNumber = static_cast<int>(date.year());
    const std::string between(separator);
    return Formatted(yearNumber < 0 ? "%05d" : "%04d", yearNumber) + between +
           Formatted("%02u", static_cast<unsigned>(date.month())) + between +
           Formatted("%02u", static_cast<unsigned>(date.day()));
}

std::string TextFromSeconds(double value) {
    const double whole = std::trunc(std::abs(value));
    if (!(whole < LargestSeconds)) {
        return {};
    }
    const auto seconds = static_cast<long long>(whole);
    const char* sign = value < 0 && seconds > 0 ? "-" : "";
    return Formatted("%s%02lld:%02lld:%02lld", sign, seconds / 3600, seconds / 60 % 60, seconds % 60);
}

}  // namespace quillara
