#include "workbench/scripting/CategorizationInData.h"

#include <utility>

#include "resources/ControlIds.h"
#include "workbench/data/CalendarCuts.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisRemarks.h"

namespace quillara {
namespace {

/// Steps of some time from the smallest date-time on.
bool IsLengthOfTime(const Categorization& chosen) {
    return chosen.WrittenAs == ValueKind::TimeOfDay && chosen.Bounds.empty() && chosen.StartAtMin;
}

void CheckKind(const Categorization& chosen, const Variable& variable) {
    const bool takesDates = variable.Kind == ValueKind::DateTime;
    if (chosen.WrittenAs == ValueKind::Number || chosen.WrittenAs == variable.Kind ||
        (takesDates && (chosen.WrittenAs == ValueKind::Date || IsLengthOfTime(chosen)))) {
        return;
    }
    const char* what = chosen.WrittenAs == ValueKind::Date       ? "dates."
                       : chosen.WrittenAs == ValueKind::DateTime ? "dates with times."
                                                                 : "times of day.";
    throw DataError("The variable " + Quoted(variable.Name) + " can't be categorized so: it holds no " + what);
}

/// Days as date-times: bounds and start as the midnights that they begin with, and the size of steps in days.
Categorization InSeconds(Categorization chosen) {
    for (double& bound : chosen.Bounds) {
        bound *= SecondsOfDay;
    }
    chosen.StepStart *= SecondsOfDay;
    chosen.StepSize *= SecondsOfDay;
    return chosen;
}

}  // namespace

Categorization InData(const Categorization& chosen, const Variable& variable, std::span<const CaseResult> selection) {
    if (!chosen.Period) {
        CheckKind(chosen, variable);
        const bool isInDays = chosen.WrittenAs == ValueKind::Date && variable.Kind == ValueKind::DateTime;
        return isInDays ? InSeconds(chosen) : chosen;
    }
    CalendarCuts cuts = CutByCalendar(variable, *chosen.Period, selection);
    Categorization made = chosen;
    made.StepSize = cuts.Step;
    made.StepStart = cuts.Start;
    made.Bounds = std::move(cuts.Ends);
    return made;
}

void NoticeCategorization(AnalysisDocument& document, const Categorization& chosen, const Variable& variable) {
    const int radio = DistinctValuesRadio + chosen.Method;
    if (radio == StepIntervalsRadio && !chosen.Period && chosen.StepSize == 0.0) {
        Notice(&document, {"no-step", "Steps of 0 make no intervals of the variable " + Quoted(variable.Name) + ".",
                           "Choose a size above 0."});
    }
    if (radio == DistinctValuesRadio || radio == IntegerCategoriesRadio) {
        NoticeDistinct(document, variable, radio == IntegerCategoriesRadio);
    }
}

}  // namespace quillara
