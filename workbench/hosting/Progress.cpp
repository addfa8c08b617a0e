#include "host/AnalysisSupport.h"
#include "workbench/hosting/Surroundings.h"

using quillara::SurroundingsOf;

int CAnalysisSupport::lookbr() {
    return SurroundingsOf(Document).AskForBreak() ? 1 : 0;
}

void CAnalysisSupport::d_pbar(const char* text) {
    if (Document != nullptr) {
        SurroundingsOf(Document).ProgressText = text;
    }
}

void CAnalysisSupport::dstart(unsigned long total) {
    if (Document != nullptr) {
        SurroundingsOf(Document).Trace("Pass");
        SurroundingsOf(Document).StartProgress(static_cast<std::int32_t>(total));
    }
}

void CAnalysisSupport::dstop() {
    if (Document != nullptr) {
        SurroundingsOf(Document).EndProgress();
    }
}
