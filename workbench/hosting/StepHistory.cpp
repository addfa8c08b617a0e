#include "workbench/hosting/StepHistory.h"

#include <optional>
#include <utility>

#include "resources/ControlIds.h"
#include "workbench/data/DateIntervals.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

/// The category of the newest step: its row shows the variable with the category in brackets. Empty when it doesn't.
std::string NewestCategory(Window* startup, const std::string& variable) {
    const Control* list = startup == nullptr ? nullptr : startup->Find(DrillUpListControl);
    const std::string begin = variable + " (";
    if (list == nullptr || list->Rows.empty() || !list->Rows.front().starts_with(begin) ||
        !list->Rows.front().ends_with(')')) {
        return {};
    }
    const std::string& row = list->Rows.front();
    return row.substr(begin.size(), row.size() - begin.size() - 1);
}

/// For people: of dates and times with them in place of numbers.
std::string CategoryForPeople(AnalysisDocument& document, const std::string& variable) {
    std::string category = NewestCategory(document.StartupWindow(), variable);
    const std::optional<std::size_t> place = document.Table().Find(variable);
    if (!place || !document.Table().Variables[*place].Labels.empty()) {
        return category;
    }
    const Variable& stepped = document.Table().Variables[*place];
    const std::optional<CaseCondition> newest = NewestCondition(document);
    // The number of a date-time has more digits than the name of a category.
    const bool isCut = stepped.Kind == ValueKind::DateTime && newest && !stepped.IsMissing(newest->Upper);
    return isCut ? NameInDates(stepped.Kind, category, newest->Lower, newest->Upper)
                 : NameInDates(stepped.Kind, category);
}

}  // namespace

void StepHistory::Begin(int control, const ValueOfList& valueOf) {
    if (!IsAside && (control == DownButton || control == UpButton)) {
        const bool isDown = control == DownButton;
        Steps.push_back(
            {isDown ? StepKind::Down : StepKind::Up, valueOf(isDown ? DrillDownListControl : DrillUpListControl)});
        IsPending = true;
    }
}

void StepHistory::EndCommand(AnalysisDocument& document) {
    if (IsAside) {
        return;
    }
    const bool hasStep = std::exchange(IsPending, false);
    const std::optional<std::size_t> inForce = StepsInForceNow(document);
    const bool isDone = hasStep && (!inForce || *inForce != Before);
    if (hasStep && !isDone) {
        Steps.pop_back();
    }
    if (isDone) {
        StepTaken& newest = Steps.back();
        newest.Category = newest.Kind == StepKind::Down ? CategoryForPeople(document, newest.Variable) : std::string();
        newest.Left = CountRemaining(document);
        newest.IsAnew = std::exchange(BeginsAnew, false);
        NoticeStep(document, newest);
    } else if (inForce && *inForce == 0 && Before != 0) {
        BeginsAnew = true;
    }
    Before = inForce.value_or(0);
}

StepsAside::StepsAside(AnalysisDocument& document) : History(StepsOf(&document)) {
    History.SetAside(true);
}

}  // namespace quillara
