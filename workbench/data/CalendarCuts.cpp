#include "workbench/data/CalendarCuts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "workbench/data/Calendar.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/WordTable.h"

namespace quillara {
namespace {

constexpr std::size_t MostWeeks = 2048;  ///< intervals by steps that an analysis makes
constexpr std::size_t MostPeriods = 100;  ///< intervals by bounds

constexpr WordTable<CalendarPeriod, 4> PeriodNames{{
    {"week", CalendarPeriod::Week},
    {"month", CalendarPeriod::Month},
    {"quarter", CalendarPeriod::Quarter},
    {"year", CalendarPeriod::Year},
}};

struct PeriodWord {
    std::string_view Word;
    std::string_view Coarser;
};
constexpr std::array<PeriodWord, 4> PeriodWords{{
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

void CheckRange(CalendarPeriod period, const Variable& variable, const Range& range) {
    const PeriodWord& word = PeriodWords[static_cast<std::size_t>(period)];
    if (range.Last < range.First || TextFromDays(range.First).empty() || TextFromDays(range.Last).empty()) {
        throw DataError("The variable " + Quoted(variable.Name) + " can't be cut into " + std::string(word.Word) +
                        ": the selected cases have no dates of the calendar.");
    }
    const std::size_t count = CountPeriods(period, range.First, range.Last);
    const std::size_t most = period == CalendarPeriod::Week ? MostWeeks : MostPeriods;
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
    if (variable.Kind != ValueKind::Date) {
        throw DataError("The variable " + Quoted(variable.Name) + " can't be categorized so: it holds no dates.");
    }
    const Range range = RangeOf(variable, selection);
    CheckRange(period, variable, range);
    return {FirstDayOf(period, range.First), PeriodEnds(period, range.First, range.Last)};
}

}  // namespace quillara
