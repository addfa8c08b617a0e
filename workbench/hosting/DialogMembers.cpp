// What scripts can do with every startup dialog.

#include <string>

#include "host/AnalysisDialog.h"
#include "host/Exceptions.h"
#include "platform/WindowMessages.h"
#include "workbench/documents/WideText.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/ScriptPress.h"
#include "workbench/windows/Window.h"

namespace {

/// Sends a command of the framework; what the dialog answered.
std::int64_t SendForScript(CAnalysisDialog& dialog, int command) {
    return quillara::ActForScript(dialog, [command](quillara::Window& window) { return window.SendCommand(command); })
        .Result;
}

[[noreturn]] HRESULT RefuseResults() {
    throw new COleDispatchException("This analysis has no results dialog.", 0, E_NOTIMPL);
}

}  // namespace

void CAnalysisModelessDialog::ThrowIfClosed() const {
    if (DialogHost::Of(*this).IsClosed()) {
        throw new COleException(CO_E_OBJNOTCONNECTED);
    }
}

HRESULT CAnalysisModelessDialog::get_Name(BSTR* name) {
    *name = SysAllocString(quillara::WideText(GetDialogDescription()));
    return *name == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT CAnalysisModelessDialog::OAOK(int* success) {
    *success = 0;
    *success = SendForScript(*this, OkCommand) != 0 ? 1 : 0;
    return S_OK;
}

HRESULT CAnalysisModelessDialog::OACancel() {
    SendForScript(*this, CancelCommand);
    return S_OK;
}

HRESULT CAnalysisModelessDialog::put_ResultsSelection(const VARIANT& /*value*/) {
    RefuseResults();
}
HRESULT CAnalysisModelessDialog::put_ResultsSelectionOption(const VARIANT& /*value*/) {
    RefuseResults();
}
HRESULT CAnalysisModelessDialog::put_ResultsVariables(const VARIANT& /*value*/) {
    RefuseResults();
}
HRESULT CAnalysisModelessDialog::put_ResultsOption(int /*value*/) {
    RefuseResults();
}
HRESULT CAnalysisModelessDialog::put_ResultsCodes(const VARIANT& /*value*/) {
    RefuseResults();
}
HRESULT CAnalysisModelessDialog::put_ResultsSaveFileName(const char16_t* /*value*/) {
    RefuseResults();
}
HRESULT CAnalysisModelessDialog::put_ResultsValues(const VARIANT& /*value*/) {
    RefuseResults();
}
HRESULT CAnalysisModelessDialog::put_ResultsOutputFields(const VARIANT& /*value*/) {
    RefuseResults();
}
