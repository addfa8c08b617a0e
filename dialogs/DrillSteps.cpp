#include "dialogs/DrillSteps.h"

#include "dialogs/CategorySelectionDlg.h"
#include "dialogs/DefineTask.h"
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
    if (analysis.DataChanged == 1) {
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

/// What follows every move: the lists, the counts and the stand-alone documents are those of the new subset.
void ShowNewSubset(CDefineTask& task) {
    CDrillDown& analysis = *task.Analysis;
    analysis.RefreshListBoxes(task.Window);
    analysis.ReadAfterDrill(0);
    task.UpdateControls();
    analysis.AutoUpdate(0);
    task.SelectCurrentDown();
    task.SelectCurrentUp();
}

}  // namespace

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
    analysis.MoveToDrillUps();
    ShowNewSubset(task);
    analysis.SetAllIsset(0);
    task.UpdateControls();
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
    analysis.MoveBackToDrillDowns();
    ShowNewSubset(task);
    task.UpdateControls();
    task.UnlockResults();
    return 0;
}
