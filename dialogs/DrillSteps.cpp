#include "dialogs/DrillSteps.h"

#include <new>
#include <utility>

#include "dialogs/CategorySelectionDlg.h"
#include "dialogs/DefineTask.h"
#include "dialogs/ShownAgain.h"
#include "host/WindowServices.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"

namespace {

/// Whether a script has chosen the category already.
bool IsChosenByScript(const CDefineTask& task) {
    return task.IsOleAutomation() && task.AutomationInteractive == 0;
}

/// Brings categories and counts of the current variable up to date, and keeps for the record what the step takes away.
void PrepareCategories(CDefineTask& task) {
    CDrillDown& analysis = *task.Analysis;
    task.ApplyCategorization();
    if (IsChosenByScript(task)) {
        task.EarlyRecordState(DrillVariablesGroup);
        task.EarlyRecordState(StatisticsGroup);
    }
    if (analysis.DataChanged == 1 || analysis.ReadFailed) {
        analysis.ReadAfterDrill(0);
    }
    if (analysis.GetCurrentIsset() == 0) {
        analysis.ReadBeforeDrill(0);
    }
}

/// Has the category chosen and kept for the record; false when the user cancels.
/// Intended: the record is told of the category also after a cancel, unlike of the step; recorders take what they are
/// told last.
bool ChooseCategory(CDefineTask& task) {
    if (IsChosenByScript(task)) {
        task.EarlyRecordState(DrillOperationsGroup);
        return true;
    }
    CategorySelectionDlg dialog(*task.Analysis);
    const int result = dialog.DoModal(task.Analysis->GetLibInstance());
    task.EarlyRecordState(DrillOperationsGroup);
    return result == 1;
}

/// Moves a record and shows what follows: the lists, the counts and the stand-alone documents of the new subset.
void MoveAndShow(CDefineTask& task, int (CDrillDown::*move)()) {
    CDrillDown& analysis = *task.Analysis;
    MoveAndRead(task, move, [](CDefineTask&) {});
    task.UpdateControls();
    analysis.AutoUpdate(0);
    task.SelectCurrentDown();
    task.SelectCurrentUp();
}

}  // namespace

void TakeStep(CDefineTask& task, const std::function<void()>& step) {
    try {
        step();
    } catch (const std::bad_alloc&) {
        // The move may be done: what was shown before it may not pass for the present subset.
        task.Analysis->AutoUpdate(0);
        ShowSets(task);
        throw;
    }
}

void MoveAndRead(CDefineTask& task, int (CDrillDown::*move)(), void (*showBefore)(CDefineTask&)) {
    CDrillDown& analysis = *task.Analysis;
    // Until the pass the counts are those of the old subset; a failure on the way leaves them to be read again.
    const std::int16_t changed = std::exchange(analysis.DataChanged, std::int16_t{1});
    (analysis.*move)();
    const bool listsFilled = analysis.RefreshListBoxes(task.Window) != 0;
    showBefore(task);
    analysis.DataChanged = changed;
    analysis.ReadAfterDrill(0);
    if (!listsFilled) {
        RefreshLists(task);  // the step is taken without them, but lists of other sets may not stand there in silence
    }
}

bool LacksBoundaries(CDefineTask& task) {
    return task.IsDlgButtonChecked(task.Window, UserIntervalsRadio) && task.Analysis->GetCurrentNU() == 0;
}

std::int64_t DrillOneDown(CDefineTask& task) {
    CDrillDown& analysis = *task.Analysis;
    // The step goes by CurrentDown; the list is asked as hosts and recorders know it, and its answer isn't used.
    GetListSelection(task.GetDlgItem(task.Window, DrillDownListControl));
    task.LockResults();
    if (LacksBoundaries(task)) {
        // Intended: no UnlockResults before the boundaries dialog is posted, unlike on every other way out; that dialog
        // locks again, and its one unlock ends both, as the lock doesn't count.
        PostWindowMessage(task.Window, WindowMessage::Command, BoundariesButton, 0);
        return 1;
    }
    PrepareCategories(task);
    // A script may have named a variable that can't be drilled on.
    if (!ChooseCategory(task) || analysis.GetCurrentDrillDown() < 0) {
        task.UnlockResults();
        return 0;
    }
    task.FinishRecordingDialog(DialogStep, RecordKind, DownButton);
    TakeStep(task, [&] {
        MoveAndShow(task, &CDrillDown::MoveToDrillUps);
        analysis.SetAllIsset(0);
        task.UpdateControls();
    });
    task.UnlockResults();
    return 0;
}

// Intended: neither ApplyCategorization nor a read before the move nor SetAllIsset, unlike Down; what stands on the
// Categorization page and isn't stored yet is lost by a step up, and counts that the pass has made stay fresh.
std::int64_t DrillOneUp(CDefineTask& task) {
    CDrillDown& analysis = *task.Analysis;
    const auto row = static_cast<std::int16_t>(GetListSelection(task.GetDlgItem(task.Window, DrillUpListControl)));
    if (row < 0) {
        return 0;
    }
    task.LockResults();
    analysis.SetCurrentUpItem(row);
    task.FinishRecordingDialog(DialogStep, RecordKind, UpButton);
    TakeStep(task, [&] {
        MoveAndShow(task, &CDrillDown::MoveBackToDrillDowns);
        task.UpdateControls();
    });
    task.UnlockResults();
    return 0;
}
