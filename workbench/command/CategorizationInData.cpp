#include "workbench/command/CategorizationInData.h"

#include <utility>

#include "workbench/data/CalendarCuts.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

void CheckKind(const Categorization& chosen, const Variable& variable) {
    if (chosen.WrittenAs == ValueKind::Number || chosen.WrittenAs == variable.Kind) {
        return;
    }
    const bool isDate = chosen.WrittenAs == ValueKind::Date;
    throw DataError("The variable " + Quoted(variable.Name) + " can't be categorized so: it holds no " +
                    (isDate ? "dates." : "times of day."));
}

}  // namespace

Categorization InData(const Categorization& chosen, const Variable& variable, std::span<const CaseResult> selection) {
    CheckKind(chosen, variable);
    if (!chosen.Period) {
        return chosen;
    }
    constexpr double daysOfWeek = 7.0;
    CalendarCuts cuts = CutByCalendar(variable, *chosen.Period, selection);
    Categorization made = chosen;
    if (chosen.Period == CalendarPeriod::Week) {
        made.StepSize = daysOfWeek;
        made.StepStart = cuts.FirstDay;
    } else {
        made.Bounds = std::move(cuts.LastDays);
    }
    return made;
}

}  // namespace quillara
