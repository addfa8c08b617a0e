#pragma once

namespace drilldown {

/// Divisors below this are divided by through a multiplication.
inline constexpr double LargestWholeDivisor = 0x1p50;

/// Division by a whole number W, 1 .. LargestWholeDivisor, by its reciprocal in two parts:
///
///     High = 1 / W rounded;  Low = High * (1 - W * High);  quotient = d * High + rounded(d * Low), rounded once
///
/// It is the quotient of a division to the last bit for every |d| of 2^-511 .. 2^512. 1 - W * High is exact, and so
/// High + Low is 1 / W, and the sum before its rounding is d / W, within 2^-104 of it. A quotient of a double and a
/// whole number below 2^50 lies farther than that, by more than 2^-104 of it, from every point halfway between two
/// doubles, where the rounding turns: halfway points M * 2^b have odd M of 54 bits, so that d = D * 2^a is no multiple
/// W * M * 2^b of one, and differs from it by a whole number of the smaller of 2^a and 2^b.
/// (Brisebarre, Muller, Raina, "Accelerating correctly rounded floating-point division when the divisor is known in
/// advance", IEEE Transactions on Computers 53:8, 2004; Brisebarre, Muller, "Correctly rounded multiplication by
/// arbitrary precision constants", the same, 57:2, 2008. Markstein's division, IBM Journal of Research and Development
/// 34:1, 1990, takes any divisor but one product more after the other, which a chain of updates has to wait for.)
///
/// `Operations` has One() and Divide, Multiply, FusedAdd(a, b, c) = a * b + c and FusedSubtract(a, b, c) = c - a * b,
/// each rounded once.
template <typename Operations>
struct WholeReciprocal {
    using Values = typename Operations::Values;

    [[gnu::always_inline]] explicit WholeReciprocal(const Values& whole)
        : High(Operations::Divide(Operations::One(), whole)),
          Low(Operations::Multiply(High, Operations::FusedSubtract(whole, High, Operations::One()))) {}

    [[gnu::always_inline]] [[nodiscard]] Values Quotient(const Values& d) const {
        return Operations::FusedAdd(d, High, Operations::Multiply(d, Low));
    }

    Values High;
    Values Low;
};

}  // namespace drilldown
