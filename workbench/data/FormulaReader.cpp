#include "workbench/data/FormulaReader.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "workbench/data/Errors.h"
#include "workbench/data/FormulaParts.h"
#include "workbench/data/FormulaTokens.h"
#include "workbench/data/LetterCase.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

constexpr int DeepestNesting = 200;  // brackets and signs within each other; the reader descends into each

constexpr std::array<std::string_view, 6> RelationSigns = {"=", "<>", "<", "<=", ">", ">="};
constexpr std::array<std::string_view, 2> SumSigns = {"+", "-"};
constexpr std::array<std::string_view, 2> ProductSigns = {"*", "/"};
constexpr std::array<std::string_view, 3> Operators = {"and", "or", "not"};

bool IsKeyword(const Token& token, std::string_view keyword) {
    return token.Kind == TokenKind::Word && EqualButForLetterCase(token.Text, keyword);
}

bool IsSign(const Token& token, std::span<const std::string_view> signs) {
    return token.Kind == TokenKind::Sign && std::ranges::find(signs, token.Text) != signs.end();
}

bool IsSign(const Token& token, std::string_view sign) {
    return IsSign(token, std::span(&sign, 1));
}

/// Reads a formula by recursive descent, one function a level of binding, from `or` down to a single value.
class Reader {
  public:
    Reader(const DataTable& table, std::string_view formula)
        : Context{table, formula}, Tokens(TokensOf(formula)), Current(Tokens.begin()) {}

    SelectionProgram Read() {
        const FormulaPart whole = Disjunction();
        RequireCondition(Context, whole);
        if (Current->Kind != TokenKind::End) {
            Expected("and, or, an operator or the end of the formula");
        }
        if (MissedName) {
            throw DataError("The selection formula names a variable " + Quoted(*MissedName) +
                            " that the data don't have (names are compared exactly; a name that is no plain word "
                            "stands in [square brackets], a text in \"quotes\").");
        }
        return std::move(Program);
    }

  private:
    [[noreturn]] void Expected(const std::string& what) const {
        const std::string found =
            Current->Kind == TokenKind::End ? "the end of the formula" : std::string(Current->Source);
        throw UnreadableAt(Context.Formula, Current->Offset, "expected " + what + ", found " + found);
    }

    const Token& Take() { return *Current++; }

    const Token& TakeSign(std::string_view sign) {
        if (!IsSign(*Current, sign)) {
            Expected(std::string(sign));
        }
        return Take();
    }

    template <class Step>
    FormulaPart Condition(std::size_t offset, Step step) {
        Program.Steps.emplace_back(std::move(step));
        return {offset, ConditionPart()};
    }

    using Level = FormulaPart (Reader::*)();

    FormulaPart Connected(std::string_view keyword, Connective connective, Level next) {
        FormulaPart left = (this->*next)();
        while (IsKeyword(*Current, keyword)) {
            RequireCondition(Context, left);
            Take();
            RequireCondition(Context, (this->*next)());
            left = Condition(left.Offset, connective);
        }
        return left;
    }

    FormulaPart Disjunction() { return Connected("or", Connective::Or, &Reader::Conjunction); }
    FormulaPart Conjunction() { return Connected("and", Connective::And, &Reader::Negation); }

    FormulaPart Negation() {
        if (!IsKeyword(*Current, "not")) {
            return ComparisonOrValue();
        }
        const std::size_t offset = Take().Offset;
        RequireCondition(Context, Nested(&Reader::Negation));
        return Condition(offset, Connective::Not);
    }

    FormulaPart ComparisonOrValue() {
        FormulaPart left = Sum();
        if (!IsSign(*Current, RelationSigns)) {
            return left;
        }
        const std::size_t offset = left.Offset;
        const Token& relation = Take();
        FormulaPart right = Sum();
        if (IsSign(*Current, RelationSigns)) {
            throw UnreadableAt(Context.Formula, Current->Offset,
                               "comparisons can't be chained; write a < b and b < c instead of a < b < c");
        }
        return Condition(offset, ComparisonOf(Context, std::move(left), relation, std::move(right)));
    }

