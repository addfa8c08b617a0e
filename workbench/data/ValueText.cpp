#include "workbench/data/ValueText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"

namespace quillara {
namespace {

constexpr double SecondsOfMinute = 60.0;
constexpr std::size_t SecondsPart = 3;  // of HH:MM:SS
constexpr double LeastPlain = 1e-5;
constexpr double LeastHuge = 1e15;
constexpr int ShortDigits = 6;
constexpr int MostDecimals = 15;

std::string Written(double number, std::chars_format form, int precision) {
    std::array<char, 400> buffer{};
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, form, precision).ptr};
}

/// How many decimals a step has in its shortest form: 2 for 0.25, 0 for 500.
int DecimalsOf(double step) {
    for (int decimals = 0; decimals < MostDecimals; ++decimals) {
        const double scaled = step * std::pow(10.0, decimals);
        if (std::fabs(scaled - std::round(scaled)) <= 1e-9 * scaled) {
            return decimals;
        }
    }
    return MostDecimals;
}

std::string WithoutSignOfZero(std::string text) {
    const bool isZero = text.find_first_of("123456789") == std::string::npos;
    return isZero && text.starts_with('-') ? text.substr(1) : text;
}

std::string TextOfNumber(double value, double step) {
    const double magnitude = std::fabs(value);
    if (magnitude >= LeastHuge) {
        return Written(value, std::chars_format::general, ShortDigits);
    }
    if (step >= LeastPlain) {
        return WithoutSignOfZero(Written(value, std::chars_format::fixed, DecimalsOf(step)));
    }
    const bool hasAllDigits = magnitude >= std::pow(10.0, ShortDigits) && value == std::floor(value);
    return hasAllDigits ? Written(value, std::chars_format::fixed, 0)
                        : WithoutSignOfZero(Written(value, std::chars_format::general, ShortDigits));
}

std::string TextOfDate(double days, double step) {
    const bool isWhole = step <= 0.0 || step >= 1.0;
    const double seconds = std::round(days * SecondsOfDay);
    const double day = isWhole ? days : std::floor(seconds / SecondsOfDay);
    std::string date = TextFromDays(day);
    if (isWhole || date.empty()) {
        return date;
    }
    const std::string time = TextFromSeconds(seconds - day * SecondsOfDay);
    const bool needsSeconds = std::round(step * SecondsOfDay) < SecondsOfMinute;
    return date + ' ' + time.substr(0, time.size() - (needsSeconds ? 0 : SecondsPart));
}

std::string TextOfTime(double seconds, double step) {
    std::string time = TextFromSeconds(seconds);
    const bool isWholeMinutes = step > 0.0 && std::fmod(step, SecondsOfMinute) == 0.0;
    return isWholeMinutes && !time.empty() ? time.substr(0, time.size() - SecondsPart) : time;
}

std::string TextOfDateTime(double seconds, double step) {
    const bool isToldByStep = step > 0.0 && std::floor(step) == step;
    constexpr double parts = 1000.0;
    return isToldByStep ? TextFromDateTime(seconds, ' ', std::max(PrecisionOf(seconds), PrecisionOf(step)))
                        : TextFromDateTime(std::round(seconds * parts) / parts);
}

std::string SpecialText(ValueKind kind, double value, double step) {
    switch (kind) {
        case ValueKind::Date:
            return TextOfDate(value, step);
        case ValueKind::TimeOfDay:
            return TextOfTime(value, step);
        case ValueKind::DateTime:
            return TextOfDateTime(value, step);
        case ValueKind::Number:
        case ValueKind::Text:
            break;
    }
    return {};
}

}  // namespace

std::string TextOfValue(ValueKind kind, double value, double step) {
    if (!std::isfinite(value)) {
        return {};
    }
    std::string special = SpecialText(kind, value, step);
    return special.empty() ? TextOfNumber(value, step) : special;
}

}  // namespace quillara
