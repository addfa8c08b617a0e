#include "workbench/data/FormulaParts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "workbench/data/Calendar.h"

namespace quillara {
namespace {

struct RelationSign {
    std::string_view Sign;
    Relation Meaning;
};

constexpr std::array<RelationSign, 6> Relations = {{
    {"=", Relation::Equal},
    {"<>", Relation::NotEqual},
    {"<", Relation::Less},
    {"<=", Relation::LessOrEqual},
    {">", Relation::Greater},
    {">=", Relation::GreaterOrEqual},
}};

Relation RelationOf(const Token& sign) {
    return std::ranges::find(Relations, sign.Text, &RelationSign::Sign)->Meaning;
}

/// How a point in time is written for a kind of variable.
struct TimeNotation {
    ValueKind Kind;
    std::optional<double> (*Read)(std::string_view text);
    std::string_view Advice;
    std::string_view Request;  ///< how it is asked for where a number stands
};

constexpr std::array<TimeNotation, 2> TimeNotations = {{
    {ValueKind::Date, DaysFromText, "isn't a day of the calendar written as YYYY-MM-DD",
     "is a date: write the day in quotes, as \"2020-01-01\""},
    {ValueKind::TimeOfDay, SecondsFromText, "isn't a time written as HH:MM:SS",
     "is a time: write it in quotes, as \"13:45:00\""},
}};

const TimeNotation* NotationOf(const Variable& variable) {
    const auto* found = std::ranges::find(TimeNotations, variable.Kind, &TimeNotation::Kind);
    return found == TimeNotations.end() ? nullptr : found;
}

[[noreturn]] void Refuse(const FormulaContext& context, std::size_t offset, const std::string& reason) {
    throw UnreadableAt(context.Formula, offset, reason);
}

template <class Content>
bool Is(const FormulaPart& part) {
    return std::holds_alternative<Content>(part.Content);
}

const Variable* VariableOf(const FormulaContext& context, const FormulaPart& part) {
    const auto* variable = std::get_if<VariablePart>(&part.Content);
    const bool isKnown = variable != nullptr && variable->Variable != UnknownVariable;
    return !isKnown ? nullptr : &context.Table.Variables[variable->Variable];
}

std::string Shortest(double number) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

void RefuseCondition(const FormulaContext& context, const FormulaPart& part) {
    if (Is<ConditionPart>(part)) {
        Refuse(context, part.Offset, "expected a number, a variable or a quoted text, found a condition");
    }
}

void RefuseText(const FormulaContext& context, const FormulaPart& part) {
    const Variable* variable = VariableOf(context, part);
    if (variable != nullptr && variable->Kind == ValueKind::Text) {
        Refuse(context, part.Offset,
               variable->Name + " is a text variable: compare it with a text in \"quotes\", by = or <>");
    }
    if (Is<QuotedPart>(part)) {
        Refuse(context, part.Offset,
               "expected a number, found a quoted text, which can only be compared with a variable");
    }
}

Operand OperandOf(const FormulaContext& context, const FormulaPart& part) {
    const ArithmeticText number = NumberOf(context, part);
    if (const auto* variable = std::get_if<VariablePart>(&part.Content)) {
        return ColumnOperand{variable->Variable};
    }
    if (const auto* constant = std::get_if<double>(&part.Content)) {
        return *constant;
    }
    return Arithmetic(context.Table, number);
}

/// Every value that bears the label, whether or not a case has it, in rising order.
std::vector<double> BearersOf(const Variable& variable, const std::string& label) {
    std::vector<double> bearers;
    const auto addBearer = [&](double value) {
        const std::string* own = variable.LabelOf(value);
        if (own != nullptr && *own == label) {
            bearers.push_back(value);
        }
    };
    if (variable.Kind == ValueKind::Text) {
        for (std::size_t place = 1; place <= variable.Texts.size(); ++place) {
            addBearer(static_cast<double>(place));
        }
    } else {
        for (const auto& entry : variable.Labels) {
            addBearer(entry.first);
        }
    }
    return bearers;
}

SelectionStep LabelTestOf(const FormulaContext& context, const VariablePart& part, const Token& relation,
                          const std::string& label) {
    const Variable& variable = context.Table.Variables[part.Variable];
    const Relation between = RelationOf(relation);
    if (between != Relation::Equal && between != Relation::NotEqual) {
        Refuse(context, relation.Offset, "labels and texts are compared by = and <> only");
    }
    return LabelTest{part.Variable, BearersOf(variable, label), between == Relation::Equal};
}

bool HoldsVariable(const FormulaPart& part) {
    const auto* arithmetic = std::get_if<ArithmeticText>(&part.Content);
    return Is<VariablePart>(part) || (arithmetic != nullptr && !arithmetic->Variables.empty());
}

bool HoldsUnknown(const FormulaPart& part) {
    const auto* variable = std::get_if<VariablePart>(&part.Content);
    const auto* arithmetic = std::get_if<ArithmeticText>(&part.Content);
    return (variable != nullptr && variable->Variable == UnknownVariable) ||
           (arithmetic != nullptr && std::ranges::count(arithmetic->Variables, UnknownVariable) > 0);
}

/// A number beside a point in time is a mistake: 2020-01-01 without quotes is 2018.
void RefuseNumberBesideTime(const FormulaContext& context, const FormulaPart& time, const FormulaPart& other) {
    const Variable* variable = VariableOf(context, time);
    const TimeNotation* notation = variable == nullptr ? nullptr : NotationOf(*variable);
    if (notation != nullptr && !HoldsVariable(other)) {
        Refuse(context, other.Offset, '"' + variable->Name + "\" " + std::string(notation->Request));
    }
}

/// Puts the number of a point in time in place of its text.
void ReadTime(const FormulaContext& context, const TimeNotation& notation, FormulaPart& quoted) {
    const std::string& text = std::get<QuotedPart>(quoted.Content).Text;
    const std::optional<double> value = notation.Read(text);
    if (!value) {
        Refuse(context, quoted.Offset, "the text " + text + " " + std::string(notation.Advice));
    }
    quoted.Content = *value;
}

}  // namespace

std::string Enclosed(const std::string& expression, const std::string& sign) {
    std::string enclosed = "(";
    return enclosed.append(sign).append(expression).append(")");
}

void RequireCondition(const FormulaContext& context, const FormulaPart& part) {
    if (!Is<ConditionPart>(part)) {
        Refuse(context, part.Offset, "expected a condition such as age > 30, found a value that isn't compared");
    }
}

ArithmeticText NumberOf(const FormulaContext& context, const FormulaPart& part) {
    RefuseCondition(context, part);
    RefuseText(context, part);
    if (const auto* variable = std::get_if<VariablePart>(&part.Content)) {
        return {ArithmeticName(variable->Variable), {variable->Variable}};
    }
    if (const auto* number = std::get_if<double>(&part.Content)) {
        return {Enclosed(Shortest(*number)), {}};
    }
    return std::get<ArithmeticText>(part.Content);
}

SelectionStep ComparisonOf(const FormulaContext& context, FormulaPart left, const Token& relation, FormulaPart right) {
    RefuseCondition(context, left);
    RefuseCondition(context, right);
    if (HoldsUnknown(left) || HoldsUnknown(right)) {
        return Comparison{RelationOf(relation), 0.0, 0.0};
    }
    FormulaPart& quoted = Is<QuotedPart>(left) ? left : right;
    const FormulaPart& other = Is<QuotedPart>(left) ? right : left;
    if (Is<QuotedPart>(quoted)) {
        const Variable* variable = VariableOf(context, other);
        if (variable == nullptr) {
            Refuse(context, quoted.Offset, "a quoted text can only be compared with a variable");
        }
        if (const TimeNotation* notation = NotationOf(*variable)) {
            ReadTime(context, *notation, quoted);
        } else if (variable->HasLabels()) {
            return LabelTestOf(context, std::get<VariablePart>(other.Content), relation,
                               std::get<QuotedPart>(quoted.Content).Text);
        } else {
            Refuse(context, quoted.Offset, variable->Name + " has no labels: compare it with a number, without quotes");
        }
    } else {
        RefuseNumberBesideTime(context, left, right);
        RefuseNumberBesideTime(context, right, left);
    }
    return Comparison{RelationOf(relation), OperandOf(context, left), OperandOf(context, right)};
}

}  // namespace quillara
