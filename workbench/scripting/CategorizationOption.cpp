#include "workbench/scripting/CategorizationOption.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>

#include "workbench/data/DateTimes.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/Suggestion.h"
#include "workbench/data/WrittenValue.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

constexpr int FewestIntervals = 2;
constexpr int MostIntervals = 999;
constexpr double LargestStep = 1.7e308;  ///< that the module takes
constexpr std::size_t MostBounds = 99;

using Argument = std::optional<std::string_view>;

/// Each fills in what stands behind the colon; false when it can't be read.
bool NoArgument(Categorization&, Argument argument) {
    return !argument;
}

bool IntervalCount(Categorization& chosen, Argument argument) {
    const std::optional<int> count = argument ? WholeNumber(*argument) : std::nullopt;
    chosen.Count = count.value_or(0);
    return chosen.Count >= FewestIntervals && chosen.Count <= MostIntervals;
}

/// A number, or of times of day a time.
std::optional<WrittenValue> ReadSize(std::string_view text) {
    const std::optional<WrittenValue> size = ReadWrittenValue(text);
    const bool isPoint = size && (size->Kind == ValueKind::Date || size->Kind == ValueKind::DateTime);
    return isPoint ? std::nullopt : size;
}

/// A day as the date-time that it begins with.
WrittenValue AsDateTime(const WrittenValue& written) {
    return written.Kind == ValueKind::Date ? WrittenValue{written.Value * SecondsOfDay, ValueKind::DateTime} : written;
}

bool StepAndStart(Categorization& chosen, Argument argument) {
    if (!argument) {
        return false;
    }
    const std::size_t at = argument->find('@');
    chosen.StartAtMin = at == std::string_view::npos;
    const std::optional<WrittenValue> size = ReadSize(argument->substr(0, at));
    std::optional<WrittenValue> start = chosen.StartAtMin ? WrittenValue{0.0, size ? size->Kind : ValueKind::Number}
                                                          : ReadWrittenValue(argument->substr(at + 1));
    if (!size || !start) {
        return false;
    }
    const bool isTime = size->Kind == ValueKind::TimeOfDay;
    start = isTime ? AsDateTime(*start) : *start;
    chosen.StepSize = size->Value;
    chosen.StepStart = start->Value;
    chosen.WrittenAs = isTime && start->Kind == ValueKind::Number ? size->Kind : start->Kind;
    return chosen.StepSize >= 0.0 && chosen.StepSize <= LargestStep;
}

/// The values between commas; none when one is no value.
std::vector<WrittenValue> ReadBounds(std::string_view text) {
    std::vector<WrittenValue> bounds;
    for (bool more = true; more;) {
        const std::size_t comma = text.find(',');
        const std::optional<WrittenValue> bound = ReadWrittenValue(text.substr(0, comma));
        if (!bound) {
            return {};
        }
        bounds.push_back(*bound);
        more = comma != std::string_view::npos;
        text.remove_prefix(more ? comma + 1 : text.size());
    }
    return bounds;
}

bool RisingBounds(Categorization& chosen, Argument argument) {
    std::vector<WrittenValue> bounds = argument ? ReadBounds(*argument) : std::vector<WrittenValue>();
    if (std::ranges::find(bounds, ValueKind::DateTime, &WrittenValue::Kind) != bounds.end()) {
        std::ranges::transform(bounds, bounds.begin(), AsDateTime);
    }
    for (const WrittenValue& bound : bounds) {
        const bool isFirst = chosen.Bounds.empty();
        if (!isFirst && (chosen.Bounds.back() >= bound.Value || chosen.WrittenAs != bound.Kind)) {
            return false;
        }
        chosen.Bounds.push_back(bound.Value);
        chosen.WrittenAs = bound.Kind;
    }
    return !bounds.empty() && bounds.size() <= MostBounds;
}

template <CalendarPeriod Period>
bool ByCalendar(Categorization& chosen, Argument argument) {
    chosen.Period = Period;
    chosen.WrittenAs = ValueKind::Date;
    return !argument;
}

struct MethodSyntax {
    std::string_view Name;
    int Method;
    bool (*Read)(Categorization&, Argument);
    std::string_view Rule;
};

// clang-format off
constexpr std::array<MethodSyntax, 12> Methods{{
    // Name       Method Read                                 Rule
    {"distinct",  0,     NoArgument,                          "distinct takes nothing behind it"},
    {"exact",     1,     IntervalCount,                       "exact:N takes a whole number from 2 to 999"},
    {"neat",      2,     IntervalCount,                       "neat:N takes a whole number from 2 to 999"},
    {"step",      3,     StepAndStart,                        "step:SIZE or step:SIZE@START takes a size of 0 or more, up to 1.7e308, and a number to start at, a day YYYY-MM-DD, a day with a time or a time HH:MM"},
    {"integer",   4,     NoArgument,                          "integer takes nothing behind it"},
    {"bounds",    5,     RisingBounds,                        "bounds:B1,B2,... takes 1 to 99 rising numbers, days YYYY-MM-DD, days with times or times HH:MM"},
    {"hour",      3,     ByCalendar<CalendarPeriod::Hour>,    "hour takes nothing behind it"},
    {"day",       3,     ByCalendar<CalendarPeriod::Day>,     "day takes nothing behind it"},
    {"week",      3,     ByCalendar<CalendarPeriod::Week>,    "week takes nothing behind it"},
    {"month",     5,     ByCalendar<CalendarPeriod::Month>,   "month takes nothing behind it"},
    {"quarter",   5,     ByCalendar<CalendarPeriod::Quarter>, "quarter takes nothing behind it"},
    {"year",      5,     ByCalendar<CalendarPeriod::Year>,    "year takes nothing behind it"},
}};
// clang-format on

}  // namespace

std::optional<std::size_t> IntervalsOf(const Categorization& how) {
    return how.Bounds.empty() ? std::nullopt : std::optional(how.Bounds.size() + 1);
}

Categorization ParseCategorization(std::string_view text) {
    const std::size_t colon = text.find(':');
    const std::string_view name = text.substr(0, colon);
    const auto* method = std::ranges::find(Methods, name, &MethodSyntax::Name);
    if (method == Methods.end()) {
        throw UsageError(
            "Unknown method " + Quoted(name) +
            EndWithChoice(name, {"distinct", "integer", "exact:N", "neat:N", "step:SIZE", "step:SIZE@START",
                                 "bounds:B1,B2", "hour", "day", "week", "month", "quarter", "year"}));
    }
    Categorization chosen;
    chosen.Method = method->Method;
    const Argument argument = colon == std::string_view::npos ? Argument() : Argument(text.substr(colon + 1));
    if (!method->Read(chosen, argument)) {
        throw UsageError(Quoted(text) + " can't be used; " + std::string(method->Rule) + ".");
    }
    return chosen;
}

}  // namespace quillara
