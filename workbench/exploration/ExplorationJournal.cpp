#include "workbench/exploration/ExplorationJournal.h"

#include "host/Brushing.h"
#include "workbench/hosting/AnalysisServices.h"
#include "workbench/windows/Window.h"

namespace quillara {

void ExplorationJournal::RecordCall(const Window& window, const WindowCall& call) {
    Note({window.Resource().Id, call});
    SessionRecorder::RecordCall(window, call);
}

void ExplorationJournal::RecordPick(const BrushingRun& run) {
    int bar = -1;
    static_cast<void>(run.Regions.getSelected(bar));
    Note({JournalEntry::NoDialog, {"pick", {static_cast<double>(bar), static_cast<double>(run.Choice)}}});
    SessionRecorder::RecordPick(run);
}

}  // namespace quillara
