#include "workbench/data/FormulaFunctions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "workbench/data/CalendarParts.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/FormulaTexts.h"
#include "workbench/data/LetterCase.h"
#include "workbench/data/Suggestion.h"
#include "workbench/data/ValueText.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

constexpr std::size_t AnyNumber = 1000;
constexpr std::size_t MostCuts = 999;

using Arguments = std::vector<FormulaPart>;
using Labels = std::map<double, ValueTexts>;

/// A function as it is called.
struct Call {
    const FormulaContext& Context;
    const Token& Name;
    const Arguments& Given;

    [[nodiscard]] FormulaPart Make(ValueKind kind, TermPointer term, const FormulaPart& of) const {
        FormulaPart part = MadeOf({&of}, PartRole::Value, kind, std::move(term));
        part.Offset = Name.Offset;
        return part;
    }
};

template <class Function>
FormulaPart ChangedNumber(const Call& call, const FormulaPart& number, Function function) {
    const auto finite = [function](double value) {
        const double result = function(value);
        return std::isfinite(result) ? result : NoValue;
    };
    return call.Make(ValueKind::Number, ChangedTerm(number.Term, ChangeEach(finite)), number);
}

/// A function of one number.
template <double (*Function)(double)>
FormulaPart OfNumber(const Call& call) {
    RequireNumber(call.Context, call.Given[0]);
    return ChangedNumber(call, call.Given[0], [](double value) { return Function(value); });
}

/// To so many decimals; halves away from zero.
FormulaPart Round(const Call& call) {
    RequireNumber(call.Context, call.Given[0]);
    double power = 1;
    if (call.Given.size() > 1) {
        const std::optional<double> decimals = ConstantOf(call.Given[1]);
        if (!decimals || *decimals != std::floor(*decimals) || std::fabs(*decimals) > 15) {
            Refuse(call.Context, call.Given[1].Offset, "round takes a whole number of decimals from -15 to 15");
        }
        power = std::pow(10.0, std::fabs(*decimals));
        if (*decimals < 0) {
            return ChangedNumber(call, call.Given[0],
                                 [power](double value) { return std::round(value / power) * power; });
        }
    }
    return ChangedNumber(call, call.Given[0], [power](double value) {
        const double scaled = value * power;
        // What is too large to be scaled has no decimals.
        return std::isfinite(scaled) ? std::round(scaled) / power : value;
    });
}

double Lesser(double left, double right) {
    return std::isnan(left) || left < right ? left : right;
}

double Greater(double left, double right) {
    return std::isnan(left) || left > right ? left : right;
}

template <double (*Function)(double, double)>
FormulaPart Extreme(const Call& call) {
    Arguments given = call.Given;
    std::vector<std::pair<JoinRule, TermPointer>> further;
    FormulaPart whole = given.front();
    for (FormulaPart& argument : given) {
        ReadQuotedTimes(call.Context, whole, argument);
        RequireNumber(call.Context, argument);
        if (argument.IsNumber() && whole.IsNumber() && argument.Kind != whole.Kind) {
            Refuse(call.Context, argument.Offset, call.Name.Text + " takes values of one kind");
        }
        if (&argument != &given.front()) {
            further.emplace_back(RuleOf<Function>, argument.Term);
            whole = MadeOf({&whole, &argument}, PartRole::Value, whole.Kind, whole.Term);
        }
    }
    return call.Make(whole.Kind, JoinedTerm(whole.Term, std::move(further)), whole);
}

/// Throws unless the argument is of the kind or a date with a time.
void RequireTime(const Call& call, ValueKind kind, const std::string& what) {
    const FormulaPart& argument = call.Given[0];
    const bool isOfKind =
        argument.Role == PartRole::Value && (argument.Kind == kind || argument.Kind == ValueKind::DateTime);
    if (argument.Role != PartRole::Unknown && !isOfKind) {
        Refuse(call.Context, argument.Offset, call.Name.Text + " takes " + what);
    }
}

