#include "workbench/scripting/CategorizationInData.h"

#include <utility>

#include "resources/ControlIds.h"
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

std::optional<Remark> RemarkOn(const Categorization& chosen, const Variable& variable) {
    const bool isByStep = chosen.Method == StepIntervalsRadio - DistinctValuesRadio && !chosen.Period;
    if (!isByStep || chosen.StepSize != 0.0) {
        return std::nullopt;
    }
    return Remark{"no-step", "Steps of 0 make no intervals of the variable " + Quoted(variable.Name) + ".",
                  "Choose a size above 0."};
}

}  // namespace quillara
