#include "workbench/numbers/DecimalNumber.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
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

/// Digits with a point among them, or none, and nothing else.
struct PlainDigits {
    std::uint64_t Digits = 0;  // without the point
    std::size_t BehindPoint = 0;
    bool Fits = false;  // whether the text is such and Digits holds all of it
};

PlainDigits ReadPlainDigits(std::string_view text, char decimal) {
    constexpr std::size_t mostDigits = 19;
    PlainDigits plain;
    const char* place = text.data();
    const char* const end = place + text.size();
    const auto readDigits = [&] {
        for (; place != end && *place >= '0' && *place <= '9'; ++place) {
            plain.Digits = 10 * plain.Digits + static_cast<std::uint64_t>(*place - '0');
        }
    };
    readDigits();
    const bool hasPoint = place != end && *place == decimal;
    if (hasPoint) {
        const char* const behind = ++place;
        readDigits();
        plain.BehindPoint = static_cast<std::size_t>(place - behind);
    }
    const std::size_t digits = text.size() - (hasPoint ? 1 : 0);
    plain.Fits = place == end && 0 < digits && digits <= mostDigits;
    return plain;
}

/// The value of digits that a double holds as they are, and the power of ten too: their quotient is rounded once, so
/// that it is the nearest double.
std::optional<double> ExactQuotient(const PlainDigits& plain) {
    constexpr std::uint64_t mostExact = std::uint64_t{1} << 53;
    static constexpr auto powers =
        std::to_array<double>({1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                               1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22});
    if (plain.Digits > mostExact || plain.BehindPoint >= powers.size()) {
        return {};
    }
    return static_cast<double>(plain.Digits) / powers[plain.BehindPoint];
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
    const PlainDigits plain = ReadPlainDigits(text, decimal);
    if (plain.Fits) {
        if (const std::optional<double> quotient = ExactQuotient(plain)) {
            value = isNegative ? -*quotient : *quotient;
            return DecimalOutcome::Number;
        }
    }
    const bool isPlain = plain.Fits && decimal == '.';
    const std::optional<std::size_t> point = isPlain ? NoPoint : PlaceOfPoint(text, decimal);
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
