#include "workbench/data/FormulaReader.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <span>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/data/FormulaFunctions.h"
#include "workbench/data/FormulaOperators.h"
#include "workbench/data/FormulaTokens.h"
#include "workbench/data/LetterCase.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/Suggestion.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

constexpr int DeepestNesting = 200;  // brackets and signs within each other; the reader descends into each

constexpr std::array<std::string_view, 6> RelationSigns = {"=", "<>", "<", "<=", ">", ">="};
constexpr std::array<std::string_view, 2> SumSigns = {"+", "-"};
constexpr std::array<std::string_view, 2> ProductSigns = {"*", "/"};
constexpr std::array<std::string_view, 3> Operators = {"and", "or", "not"};

constexpr const char* ValueWanted = "a number, a variable or a quoted text";

/// A question behind what isn't there.
std::string MeantText(const std::optional<std::string>& meant) {
    return meant ? "; did you mean " + Quoted(*meant) + "?" : "";
}

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
    Reader(const DataTable& table, const FormulaText& text)
        : Context{table, text, Result.Notices}, Tokens(TokensOf(text)), Current(Tokens.begin()) {}

    Formula Read() {
        Result.Whole = Disjunction();
        if (Current->Kind != TokenKind::End) {
            const bool isComma = IsSign(*Current, ",");
            Expected(std::string("and, or, an operator or the end of the formula") +
                     (isComma ? " (the decimal point is .)" : ""));
        }
        if (MissedName) {
            throw DataError(Context.Formula.Role + " names a variable " + Quoted(*MissedName) +
                            " that the data don't have" + MeantText(VariableMeant(*MissedName)) +
                            " (names are compared exactly; a name that is no plain word "
                            "stands in [square brackets], a text in \"quotes\").");
        }
        return std::move(Result);
    }

  private:
    [[noreturn]] void Expected(const std::string& what) const {
        const std::string found =
            Current->Kind == TokenKind::End ? "the end of the formula" : std::string(Current->Source);
        Refuse(Context, Current->Offset, "expected " + what + ", found " + found);
    }

    const Token& Take() { return *Current++; }
    // There is always a token behind another that isn't the end.
    [[nodiscard]] const Token& Next() const { return *std::next(Current); }

    const Token& TakeSign(std::string_view sign) {
        if (!IsSign(*Current, sign)) {
            Expected(std::string(sign));
        }
        return Take();
    }

    using Level = FormulaPart (Reader::*)();

    FormulaPart Connected(std::string_view keyword, Connective connective, Level next) {
        std::vector<FormulaPart> conditions;
        conditions.push_back((this->*next)());
        while (IsKeyword(*Current, keyword)) {
            RequireCondition(Context, conditions.back());
            Take();
            conditions.push_back((this->*next)());
            RequireCondition(Context, conditions.back());
            Result.JoinsByOr = Result.JoinsByOr || connective == Connective::Or;
        }
        return ConnectionOf(connective, std::move(conditions));
    }

    FormulaPart Disjunction() { return Connected("or", Connective::Or, &Reader::Conjunction); }
    FormulaPart Conjunction() { return Connected("and", Connective::And, &Reader::Negation); }

    FormulaPart Negation() {
        if (!IsKeyword(*Current, "not")) {
            return ComparisonOrValue();
        }
        const std::size_t offset = Take().Offset;
        const FormulaPart condition = Nested(&Reader::Negation);
        RequireCondition(Context, condition);
        return NegationOf(condition, offset);
    }

    FormulaPart ComparisonOrValue() {
        FormulaPart left = Sum();
        const bool isNegated = IsKeyword(*Current, "not");
        const Token& test = isNegated ? Next() : *Current;
        if (IsKeyword(test, "in") || IsKeyword(test, "between")) {
            const std::size_t offset = left.Offset;
            Current += isNegated ? 2 : 1;
            const FormulaPart answer = IsKeyword(test, "in") ? Membership(std::move(left)) : Between(left);
            return isNegated ? NegationOf(answer, offset) : answer;
        }
        return IsSign(*Current, RelationSigns) ? Comparison(std::move(left)) : left;
    }

    FormulaPart Comparison(FormulaPart left) {
        const Token& relation = Take();
        FormulaPart right = Sum();
        if (IsSign(*Current, RelationSigns)) {
            Refuse(Context, Current->Offset,
                   "comparisons can't be chained; write a < b and b < c instead of a < b < c");
        }
        return ComparisonOf(Context, std::move(left), relation, std::move(right));
    }

    FormulaPart Membership(FormulaPart part) {
        const std::vector<FormulaPart> members = List(&Reader::Sum);
        return MembershipOf(Context, std::move(part), members);
    }

    FormulaPart Between(const FormulaPart& part) {
        FormulaPart lowest = Sum();
        if (!IsKeyword(*Current, "and")) {
            Expected("and (between a and b)");
        }
        Take();
        return BetweenOf(Context, part, std::move(lowest), Sum());
    }

    /// Parts in brackets with commas between.
    std::vector<FormulaPart> List(Level level) {
        std::vector<FormulaPart> parts;
        TakeSign("(");
        do {
            parts.push_back(Nested(level));
        } while (IsSign(*Current, ",") && Current++ != Tokens.end());
        if (!IsSign(*Current, ")")) {
            Expected(", or )");
        }
        Take();
        return parts;
    }

    FormulaPart Chain(std::span<const std::string_view> signs, Level next) {
        FormulaPart first = (this->*next)();
        std::vector<std::pair<Token, FormulaPart>> further;
        while (IsSign(*Current, signs)) {
            const Token& sign = Take();
            further.emplace_back(sign, (this->*next)());
        }
        return ChainOf(Context, std::move(first), std::move(further));
    }

    FormulaPart Sum() { return Chain(SumSigns, &Reader::Product); }
    FormulaPart Product() { return Chain(ProductSigns, &Reader::Factor); }

    FormulaPart Factor() {
        if (!IsSign(*Current, SumSigns)) {
            return Value();
        }
        const Token& sign = Take();
        return SignedPart(Context, sign, Nested(&Reader::Factor));
    }

    FormulaPart Value() {
        switch (Current->Kind) {
            case TokenKind::Number: {
                const Token& number = Take();
                return NumberPart(number.Offset, number.Number);
            }
            case TokenKind::Text: {
                const Token& text = Take();
                return {.Offset = text.Offset, .Role = PartRole::Quoted, .Text = text.Text};
            }
            case TokenKind::Name:
                return NamedVariable();
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
        Expected(ValueWanted);
    }

    FormulaPart ValueOfWord() {
        if (IsSign(Next(), "(")) {
            return Call();
        }
        if (std::ranges::any_of(Operators, [&](std::string_view keyword) { return IsKeyword(*Current, keyword); })) {
            Expected(std::string(ValueWanted) + " (a variable of this name stands in [square brackets])");
        }
        return NamedVariable();
    }

    FormulaPart Call() {
        if (IsKeyword(*Current, "missing")) {
            return MissingCall();
        }
        if (!IsFunction(Current->Text)) {
            Refuse(Context, Current->Offset,
                   "there is no function " + Current->Text + MeantText(FunctionMeant(Current->Text)) + " (there are " +
                       FunctionNames() + ")");
        }
        const Token& name = Take();
        return CallOf(Context, name, List(&Reader::Disjunction));
    }

    FormulaPart Bracketed() {
        const std::size_t offset = Take().Offset;
        FormulaPart inner = Nested(&Reader::Disjunction);
        TakeSign(")");
        inner.Offset = offset;
        return inner;
    }

    FormulaPart MissingCall() {
        const std::size_t offset = Take().Offset;
        Take();  // the bracket
        if (IsSign(*Current, ")")) {
            Take();
            return {.Offset = offset,
                    .Role = PartRole::Nothing,
                    .Term = ConstantTerm(std::numeric_limits<double>::quiet_NaN())};
        }
        if (Current->Kind != TokenKind::Word && Current->Kind != TokenKind::Name) {
            Expected("the name of a variable");
        }
        const FormulaPart variable = NamedVariable();
        const bool namesReasons = IsSign(*Current, ",");
        const std::vector<std::size_t> places = Reasons(variable.Plain);
        if (!IsSign(*Current, ")")) {
            Expected(", or )");
        }
        Take();
        return {.Offset = offset,
                .Role = PartRole::Condition,
                .Term = variable.Plain == nullptr ? variable.Term
                        : namesReasons            ? ReasonTerm(*variable.Plain, places)
                                                  : MissingTerm(*variable.Plain),
                .Varies = true};
    }

    /// The places of missing values behind the name of a variable, each behind a comma.
    std::vector<std::size_t> Reasons(const Variable* variable) {
        std::vector<std::size_t> places;
        while (IsSign(*Current, ",")) {
            Take();
            const std::size_t offset = Current->Offset;
            const std::string code = Reason();
            const std::size_t place = variable == nullptr ? 0 : ReasonNamed(*variable, code);
            if (variable != nullptr && place == 0) {
                const std::string list = ListOfReasons(*variable);
                Refuse(Context, offset,
                       Quoted(variable->Name) + " has no missing value " + Quoted(code) +
                           (list.empty() ? "" : " (it has " + list + ")"));
            }
            places.push_back(place);
        }
        return places;
    }

    /// A missing value: a number, or a quoted text or label.
    std::string Reason() {
        const bool isNegative = IsSign(*Current, "-");
        const Token& token = isNegative ? Next() : *Current;
        if (token.Kind != TokenKind::Number && (isNegative || token.Kind != TokenKind::Text)) {
            Expected("a missing value, as 99 or \"Not stated\"");
        }
        Current += isNegative ? 2 : 1;
        return token.Kind == TokenKind::Text ? token.Text : ExactNumberText(isNegative ? -token.Number : token.Number);
    }

    FormulaPart NamedVariable() {
        const Token& name = Take();
        if (const std::optional<std::size_t> index = Context.Table.Find(name.Text)) {
            return VariablePart(name.Offset, Context.Table.Variables[*index]);
        }
        MissedName = MissedName.value_or(name.Text);
        return {.Offset = name.Offset, .Role = PartRole::Unknown, .Term = ConstantTerm(0), .Varies = true};
    }

    [[nodiscard]] std::optional<std::string> VariableMeant(const std::string& name) const {
        std::vector<std::string> names;
        for (const Variable& variable : Context.Table.Variables) {
            names.push_back(variable.Name);
        }
        return Suggestion(name, names);
    }

    FormulaPart Nested(Level level) {
        if (++Depth > DeepestNesting) {
            Refuse(Context, Current->Offset, "brackets and signs are nested too deeply");
        }
        FormulaPart part = (this->*level)();
        --Depth;
        return part;
    }

    Formula Result;
    FormulaContext Context;
    std::vector<Token> Tokens;
    std::vector<Token>::const_iterator Current;
    std::optional<std::string> MissedName;  // the first that is no variable
    int Depth = 0;
};

}  // namespace

Formula ReadFormula(const DataTable& table, const FormulaText& text) {
    return Reader(table, text).Read();
}

}  // namespace quillara
