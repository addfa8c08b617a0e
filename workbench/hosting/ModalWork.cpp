#include "workbench/hosting/ModalWork.h"

#include <exception>

#include "platform/WindowMessages.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/Surroundings.h"

namespace quillara {
namespace {

void EnableStartup(const DialogState& dialogs, bool enable) {
    if (const CAnalysisModelessDialog* startup = dialogs.Startup.get()) {
        DialogHost::WindowOf(*startup)->Enabled = enable;
    }
}

/// Whether somebody has worked in the window and may be asked again.
bool WorkIn(CAnalysisDoc* document, Window& window) {
    DialogState& dialogs = DialogsOf(document);
    const AnalysisServices& services = SurroundingsOf(document).Services;
    if (dialogs.Failure != nullptr || !services.WorkIn) {
        return false;
    }
    try {
        return services.WorkIn(window);
    } catch (...) {
        // The analysis that opened the window knows nothing of what goes wrong in a script.
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
        if (!WorkIn(document, window)) {
            window.SendCommand(CancelCommand);
            window.Close(0);
        }
        dialogs.Queue.DispatchAll();
    }
    return window.CloseResult();
}

}  // namespace quillara
