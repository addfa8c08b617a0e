#include "workbench/data/FormulaTokens.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>

namespace quillara {
namespace {

struct SignSpelling {
    std::string_view Written;
    std::string_view Meant;
};

// The longer spelling stands before the one it begins with.
constexpr std::array<SignSpelling, 15> Signs = {{
    {"==", "="},
    {"!=", "<>"},
    {"<>", "<>"},
    {"<=", "<="},
    {">=", ">="},
    {"=", "="},
    {"<", "<"},
    {">", ">"},
    {"+", "+"},
    {"-", "-"},
    {"*", "*"},
    {"/", "/"},
    {"(", "("},
    {")", ")"},
    {",", ","},
}};

/// Signs of other languages, and what stands for them here.
constexpr std::array<SignSpelling, 6> ForeignSigns = {{
    {"&&", "write and"},
    {"&", "write and"},
    {"||", "write or"},
    {"|", "write or"},
    {"!", "write not"},
    {"]", "the name begins with ["},
}};

bool IsBlank(char letter) {
    return letter == ' ' || letter == '\t' || letter == '\n' || letter == '\r';
}

bool IsDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

/// Letters beyond ASCII are bytes with the high bit set.
bool BeginsWord(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || letter == '_' ||
           (static_cast<unsigned char>(letter) & 0x80U) != 0;
}

bool ContinuesWord(char letter) {
    return BeginsWord(letter) || IsDigit(letter) || letter == '.';
}

bool ContinuesCharacter(char letter) {
    return (static_cast<unsigned char>(letter) & 0xC0U) == 0x80U;
}

class Scanner {
  public:
    explicit Scanner(const FormulaText& formula) : Whole(formula), Formula(formula.Text) {}

    Token Next() {
        Offset = static_cast<std::size_t>(
            std::find_if_not(Formula.begin() + static_cast<std::ptrdiff_t>(Offset), Formula.end(), IsBlank) -
            Formula.begin());
        Begin = Offset;
        if (Offset == Formula.size()) {
            return Finished(TokenKind::End, "");
        }
        const char first = Formula[Offset];
        if (first == '"' || first == '\'') {
            return Enclosed(TokenKind::Text, first, "the text that begins here has no closing quote");
        }
        if (first == '[') {
            return Enclosed(TokenKind::Name, ']', "the name that begins here has no closing bracket ]");
        }
        if (IsDigit(first) || (first == '.' && Offset + 1 < Formula.size() && IsDigit(Formula[Offset + 1]))) {
            return Number();
        }
        return BeginsWord(first) ? Word() : Sign();
    }

  private:
    [[nodiscard]] Token Finished(TokenKind kind, std::string text, double number = 0) const {
        return {kind, std::move(text), number, Begin, Formula.substr(Begin, Offset - Begin)};
    }

    /// A closing sign that is doubled stands for itself.
    Token Enclosed(TokenKind kind, char closing, const char* unclosed) {
        std::string content;
        while (++Offset < Formula.size()) {
            if (Formula[Offset] == closing) {
                ++Offset;
                if (Offset == Formula.size() || Formula[Offset] != closing) {
                    return Finished(kind, std::move(content));
                }
            }
            content += Formula[Offset];
        }
        throw UnreadableAt(Whole, Begin, unclosed);
    }

    Token Number() {
        double number = 0;
        const auto [end, error] = std::from_chars(Formula.data() + Offset, Formula.data() + Formula.size(), number);
        if (error != std::errc()) {
            throw UnreadableAt(Whole, Begin, "the number that begins here is too large or too small");
        }
        Offset = static_cast<std::size_t>(end - Formula.data());
        return Finished(TokenKind::Number, "", number);
    }

    Token Word() {
        while (Offset < Formula.size() && ContinuesWord(Formula[Offset])) {
            ++Offset;
        }
        return Finished(TokenKind::Word, std::string(Formula.substr(Begin, Offset - Begin)));
    }

    Token Sign() {
        const SignSpelling* sign = Spelling(Signs);
        if (sign == nullptr) {
            RefuseSign();
        }
        Offset += sign->Written.size();
        return Finished(TokenKind::Sign, std::string(sign->Meant));
    }

    /// The spelling that stands here; null when there is none.
    [[nodiscard]] const SignSpelling* Spelling(std::span<const SignSpelling> spellings) const {
        const std::string_view rest = Formula.substr(Offset);
        const auto found = std::ranges::find_if(
            spellings, [&](const SignSpelling& spelling) { return rest.starts_with(spelling.Written); });
        return found == spellings.end() ? nullptr : &*found;
    }

    [[noreturn]] void RefuseSign() const {
        const SignSpelling* foreign = Spelling(ForeignSigns);
        const std::string sign(foreign == nullptr ? Formula.substr(Offset, 1) : foreign->Written);
        const std::string advice(foreign == nullptr ? "a name that is no plain word stands in [square brackets], a "
                                                      "text in \"quotes\""
                                                    : foreign->Meant);
        throw UnreadableAt(Whole, Begin, "unknown sign " + sign + " (" + advice + ")");
    }

    const FormulaText& Whole;
    std::string_view Formula;
    std::size_t Offset = 0;
    std::size_t Begin = 0;
};

}  // namespace

std::vector<Token> TokensOf(const FormulaText& formula) {
    Scanner scanner(formula);
    std::vector<Token> tokens;
    do {
        tokens.push_back(scanner.Next());
    } while (tokens.back().Kind != TokenKind::End);
    return tokens;
}

UnreadableFormula UnreadableAt(const FormulaText& formula, std::size_t offset, const std::string& reason) {
    const std::string_view before = formula.Text.substr(0, offset);
    const auto character = std::ranges::count_if(before, [](char letter) { return !ContinuesCharacter(letter); }) + 1;
    return {formula.Role + " can't be read at character " + std::to_string(character) + ": " + reason + ".", offset};
}

}  // namespace quillara
