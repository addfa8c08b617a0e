#pragma once

#include <string_view>

namespace quillara {

enum class DecimalOutcome {
    Number,
    NoNumber,  ///< the text isn't [+-]?(digits[.digits]?|.digits)([eE][+-]?digits)?
    TooLarge,  ///< its magnitude is beyond the largest double
};

/// The double nearest to a decimal number with `decimal` as its point; `value` is set for DecimalOutcome::Number only.
/// A number too small for a double is 0.
[[nodiscard]] DecimalOutcome ReadDecimal(std::string_view text, char decimal, double& value);

}  // namespace quillara
