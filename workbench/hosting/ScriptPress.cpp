#include "workbench/hosting/ScriptPress.h"

#include <utility>

#include "host/AnalysisDialog.h"
#include "host/Exceptions.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/ClosingAnalyses.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/DocumentCollection.h"
#include "workbench/hosting/NoMemory.h"

namespace quillara {
namespace {

constexpr std::uint16_t FailureCode = 0;
constexpr char NothingMade[] = "Nothing was made: the command was cancelled, or it has nothing to show.";

bool IsPressing = false;  // any analysis: its events may reach scripts that drive another one

/// A press runs, and what comes of it is noted.
class PressScope {
  public:
    PressScope(DialogState& dialogs, PressRecord& record) : Dialogs(dialogs), Drives(dialogs.Script) {
        IsPressing = true;
        Dialogs.Script.Press = &record;
    }
    PressScope(const PressScope&) = delete;
    PressScope& operator=(const PressScope&) = delete;
    ~PressScope() {
        Dialogs.Script.Press = nullptr;
        IsPressing = false;
    }

  private:
    DialogState& Dialogs;
    ScriptScope Drives;
};

/// Keeps a dialog while it acts, whoever lets it go meanwhile.
class DialogKeeper {
  public:
    explicit DialogKeeper(CAnalysisDialog& dialog) : Kept(dynamic_cast<CAnalysisModelessDialog*>(&dialog)) {
        if (Kept != nullptr) {
            Kept->AddDialogReference();
        }
    }
    DialogKeeper(const DialogKeeper&) = delete;
    DialogKeeper& operator=(const DialogKeeper&) = delete;
    ~DialogKeeper() {
        if (Kept != nullptr) {
            Kept->ReleaseDialogReference();
        }
    }

  private:
    CAnalysisModelessDialog* Kept;
};

/// Dialogs open as for a person, and ask the script unless it has left them to a person.
class OpeningScope {
  public:
    explicit OpeningScope(CAnalysisModelessDialog& dialog)
        : Kept(dialog),
          Dialog(dialog),
          Drive(DialogsOf(DialogHost::DocumentOf(dialog)).Script),
          IsLeftToPerson(std::exchange(dialog.AutomationInteractive, std::uint8_t{1})) {
        Drive.OpensDialogs = IsLeftToPerson == 0;
    }
    OpeningScope(const OpeningScope&) = delete;
    OpeningScope& operator=(const OpeningScope&) = delete;
    ~OpeningScope() {
        Drive.OpensDialogs = false;
        Dialog.AutomationInteractive = IsLeftToPerson;
    }

  private:
    DialogKeeper Kept;
    CAnalysisModelessDialog& Dialog;
    ScriptDrive& Drive;
    std::uint8_t IsLeftToPerson;
};

}  // namespace

PressOutcome ActForScript(CAnalysisDialog& dialog, const std::function<std::int64_t(Window&)>& act,
                          std::function<void(Window&)> firstAnswer) {
    const ScriptAct whole;
    const DialogKeeper keeper(dialog);
    Window* window = DialogHost::WindowOf(dialog);
    if (window == nullptr || window->IsClosed()) {
        throw new COleException(CO_E_OBJNOTCONNECTED);
    }
    auto* document = static_cast<AnalysisDocument*>(DialogHost::DocumentOf(dialog));
    DialogState& dialogs = DialogsOf(document);
    if (IsPressing || dialogs.IsBusy()) {
        throw new COleException(RPC_E_SERVERCALL_RETRYLATER);
    }
    PressOutcome outcome;
    outcome.Record.FirstAnswer = std::move(firstAnswer);
    const PressScope scope(dialogs, outcome.Record);
    outcome.Result = act(*window);
    document->RunMessages();
    if (outcome.Record.LackedMemory) {
        throw NoMemoryInPress();
    }
    return outcome;
}

PressOutcome ActAsPerson(CAnalysisModelessDialog& dialog, const std::function<std::int64_t(Window&)>& act,
                         std::function<void(Window&)> firstAnswer) {
    dialog.ThrowIfClosed();
    const ScriptAct whole;
    const OpeningScope scope(dialog);
    return ActForScript(dialog, act, std::move(firstAnswer));
}

std::string FailureOf(const PressRecord& press) {
    std::string text;
    for (const std::string& message : press.Messages) {
        text += (text.empty() ? "" : "\n") + message;
    }
    if (text.empty() && !press.Unanswered.empty()) {
        text = "The dialog \"" + press.Unanswered.front() + "\" has opened and had no answer.";
    }
    return text.empty() ? NothingMade : text;
}

CountedPointer<IDispatch> ResultOf(PressRecord press) {
    if (press.Documents.empty()) {
        throw new COleDispatchException(FailureOf(press), FailureCode);
    }
    return press.Documents.size() == 1 ? press.Documents.front() : CollectionOf(std::move(press.Documents));
}

}  // namespace quillara
