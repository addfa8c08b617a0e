#include "workbench/data/CalendarCuts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/WordTable.h"

namespace quillara {
namespace {

constexpr std::size_t MostSteps = 2048;  ///< intervals that an analysis makes
constexpr std::size_t MostPeriods = 100;  ///< intervals by bounds

constexpr WordTable<CalendarPeriod, 6> PeriodNames{{
    {"hour", CalendarPeriod::Hour},
    {"day", CalendarPeriod::Day},
    {"week", CalendarPeriod::Week},
    {"month", CalendarPeriod::Month},
    {"quarter", CalendarPeriod::Quarter},
    {"year", CalendarPeriod::Year},
}};

struct PeriodWord {
    std::string_view Word;
    std::string_view Coarser;
};
constexpr std::array<PeriodWord, 6> PeriodWords{{
    {"hours", "day, week or month"},
    {"days", "week, month or quarter"},
    {"weeks", "month, quarter or year"},
    {"months", "quarter or year"},
    {"quarters", "year"},
    {"years", "bounds:DAY,DAY,..."},
}};

struct Range {
    double First = 0.0;
    double Last = -1.0;
};

/// The smallest and the largest value of the selected cases; the one behind the other where there is none.
Range RangeOf(const Variable& variable, std::span<const CaseResult> selection) {
    Range range;
    bool isFirst = true;
    std::size_t row = 0;
    for (const double value : variable.Values) {
        const bool isSelected = selection.empty() || selection[row] == CaseResult::Use;
        ++row;
        if (isSelected && std::isfinite(value) && !variable.IsMissing(value)) {
            range = {isFirst ? value : std::min(range.First, value), isFirst ? value : std::max(range.Last, value)};
            isFirst = false;
        }
    }
    return range;
}

/// How many of the variable's units make a day.
double UnitsOfDay(const Variable& variable) {
    return variable.Kind == ValueKind::DateTime ? SecondsOfDay : 1.0;
}

Range InDays(Range range, double unitsOfDay) {
    return {range.First / unitsOfDay, range.Last / unitsOfDay};
}

/// Values of a period end so much before the next one begins.
double GapBetween(const Variable& variable) {
    if (variable.Kind != ValueKind::DateTime) {
        return 1.0;
    }
    for (const double parts : {1.0, 1e3}) {
        const auto isWhole = [&](double value) { return std::round(value * parts) / parts == value; };
        if (HoldsForAll(variable.Values, [&](double value) { return variable.IsMissing(value) || isWhole(value); })) {
            return 1.0 / parts;
        }
    }
    return 1e-6;
}

/// The range in days.
void CheckRange(CalendarPeriod period, const Variable& variable, const Range& range) {
    const PeriodWord& word = PeriodWords[static_cast<std::size_t>(period)];
    if (range.Last < range.First || TextFromDays(range.First).empty() || TextFromDays(range.Last).empty()) {
        throw DataError("The variable " + Quoted(variable.Name) + " can't be cut into " + std::string(word.Word) +
                        ": the selected cases have no dates of the calendar.");
    }
    const std::size_t count = CountPeriods(period, range.First, range.Last);
    const std::size_t most = DaysIn(period) > 0.0 ? MostSteps : MostPeriods;
    if (count > most) {
        throw DataError("The dates of " + Quoted(variable.Name) + " lie in " + std::to_string(count) + ' ' +
                        std::string(word.Word) + ", and there can be " + std::to_string(most) + " intervals; choose " +
                        std::string(word.Coarser) + ", or fewer cases with --select.");
    }
}

}  // namespace

CalendarPeriod CalendarPeriodNamed(std::string_view word) {
    return Choose(PeriodNames, word);
}

CalendarCuts CutByCalendar(const Variable& variable, CalendarPeriod period, std::span<const CaseResult> selection) {
    const bool hasTimes = variable.Kind == ValueKind::DateTime;
    const bool needsTimes = period == CalendarPeriod::Hour;
    if (!hasTimes && (variable.Kind != ValueKind::Date || needsTimes)) {
        throw DataError("The variable " + Quoted(variable.Name) + " can't be categorized so: it holds no dates" +
                        (needsTimes ? " with times." : "."));
    }
    const double unitsOfDay = UnitsOfDay(variable);
    const Range range = InDays(RangeOf(variable, selection), unitsOfDay);
    CheckRange(period, variable, range);
    CalendarCuts cuts{.Start = std::round(FirstDayOf(period, range.First) * unitsOfDay),
                      .Step = std::round(DaysIn(period) * unitsOfDay),
                      .Ends = {}};
    if (cuts.Step == 0.0) {
        const double gap = GapBetween(variable);
        for (const double firstDay : PeriodBegins(period, range.First, range.Last)) {
            cuts.Ends.push_back(firstDay * unitsOfDay - gap);
        }
    }
    return cuts;
}

}  // namespace quillara
