#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

// The two encodings of texts: UTF-8, and the UTF-16 of automation.

namespace automation {

inline constexpr char32_t Replacement = 0xFFFD;

/// The character that a text begins with, which is taken off the text.
inline char32_t TakeCharacter(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
    constexpr std::array<unsigned, 5> leadBits{0, 0x7F, 0x1F, 0x0F, 0x07};
    if (length == 0 || length > text.size()) {
        text.remove_prefix(1);
        return Replacement;
    }
    char32_t character = lead & leadBits[length];
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80) {
            text.remove_prefix(i);
            return Replacement;
        }
        character = character << 6 | (next & 0x3FU);
    }
    text.remove_prefix(length);
    return character;
}

inline constexpr char32_t FirstHigh = 0xD800;
inline constexpr char32_t FirstLow = 0xDC00;
inline constexpr char32_t BehindLow = 0xE000;
inline constexpr char32_t FirstOfPairs = 0x10000;

/// The same of a text of UTF-16.
inline char32_t TakeCharacter(std::u16string_view& text) {
    const char32_t first = text.front();
    text.remove_prefix(1);
    if (first < FirstHigh || first >= BehindLow) {
        return first;
    }
    const char32_t second = text.empty() ? U'\0' : char32_t{text.front()};
    if (first >= FirstLow || second < FirstLow || second >= BehindLow) {
        return Replacement;
    }
    text.remove_prefix(1);
    return FirstOfPairs + ((first - FirstHigh) << 10) + (second - FirstLow);
}

inline void Append(std::string& text, char32_t character) {
    const auto follow = [character](int shift) { return static_cast<char>(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += {static_cast<char>(0xC0 | character >> 6), follow(0)};
    } else if (character < FirstOfPairs) {
        text += {static_cast<char>(0xE0 | character >> 12), follow(6), follow(0)};
    } else {
        text += {static_cast<char>(0xF0 | character >> 18), follow(12), follow(6), follow(0)};
    }
}

}  // namespace automation

/// A text of UTF-16 as UTF-8. Half of a pair that stands alone becomes the replacement character.
[[nodiscard]] inline std::string NarrowText(std::u16string_view text) {
    std::string narrow;
    while (!text.empty()) {
        automation::Append(narrow, automation::TakeCharacter(text));
    }
    return narrow;
}

/// A text of UTF-8 as UTF-16. A byte that belongs to no character becomes the replacement character.
[[nodiscard]] inline std::u16string WideText(std::string_view text) {
    std::u16string wide;
    while (!text.empty()) {
        const char32_t character = automation::TakeCharacter(text);
        if (character < 0x10000) {
            wide += static_cast<char16_t>(character);
        } else {
            wide += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
            wide += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
        }
    }
    return wide;
}
