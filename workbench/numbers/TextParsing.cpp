#include <charconv>
#include <cmath>
#include <cstring>

#include "host/TextFunctions.h"

char GetListSep() {
    return ';';  // a comma is the decimal separator of many people
}

int wstrcspn(const char* text, const char* set) {
    return static_cast<int>(std::strcspn(text, set));
}

int GetDouble(int /*mode*/, const char* text, int length, double* value) {
    const char* end = text + length;
    if (length > 1 && *text == '+' && text[1] != '-') {
        ++text;
    }
    double number = 0.0;
    const auto [last, error] = std::from_chars(text, end, number);
    if (error != std::errc() || last != end || !std::isfinite(number)) {
        return 1;
    }
    *value = number;
    return 0;
}
