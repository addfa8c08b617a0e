#include "workbench/formats/XmlText.h"

#include <charconv>
#include <optional>

namespace quillara {
namespace {

constexpr std::size_t EscapeLength = 7;  // _xHHHH_

/// The code of the escape at the front of a text.
std::optional<unsigned> EscapedCode(std::string_view text) {
    if (text.size() < EscapeLength || !text.starts_with("_x") || text[EscapeLength - 1] != '_') {
        return std::nullopt;
    }
    unsigned code = 0;
    const char* const end = text.data() + EscapeLength - 1;
    const auto [behind, error] = std::from_chars(text.data() + 2, end, code, 16);
    return error == std::errc() && behind == end ? std::optional(code) : std::nullopt;
}

std::string EscapeOf(unsigned code) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    return {'_', 'x', '0', '0', digits[code / 16], digits[code % 16], '_'};
}

}  // namespace

void AppendXmlText(std::string& xml, std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        const auto code = static_cast<unsigned char>(character);
        const bool isControl = code < 0x20 && character != '\t' && character != '\n';
        if (isControl || (character == '_' && EscapedCode(text.substr(at)))) {
            xml += EscapeOf(code);
        } else if (character == '&') {
            xml += "&amp;";
        } else if (character == '<') {
            xml += "&lt;";
        } else if (character == '>') {
            xml += "&gt;";
        } else if (character == '"') {
            xml += "&quot;";
        } else {
            xml += character;
        }
    }
}

std::string WithoutEscapes(std::string text) {
    for (std::size_t at = text.find("_x"); at != std::string::npos; at = text.find("_x", at + 1)) {
        const std::optional<unsigned> code = EscapedCode(std::string_view(text).substr(at));
        constexpr unsigned asciiEnd = 0x80;  // others need no escape
        if (code && *code > 0 && *code < asciiEnd) {
            text.replace(at, EscapeLength, 1, static_cast<char>(*code));
        }
    }
    return text;
}

}  // namespace quillara
