// How automation reads, writes and presses the controls of a dialog.

#include "host/AnalysisDialog.h"
#include "host/AnalysisDoc.h"
#include "host/DialogAutomation.h"
#include "host/Exceptions.h"
#include "platform/TextEncodings.h"
#include "workbench/hosting/DialogHost.h"

HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t, VARIANT*) {
    return E_NOTIMPL;
}
HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t, double*) {
    return E_NOTIMPL;
}
HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t, BSTR*) {
    return E_NOTIMPL;
}
HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t, int*) {
    return E_NOTIMPL;
}
HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t, IDispatch**) {
    return E_NOTIMPL;
}
HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t) {
    return E_NOTIMPL;
}
HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t, double) {
    return E_NOTIMPL;
}
HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t, const char16_t*) {
    return E_NOTIMPL;
}
HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t, int) {
    return E_NOTIMPL;
}
HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t, const VARIANT&) {
    return E_NOTIMPL;
}
HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t, IDispatch*) {
    return E_NOTIMPL;
}
COleAConstant* CAnalysisDialog::RecordControlValue(int) {
    return nullptr;
}
void CAnalysisModelessDialog::RecordActionMethod(int) {}
void CAnalysisModelessDialog::RecordOutput(int) {}
void CAnalysisDialog::SetControlTable(const ControlRow*) {}
void CAnalysisModelessDialog::ThrowIfClosed() const {
    const quillara::Window* window = DialogHost::WindowOf(*this);
    if (window == nullptr || window->IsClosed()) {
        throw new COleException(CO_E_OBJNOTCONNECTED);
    }
}
HRESULT CAnalysisModelessDialog::get_Name(BSTR* name) {
    *name = SysAllocString(WideText(GetDialogDescription()));
    return S_OK;
}
HRESULT CAnalysisModelessDialog::OAOK(int*) {
    return E_NOTIMPL;
}
HRESULT CAnalysisModelessDialog::OACancel() {
    return E_NOTIMPL;
}
HRESULT CAnalysisDoc::GetExternQlaAnalysisPointer(IDispatch** analysis) {
    *analysis = nullptr;
    return E_NOTIMPL;
}
namespace {
HRESULT NoResultsDialog() {
    throw new COleDispatchException("This analysis has no results dialog.", 0, E_NOTIMPL);
}
}  // namespace
HRESULT CAnalysisModelessDialog::put_ResultsSelection(const VARIANT&) {
    return NoResultsDialog();
}
HRESULT CAnalysisModelessDialog::put_ResultsSelectionOption(const VARIANT&) {
    return NoResultsDialog();
}
HRESULT CAnalysisModelessDialog::put_ResultsVariables(const VARIANT&) {
    return NoResultsDialog();
}
HRESULT CAnalysisModelessDialog::put_ResultsOption(int) {
    return NoResultsDialog();
}
HRESULT CAnalysisModelessDialog::put_ResultsCodes(const VARIANT&) {
    return NoResultsDialog();
}
HRESULT CAnalysisModelessDialog::put_ResultsSaveFileName(const char16_t*) {
    return NoResultsDialog();
}
HRESULT CAnalysisModelessDialog::put_ResultsValues(const VARIANT&) {
    return NoResultsDialog();
}
HRESULT CAnalysisModelessDialog::put_ResultsOutputFields(const VARIANT&) {
    return NoResultsDialog();
}
