#pragma once

#include <string>
#include <string_view>

namespace quillara {

// Of the letters A to Z alone, as words of formats and formulas are compared:

[[nodiscard]] constexpr char SmallLetter(char letter) {
    return 'A' <= letter && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}
[[nodiscard]] constexpr char CapitalLetter(char letter) {
    return 'a' <= letter && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}
[[nodiscard]] std::string InSmallLetters(std::string_view text);
[[nodiscard]] std::string InCapitals(std::string_view text);
[[nodiscard]] bool EqualButForLetterCase(std::string_view left, std::string_view right);

/// A text in UTF-8 with all its letters, of any script, in one case; for comparing only.
[[nodiscard]] std::wstring WithoutLetterCase(std::string_view text);

/// A text in UTF-8 with all its letters, of any script, small or as capitals. What isn't UTF-8 stays.
[[nodiscard]] std::string InLowerCase(std::string_view text);
[[nodiscard]] std::string InUpperCase(std::string_view text);

}  // namespace quillara
