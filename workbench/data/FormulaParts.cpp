#include "workbench/data/FormulaParts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"

namespace quillara {
namespace {

/// How a point in time is written for a kind of variable.
struct TimeNotation {
    ValueKind Kind;
    std::optional<double> (*Read)(std::string_view text);
    std::string_view Advice;
    std::string_view Request;  ///< how it is asked for where a number stands
};

constexpr std::array<TimeNotation, 3> TimeNotations = {{
    {ValueKind::Date, DaysFromText, "isn't a day of the calendar written as YYYY-MM-DD",
     "is a date: write the day in quotes, as \"2020-01-01\""},
    {ValueKind::TimeOfDay, SecondsFromText, "isn't a time written as HH:MM:SS",
     "is a time: write it in quotes, as \"13:45:00\""},
    {ValueKind::DateTime, SecondsFromDateTime, "isn't a date with a time written as YYYY-MM-DD HH:MM:SS",
     "is a date with a time: write it in quotes, as \"2020-01-01 13:45:00\""},
}};

const TimeNotation* NotationOf(ValueKind kind) {
    const auto* found = std::ranges::find(TimeNotations, kind, &TimeNotation::Kind);
    return found == TimeNotations.end() ? nullptr : found;
}

/// What a table holds as long as the formula is read.
template <class Held>
std::shared_ptr<const Held> Lent(const Held& held) {
    return {std::shared_ptr<const void>(), &held};
}

}  // namespace

void Refuse(const FormulaContext& context, std::size_t offset, const std::string& reason) {
    throw UnreadableAt(context.Formula, offset, reason);
}

FormulaPart NumberPart(std::size_t offset, double number) {
    return {.Offset = offset, .Term = ConstantTerm(number)};
}

FormulaPart VariablePart(std::size_t offset, const Variable& variable) {
    return {.Offset = offset,
            .Term = ColumnTerm(variable),
            .Varies = true,
            .Kind = variable.Kind,
            .Plain = &variable,
            .Labels = variable.Labels.empty() ? nullptr : Lent(variable.Labels),
            .Texts = variable.Kind == ValueKind::Text ? Lent(variable.Texts) : nullptr};
}

FormulaPart MadeOf(std::initializer_list<const FormulaPart*> parts, PartRole role, ValueKind kind, TermPointer term) {
    FormulaPart made{.Offset = (*parts.begin())->Offset, .Role = role, .Term = std::move(term), .Kind = kind};
    for (const FormulaPart* part : parts) {
        made.Varies = made.Varies || part->Varies;
        if (part->Role == PartRole::Unknown && role != PartRole::Condition) {
            made.Role = PartRole::Unknown;
        }
    }
    return made;
}

void RequireCondition(const FormulaContext& context, const FormulaPart& part) {
    if (part.Role != PartRole::Condition && part.Role != PartRole::Unknown) {
        Refuse(context, part.Offset, "expected a condition such as age > 30, found a value that isn't compared");
    }
}

void RequireValue(const FormulaContext& context, const FormulaPart& part) {
    if (part.Role == PartRole::Condition) {
        Refuse(context, part.Offset, "expected a number, a variable or a quoted text, found a condition");
    }
    if (part.Role == PartRole::Nothing) {
        Refuse(context, part.Offset, "missing() is only of use as a result of if(condition, value, missing())");
    }
}

void RequireNumber(const FormulaContext& context, const FormulaPart& part) {
    RequireValue(context, part);
    if (part.IsText()) {
        const std::string what = part.Plain == nullptr ? "this is a text" : part.Plain->Name + " is a text variable";
        Refuse(context, part.Offset, what + ": compare it with a text in \"quotes\", by = or <>");
    }
    if (part.Role == PartRole::Quoted) {
        Refuse(context, part.Offset,
               "expected a number, found a quoted text, which can only be compared with a variable");
    }
}

std::optional<double> ConstantOf(const FormulaPart& part) {
    if (!part.IsNumber() || part.Varies) {
        return std::nullopt;
    }
    return ValuesOf(*part.Term, 1).front();
}

FormulaPart TimeOf(const FormulaContext& context, ValueKind kind, const FormulaPart& quoted) {
    const TimeNotation& notation = *NotationOf(kind);
    const std::optional<double> value = notation.Read(quoted.Text);
    if (!value) {
        Refuse(context, quoted.Offset, "the text " + quoted.Text + " " + std::string(notation.Advice));
    }
    FormulaPart time = NumberPart(quoted.Offset, *value);
    time.Kind = kind;
    return time;
}

void ReadQuotedTimes(const FormulaContext& context, FormulaPart& left, FormulaPart& right) {
    FormulaPart& quoted = left.Role == PartRole::Quoted ? left : right;
    const FormulaPart& other = left.Role == PartRole::Quoted ? right : left;
    if (quoted.Role == PartRole::Quoted && other.IsNumber() && IsTimeKind(other.Kind)) {
        quoted = TimeOf(context, other.Kind, quoted);
    }
}

void MakeDatesAlike(FormulaPart& left, FormulaPart& right) {
    if (!left.IsNumber() || !right.IsNumber()) {
        return;
    }
    for (auto [day, other] : {std::pair(&left, &right), std::pair(&right, &left)}) {
        if (day->Kind == ValueKind::Date && other->Kind == ValueKind::DateTime) {
            day->Term = ChangedTerm(day->Term, ChangeEach([](double days) { return days * SecondsOfDay; }));
            day->Kind = ValueKind::DateTime;
            day->Plain = nullptr;
            day->Labels = nullptr;
        }
    }
}

std::string RequestFor(ValueKind kind) {
    return std::string(NotationOf(kind)->Request);
}

}  // namespace quillara
