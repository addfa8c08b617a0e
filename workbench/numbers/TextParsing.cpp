#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>

#include "host/TextFunctions.h"

namespace {

bool IsDigit(char c) {
    return '0' <= c && c <= '9';
}

/// Whether a comma before three digits may set off thousands; "0,125" and "1234,125" are written by nobody so.
bool MaySetOffThousands(std::string_view whole, std::string_view behind) {
    return !whole.empty() && whole.size() <= 3 && whole.front() != '0' && behind.size() == 3 &&
           std::ranges::all_of(behind, IsDigit);
}

/// Whether the comma at a place of a number without sign can only be its decimal mark.
bool IsDecimalComma(std::string_view text, std::size_t place) {
    const std::string_view behind = text.substr(place + 1);
    return behind.find_first_of(",.") == std::string_view::npos && !behind.empty() && IsDigit(behind.front()) &&
           std::ranges::all_of(text.substr(0, place), IsDigit) && !MaySetOffThousands(text.substr(0, place), behind);
}

/// The number with a decimal point in place of its decimal comma, if it has one.
std::string WithPoint(std::string text) {
    const std::size_t comma = text.find(',');
    const std::size_t sign = text.starts_with('-') ? 1 : 0;
    if (comma != std::string::npos && comma >= sign &&
        IsDecimalComma(std::string_view(text).substr(sign), comma - sign)) {
        text[comma] = '.';
    }
    return text;
}

}  // namespace

char GetListSep() {
    return ';';  // a comma is the decimal separator of many people
}

int wstrcspn(const char* text, const char* set) {
    return static_cast<int>(std::strcspn(text, set));
}

int GetDouble(int /*mode*/, const char* text, int length, double* value) {
    const bool hasPlus = length > 1 && *text == '+' && text[1] != '-';
    const std::string pointed = WithPoint({text + (hasPlus ? 1 : 0), text + length});
    const char* end = pointed.data() + pointed.size();
    double number = 0.0;
    const auto [last, error] = std::from_chars(pointed.data(), end, number);
    if (error != std::errc() || last != end || !std::isfinite(number)) {
        return 1;
    }
    *value = number;
    return 0;
}
