#include "workbench/documents/WideText.h"

#include <array>
#include <cstdint>

namespace quillara {
namespace {

constexpr char32_t Replacement = 0xFFFD;

/// The character that a text begins with, which is taken off the text.
char32_t TakeCharacter(std::string_view& text) {
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

}  // namespace

std::u16string WideText(std::string_view text) {
    std::u16string wide;
    while (!text.empty()) {
        const char32_t character = TakeCharacter(text);
        if (character < 0x10000) {
            wide += static_cast<char16_t>(character);
        } else {
            wide += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
            wide += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
        }
    }
    return wide;
}

}  // namespace quillara
