#include "host/AnalysisSupport.h"
#include "workbench/hosting/AnalysisState.h"

using quillara::AnalysisState;

int CAnalysisSupport::lookbr() {
    return quillara::StateOf(Document).AskForBreak() ? 1 : 0;
}

void CAnalysisSupport::d_pbar(const char* text) {
    if (Document != nullptr) {
        quillara::StateOf(Document).Progress.Text = text;
    }
}

void CAnalysisSupport::dstart(unsigned long total) {
    if (Document == nullptr) {
        return;
    }
    AnalysisState& state = quillara::StateOf(Document);
    state.Progress.Running = true;
    state.Trace("Pass");
    if (state.Services.ProgressStarted) {
        state.Services.ProgressStarted(state.Progress.Text, static_cast<std::int32_t>(total));
    }
}

void CAnalysisSupport::dstop() {
    if (Document == nullptr) {
        return;
    }
    AnalysisState& state = quillara::StateOf(Document);
    if (state.Progress.Running && state.Services.ProgressEnded) {
        state.Services.ProgressEnded();
    }
    state.Progress.Running = false;
}
