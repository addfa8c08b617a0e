#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "workbench/numbers/DigitWords.h"

namespace quillara {

/// So many bytes behind the text that ReadShortDecimal is given must be there to be read, whatever they hold.
inline constexpr std::size_t RoomBehindDecimal = 16;

/// Reads a decimal number as ReadDecimal does if it is a short one, as nearly all are: no exponent, and at most 16
/// digits, 8 before the point. False: it's another, or none, and `value` stays.
inline bool ReadShortDecimal(std::string_view text, char decimal, double& value) {
    constexpr std::uint64_t mostExact = std::uint64_t{1} << 53;
    static constexpr std::array<double, 9> powers = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
    static constexpr std::array<std::uint64_t, 9> wholePowers = {1,      10,      100,      1000,     10000,
                                                                 100000, 1000000, 10000000, 100000000};
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(std::size_t{isNegative} | std::size_t{text.starts_with('+')});
    const char* const begin = text.data();
    const std::uint64_t first = WordAt(begin);
    const std::size_t point = FindInWord(first, decimal);
    const std::size_t points = point < text.size() && begin[point] == decimal ? 1 : 0;
    const std::size_t before = std::min(point, text.size());
    const std::size_t behind = text.size() - before - points;  // without a point digits beyond the eighth
    if (behind > 8 || before + behind == 0) {
        return false;
    }
    const TwiceEightDigits values(DigitsOf(first, before), DigitsOf(WordAt(begin + before + points), behind));
    const auto [whole, rest] = values.Joined();
    const std::uint64_t digits = wholePowers[behind] * whole + rest;
    if (!values.AreDigits() || digits > mostExact) {
        return false;
    }
    // Digits and power stand in doubles as they are: their quotient is rounded once, to the nearest double.
    const double quotient = static_cast<double>(static_cast<std::int64_t>(digits)) / powers[behind * points];
    value = std::bit_cast<double>(std::bit_cast<std::uint64_t>(quotient) | std::uint64_t{isNegative} << 63);
    return true;
}

}  // namespace quillara
