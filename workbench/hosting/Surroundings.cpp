#include "workbench/hosting/Surroundings.h"

#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/ScriptDesk.h"
#include "workbench/hosting/StepRecorder.h"

namespace quillara {

bool Surroundings::AskForBreak() const {
    const bool flagged = Services.BreakFlag != nullptr && Services.BreakFlag->load(std::memory_order_relaxed);
    return flagged || (Services.BreakRequested && Services.BreakRequested());
}

void Surroundings::Trace(std::string_view call) const {
    if (Services.Trace) {
        Services.Trace(call);
    }
}

void Surroundings::ShowMessage(std::string_view text) const {
    if (PressRecord* press = Dialogs.Script.Press) {
        press->Messages.emplace_back(text);
    }
    if (Services.Recorder != nullptr) {
        Services.Recorder->RecordMessage(text);
    }
    if (Dialogs.AreLeftToScript()) {
        TheScriptDesk().Keep(text);
    } else if (Services.ShowMessage) {
        Services.ShowMessage(text);
    }
}

void Surroundings::ReportMemoryLack() const {
    if (PressRecord* press = Dialogs.Script.Press) {
        press->LackedMemory = true;
    }
    if (Services.MemoryLacked) {
        Services.MemoryLacked();
    }
}

void Surroundings::SayMemoryLacked(std::string_view text) const {
    ShowMessage(text);
    ReportMemoryLack();
}

void Surroundings::StartProgress(std::int32_t total) {
    IsPassing = true;
    if (Services.ProgressStarted) {
        Services.ProgressStarted(ProgressText, total);
    }
}

void Surroundings::ReportProgress(std::int32_t done) const {
    if (IsPassing && Services.ProgressAdvanced) {
        Services.ProgressAdvanced(done);
    }
}

void Surroundings::EndProgress() {
    if (IsPassing && Services.ProgressEnded) {
        Services.ProgressEnded();
    }
    IsPassing = false;
}

}  // namespace quillara
