#include "workbench/hosting/ModalWork.h"

#include <exception>
#include <utility>

#include "platform/WindowMessages.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/ScriptDesk.h"
#include "workbench/hosting/StepRecorder.h"
#include "workbench/hosting/Surroundings.h"

namespace quillara {
namespace {

void EnableStartup(const DialogState& dialogs, bool enable) {
    if (const CAnalysisModelessDialog* startup = dialogs.Startup.get()) {
        DialogHost::WindowOf(*startup)->Enabled = enable;
    }
}

/// The value that a script is writing answers first, then the script or else the person. False when nobody does.
bool AskAround(const DialogState& dialogs, const AnalysisServices& services, Window& window) {
    PressRecord* press = dialogs.Script.Press;
    if (press != nullptr && press->FirstAnswer) {
        std::exchange(press->FirstAnswer, nullptr)(window);
        return true;
    }
    if (!dialogs.AreLeftToScript()) {
        return services.WorkIn && services.WorkIn(window);
    }
    const bool isAnswered = TheScriptDesk().WorkIn(window);
    if (!isAnswered && press != nullptr) {
        press->Unanswered.emplace_back(window.Resource().Title);
    }
    return isAnswered;
}

bool PickWithin(const DialogState& dialogs, const AnalysisServices& services, BrushingRun& run) {
    if (dialogs.AreLeftToScript()) {
        return TheScriptDesk().PickIn(run);
    }
    return services.Brush && services.Brush(run);
}

/// What an answer gives, false when it throws: the analysis that asks knows nothing of what goes wrong in a script.
template <typename Ask>
bool Guarded(DialogState& dialogs, Ask ask) {
    if (dialogs.Failure != nullptr) {
        return false;
    }
    try {
        return ask();
    } catch (...) {
        dialogs.Failure = std::current_exception();
        return false;
    }
}

}  // namespace

StartupBlock::StartupBlock(DialogState& dialogs) : Dialogs(dialogs) {
    ++Dialogs.ModalWindows;
    EnableStartup(Dialogs, false);
}

StartupBlock::~StartupBlock() {
    EnableStartup(Dialogs, --Dialogs.ModalWindows == 0);
}

int RunModal(CAnalysisDoc* document, Window& window) {
    DialogState& dialogs = DialogsOf(document);
    const StartupBlock block(dialogs);
    window.Start();
    while (!window.IsClosed()) {
        const AnalysisServices& services = SurroundingsOf(document).Services;
        if (!Guarded(dialogs, [&] { return AskAround(dialogs, services, window); })) {
            window.SendCommand(CancelCommand);
            window.Close(0);
        }
        dialogs.Queue.DispatchAll();
    }
    if (StepRecorder* recorder = SurroundingsOf(document).Services.Recorder) {
        recorder->RecordAnswer(window);
    }
    return window.CloseResult();
}

bool RunBrushing(CAnalysisDoc* document, BrushingRun& run) {
    DialogState& dialogs = DialogsOf(document);
    const StartupBlock block(dialogs);
    const AnalysisServices& services = SurroundingsOf(document).Services;
    const bool picked = Guarded(dialogs, [&] { return PickWithin(dialogs, services, run); });
    if (services.Recorder != nullptr && picked) {
        services.Recorder->RecordPick(run);
    }
    return picked;
}

}  // namespace quillara
