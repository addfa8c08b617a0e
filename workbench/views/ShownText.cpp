#include "workbench/views/ShownText.h"

#include <algorithm>
#include <array>

namespace quillara {
namespace {

constexpr std::string_view ReplacementCharacter = "\xEF\xBF\xBD";

/// The character at the front of a text.
struct Character {
    char32_t Code = 0;
    std::size_t Length = 1;  ///< bytes
    bool IsValid = false;
    bool IsCutOff = false;  ///< the text ends before the character does
};

/// How many bytes of a character follow its lead byte, and the least number that needs so many.
struct LeadForm {
    unsigned char Mask;
    unsigned char Mark;
    std::size_t Followers;
    char32_t Least;
};
// clang-format off
constexpr std::array<LeadForm, 4> LeadForms = {{
    {0x80, 0x00, 0, 0x0},
    {0xE0, 0xC0, 1, 0x80},
    {0xF0, 0xE0, 2, 0x800},
    {0xF8, 0xF0, 3, 0x10000},
}};
// clang-format on

bool IsCharacter(char32_t code) {
    const bool isSurrogate = 0xD800 <= code && code <= 0xDFFF;
    return code <= 0x10FFFF && !isSurrogate;
}

Character FrontOf(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const auto form = std::ranges::find_if(
        LeadForms, [lead](const LeadForm& candidate) { return (lead & candidate.Mask) == candidate.Mark; });
    if (form == LeadForms.end()) {
        return {};
    }
    char32_t code = lead & static_cast<unsigned char>(~form->Mask);
    for (std::size_t i = 1; i <= form->Followers; ++i) {
        if (i == text.size()) {
            return {.IsCutOff = true};
        }
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0) != 0x80) {
            return {};
        }
        code = (code << 6) | (byte & 0x3F);
    }
    if (code < form->Least || !IsCharacter(code)) {
        return {};
    }
    return {.Code = code, .Length = 1 + form->Followers, .IsValid = true};
}

/// What stands for the character at the front of a text.
using Substitute = std::string (*)(const Character& character, std::string_view itself);

std::string Substituted(std::string_view text, Substitute substitute) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Character character = FrontOf(text);
        if (character.IsCutOff) {
            break;
        }
        result += substitute(character, text.substr(0, character.Length));
        text.remove_prefix(character.Length);
    }
    return result;
}

struct CodeRange {
    char32_t First;
    char32_t Last;
};

// Characters that would steer a terminal, or turn the direction of the text around them.
constexpr CodeRange SteeringRanges[] = {
    {0x00, 0x1F}, {0x7F, 0x9F}, {0x200E, 0x200F}, {0x202A, 0x202E}, {0x2066, 0x2069},
};

// Combining marks and other characters that take no place of their own.
constexpr CodeRange ZeroWidthRanges[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A}, {0x064B, 0x065F},   {0x093C, 0x093C},
    {0x0941, 0x0948}, {0x094D, 0x094D}, {0x0E31, 0x0E31}, {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E},   {0x1AB0, 0x1AFF},
    {0x1DC0, 0x1DFF}, {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x2069}, {0x20D0, 0x20FF},   {0x302A, 0x302D},
    {0x3099, 0x309A}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF}, {0xE0100, 0xE01EF},
};

// East Asian wide and full-width characters, and pictographs.
constexpr CodeRange WideRanges[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},
    {0xA000, 0xA4CF},   {0xA960, 0xA97F},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
    {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF},
    {0x20000, 0x2FFFD}, {0x30000, 0x3FFFD},
};

bool IsAmong(const auto& ranges, char32_t code) {
    return std::ranges::any_of(ranges,
                               [code](const CodeRange& range) { return range.First <= code && code <= range.Last; });
}

/// As in JSON: \u202E.
std::string EscapeOf(char32_t code) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string escape = "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
        escape += digits[(code >> static_cast<unsigned>(shift)) & 0xF];
    }
    return escape;
}

std::string ValidCharacter(const Character& character, std::string_view itself) {
    return std::string(character.IsValid ? itself : ReplacementCharacter);
}

bool IsBlank(char32_t code) {
    return (0x09 <= code && code <= 0x0D) || code == 0x85 || code == 0x2028 || code == 0x2029;
}

std::string UnsteeringCharacter(const Character& character, std::string_view itself) {
    const bool steers = character.IsValid && !IsBlank(character.Code) && IsAmong(SteeringRanges, character.Code);
    return steers ? EscapeOf(character.Code) : ValidCharacter(character, itself);
}

std::string HarmlessCharacter(const Character& character, std::string_view itself) {
    return character.IsValid && IsBlank(character.Code) ? " " : UnsteeringCharacter(character, itself);
}

std::size_t WidthOf(char32_t code) {
    if (code < ZeroWidthRanges[0].First) {
        return 1;
    }
    if (IsAmong(ZeroWidthRanges, code)) {
        return 0;
    }
    return IsAmong(WideRanges, code) ? 2 : 1;
}

}  // namespace

std::string ValidText(std::string_view text) {
    return Substituted(text, ValidCharacter);
}

std::string UnsteeringText(std::string_view text) {
    return Substituted(text, UnsteeringCharacter);
}

std::string ShownLine(std::string_view text) {
    std::string line = Substituted(text, HarmlessCharacter);
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

std::vector<std::string> ShownLines(std::string_view text) {
    std::vector<std::string> lines;
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        lines.push_back(ShownLine(text.substr(0, end)));
        text.remove_prefix(end + 1);
    }
    lines.push_back(ShownLine(text));
    return lines;
}

namespace {

/// How much of a line fits into a width: all of it, or up to its last blank there, or behind the last joint of its
/// word, or what can be cut.
std::size_t FittingBytes(std::string_view line, std::size_t width) {
    constexpr std::string_view joints = "-_/";
    std::size_t lastBlank = 0;
    std::size_t lastJoint = 0;
    std::size_t taken = 0;
    std::size_t at = 0;
    while (at < line.size()) {
        const Character character = FrontOf(line.substr(at));
        const std::size_t next = WidthOf(character.Code);
        lastBlank = line[at] == ' ' && at > 0 ? at : lastBlank;
        if (taken + next > width && at > 0) {
            return lastBlank > 0 ? lastBlank : lastJoint > 0 ? lastJoint : at;
        }
        taken += next;
        at += character.Length;
        lastJoint = joints.find(line[at - 1]) == std::string_view::npos ? lastJoint : at;
    }
    return line.size();
}

}  // namespace

std::vector<std::string> Wrapped(std::string_view line, std::size_t width) {
    std::vector<std::string> lines;
    do {
        const std::size_t fitting = FittingBytes(line, width);
        const std::string_view front = line.substr(0, fitting);
        lines.emplace_back(front.substr(0, front.find_last_not_of(' ') + 1));
        line.remove_prefix(fitting);
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    } while (!line.empty());
    return lines;
}

std::size_t DisplayWidth(std::string_view line) {
    std::size_t width = 0;
    while (!line.empty()) {
        const Character character = FrontOf(line);
        width += WidthOf(character.Code);
        line.remove_prefix(character.Length);
    }
    return width;
}

}  // namespace quillara
