// The startup dialog of an analysis: a window that stays open while the user works elsewhere.

#include <utility>

#include "host/AnalysisSupport.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/DialogState.h"

CAnalysisModelessDialog::CAnalysisModelessDialog(CAnalysisSupport& analysis, int resource, HWND parent)
    : CAnalysisDialog(analysis, resource, parent),
      CAnalysisDialogAutomationOptions(static_cast<CAnalysisDialog&>(*this)) {}

CAnalysisModelessDialog::~CAnalysisModelessDialog() = default;

std::uint32_t CAnalysisModelessDialog::ReleaseDialogReference() {
    const std::uint32_t left = --References;
    if (left == 0) {
        const auto analysis = std::move(Host().Analysis);  // goes behind its dialog
        delete this;
    }
    return left;
}

int CAnalysisModelessDialog::CreateAnalysisDialog() {
    if (!DialogHost::MakeWindow(*this, Support().GetLibInstance())) {
        return 0;
    }
    Host().TheWindow->Start();
    if (Host().RanOutOfMemory) {
        return 0;
    }
    CAnalysisDoc* document = DialogHost::DocumentOf(*this);
    Host().Analysis = static_cast<quillara::AnalysisDocument*>(document)->ShareAnalysis();
    quillara::DialogsOf(document).Startup.reset(this);
    return 1;
}

short CAnalysisModelessDialog::IsResultsMsg(HWND /*window*/, unsigned /*message*/, std::uint64_t /*wParam*/,
                                            std::int64_t /*lParam*/) {
    return 0;
}

void CAnalysisModelessDialog::LockResults() {
    DialogHost::Trace(*this, "LockResults");
    Host().ResultsLocked = true;
}

void CAnalysisModelessDialog::UnlockResults() {
    DialogHost::Trace(*this, "UnlockResults");
    Host().ResultsLocked = false;
}

void CAnalysisModelessDialog::RestoreResults() {
    DialogHost::Trace(*this, "RestoreResults");
    Host().ResultsLocked = false;
}

void CAnalysisModelessDialog::ReallyRestoreResults() {
    DialogHost::Trace(*this, "ReallyRestoreResults");
    Host().ResultsLocked = false;
}

void CAnalysisModelessDialog::EnableStartupMenus(int enable) {
    DialogHost::Trace(*this, "EnableStartupMenus " + std::to_string(enable));
    Host().MenusEnabled = enable != 0;
}

CAnalysisModelessDialog* CAnalysisSupport::GetStartupDialog() {
    CAnalysisModelessDialog* dialog = quillara::DialogsOf(Document).Startup.get();
    return dialog == nullptr || DialogHost::Of(*dialog).IsClosed() ? nullptr : dialog;
}

HWND CAnalysisSupport::GetStartupWindow() {
    const CAnalysisModelessDialog* dialog = GetStartupDialog();
    return dialog == nullptr ? nullptr : DialogHost::WindowOf(*dialog);
}
