#include "workbench/command/Numbers.h"

#include <charconv>

#include "workbench/numbers/DecimalNumber.h"

namespace quillara {

std::optional<double> DecimalNumber(std::string_view text) {
    double value = 0.0;
    const bool isNumber = ReadDecimal(text, '.', value) == DecimalOutcome::Number;
    return isNumber ? std::optional(value) : std::nullopt;
}

std::optional<int> WholeNumber(std::string_view text) {
    int value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    const bool isWhole = error == std::errc() && stop == end && text.front() != '-';
    return isWhole ? std::optional(value) : std::nullopt;
}

}  // namespace quillara
