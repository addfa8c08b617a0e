#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <optional>

#include "host/ActiveCommand.h"
#include "host/AnalysisDialog.h"
#include "workbench/hosting/ScriptDrive.h"
#include "workbench/hosting/VariablesChosen.h"
#include "workbench/windows/MessageQueue.h"

class CAnalysisDoc;

namespace quillara {

/// Gives back the host's reference of a startup dialog.
struct DialogReleaser {
    void operator()(CAnalysisModelessDialog* dialog) const { dialog->ReleaseDialogReference(); }
};

/// What the dialogs of an analysis stand on. Windows go before the queue does.
struct DialogState {
    MessageQueue Queue;
    std::unique_ptr<CAnalysisModelessDialog, DialogReleaser> Startup;  ///< null: no startup dialog, or it has ended
    std::optional<ActiveCommand> Command;  ///< the message of the startup dialog that runs
    ScriptDrive Script;
    VariablesChosen Chosen;
    std::uint64_t CommandCount = 0;  ///< messages of dialogs so far, the one that runs included
    int ModalWindows = 0;  ///< that stand open
    std::exception_ptr Failure;  ///< of a script in a modal window; not yet thrown again

    /// Whether messages and modal dialogs are a script's and not a person's.
    [[nodiscard]] bool AreLeftToScript() const {
        const bool asksPerson = Startup != nullptr && Startup->AutomationInteractive != 0 && !Script.OpensDialogs;
        return Script.IsDriven && !asksPerson;
    }
    /// Whether a command runs or a modal window stands open, so that no other may begin.
    [[nodiscard]] bool IsBusy() const { return Command || ModalWindows > 0; }
};

/// Those of a document; without a document none.
[[nodiscard]] DialogState& DialogsOf(CAnalysisDoc* document);

}  // namespace quillara
