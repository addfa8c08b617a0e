// The calls that a small host answers with nothing, one a line. Some are never made: tables of virtual functions want
// their addresses.

#include "host/AnalysisContext.h"
#include "host/AnalysisDialog.h"
#include "host/AnalysisSupport.h"
#include "host/Application.h"
#include "host/Exceptions.h"
#include "host/ListControls.h"
#include "host/WindowServices.h"

// clang-format off

// The analysis

int CAnalysisSupport::InitializeAfterFileChanged() { return 1; }
void CAnalysisSupport::Initialize() {}
bool CAnalysisSupport::ForwardSequence(int, int) const { return true; }
int CAnalysisSupport::GetAnalysisID() { return 0; }
std::string CAnalysisSupport::GetAnalysisName() const { return {}; }
bool CAnalysisSupport::BeforeRouteOutput(IDispatch*) { return false; }
void CAnalysisSupport::BeforeClose() {}
int CAnalysisSupport::IsOleAutomation() const { return 0; }
HWND CAnalysisSupport::GetStartupWindow() { return nullptr; }
int CAnalysisSupport::IsSpecialFormatVariable(int) { return 0; }
int CAnalysisSupport::RetrieveLongTextLabelAsHashedString(char*, int, double) { return 0; }
void CAnalysisSupport::StripFormatting(std::string&) {}
CaseBlocks* CAnalysisSupport::GetCaseBlocks() { return nullptr; }
TableColumns* CAnalysisSupport::GetTableColumns() { return nullptr; }
CaseConditions* CAnalysisSupport::GetCaseConditions() { return nullptr; }
ParallelRuns* CAnalysisSupport::GetParallelRuns() { return nullptr; }
std::uint64_t CAnalysisSupport::GetCaseRevision() { return 0; }
int CAnalysisSupport::lookbr() { return 0; }
void CAnalysisSupport::d_pbar(const char*) {}
void CAnalysisSupport::dstart(unsigned long) {}
void CAnalysisSupport::dstop() {}
void CAnalysisSupport::PutInitKeyword(int, const char*, const std::int32_t*, const std::int32_t*) {}
void CAnalysisSupport::SetResultSubject(ResultSubject) {}
void CAnalysisSupport::SetPlotConditions(const std::vector<CaseCondition>*) {}

// The application

void BeginWaitCursor() {}
void RestoreWaitCursor() {}
void EndWaitCursor() {}
void OrvOleRegisterTypeLib(const char*) {}

// Dialogs and windows

int GetDlgCtrlID(HWND) { return 0; }
void EnableWindow(HWND, bool) {}
void CListCtrl::InsertColumn(int, const char*, int) {}
void CListCtrl::InsertItem(int, const char*, bool) {}
void CListCtrl::SetItemText(int, int, const char*) {}
void CListCtrl::SetItemRange(int, const RowRange&) {}
void CListCtrl::SelectItem(int) {}
void CListCtrl::SetExtendedStyle(std::uint32_t) {}
void CListCtrl::SetTextColor(std::uint32_t) {}
const MessageMap* CAnalysisDialog::GetMessageMap() const { return nullptr; }
void CAnalysisDialog::DoDataExchange(DataExchange*) {}
IUnknown* CAnalysisDialog::GetUnknown() { return nullptr; }
std::int64_t CAnalysisDialog::EventHandler(HWND, unsigned, std::uint64_t, std::int64_t) { return 0; }
COleAConstant* CAnalysisDialog::RecordControlValue(int) { return nullptr; }
std::string CAnalysisDialog::GetDialogDescription() { return {}; }
void CAnalysisDialog::InitOpeningDialog() {}
void CAnalysisDialog::AddDlgTabs(int, const TabRow*, int, const ModuleInstance*, HWND) {}
void CAnalysisDialog::EnableWindow(HWND, int, bool) {}
void CAnalysisDialog::ShowWindow(HWND, int, bool) {}
void CAnalysisDialog::SetDlgItemTextA(HWND, int, const char*) {}
void CAnalysisDialog::WriteVarListToCaption(HWND, int, int, const short*) {}
void CAnalysisDialog::SetIntEditRange(HWND, int, int) {}
void CAnalysisDialog::SetRealEditRange(HWND, double, double, int) {}
void CAnalysisDialog::SetControlTable(const ControlRow*) {}
void CAnalysisDialog::EarlyRecordState(int) {}
bool CAnalysisDialog::IsOleAutomation() const { return false; }
void CAnalysisDialog::BeginOleAutomation() {}
short CAnalysisModelessDialog::IsResultsMsg(HWND, unsigned, std::uint64_t, std::int64_t) { return 0; }
void CAnalysisModelessDialog::LockResults() {}
void CAnalysisModelessDialog::UnlockResults() {}
void CAnalysisModelessDialog::EnableStartupMenus(int) {}
void CAnalysisModelessDialog::FinishRecordingDialog(int, int, int) {}
void CAnalysisModelessDialog::RecordActionMethod(int) {}
void CAnalysisModelessDialog::RecordOutput(int) {}

// Scripts, which don't drive this host

HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t, VARIANT*) { return E_NOTIMPL; }
HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t, double*) { return E_NOTIMPL; }
HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t, BSTR*) { return E_NOTIMPL; }
HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t, int*) { return E_NOTIMPL; }
HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t, IDispatch**) { return E_NOTIMPL; }
HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t) { return E_NOTIMPL; }
HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t, double) { return E_NOTIMPL; }
HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t, const char16_t*) { return E_NOTIMPL; }
HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t, int) { return E_NOTIMPL; }
HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t, const VARIANT&) { return E_NOTIMPL; }
HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t, IDispatch*) { return E_NOTIMPL; }
bool CException::GetErrorMessage(char*, unsigned) const { return false; }
bool COleException::GetErrorMessage(char*, unsigned) const { return false; }

// clang-format on
