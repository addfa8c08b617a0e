#include "workbench/numbers/ExactNumbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace quillara {
namespace {

constexpr double SmallestExponentNumber = 9007199254740992.0;  // 2^53: above it not every whole number is a double

}  // namespace

bool IsExactWhole(double number) {
    const bool isNegativeZero = number == 0.0 && std::signbit(number);
    return std::trunc(number) == number && std::fabs(number) < SmallestExponentNumber && !isNegativeZero;
}

std::string ExactNumberText(double number) {
    if (!std::isfinite(number)) {
        return {};
    }
    if (IsExactWhole(number)) {
        return std::to_string(static_cast<std::int64_t>(number));
    }
    std::array<char, 32> buffer{};
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

std::string WithoutTrailingZeros(std::string digits) {
    digits.erase(digits.find_last_not_of('0') + 1);
    return digits;
}

}  // namespace quillara
