#include "workbench/formats/NamesInFile.h"

#include <algorithm>
#include <array>
#include <set>

#include "workbench/data/LetterCase.h"

namespace quillara {
namespace {

/// Characters from First to Last.
struct CharacterRange {
    char32_t First;
    char32_t Last;
};

// clang-format off
constexpr auto NoLetters = std::to_array<CharacterRange>({
    {U'\u0080',     U'\u00A9'},      // controls and signs of Latin-1, but for the ordinals and micro
    {U'\u00AB',     U'\u00B4'},
    {U'\u00B6',     U'\u00B9'},
    {U'\u00BB',     U'\u00BF'},
    {U'\u00D7',     U'\u00D7'},      // times
    {U'\u00F7',     U'\u00F7'},      // divided by
    {U'\u2000',     U'\u2BFF'},      // punctuation, currencies, arrows, mathematics, boxes
    {U'\u3000',     U'\u3004'},      // punctuation of East Asia
    {U'\u3008',     U'\u3020'},
    {U'\uE000',     U'\uF8FF'},      // private use
    {U'\uFE00',     U'\uFE6F'},      // variants of punctuation
    {U'\uFEFF',     U'\uFF20'},      // byte-order mark, wide punctuation
    {U'\U0001F000', U'\U0010FFFF'},  // pictures
});
// clang-format on

bool IsDigit(char character) {
    return '0' <= character && character <= '9';
}

/// Bytes of the character that begins with this byte.
std::size_t LengthOf(char first) {
    const auto byte = static_cast<unsigned char>(first);
    return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

char32_t CodeOf(std::string_view character) {
    char32_t code = static_cast<unsigned char>(character.front()) & (0x7FU >> character.size());
    for (const char next : character.substr(1)) {
        code = code << 6 | (static_cast<unsigned char>(next) & 0x3FU);
    }
    return code;
}

bool IsLetter(std::string_view character) {
    if (static_cast<unsigned char>(character.front()) < 0x80) {
        const char lower = SmallLetter(character.front());
        return 'a' <= lower && lower <= 'z';
    }
    const char32_t code = CodeOf(character);
    return character.size() > 1 && std::ranges::none_of(NoLetters, [&](const CharacterRange& range) {
               return range.First <= code && code <= range.Last;
           });
}

bool MayBegin(std::string_view character, const NameRules& rules) {
    return IsLetter(character) || rules.FirstSigns.find(character) != std::string_view::npos;
}

bool MayFollow(std::string_view character, const NameRules& rules) {
    return MayBegin(character, rules) || IsDigit(character.front()) ||
           rules.OtherSigns.find(character) != std::string_view::npos;
}

/// As names are compared.
std::string KeyOf(const std::string& name, const NameRules& rules) {
    return rules.LetterCaseCounts ? name : InSmallLetters(name);
}

bool IsReserved(const std::string& name, const NameRules& rules) {
    const std::string key = KeyOf(name, rules);
    return std::ranges::any_of(rules.Reserved, [&](std::string_view word) {
        if (!word.ends_with('#')) {
            return key == word;
        }
        word.remove_suffix(1);
        return key.size() > word.size() && key.starts_with(word) && IsDigit(key[word.size()]);
    });
}

/// The name with _ for each sign that isn't admitted, a V before a wrong beginning, cut to its room.
std::string NearestValid(const std::string& name, const NameRules& rules) {
    std::string valid;
    for (std::size_t i = 0; i < name.size(); i += LengthOf(name[i])) {
        const std::string character = name.substr(i, LengthOf(name[i]));
        valid += MayFollow(character, rules) ? character : "_";
    }
    if (valid.empty() || !MayBegin(valid.substr(0, LengthOf(valid.front())), rules) || IsReserved(valid, rules)) {
        valid.insert(0, "V");
    }
    valid = Fitted(valid, rules.Room);
    if (valid.ends_with('.')) {  // would end a command
        valid.back() = '_';
    }
    return valid;
}

std::string WithBehind(const std::string& name, const std::string& ending, const NameRules& rules) {
    return Fitted(name, {rules.Room.Bytes - ending.size(), rules.Room.Characters - ending.size()}) + ending;
}

std::vector<std::string> UniqueNames(const std::vector<NamedColumn>& columns, const NameRules& rules) {
    std::vector<std::string> names;
    std::set<std::string> taken;
    std::vector<std::size_t> strangers;
    for (const NamedColumn& column : columns) {
        names.push_back(NearestValid(column.Name, rules));
        // A name that can stay isn't given to another variable.
        if (names.back() != column.Name || !taken.insert(KeyOf(column.Name, rules)).second) {
            strangers.push_back(names.size() - 1);
        }
    }
    for (const std::size_t i : strangers) {
        const std::string valid = names[i];
        for (int number = 2; !taken.insert(KeyOf(names[i], rules)).second; ++number) {
            names[i] = WithBehind(valid, "_" + std::to_string(number), rules);
        }
    }
    return names;
}

/// The names of eight bytes under which the library files the variables of a sav file.
std::set<std::string> ShortNames(const std::vector<std::string>& names) {
    std::set<std::string> shortNames;
    for (const std::string& name : names) {
        if (!shortNames.insert(InSmallLetters(name.substr(0, 8))).second) {
            shortNames.insert("v" + std::to_string(shortNames.size() + 1) + "_a");
        }
    }
    return shortNames;
}

/// Whether a segment of a variable's text would have the short name of a variable.
bool HasSegmentNamedAsVariable(const std::string& name, std::size_t segments, const std::set<std::string>& shortNames) {
    constexpr std::string_view signs = "0123456789abcdefghijklmnopqrstuvwxyz";
    const std::string stem = InSmallLetters(name.substr(0, 5));
    return std::ranges::any_of(signs.substr(0, segments), [&](char sign) { return shortNames.contains(stem + sign); });
}

void FreeSegmentNames(std::vector<std::string>& names, const std::vector<NamedColumn>& columns,
                      const NameRules& rules) {
    constexpr std::size_t segmentRoom = 252;
    std::set<std::string> shortNames = ShortNames(names);
    std::set<std::string> taken;
    for (const std::string& name : names) {
        taken.insert(KeyOf(name, rules));
    }
    int number = 0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string name = names[i];
        while (columns[i].TextBytes > rules.SegmentBytes &&
               HasSegmentNamedAsVariable(names[i], columns[i].TextBytes / segmentRoom, shortNames)) {
            do {
                names[i] = Fitted("T" + std::to_string(++number) + "_" + name, rules.Room);
            } while (!taken.insert(KeyOf(names[i], rules)).second);
            shortNames = ShortNames(names);
        }
    }
}

}  // namespace

std::vector<std::string> NamesInFile(const std::vector<NamedColumn>& columns, const NameRules& rules) {
    std::vector<std::string> names = UniqueNames(columns, rules);
    if (rules.SegmentBytes > 0) {
        FreeSegmentNames(names, columns, rules);
    }
    return names;
}

std::string FreeNameForCases(const std::vector<std::string>& names) {
    const std::string wanted = "Case";
    std::string name = wanted;
    for (int number = 2; std::ranges::find(names, name) != names.end(); ++number) {
        name = wanted + "_" + std::to_string(number);
    }
    return name;
}

}  // namespace quillara
