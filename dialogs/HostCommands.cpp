#include "dialogs/HostCommands.h"

#include <tuple>

#include "dialogs/DefineTask.h"
#include "dialogs/ShownAgain.h"
#include "dialogs/VariableChoice.h"
#include "resources/ControlIds.h"

namespace {

void EmptyList(CDefineTask& task, int list) {
    const char* const none[] = {nullptr};
    task.InitStaticListBox(task.GetDlgItem(task.Window, list), none);
}

}  // namespace

std::int64_t DefineCaseSelection(CDefineTask& task) {
    task.LockResults();
    task.DefineSelCond(1, task.Window);
    task.Analysis->DataChanged = 1;
    task.UnlockResults();
    return 0;
}

std::int64_t DefineWeights(CDefineTask& task) {
    CDrillDown& analysis = *task.Analysis;
    const auto weight = [&] { return std::tuple(analysis.CaseWeight.Variable, analysis.CaseWeight.Active); };
    const auto before = weight();
    task.LockResults();
    task.DefineWeight(1, task.Window);
    if (weight() != before) {
        analysis.DataChanged = 1;
    }
    task.UpdateControls();
    task.UnlockResults();
    return 0;
}

std::int64_t OpenData(CDefineTask& task) {
    CDrillDown& analysis = *task.Analysis;
    // Intended: no lock around the dialog of the host, unlike around the other two; RestoreResults, which comes behind
    // it in any case, would leave none.
    const int opened = task.OpenOrvFile();
    task.RestoreResults();
    if (opened == 0) {
        return 0;
    }
    task.LockResults();
    ShownAgainOnFailure(task, [&] {
        analysis.ResetMembers();
        ShowChosenVariables(task);
        EmptyList(task, DrillDownListControl);
        EmptyList(task, DrillUpListControl);
        task.ShowBoxPlotOptions();
        task.SelectCurrentDown();
        task.UpdateControls();
        task.CheckDlgButton(task.Window, AutoUpdateBox, analysis.StandAloneResults != 0);
    });
    task.UnlockResults();
    return 0;
}