double DayOf(double dateTime) {
    return std::floor(dateTime / SecondsOfDay);
}

double ClockOf(double dateTime) {
    return dateTime - DayOf(dateTime) * SecondsOfDay;
}

/// The argument, or of a date with a time the one of its parts that `part` gives.
template <double (*Part)(double)>
FormulaPart PartOf(const Call& call) {
    const FormulaPart& argument = call.Given[0];
    return argument.Kind == ValueKind::DateTime ? ChangedNumber(call, argument, Part) : argument;
}

std::shared_ptr<const Labels> NamesFrom1(std::span<const std::string_view> names) {
    auto labels = std::make_shared<Labels>();
    for (std::size_t i = 0; i < names.size(); ++i) {
        (*labels)[static_cast<double>(i + 1)].Label = names[i];
    }
    return labels;
}

template <double (*Part)(double)>
FormulaPart OfDate(const Call& call) {
    RequireTime(call, ValueKind::Date, "a date");
    return ChangedNumber(call, PartOf<DayOf>(call), Part);
}

FormulaPart Weekday(const Call& call) {
    FormulaPart part = OfDate<WeekdayOfDays>(call);
    part.Labels = NamesFrom1(WeekdayNames);
    return part;
}

FormulaPart Month(const Call& call) {
    FormulaPart part = OfDate<MonthOfDays>(call);
    part.Labels = NamesFrom1(MonthNames);
    return part;
}

template <double (*Part)(double)>
FormulaPart OfTime(const Call& call) {
    RequireTime(call, ValueKind::TimeOfDay, "a time of day");
    return ChangedNumber(call, PartOf<ClockOf>(call), Part);
}

FormulaPart DateOf(const Call& call) {
    RequireTime(call, ValueKind::Date, "a date with a time");
    FormulaPart part = PartOf<DayOf>(call);
    part.Kind = ValueKind::Date;
    return part;
}

FormulaPart TimeOfDayOf(const Call& call) {
    RequireTime(call, ValueKind::TimeOfDay, "a date with a time");
    FormulaPart part = PartOf<ClockOf>(call);
    part.Kind = ValueKind::TimeOfDay;
    return part;
}

FormulaPart TextArgument(const Call& call) {
    FormulaPart text = AsText(call.Given[0]);
    if (text.Role != PartRole::Unknown && !text.IsText()) {
        Refuse(call.Context, text.Offset, call.Name.Text + " takes a text");
    }
    return text;
}

/// Characters: continuation bytes count for nothing.
FormulaPart Length(const Call& call) {
    FormulaPart text = TextArgument(call);
    if (text.Role == PartRole::Unknown) {
        return text;
    }
    std::vector<double> lengths;
    for (const std::string& each : *text.Texts) {
        lengths.push_back(static_cast<double>(std::ranges::count_if(
            each, [](char letter) { return (static_cast<unsigned char>(letter) & 0xC0U) != 0x80U; })));
    }
    const auto lookUp = [lengths = std::move(lengths)](double place) {
        return std::isnan(place) ? place : lengths[static_cast<std::size_t>(place) - 1];
    };
    return call.Make(ValueKind::Number, ChangedTerm(text.Term, ChangeEach(lookUp)), text);
}

template <std::string (*Change)(std::string_view)>
FormulaPart OfText(const Call& call) {
    const FormulaPart text = TextArgument(call);
    FormulaPart changed = text.Role == PartRole::Unknown ? text : WithTexts(text, Change);
    changed.Offset = call.Name.Offset;
    return changed;
}

