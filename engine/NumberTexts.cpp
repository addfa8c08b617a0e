#include "engine/NumberTexts.h"

#include <array>
#include <cmath>
#include <cstring>

using namespace drilldown;

namespace {

constexpr short FieldWidth = 8;
constexpr short TextSize = 14;
constexpr char NotPrintable[] = "--";

/// Without trailing blanks, and then without trailing points.
std::string TrimBound(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    text.erase(text.find_last_not_of('.') + 1);
    return text;
}

}  // namespace

int drilldown::RealToFieldText(double value, unsigned char flags, char* buffer) {
    if (ValueIsValid(&value) == 0) {
        std::memcpy(buffer, NotPrintable, sizeof(NotPrintable));
        return 2;
    }
    short decimals = 8;
    const double magnitude = std::fabs(value);
    if ((flags & NumberFieldText) != 0 && magnitude < 1.0 && magnitude >= 0.001) {
        flags = static_cast<unsigned char>(flags & ~NumberFieldText);
        decimals = 7;
    }
    // The host may use all the room that it is told, which is more than the field has.
    std::array<char, TextSize> text{};
    RealToText(value, flags, FieldWidth, decimals, text.data(), TextSize);
    text[FieldWidth] = '\0';
    std::strcpy(buffer, text.data());
    return static_cast<int>(std::strlen(buffer));
}

std::string drilldown::FieldBoundText(double value) {
    std::array<char, TextSize> text{};
    RealToFieldText(value, CategoryBoundText, text.data());
    return TrimBound(text.data());
}

std::string drilldown::RealBoundText(double value) {
    if (ValueIsValid(&value) == 0) {
        return NotPrintable;
    }
    std::array<char, TextSize> text{};
    RealToText(value, CategoryBoundText, FieldWidth, 8, text.data(), TextSize);
    return TrimBound(text.data());
}

std::string drilldown::TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}
