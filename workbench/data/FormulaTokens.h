#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/Errors.h"

namespace quillara {

enum class TokenKind {
    Word,  ///< a plain name or a keyword: letters, digits, underscores and points, not led by a digit or point
    Name,  ///< a name in square brackets
    Number,  ///< a decimal number without a sign
    Text,  ///< a text in double or single quotes
    Sign,  ///< an operator, a bracket or a comma; == and != are given as = and <>
    End,  ///< the end of the formula
};

struct Token {
    TokenKind Kind = TokenKind::End;
    std::string Text;  ///< without its brackets or quotes; empty at the end
    double Number = 0;  ///< Kind Number only
    std::size_t Offset = 0;  ///< where it begins in the formula, in bytes
    std::string_view Source{};  ///< as it stands in the formula
};

/// A formula, and what its user calls it.
struct FormulaText {
    std::string_view Text;
    std::string Role;  ///< begins a sentence
};

inline constexpr const char* SelectionRole = "The selection formula";

/// The tokens of a formula, ended by one of Kind End; they refer to its text.
/// Throws UsageError where a sign is unknown, a number too large, or a quote or bracket isn't closed.
[[nodiscard]] std::vector<Token> TokensOf(const FormulaText& formula);

/// The error of a formula that can't be read.
class UnreadableFormula : public UsageError {
  public:
    UnreadableFormula(const std::string& text, std::size_t offset) : UsageError(text), Offset(offset) {}

    std::size_t Offset;  ///< where, in bytes
};

/// The error of a formula that can't be read: says at which character, counted from 1, and why.
[[nodiscard]] UnreadableFormula UnreadableAt(const FormulaText& formula, std::size_t offset, const std::string& reason);

}  // namespace quillara
