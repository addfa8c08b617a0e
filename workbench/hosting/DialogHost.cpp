#include "workbench/hosting/DialogHost.h"

#include <algorithm>
#include <new>
#include <optional>

#include "host/AnalysisSupport.h"
#include "host/ScriptValues.h"
#include "platform/ModuleInstance.h"
#include "platform/WindowMessages.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/NewTables.h"
#include "workbench/hosting/NoMemory.h"
#include "workbench/hosting/StepHistory.h"
#include "workbench/hosting/StepRecorder.h"
#include "workbench/hosting/Surroundings.h"
#include "workbench/hosting/TableInUse.h"

using quillara::DialogState;
using quillara::Window;

namespace {

const DialogResource* FindDialog(const ModuleInstance* module, int id) {
    const auto row = std::ranges::find(module->Dialogs, id, &DialogResource::Id);
    return row == module->Dialogs.end() ? nullptr : &*row;
}

/// The message of a startup dialog is the active command until it is done, and so are those that are sent meanwhile.
class CommandScope {
  public:
    CommandScope(DialogState& dialogs, unsigned message, std::uint64_t wParam)
        : Command(dialogs.Command), IsOutermost(!Command) {
        if (IsOutermost) {
            Command = ActiveCommand{message, wParam, 0};
            ++dialogs.CommandCount;
            dialogs.Script.HearMessage();
            dialogs.Chosen.EndCommand();
            if (dialogs.Startup != nullptr) {
                DialogHost::Of(*dialogs.Startup).EarlyValues.clear();  // a step that was cancelled leaves none
            }
        }
    }
    CommandScope(const CommandScope&) = delete;
    CommandScope& operator=(const CommandScope&) = delete;
    ~CommandScope() {
        if (IsOutermost) {
            Command.reset();
        }
    }

    [[nodiscard]] bool IsOuter() const { return IsOutermost; }

  private:
    std::optional<ActiveCommand>& Command;
    bool IsOutermost;
};

/// Documents that the running command has made, and tables that are done.
std::size_t OutputsOf(CAnalysisDoc* document) {
    const std::optional<ActiveCommand>& command = quillara::DialogsOf(document).Command;
    return static_cast<std::size_t>(command ? command->OutputIndex : 0) +
           quillara::NewTablesOf(document).Finished().size();
}

void TellOfOutput(CAnalysisDialog& dialog, int control) {
    if (auto* startup = dynamic_cast<CAnalysisModelessDialog*>(&dialog)) {
        startup->RecordOutput(control);
    }
}

/// A command of the startup dialog that no other one runs around, for the recorder.
class RecordedCommand {
  public:
    RecordedCommand(CAnalysisDialog& dialog, unsigned message, std::uint64_t wParam, bool isOuter)
        : Document(DialogHost::DocumentOf(dialog)), Control(CommandOf(wParam)) {
        quillara::StepRecorder* recorder = quillara::SurroundingsOf(Document).Services.Recorder;
        if (recorder == nullptr || message != WindowMessage::Command) {
            return;
        }
        if (isOuter) {
            Recorder = recorder;
            Recorder->BeginCommand(*Document, Control);
        } else {
            recorder->RecordSent(Control);
        }
    }
    void End() {
        if (Recorder != nullptr) {
            Recorder->EndCommand(*Document, Control);
        }
    }
    void Fail() noexcept try {
        if (Recorder != nullptr) {
            Recorder->FailCommand(*Document, Control);
        }
    } catch (const std::bad_alloc&) {
        // A line of a recording is lost.
    }

  private:
    CAnalysisDoc* Document;
    int Control;
    quillara::StepRecorder* Recorder = nullptr;  // of an outer command
};

/// Passes a message to a dialog. Memory that runs out ends the command and not the program: a person is told, a script
/// that pressed gets the failure.
std::int64_t PassOn(CAnalysisDialog& dialog, HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam) {
    CAnalysisDoc* document = DialogHost::DocumentOf(dialog);
    DialogState& dialogs = quillara::DialogsOf(document);
    const CommandScope scope(dialogs, message, wParam);
    const CEnterAnalysisContext current(DialogHost::AnalysisOf(dialog));
    std::optional<RecordedCommand> recorded;
    try {
        recorded.emplace(dialog, message, wParam, scope.IsOuter());
        const std::size_t outputs = OutputsOf(document);
        const std::int64_t result = dialog.EventHandler(window, message, wParam, lParam);
        if (scope.IsOuter() && OutputsOf(document) > outputs) {
            quillara::NoticeWeights(static_cast<quillara::AnalysisDocument&>(*document));
            TellOfOutput(dialog, CommandOf(wParam));
        }
        if (scope.IsOuter() && document != nullptr) {
            quillara::TableOf(document).TellVariables();  // another table may have been opened
            quillara::StepsOf(document).EndCommand(static_cast<quillara::AnalysisDocument&>(*document));
        }
        recorded->End();
        return result;
    } catch (const std::bad_alloc&) {
        if (!scope.IsOuter()) {
            throw;  // the command around it is not done either
        }
        if (recorded) {
            recorded->Fail();
        }
        DialogHost::Of(dialog).ResultsLocked = false;
        DialogHost::Of(dialog).RanOutOfMemory = true;
        if (dialogs.Script.Press != nullptr) {
            throw quillara::NoMemoryInPress();
        }
        quillara::SurroundingsOf(document).SayMemoryLacked(quillara::NoMemoryForCommand);
        return 0;
    }
}

}  // namespace

Window* DialogHost::WindowOf(const CAnalysisDialog& dialog) {
    return dialog.Side->TheWindow.get();
}

CAnalysisDoc* DialogHost::DocumentOf(const CAnalysisDialog& dialog) {
    return dialog.Owner.GetDocument();
}

bool DialogHost::MakeWindow(CAnalysisDialog& dialog, const ModuleInstance* module) {
    const DialogResource* resource = FindDialog(module, dialog.Side->Resource);
    if (resource == nullptr) {
        return false;
    }
    const auto passOn = [&dialog](HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam) {
        return PassOn(dialog, window, message, wParam, lParam);
    };
    dialog.Side->TheWindow = std::make_unique<Window>(quillara::DialogsOf(DocumentOf(dialog)).Queue, *resource, passOn);
    return true;
}

void DialogHost::Trace(const CAnalysisDialog& dialog, const std::string& call) {
    quillara::SurroundingsOf(DocumentOf(dialog)).Trace(call);
}
