#pragma once

#include <bit>
#include <cstdint>
#include <limits>

// Comparison of doubles by their ordered bit patterns: values that should be equal after different
// arithmetic count as equal when at most 15 representable numbers lie between them.
// (Dawson, "Comparing Floating Point Numbers", 2012: integer comparison of IEEE patterns.)

/// How many units in the last place two values may lie apart and still count as equal.
inline constexpr std::uint64_t BitTolerance = 15;

/// A signed integer that rises monotonically with x; 0.0 and -0.0 give 0.
[[nodiscard]] constexpr std::int64_t OrderedBits(double x) noexcept {
    const auto bits = std::bit_cast<std::uint64_t>(x);
    const bool negative = (bits >> 63) != 0;
    return std::bit_cast<std::int64_t>(negative ? 0x8000000000000000ULL - bits : bits);
}

/// The value whose OrderedBits is `ordered`; the inverse up to the sign of zero.
[[nodiscard]] constexpr double FromOrderedBits(std::int64_t ordered) noexcept {
    const auto bits = std::bit_cast<std::uint64_t>(ordered);
    return std::bit_cast<double>(ordered < 0 ? 0x8000000000000000ULL - bits : bits);
}

/// True when a lies more than the tolerance below b, that is OrderedBits(a) < OrderedBits(b) - 15.
[[nodiscard]] constexpr bool ClearlyBelow(double a, double b) noexcept {
    const std::int64_t left = OrderedBits(a);
    const std::int64_t right = OrderedBits(b);
    const std::uint64_t distance = static_cast<std::uint64_t>(right) - static_cast<std::uint64_t>(left);
    return left < right && (distance > BitTolerance);
}

/// True for infinities and NaN: all exponent bits are set.
[[nodiscard]] constexpr bool HasFullExponent(double x) noexcept {
    constexpr std::uint64_t exponent = 0x7FF0000000000000ULL;
    return (std::bit_cast<std::uint64_t>(x) & exponent) == exponent;
}

/// True when a and b lie at most 15 units apart. Infinities and NaN are equal to nothing, whatever their sign.
[[nodiscard]] constexpr bool NearlyEqual(double a, double b) noexcept {
    return !ClearlyBelow(a, b) && !ClearlyBelow(b, a) && !HasFullExponent(a) && !HasFullExponent(b);
}

/// True when a case of this weight takes part: the weight is above the 15 smallest positive doubles.
[[nodiscard]] constexpr bool IsPositiveWeight(double weight) noexcept {
    // The pattern of a number with a sign is negative, any other is its own ordered pattern.
    return std::bit_cast<std::int64_t>(weight) > static_cast<std::int64_t>(BitTolerance);
}

/// True when a count isn't nearly zero.
[[nodiscard]] constexpr bool IsNonZero(double count) noexcept {
    return !NearlyEqual(count, 0.0);
}

/// The closed range of doubles that are NearlyEqual to one value: x is nearly equal exactly when
/// Lowest <= x and x <= Highest. Two plain comparisons, for loops over many values.
struct NearlyEqualRange {
    double Lowest;
    double Highest;

    [[nodiscard]] constexpr bool Contains(double x) const noexcept { return Lowest <= x && x <= Highest; }
};

/// The range of `value`; empty (it contains nothing) for infinities and NaN.
[[nodiscard]] constexpr NearlyEqualRange RangeNearlyEqualTo(double value) noexcept {
    constexpr double largest = std::numeric_limits<double>::max();
    if (HasFullExponent(value)) {
        return {1.0, -1.0};
    }
    const std::int64_t centre = OrderedBits(value);
    const auto tolerance = static_cast<std::int64_t>(BitTolerance);
    const std::int64_t limit = OrderedBits(largest);
    const std::int64_t low = centre - tolerance < -limit ? -limit : centre - tolerance;
    const std::int64_t high = centre + tolerance > limit ? limit : centre + tolerance;
    return {FromOrderedBits(low), FromOrderedBits(high)};
}
