// How automation reads, writes and presses the controls of a dialog.

#include "host/AnalysisDialog.h"
#include "host/DialogAutomation.h"

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
