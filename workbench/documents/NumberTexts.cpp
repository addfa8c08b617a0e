#include "workbench/documents/NumberTexts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace quillara {
namespace {

constexpr double smallestExponentNumber = 9007199254740992.0;  // 2^53: above it not every whole number is a double
constexpr double leastCommonNumber = 0.01;
constexpr double leastHugeNumber = 1e15;
constexpr int hugeDigits = 6;

// Holds the longest text asked for, a huge number in plain digits.
using NumberBuffer = std::array<char, 400>;

std::string Written(double number, std::chars_format form, int precision) {
    NumberBuffer buffer;
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, form, precision).ptr};
}

bool HasCommonForm(double number) {
    const double magnitude = std::fabs(number);
    return number == 0.0 || (leastCommonNumber <= magnitude && magnitude < leastHugeNumber);
}

int DecimalsNeeded(double number, int mostDecimals) {
    const std::string text = Written(number, std::chars_format::fixed, mostDecimals);
    const auto zeros = text.size() - 1 - text.find_last_not_of('0');
    return std::max(0, mostDecimals - static_cast<int>(zeros));
}

}  // namespace

bool IsExactWhole(double number) {
    const bool isNegativeZero = number == 0.0 && std::signbit(number);
    return std::trunc(number) == number && std::fabs(number) < smallestExponentNumber && !isNegativeZero;
}

std::string ExactNumberText(double number) {
    if (!std::isfinite(number)) {
        return {};
    }
    if (IsExactWhole(number)) {
        return std::to_string(static_cast<std::int64_t>(number));
    }
    NumberBuffer buffer;
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

NumberFormat::NumberFormat(const std::vector<double>& numbers, int mostDecimals) : SmallDigits(mostDecimals) {
    for (const double number : numbers) {
        if (HasCommonForm(number)) {
            Decimals = std::max(Decimals, DecimalsNeeded(number, mostDecimals));
        }
    }
}

std::string NumberFormat::TextOf(double number) const {
    if (!std::isfinite(number)) {
        return {};
    }
    if (!HasCommonForm(number)) {
        const int digits = std::fabs(number) < leastHugeNumber ? SmallDigits : hugeDigits;
        return Written(number, std::chars_format::general, digits);
    }
    const double withoutSignOfZero = number + 0.0;
    return Written(withoutSignOfZero, std::chars_format::fixed, Decimals);
}

}  // namespace quillara
