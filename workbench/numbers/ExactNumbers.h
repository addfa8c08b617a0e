#pragma once

#include <string>

namespace quillara {

/// Whether a number is whole and below 2^53 in magnitude, so that its digits alone give it back. Negative zero isn't.
[[nodiscard]] bool IsExactWhole(double number);

/// The shortest text that reads back as the same number, whole numbers below 2^53 in plain digits. Empty for a number
/// that isn't finite.
[[nodiscard]] std::string ExactNumberText(double number);

/// Digits without the zeros at their end.
[[nodiscard]] std::string WithoutTrailingZeros(std::string digits);

}  // namespace quillara
