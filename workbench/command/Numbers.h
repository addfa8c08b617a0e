#pragma once

#include <optional>
#include <string_view>

namespace quillara {

/// The value of a decimal number with a point; nothing for any other text, and for one too large for a double.
[[nodiscard]] std::optional<double> DecimalNumber(std::string_view text);

/// The value of a text of digits only; nothing for any other text, and when it doesn't fit.
[[nodiscard]] std::optional<int> WholeNumber(std::string_view text);

}  // namespace quillara
