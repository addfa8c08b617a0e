#include "workbench/recording/PythonText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

struct CharacterRange {
    std::uint32_t First;
    std::uint32_t Last;
};

/// Characters that can't be seen in a script, or that change how others are seen.
constexpr std::array<CharacterRange, 7> Unseen{{
    {0x0000, 0x001F},
    {0x007F, 0x00A0},
    {0x00AD, 0x00AD},
    {0x200B, 0x200F},
    {0x2028, 0x202E},
    {0x2060, 0x206F},
    {0xFEFF, 0xFEFF},
}};

/// A character of a text, or a byte that is none.
struct Character {
    std::uint32_t Code = 0;
    std::size_t Bytes = 1;
    bool IsValid = true;
};

int TrailingBytes(unsigned char lead) {
    return lead < 0x80                   ? 0
           : lead >= 0xC2 && lead < 0xE0 ? 1
           : lead >= 0xE0 && lead < 0xF0 ? 2
           : lead >= 0xF0 && lead < 0xF5 ? 3
                                         : -1;
}

Character FirstOf(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const int trailing = TrailingBytes(lead);
    const Character broken{lead, 1, false};
    if (trailing < 0 || text.size() <= static_cast<std::size_t>(trailing)) {
        return broken;
    }
    std::uint32_t code = trailing == 0 ? lead : lead & (0x3FU >> static_cast<unsigned>(trailing));
    for (int i = 1; i <= trailing; ++i) {
        const auto byte = static_cast<unsigned char>(text[static_cast<std::size_t>(i)]);
        if ((byte & 0xC0U) != 0x80U) {
            return broken;
        }
        code = code << 6U | (byte & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 4> smallest{0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    const bool isValid = code >= smallest[static_cast<std::size_t>(trailing)] && code <= 0x10FFFF && !isSurrogate;
    return isValid ? Character{code, static_cast<std::size_t>(trailing) + 1, true} : broken;
}

std::string Escaped(std::uint32_t code) {
    char text[16];
    std::snprintf(text, sizeof(text), code < 0x100 ? "\\x%02x" : "\\u%04x", static_cast<unsigned>(code));
    return text;
}

bool IsUnseen(std::uint32_t code) {
    return std::ranges::any_of(Unseen, [code](const auto& range) { return code >= range.First && code <= range.Last; });
}

std::string Literal(const Character& character, std::string_view bytes, char quote) {
    constexpr std::uint32_t escapedByte = 0xDC00;  // for bytes that are no character
    if (!character.IsValid) {
        return Escaped(escapedByte + character.Code);
    }
    switch (character.Code) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        case '\\':
            return "\\\\";
        default:
            break;
    }
    const bool isQuote = character.Code == static_cast<unsigned char>(quote);
    return isQuote                    ? std::string("\\") + quote
           : IsUnseen(character.Code) ? Escaped(character.Code)
                                      : std::string(bytes);
}

std::string Argument(const std::variant<double, std::string>& argument) {
    const auto* text = std::get_if<std::string>(&argument);
    return text != nullptr ? PythonText(*text) : ExactNumberText(std::get<double>(argument));
}

}  // namespace

std::string PythonText(std::string_view text) {
    const bool hasDoubles = text.find('"') != std::string_view::npos;
    const char quote = hasDoubles && text.find('\'') == std::string_view::npos ? '\'' : '"';
    std::string literal(1, quote);
    while (!text.empty()) {
        const Character character = FirstOf(text);
        literal += Literal(character, text.substr(0, character.Bytes), quote);
        text.remove_prefix(character.Bytes);
    }
    return literal + quote;
}

bool IsPlainPython(std::string_view text) {
    while (!text.empty()) {
        const Character character = FirstOf(text);
        if (!character.IsValid) {
            return false;
        }
        text.remove_prefix(character.Bytes);
    }
    return true;
}

std::string PythonComment(std::string_view text) {
    std::string comment;
    while (!text.empty()) {
        const Character character = FirstOf(text);
        const bool isShown = character.IsValid && !IsUnseen(character.Code);
        comment += isShown ? text.substr(0, character.Bytes) : " ";
        text.remove_prefix(character.Bytes);
    }
    return comment.empty() ? comment : "  # " + comment;
}

std::string PythonArguments(const WindowCall& call) {
    std::string arguments;
    for (const auto& argument : call.Arguments) {
        arguments += (arguments.empty() ? "" : ", ") + Argument(argument);
    }
    return arguments;
}

std::string PythonAnswer(std::span<const WindowCall> calls) {
    std::string items;
    for (const WindowCall& call : calls) {
        const std::string arguments = PythonArguments(call);
        items +=
            (items.empty() ? "(" : ", (") + PythonText(call.Name) + (arguments.empty() ? "," : ", ") + arguments + ")";
    }
    return "[" + items + "]";
}

}  // namespace quillara
