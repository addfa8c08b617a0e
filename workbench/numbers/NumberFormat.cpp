#include "workbench/numbers/NumberFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

constexpr double LeastCommonNumber = 0.01;
constexpr double LeastHugeNumber = 1e15;
constexpr int HugeDigits = 6;

// Holds the longest text asked for, a huge number in plain digits.
using NumberBuffer = std::array<char, 400>;

std::string Written(double number, std::chars_format form, int precision) {
    NumberBuffer buffer;
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, form, precision).ptr};
}

bool HasCommonForm(double number) {
    const double magnitude = std::fabs(number);
    return number == 0.0 || (LeastCommonNumber <= magnitude && magnitude < LeastHugeNumber);
}

int DecimalsNeeded(double number, int mostDecimals) {
    const std::string text = Written(number, std::chars_format::fixed, mostDecimals);
    const auto zeros = text.size() - WithoutTrailingZeros(text).size();
    return std::max(0, mostDecimals - static_cast<int>(zeros));
}

}  // namespace

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
        const int digits = std::fabs(number) < LeastHugeNumber ? SmallDigits : HugeDigits;
        return Written(number, std::chars_format::general, digits);
    }
    const std::string text = Written(number, std::chars_format::fixed, Decimals);
    return text.starts_with('-') && text.find_first_of("123456789") == std::string::npos ? text.substr(1) : text;
}

}  // namespace quillara
