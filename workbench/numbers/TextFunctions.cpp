#include "host/TextFunctions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <optional>
#include <string>

#include "workbench/numbers/ExactNumbers.h"

namespace {

constexpr int FaithfulDigits = 15;  // every decimal number of so many digits survives the way through a double
constexpr double Negligible = 1e-12;
constexpr char NotPrintable[] = "--";

/// A number's magnitude as d.ddd times a power of ten.
struct Digits {
    std::string Text;  ///< without a point
    int Exponent;  ///< of the first digit
};

// Numbers are formatted by to_chars, which knows no locale: a program that sets one gets the same texts.

Digits RoundedTo(int digits, double magnitude) {
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                   std::chars_format::scientific, digits - 1)
                         .ptr;
    const std::string text(buffer.data(), end);
    const std::size_t mark = text.find('e');
    Digits result{text.substr(0, mark), std::stoi(text.substr(mark + 1))};
    std::erase(result.Text, '.');
    return result;
}

std::string Fixed(const Digits& digits) {
    const int count = static_cast<int>(digits.Text.size());
    if (digits.Exponent < 0) {
        return "0." + std::string(static_cast<std::size_t>(-digits.Exponent - 1), '0') + digits.Text;
    }
    if (count <= digits.Exponent + 1) {
        return digits.Text + std::string(static_cast<std::size_t>(digits.Exponent + 1 - count), '0');
    }
    std::string text = digits.Text;
    return text.insert(static_cast<std::size_t>(digits.Exponent) + 1, 1, '.');
}

std::string Scientific(const Digits& digits) {
    std::string text = digits.Text;
    if (text.size() > 1) {
        text.insert(1, 1, '.');
    }
    return text + "e" + std::to_string(digits.Exponent);
}

struct Candidate {
    std::string Text;
    std::size_t SignificantDigits;
};

/// The fixed notation with the most decimals that has at most `room` characters.
std::optional<Candidate> LongestFixed(double magnitude, int exponent, int room) {
    std::array<char, 128> buffer{};
    for (int decimals = exponent < room ? room : -1; decimals >= 0; --decimals) {
        const auto end =
            std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, std::chars_format::fixed, decimals)
                .ptr;
        if (end - buffer.data() > room) {
            continue;
        }
        std::string text(buffer.data(), end);
        std::string digits = text;
        std::erase(digits, '.');
        const std::size_t first = std::min(digits.find_first_not_of('0'), digits.size());
        if (decimals > 0) {
            text = quillara::WithoutTrailingZeros(text);
            text.erase(text.find_last_not_of('.') + 1);
        }
        return Candidate{text, digits.size() - first};
    }
    return std::nullopt;
}

/// The scientific notation with the most digits that has at most `room` characters.
std::optional<Candidate> LongestScientific(double magnitude, int room) {
    for (int count = room; count >= 1; --count) {
        Digits digits = RoundedTo(count, magnitude);
        if (static_cast<int>(Scientific(digits).size()) <= room) {
            digits.Text = quillara::WithoutTrailingZeros(digits.Text);
            return Candidate{Scientific(digits), static_cast<std::size_t>(count)};
        }
    }
    return std::nullopt;
}

/// The text of a magnitude, of at most `room` characters; nothing when there is none.
std::optional<std::string> TextOfMagnitude(double magnitude, int room) {
    Digits digits = RoundedTo(FaithfulDigits, magnitude);
    digits.Text = quillara::WithoutTrailingZeros(digits.Text);
    for (const std::string& exact : {Fixed(digits), Scientific(digits)}) {
        if (static_cast<int>(exact.size()) <= room) {
            return exact;
        }
    }
    const auto fixed = LongestFixed(magnitude, digits.Exponent, room);
    const auto scientific = LongestScientific(magnitude, room);
    if (fixed && (!scientific || fixed->SignificantDigits >= scientific->SignificantDigits)) {
        return fixed->Text;
    }
    return scientific ? std::optional(scientific->Text) : std::nullopt;
}

std::string NumberText(double value, int room) {
    if (!std::isfinite(value)) {
        return NotPrintable;
    }
    if (std::fabs(value) < Negligible) {
        return "0";
    }
    const std::string sign = value < 0 ? "-" : "";
    const auto text = TextOfMagnitude(std::fabs(value), room - static_cast<int>(sign.size()));
    // A field too narrow for any text shows that there is a number, but not a wrong one.
    return text ? (*text == "0" ? *text : sign + *text) : std::string(static_cast<std::size_t>(room), '*');
}

short Write(const std::string& text, int room, char* buffer) {
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(room));
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return static_cast<short>(length);
}

}  // namespace

short RealToText(double value, unsigned char /*flags*/, short width, short /*decimals*/, char* text, short size) {
    if (text == nullptr || size < 1) {
        return 0;
    }
    const int room = std::max(0, std::min<int>(width, size - 1));
    return Write(NumberText(value, room), room, text);
}

short IntToText(long value, unsigned char flags, short width, char* text) {
    if (text == nullptr) {
        return 0;
    }
    const std::string digits = std::to_string(value);
    if (static_cast<int>(digits.size()) <= width) {
        return Write(digits, width, text);
    }
    const int room = std::clamp<int>(width, 0, 32766);
    return RealToText(static_cast<double>(value), flags, static_cast<short>(room), 0, text,
                      static_cast<short>(room + 1));
}

int ValueIsValid(const double* value) {
    return std::isfinite(*value) ? 1 : 0;
}