/// The bounds of cut, which rise.
std::vector<double> BoundsOf(const Call& call) {
    std::vector<double> bounds;
    for (std::size_t i = 1; i < call.Given.size(); ++i) {
        FormulaPart value = call.Given[0];
        FormulaPart bound = call.Given[i];
        ReadQuotedTimes(call.Context, value, bound);
        const std::optional<double> number = ConstantOf(bound);
        const bool isOfKind = value.Role == PartRole::Unknown || bound.Kind == value.Kind;
        if (!number || !std::isfinite(*number) || !isOfKind || (!bounds.empty() && *number <= bounds.back())) {
            const std::string what = IsTimeKind(value.Kind) ? "quoted points in time" : "numbers";
            Refuse(call.Context, bound.Offset, "the bounds of cut are " + what + " that rise");
        }
        bounds.push_back(*number);
    }
    return bounds;
}

std::string BoundText(ValueKind kind, double bound) {
    if (kind == ValueKind::DateTime) {
        return TextFromDateTime(bound, ' ', PrecisionOf(bound));
    }
    return kind == ValueKind::Number ? ExactNumberText(bound) : TextOfValue(kind, bound);
}

/// As intervals of an analysis are called.
std::shared_ptr<const Labels> IntervalLabels(ValueKind kind, const std::vector<double>& bounds) {
    auto labels = std::make_shared<Labels>();
    for (std::size_t i = 0; i <= bounds.size(); ++i) {
        const std::string lower = i == 0 ? "" : BoundText(kind, bounds[i - 1]) + "<";
        const std::string upper = i == bounds.size() ? "" : "<=" + BoundText(kind, bounds[i]);
        (*labels)[static_cast<double>(i + 1)].Label = lower + "x" + upper;
    }
    return labels;
}

/// Values on an upper bound belong to its interval.
FormulaPart Cut(const Call& call) {
    const FormulaPart& value = call.Given[0];
    RequireNumber(call.Context, value);
    const std::vector<double> bounds = BoundsOf(call);
    const auto place = [bounds](double number) {
        const auto at = std::ranges::lower_bound(bounds, number) - bounds.begin();
        return std::isnan(number) ? number : static_cast<double>(at + 1);
    };
    FormulaPart part = call.Make(ValueKind::Number, ChangedTerm(value.Term, ChangeEach(place)), value);
    part.Labels = IntervalLabels(value.Kind, bounds);
    return part;
}

/// Makes two results of one kind.
void Reconcile(const Call& call, FormulaPart& left, FormulaPart& right) {
    ReadQuotedTimes(call.Context, left, right);
    MakeDatesAlike(left, right);
    left = AsText(left);
    right = AsText(right);
    for (auto [side, other] : {std::pair(&left, &right), std::pair(&right, &left)}) {
        if (side->Role == PartRole::Nothing && other->Role != PartRole::Nothing) {
            const std::size_t offset = side->Offset;
            *side = *other;
            side->Offset = offset;
            side->Term = ConstantTerm(NoValue);
        }
    }
    const bool isKnown = left.Role != PartRole::Unknown && right.Role != PartRole::Unknown;
    if (isKnown && (left.Role != right.Role || left.Kind != right.Kind || left.Role == PartRole::Nothing)) {
        Refuse(call.Context, right.Offset, "both results of if are of one kind: numbers, texts, dates or conditions");
    }
    if (isKnown && left.IsText()) {
        NumberAlike(left, right);
    }
}

bool HaveEqualLabels(const FormulaPart& left, const FormulaPart& right) {
    const auto textsOf = [](const auto& entry) { return std::tie(entry.second.Label, entry.second.Description); };
    return left.Labels != nullptr && right.Labels != nullptr &&
           std::ranges::equal(*left.Labels, *right.Labels, [&](const auto& one, const auto& other) {
               return one.first == other.first && textsOf(one) == textsOf(other);
           });
}

FormulaPart If(const Call& call) {
    RequireCondition(call.Context, call.Given[0]);
    FormulaPart then = call.Given[1];
    FormulaPart otherwise = call.Given[2];
    Reconcile(call, then, otherwise);
    const FormulaPart& condition = call.Given[0];
    const TermPointer term = ChoiceTerm(condition.Term, then.Term, otherwise.Term);
    FormulaPart part = MadeOf({&then, &otherwise, &condition}, then.Role, then.Kind, term);
    part.Offset = call.Name.Offset;
    part.Texts = then.Texts;
    part.Labels = HaveEqualLabels(then, otherwise) ? then.Labels : nullptr;
    return part;
}