    FormulaPart Computed(std::span<const std::string_view> signs, Level next) {
        FormulaPart left = (this->*next)();
        if (!IsSign(*Current, signs)) {
            return left;
        }
        ArithmeticText arithmetic = NumberOf(Context, left);
        while (IsSign(*Current, signs)) {
            arithmetic.Expression += Take().Text;
            const ArithmeticText right = NumberOf(Context, (this->*next)());
            arithmetic.Expression += right.Expression;
            arithmetic.Variables.insert(arithmetic.Variables.end(), right.Variables.begin(), right.Variables.end());
        }
        return {left.Offset, std::move(arithmetic)};
    }

    FormulaPart Sum() { return Computed(SumSigns, &Reader::Product); }
    FormulaPart Product() { return Computed(ProductSigns, &Reader::Factor); }

    FormulaPart Factor() {
        if (!IsSign(*Current, SumSigns)) {
            return Value();
        }
        const Token& sign = Take();
        const FormulaPart operand = Nested(&Reader::Factor);
        ArithmeticText arithmetic = NumberOf(Context, operand);
        if (const auto* number = std::get_if<double>(&operand.Content)) {
            return {sign.Offset, sign.Text == "-" ? -*number : *number};
        }
        arithmetic.Expression = Enclosed(arithmetic.Expression, sign.Text);
        return {sign.Offset, std::move(arithmetic)};
    }

    FormulaPart Value() {
        switch (Current->Kind) {
            case TokenKind::Number:
                return {Current->Offset, Take().Number};
            case TokenKind::Text:
                return {Current->Offset, QuotedPart{Take().Text}};
            case TokenKind::Name:
                return RequiredVariable();
            case TokenKind::Word:
                return ValueOfWord();
            case TokenKind::Sign:
                if (IsSign(*Current, "(")) {
                    return Bracketed();
                }
                break;
            case TokenKind::End:
                break;
        }
        Expected("a number, a variable or a quoted text");
    }

    FormulaPart ValueOfWord() {
        // There is always a token behind a word, at least the end.
        if (IsKeyword(*Current, "missing") && IsSign(*std::next(Current), "(")) {
            return MissingCall();
        }
        if (std::ranges::any_of(Operators, [&](std::string_view keyword) { return IsKeyword(*Current, keyword); })) {
            Expected("a number, a variable or a quoted text (a variable of this name stands in [square brackets])");
        }
        return RequiredVariable();
    }

    FormulaPart Bracketed() {
        const std::size_t offset = Take().Offset;
        FormulaPart inner = Nested(&Reader::Disjunction);
        TakeSign(")");
        if (auto* arithmetic = std::get_if<ArithmeticText>(&inner.Content)) {
            arithmetic->Expression = Enclosed(arithmetic->Expression);
        }
        inner.Offset = offset;
        return inner;
    }

    FormulaPart MissingCall() {
        const std::size_t offset = Take().Offset;
        Take();  // the bracket
        if (Current->Kind != TokenKind::Word && Current->Kind != TokenKind::Name) {
            Expected("the name of a variable");
        }
        const std::size_t variable = TakeVariable();
        TakeSign(")");
        return Condition(offset, MissingTest{variable});
    }

    FormulaPart RequiredVariable() {
        const std::size_t offset = Current->Offset;
        const std::size_t variable = TakeVariable();
        Program.Required.insert(variable);
        return {offset, VariablePart{variable}};
    }

    std::size_t TakeVariable() {
        const std::string& name = Take().Text;
        const std::optional<std::size_t> variable = Context.Table.Find(name);
        if (!variable && !MissedName) {
            MissedName = name;
        }
        return variable.value_or(UnknownVariable);
    }

    FormulaPart Nested(Level level) {
        if (++Depth > DeepestNesting) {
            throw UnreadableAt(Context.Formula, Current->Offset, "brackets and signs are nested too deeply");
        }
        FormulaPart part = (this->*level)();
        --Depth;
        return part;
    }

    FormulaContext Context;
    std::vector<Token> Tokens;
    std::vector<Token>::const_iterator Current;
    SelectionProgram Program;
    std::optional<std::string> MissedName;  // the first that is no variable
    int Depth = 0;
};

}  // namespace

SelectionProgram ReadFormula(const DataTable& table, std::string_view formula) {
    return Reader(table, formula).Read();
}

}  // namespace quillara
