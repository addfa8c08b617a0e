#include "workbench/data/Calendar.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "workbench/data/DayNumber.h"

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

template <class... Numbers>
std::string Formatted(const char* format, Numbers... numbers) {
    std::array<char, 64> text{};
    const int length = std::snprintf(text.data(), text.size(), format, numbers...);
    return {text.data(), static_cast<std::size_t>(length)};
}

}  // namespace

std::optional<double> DaysFromText(std::string_view text) {
    const std::int32_t day = DayNumber(text);
    return day == NoDay ? std::nullopt : std::optional<double>(day);
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
