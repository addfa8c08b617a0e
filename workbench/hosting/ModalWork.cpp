#include "workbench/hosting/ModalWork.h"

#include <exception>

#include "platform/WindowMessages.h"
#include "workbench/hosting/AnalysisState.h"
#include "workbench/hosting/DialogHost.h"

namespace quillara {
namespace {

void EnableStartup(AnalysisState& state, bool enable) {
    if (const CAnalysisModelessDialog* startup = state.Dialogs.Startup.get()) {
        DialogHost::WindowOf(*startup)->Enabled = enable;
    }
}

/// Whether somebody has worked in the window and may be asked again.
bool WorkIn(AnalysisState& state, Window& window) {
    if (state.Dialogs.Failure != nullptr || !state.Services.WorkIn) {
        return false;
    }
    try {
        return state.Services.WorkIn(window);
    } catch (...) {
        // The analysis that opened the window knows nothing of what goes wrong in a script.
        state.Dialogs.Failure = std::current_exception();
        return false;
    }
}

}  // namespace

StartupBlock::StartupBlock(AnalysisState& state) : State(state) {
    ++State.Dialogs.ModalWindows;
    EnableStartup(State, false);
}

StartupBlock::~StartupBlock() {
    EnableStartup(State, --State.Dialogs.ModalWindows == 0);
}

int RunModal(AnalysisState& state, Window& window) {
    const StartupBlock block(state);
    window.Start();
    while (!window.IsClosed()) {
        if (!WorkIn(state, window)) {
            window.SendCommand(CancelCommand);
            window.Close(0);
        }
        state.Dialogs.Queue.DispatchAll();
    }
    return window.CloseResult();
}

}  // namespace quillara
