#pragma once

#include <optional>
#include <string_view>

namespace quillara {

enum class DecimalOutcome {
    Number,
    NoNumber,  ///< the text isn't [+-]?(digits[.[digits]]|.digits)([eE][+-]?digits)?
    TooLarge,  ///< its magnitude is beyond the largest double
};

/// The double nearest to a decimal number with `decimal` as its point; `value` is set for DecimalOutcome::Number only.
/// A number too small for a double is 0.
[[nodiscard]] DecimalOutcome ReadDecimal(std::string_view text, char decimal, double& value);

/// The value of a decimal number with a point; nothing for any other text, and for one too large for a double.
[[nodiscard]] std::optional<double> DecimalNumber(std::string_view text);

/// The value of a text of digits only; nothing for any other text, and when it doesn't fit.
[[nodiscard]] std::optional<int> WholeNumber(std::string_view text);

}  // namespace quillara
