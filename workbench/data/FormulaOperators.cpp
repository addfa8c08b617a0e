#include "workbench/data/FormulaOperators.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>

#include "workbench/data/FormulaTexts.h"

namespace quillara {
namespace {

template <class Compare>
double Compared(double left, double right) {
    const bool isMissing = std::isnan(left) || std::isnan(right);
    const double answer = Compare()(left, right) ? 1.0 : 0.0;
    return isMissing ? NoValue : answer;
}

double IfFinite(double result) {
    return std::isfinite(result) ? result : NoValue;
}

double Sum(double left, double right) {
    return IfFinite(left + right);
}

double Difference(double left, double right) {
    return IfFinite(left - right);
}

double Product(double left, double right) {
    return IfFinite(left * right);
}

/// 1 / (1 / 0) would come out as a plain zero otherwise.
double Quotient(double dividend, double divisor) {
    return divisor != 0 && std::isfinite(divisor) ? IfFinite(dividend / divisor) : NoValue;
}

// Of 0 and 1, and NaN where the condition is missing:

double Both(double left, double right) {
    return left * right;
}

double Either(double left, double right) {
    return left + right - left * right;
}

double BothIfKnown(double left, double right) {
    return left == 0 || right == 0 ? 0 : left * right;
}

double EitherIfKnown(double left, double right) {
    return left == 1 || right == 1 ? 1 : left + right - left * right;
}

struct SignRule {
    std::string_view Sign;
    JoinRule Rule;
};

constexpr std::array<SignRule, 6> Relations = {{
    {"=", RuleOf<Compared<std::equal_to<>>>},
    {"<>", RuleOf<Compared<std::not_equal_to<>>>},
    {"<", RuleOf<Compared<std::less<>>>},
    {"<=", RuleOf<Compared<std::less_equal<>>>},
    {">", RuleOf<Compared<std::greater<>>>},
    {">=", RuleOf<Compared<std::greater_equal<>>>},
}};

constexpr std::array<SignRule, 4> Operations = {{
    {"+", RuleOf<Sum>},
    {"-", RuleOf<Difference>},
    {"*", RuleOf<Product>},
    {"/", RuleOf<Quotient>},
}};

constexpr JoinRule AndRule{JoinEach<Both>, JoinEach<BothIfKnown>};
constexpr JoinRule OrRule{JoinEach<Either>, JoinEach<EitherIfKnown>};

template <std::size_t Count>
JoinRule RuleFor(const std::array<SignRule, Count>& rules, std::string_view sign) {
    return std::ranges::find(rules, sign, &SignRule::Sign)->Rule;
}

TermPointer Pair(const TermPointer& left, JoinRule rule, const TermPointer& right) {
    return JoinedTerm(left, {{rule, right}});
}

/// A number beside a point in time is a mistake: 2020-01-01 without quotes is 2018.
void RefuseNumberBesideTime(const FormulaContext& context, const FormulaPart& time, const FormulaPart& other) {
    if (time.Plain != nullptr && IsTimeKind(time.Kind) && !other.Varies && !IsTimeKind(other.Kind)) {
        Refuse(context, other.Offset, '"' + time.Plain->Name + "\" " + RequestFor(time.Kind));
    }
}

/// Throws unless a quoted text can be compared with the part.
void RequireLabels(const FormulaContext& context, const FormulaPart& part, const FormulaPart& quoted) {
    if (HasLabels(part)) {
        return;
    }
    if (part.Plain == nullptr) {
        Refuse(context, quoted.Offset, "a quoted text can only be compared with a variable");
    }
    Refuse(context, quoted.Offset, part.Plain->Name + " has no labels: compare it with a number, without quotes");
}

void RequireEquality(const FormulaContext& context, const Token& relation) {
    if (relation.Text != "=" && relation.Text != "<>") {
        Refuse(context, relation.Offset, "labels and texts are compared by = and <> only");
    }
}

/// Whether the value is one of some, which rise.
FormulaPart IsOneOf(const FormulaPart& part, std::vector<double> values, bool isWanted = true) {
    auto test = [values = std::move(values), isWanted](double value) {
        const double answer = std::ranges::binary_search(values, value) == isWanted ? 1.0 : 0.0;
        return std::isnan(value) ? value : answer;
    };
    return MadeOf({&part}, PartRole::Condition, {}, ChangedTerm(part.Term, ChangeEach(std::move(test))));
}

FormulaPart TextComparison(const FormulaContext& context, FormulaPart left, const Token& relation, FormulaPart right) {
    RequireEquality(context, relation);
    NumberAlike(left, right);
    return MadeOf({&left, &right}, PartRole::Condition, {},
                  Pair(left.Term, RuleFor(Relations, relation.Text), right.Term));
}

FormulaPart NumberComparison(const FormulaContext& context, const FormulaPart& left, const Token& relation,
                             const FormulaPart& right) {
    RefuseNumberBesideTime(context, left, right);
    RefuseNumberBesideTime(context, right, left);
    RequireNumber(context, left);
    RequireNumber(context, right);
    return MadeOf({&left, &right}, PartRole::Condition, {},
                  Pair(left.Term, RuleFor(Relations, relation.Text), right.Term));
}

/// The kind of a sum or difference: a point in time moved by a number stays one, the distance of two is a number.
ValueKind KindOfSum(const FormulaPart& left, const Token& sign, const FormulaPart& right) {
    if (IsTimeKind(left.Kind) && right.Kind == ValueKind::Number) {
        return left.Kind;
    }
    return IsTimeKind(right.Kind) && left.Kind == ValueKind::Number && sign.Text == "+" ? right.Kind
                                                                                        : ValueKind::Number;
}

/// Days and seconds can't be added.
void RefuseDifferentDates(const FormulaContext& context, const FormulaPart& left, const FormulaPart& right) {
    const bool isDayLeft = left.Kind == ValueKind::Date && right.Kind == ValueKind::DateTime;
    if (isDayLeft || (left.Kind == ValueKind::DateTime && right.Kind == ValueKind::Date)) {
        Refuse(context, right.Offset, "one of these is a date and one has a time: take the date of that, as date(t)");
    }
}

bool IsSum(const Token& sign) {
    return sign.Text == "+" || sign.Text == "-";
}

/// The values that one member of a list stands for.
std::vector<double> ValuesOfMember(const FormulaContext& context, const FormulaPart& part, FormulaPart member) {
    FormulaPart value = part;
    ReadQuotedTimes(context, value, member);
    if (member.Role == PartRole::Quoted) {
        RequireLabels(context, part, member);
        return BearersOf(context, part, member);
    }
    RequireNumber(context, part);
    RequireNumber(context, member);
    RefuseNumberBesideTime(context, part, member);
    const std::optional<double> number = ConstantOf(member);
    if (!number && member.Role != PartRole::Unknown) {
        Refuse(context, member.Offset, "the list behind in has numbers and quoted texts only");
    }
    return {number.value_or(0)};
}

}  // namespace

FormulaPart ComparisonOf(const FormulaContext& context, FormulaPart left, const Token& relation, FormulaPart right) {
    RequireValue(context, left);
    RequireValue(context, right);
    if (left.Role == PartRole::Unknown || right.Role == PartRole::Unknown) {
        return MadeOf({&left, &right}, PartRole::Condition, {}, ConstantTerm(NoValue));
    }
    ReadQuotedTimes(context, left, right);
    const FormulaPart& quoted = left.Role == PartRole::Quoted ? left : right;
    const FormulaPart& other = left.Role == PartRole::Quoted ? right : left;
    if (quoted.Role == PartRole::Quoted) {
        RequireLabels(context, other, quoted);
        RequireEquality(context, relation);
        return IsOneOf(other, BearersOf(context, other, quoted), relation.Text == "=");
    }
    MakeDatesAlike(left, right);
    if (left.IsText() && right.IsText()) {
        return TextComparison(context, std::move(left), relation, std::move(right));
    }
    return NumberComparison(context, left, relation, right);
}

FormulaPart MembershipOf(const FormulaContext& context, FormulaPart part, const std::vector<FormulaPart>& members) {
    RequireValue(context, part);
    if (part.Role == PartRole::Unknown) {
        return MadeOf({&part}, PartRole::Condition, {}, ConstantTerm(NoValue));
    }
    if (part.Role == PartRole::Quoted) {
        RequireNumber(context, part);
    }
    std::vector<double> values;
    for (const FormulaPart& member : members) {
        RequireValue(context, member);
        std::ranges::copy(ValuesOfMember(context, part, member), std::back_inserter(values));
    }
    std::ranges::sort(values);
    return IsOneOf(part, std::move(values));
}

FormulaPart BetweenOf(const FormulaContext& context, const FormulaPart& part, FormulaPart lowest, FormulaPart highest) {
    const Token atLeast{.Kind = TokenKind::Sign, .Text = ">=", .Offset = lowest.Offset};
    const Token atMost{.Kind = TokenKind::Sign, .Text = "<=", .Offset = highest.Offset};
    return ConnectionOf(Connective::And, {ComparisonOf(context, part, atLeast, std::move(lowest)),
                                          ComparisonOf(context, part, atMost, std::move(highest))});
}

FormulaPart ChainOf(const FormulaContext& context, FormulaPart first,
                    std::vector<std::pair<Token, FormulaPart>> further) {
    if (further.empty()) {
        return first;
    }
    std::vector<std::pair<JoinRule, TermPointer>> terms;
    FormulaPart chain = std::move(first);
    for (auto& [sign, part] : further) {
        if (IsSum(sign)) {
            ReadQuotedTimes(context, chain, part);
            RefuseDifferentDates(context, chain, part);
        }
        RequireNumber(context, chain);
        RequireNumber(context, part);
        terms.emplace_back(RuleFor(Operations, sign.Text), part.Term);
        const ValueKind kind = IsSum(sign) ? KindOfSum(chain, sign, part) : ValueKind::Number;
        chain = MadeOf({&chain, &part}, PartRole::Value, kind, chain.Term);
    }
    chain.Term = JoinedTerm(chain.Term, std::move(terms));
    return chain;
}

FormulaPart SignedPart(const FormulaContext& context, const Token& sign, const FormulaPart& number) {
    RequireNumber(context, number);
    const bool isNegative = sign.Text == "-";
    const auto change = [isNegative](double value) { return isNegative ? -value : value; };
    FormulaPart part =
        MadeOf({&number}, PartRole::Value, ValueKind::Number, ChangedTerm(number.Term, ChangeEach(change)));
    part.Offset = sign.Offset;
    return part;
}

FormulaPart ConnectionOf(Connective connective, std::vector<FormulaPart> conditions) {
    if (conditions.size() == 1) {
        return std::move(conditions.front());
    }
    std::vector<std::pair<JoinRule, TermPointer>> further;
    bool varies = conditions.front().Varies;
    for (std::size_t i = 1; i < conditions.size(); ++i) {
        further.emplace_back(connective == Connective::And ? AndRule : OrRule, conditions[i].Term);
        varies = varies || conditions[i].Varies;
    }
    return {.Offset = conditions.front().Offset,
            .Role = PartRole::Condition,
            .Term = JoinedTerm(conditions.front().Term, std::move(further)),
            .Varies = varies};
}

FormulaPart NegationOf(const FormulaPart& condition, std::size_t offset) {
    const auto change = [](double answer) { return 1 - answer; };
    FormulaPart part = MadeOf({&condition}, PartRole::Condition, {}, ChangedTerm(condition.Term, ChangeEach(change)));
    part.Offset = offset;
    return part;
}

}  // namespace quillara
