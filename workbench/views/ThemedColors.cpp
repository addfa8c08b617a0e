#include "workbench/views/ThemedColors.h"

#include <algorithm>
#include <set>
#include <utility>

namespace quillara {
namespace {

// A pair of colours is a property of the page that has both in its name: var(--p0072b2-4a9fdc).
constexpr std::string_view ColorFront = "=\"#";
constexpr std::string_view PropertyFront = "--p";
constexpr std::string_view UseFront = "var(--p";
constexpr std::size_t ColorLength = 6;
constexpr std::size_t PairLength = 2 * ColorLength + 1;

bool IsColor(std::string_view text) {
    return text.size() == ColorLength && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

bool IsPair(std::string_view text) {
    return text.size() == PairLength && text[ColorLength] == '-' && IsColor(text.substr(0, ColorLength)) &&
           IsColor(text.substr(ColorLength + 1));
}

/// What stands before the next colour of a text, and the colour; both are taken away.
struct Piece {
    std::string_view Before;
    std::string_view Color;
};

Piece TakePiece(std::string_view& text) {
    const std::size_t at = text.find(ColorFront);
    if (at == std::string_view::npos) {
        return {std::exchange(text, {}), {}};
    }
    const std::size_t front = at + ColorFront.size() - 1;
    const Piece piece{text.substr(0, front), text.substr(front + 1, ColorLength)};
    text.remove_prefix(std::min(front + 1 + ColorLength, text.size()));
    return piece;
}

std::string TextOf(std::string_view light, std::string_view dark) {
    if (light == dark) {
        return light.empty() ? "" : '#' + std::string(light);
    }
    return std::string(UseFront) + std::string(light) + '-' + std::string(dark) + ')';
}

}  // namespace

std::optional<std::string> InBothThemes(std::string_view light, std::string_view dark) {
    std::string merged;
    merged.reserve(light.size() * 2);
    while (!light.empty() && !dark.empty()) {
        const Piece day = TakePiece(light);
        const Piece night = TakePiece(dark);
        const bool areColors = day.Color == night.Color || (IsColor(day.Color) && IsColor(night.Color));
        if (day.Before != night.Before || !areColors) {
            return std::nullopt;
        }
        merged += day.Before;
        merged += TextOf(day.Color, night.Color);
    }
    return light.empty() && dark.empty() ? std::optional(merged) : std::nullopt;
}

std::string ThemeRules(std::string_view contents) {
    std::set<std::string> pairs;
    for (std::size_t at = contents.find(UseFront); at != std::string_view::npos;
         at = contents.find(UseFront, at + UseFront.size())) {
        const std::string_view pair = contents.substr(at + UseFront.size(), PairLength);
        if (IsPair(pair)) {
            pairs.insert(std::string(pair));
        }
    }
    std::string day;
    std::string night;
    for (const std::string& pair : pairs) {
        const std::string name = std::string(PropertyFront) + pair + ": #";
        day += name + pair.substr(0, ColorLength) + ";\n";
        night += name + pair.substr(ColorLength + 1) + ";\n";
    }
    return pairs.empty() ? ""
                         : ":root {\n" + day + "}\n@media screen and (prefers-color-scheme: dark) {\n:root {\n" +
                               night + "}\n}\n";
}

}  // namespace quillara
