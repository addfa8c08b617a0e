#include "dialogs/BoundaryList.h"

#include <array>

#include "host/TextFunctions.h"

using namespace drilldown;

namespace {

constexpr int ListNumberMode = 5;

bool IsSeparator(char c) {
    return c == ' ' || c == GetListSep();
}

}  // namespace

BoundaryListResult drilldown::ReadBoundaryList(const char* text, std::span<double, MostBoundaries> boundaries) {
    const std::array<char, 3> separators{' ', GetListSep(), '\0'};
    std::size_t count = 0;
    for (;;) {
        while (*text != '\0' && IsSeparator(*text)) {
            ++text;
        }
        if (*text == '\0') {
            return {count, count == 0 ? NotEnoughValues : NoFault};
        }
        if (count == boundaries.size()) {
            return {count, TooManyValues};
        }
        const int length = wstrcspn(text, separators.data());
        double value = 0.0;
        if (GetDouble(ListNumberMode, text, length, &value) != 0) {
            return {count, InvalidValue};
        }
        if (count > 0 && boundaries[count - 1] >= value) {
            return {count, FallingValues};
        }
        boundaries[count++] = value;
        text += length;
    }
}
