#include "workbench/numbers/DecimalNumber.h"

#include <charconv>
#include <cmath>
#include <locale>
#include <optional>
#include <sstream>
#include <string>

namespace quillara {
namespace {

constexpr std::size_t NoPoint = std::string_view::npos;

std::size_t PassDigits(std::string_view text, std::size_t place) {
    while (place < text.size() && text[place] >= '0' && text[place] <= '9') {
        ++place;
    }
    return place;
}

bool IsOneOf(std::string_view text, std::size_t place, std::string_view characters) {
    return place < text.size() && characters.find(text[place]) != std::string_view::npos;
}

/// The place behind the exponent at `place`, `place` itself when none is there.
std::size_t PassExponent(std::string_view text, std::size_t place) {
    if (!IsOneOf(text, place, "eE")) {
        return place;
    }
    const std::size_t digits = place + (IsOneOf(text, place + 1, "+-") ? 2 : 1);
    const std::size_t end = PassDigits(text, digits);
    return end > digits ? end : place;
}

/// The place of the point in a decimal number without sign, or NoPoint; nothing when the text is no number.
std::optional<std::size_t> PlaceOfPoint(std::string_view text, char decimal) {
    const std::size_t wholeEnd = PassDigits(text, 0);
    std::size_t end = wholeEnd;
    const bool hasPoint = wholeEnd < text.size() && text[wholeEnd] == decimal;
    if (hasPoint) {
        end = PassDigits(text, wholeEnd + 1);
    }
    // Digits must stand before the point or behind it.
    const bool hasDigits = end > (hasPoint ? 1 : 0);
    if (!hasDigits || PassExponent(text, end) != text.size()) {
        return {};
    }
    return hasPoint ? wholeEnd : NoPoint;
}

/// Whether a number out of the range of doubles is too large; otherwise it is too small.
bool IsTooLarge(const std::string& number) {
    std::istringstream stream(number);
    stream.imbue(std::locale::classic());
    double value = 0;
    stream >> value;
    return std::abs(value) > 1;
}

}  // namespace

DecimalOutcome ReadDecimal(std::string_view text, char decimal, double& value) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const std::optional<std::size_t> point = PlaceOfPoint(text, decimal);
    if (!point) {
        return DecimalOutcome::NoNumber;
    }
    std::string pointed;
    if (decimal != '.' && *point != NoPoint) {
        pointed = text;
        pointed[*point] = '.';
        text = pointed;
    }
    double magnitude = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), magnitude).ec == std::errc::result_out_of_range) {
        if (IsTooLarge(std::string(text))) {
            return DecimalOutcome::TooLarge;
        }
        magnitude = 0;
    }
    value = isNegative ? -magnitude : magnitude;
    return DecimalOutcome::Number;
}

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
