#include "dialogs/Brush.h"

#include "dialogs/DefineTask.h"
#include "dialogs/DrillSteps.h"
#include "host/WindowServices.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"

namespace {

constexpr unsigned BrushingGraphSequence = 1;  // with its command the key of the brushing graph
enum PickedAction : int { PickedDown = 0, PickedUp = 1 };

/// Sees to it that there is a brushing graph: a stand-alone one is drawn once and kept up to date by the updates, any
/// other is drawn for each cycle.
void ShowBrushingGraph(CDefineTask& task) {
    CDrillDown& analysis = *task.Analysis;
    if (analysis.StandAloneResults == 0) {
        analysis.DDNGraphForBrushing(nullptr);
    } else if (!analysis.OutputExists(BrushingGraphCommand, BrushingGraphSequence)) {
        analysis.SetNextOutputID(BrushingGraphCommand, BrushingGraphSequence);
        SendWindowMessage(task.Window, WindowMessage::Command, BrushingGraphCommand, 0);
        // A command that made no graph leaves the key of brushing to no other document.
        analysis.SetNextOutputID(0, 0);
    }
}

void HideBrushingGraph(CDefineTask& task) {
    task.Analysis->HideOutput(BrushingGraphCommand, BrushingGraphSequence);
}

std::int64_t GoOnBrushing(CDefineTask& task) {
    PostWindowMessage(task.Window, WindowMessage::Command, BrushButton, 0);
    return 0;
}

// Intended: the lists and controls come before the pass, unlike in Up, where the pass comes first; the next cycle reads
// the records and not the controls.
void MoveUp(CDefineTask& task) {
    CDrillDown& analysis = *task.Analysis;
    const std::int16_t item = analysis.GetCurrentUpItem();
    if (item == -1) {
        return;
    }
    analysis.SetCurrentUpItem(item);
    task.FinishRecordingDialog(DialogStep, RecordKind, UpButton);
    MoveAndRead(task, &CDrillDown::MoveBackToDrillDowns, [](CDefineTask& shown) {
        shown.SelectCurrentDown();
        shown.SelectCurrentUp();
        shown.UpdateControls();
    });
}

std::int64_t BrushUp(CDefineTask& task) {
    TakeStep(task, [&] {
        MoveUp(task);
        task.UpdateControls();
    });
    task.Analysis->AutoUpdate(0);
    if (!task.Analysis->DrillDowns->empty()) {
        return GoOnBrushing(task);
    }
    // Intended: the graph stays, unlike after a step down; it is the last thing shown.
    task.ReallyRestoreResults();
    return 1;
}

// Intended: neither SelectCurrentDown nor SetAllIsset, unlike in Down, and the pass comes behind the controls; the next
// cycle goes on with the first variable of the list, whose counts the pass has just made.
std::int64_t BrushDown(CDefineTask& task) {
    CDrillDown& analysis = *task.Analysis;
    task.FinishRecordingDialog(DialogStep, RecordKind, DownButton);
    TakeStep(task, [&] {
        MoveAndRead(task, &CDrillDown::MoveToDrillUps, [](CDefineTask& shown) {
            shown.SelectCurrentUp();
            shown.UpdateControls();
        });
    });
    analysis.AutoUpdate(0);
    if (!analysis.DrillDowns->empty()) {
        return GoOnBrushing(task);
    }
    HideBrushingGraph(task);
    task.ReallyRestoreResults();
    return 1;
}

}  // namespace

// Intended: the graph comes before the page is stored, unlike the results of the drill variables, which store it first;
// the bars of the first cycle go by the page and its graph by what was stored before. Hosts store the page first.
std::int64_t Brush(CDefineTask& task) {
    int item = -1;
    int action = -1;
    ShowBrushingGraph(task);
    if (LacksBoundaries(task)) {
        SendWindowMessage(task.Window, WindowMessage::Command, BoundariesButton, 0);
        return 1;
    }
    task.ApplyCategorization();
    const std::int16_t result = task.Analysis->DDNBrushing(&item, &action);
    if (result == 0 || result == -1) {
        HideBrushingGraph(task);
        task.ReallyRestoreResults();
        return 0;
    }
    if (action == PickedUp) {
        return BrushUp(task);
    }
    // Intended: anything else ends the brushing with no step and no restore, unlike every other end; hosts that answer
    // so have restored the results themselves.
    return item == -1 || action != PickedDown ? 0 : BrushDown(task);
}