struct FunctionRow {
    std::string_view Name;
    std::size_t Fewest;  ///< arguments
    std::size_t Most;
    FormulaPart (*Make)(const Call& call);
};

// clang-format off
constexpr std::array FunctionRows{
    //          Name       Fewest Most       Make
    FunctionRow{"if",      3,     3,         If},
    FunctionRow{"cut",     2,     MostCuts,  Cut},
    FunctionRow{"log",     1,     1,         OfNumber<std::log>},
    FunctionRow{"log10",   1,     1,         OfNumber<std::log10>},
    FunctionRow{"exp",     1,     1,         OfNumber<std::exp>},
    FunctionRow{"sqrt",    1,     1,         OfNumber<std::sqrt>},
    FunctionRow{"abs",     1,     1,         OfNumber<std::fabs>},
    FunctionRow{"round",   1,     2,         Round},
    FunctionRow{"floor",   1,     1,         OfNumber<std::floor>},
    FunctionRow{"ceiling", 1,     1,         OfNumber<std::ceil>},
    FunctionRow{"min",     1,     AnyNumber, Extreme<Lesser>},
    FunctionRow{"max",     1,     AnyNumber, Extreme<Greater>},
    FunctionRow{"year",    1,     1,         OfDate<YearOfDays>},
    FunctionRow{"quarter", 1,     1,         OfDate<QuarterOfDays>},
    FunctionRow{"month",   1,     1,         Month},
    FunctionRow{"day",     1,     1,         OfDate<DayOfMonth>},
    FunctionRow{"weekday", 1,     1,         Weekday},
    FunctionRow{"hour",    1,     1,         OfTime<HourOfSeconds>},
    FunctionRow{"minute",  1,     1,         OfTime<MinuteOfSeconds>},
    FunctionRow{"date",    1,     1,         DateOf},
    FunctionRow{"time",    1,     1,         TimeOfDayOf},
    FunctionRow{"length",  1,     1,         Length},
    FunctionRow{"lower",   1,     1,         OfText<InLowerCase>},
    FunctionRow{"upper",   1,     1,         OfText<InUpperCase>},
};
// clang-format on

const FunctionRow* FunctionNamed(std::string_view name) {
    const auto* found = std::ranges::find_if(
        FunctionRows, [name](const FunctionRow& row) { return EqualButForLetterCase(row.Name, name); });
    return found == FunctionRows.end() ? nullptr : found;
}

}  // namespace

bool IsFunction(std::string_view name) {
    return FunctionNamed(name) != nullptr;
}

std::string FunctionNames() {
    std::string names;
    for (const FunctionRow& row : FunctionRows) {
        names.append(names.empty() ? "" : ", ").append(row.Name);
    }
    return names + ", missing";
}

std::optional<std::string> FunctionMeant(std::string_view name) {
    std::vector<std::string> names{"missing"};
    for (const FunctionRow& row : FunctionRows) {
        names.emplace_back(row.Name);
    }
    return Suggestion(name, names);
}

FormulaPart CallOf(const FormulaContext& context, const Token& name, const std::vector<FormulaPart>& arguments) {
    const FunctionRow& row = *FunctionNamed(name.Text);
    if (arguments.size() < row.Fewest || arguments.size() > row.Most) {
        const std::string count = std::to_string(row.Fewest);
        const std::string takes = row.Most == row.Fewest        ? count
                                  : row.Most < 10               ? count + " or " + std::to_string(row.Most)
                                  : arguments.size() > row.Most ? "at most " + std::to_string(row.Most)
                                                                : "at least " + count;
        Refuse(context, name.Offset, name.Text + " takes " + takes + (takes == "1" ? " argument" : " arguments"));
    }
    return row.Make({context, name, arguments});
}

}  // namespace quillara
