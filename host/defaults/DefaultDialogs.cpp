// What a host answers to dialogs unless it says otherwise. The windows are its own.

#include <algorithm>

#include "host/AnalysisDialog.h"
#include "host/AnalysisSupport.h"
#include "host/ListControls.h"
#include "host/WindowServices.h"
#include "platform/ModuleInstance.h"

CAnalysisModelessDialog::CAnalysisModelessDialog(CAnalysisSupport& analysis, int resource, HWND parent)
    : CAnalysisDialog(analysis, resource, parent),
      CAnalysisDialogAutomationOptions(static_cast<CAnalysisDialog&>(*this)) {}
CAnalysisModelessDialog::~CAnalysisModelessDialog() = default;

[[gnu::weak]] std::uint32_t CAnalysisModelessDialog::ReleaseDialogReference() {
    const std::uint32_t left = --References;
    if (left == 0) {
        delete this;
    }
    return left;
}
[[gnu::weak]] std::string CAnalysisDialog::szLoadResString(const ModuleInstance* module, int id) {
    return std::ranges::find(module->Strings, id, &StringResource::Id)->Text;
}

// clang-format off

// By the calls on windows and on the analysis

[[gnu::weak]] HWND CAnalysisDialog::GetDlgItem(HWND window, int id) { return ::GetDlgItem(window, id); }
[[gnu::weak]] void CAnalysisDialog::EnableWindow(HWND window, int id, bool enable) { ::EnableWindow(::GetDlgItem(window, id), enable); }
[[gnu::weak]] void CAnalysisDialog::InitStaticListBox(HWND listBox, const char* const* texts) { ::InitStaticListBox(listBox, texts); }
[[gnu::weak]] int CAnalysisDialog::AllocMem(void** address, unsigned long size) { return Support().AllocMem(address, size); }
[[gnu::weak]] void CAnalysisDialog::FreeMem(void* address) { Support().FreeMem(address); }

// Nothing

[[gnu::weak]] int GetDlgCtrlID(HWND) { return 0; }
[[gnu::weak]] void EnableWindow(HWND, bool) {}
[[gnu::weak]] void CListCtrl::InsertColumn(int, const char*, int) {}
[[gnu::weak]] void CListCtrl::InsertItem(int, const char*, bool) {}
[[gnu::weak]] void CListCtrl::SetItemText(int, int, const char*) {}
[[gnu::weak]] void CListCtrl::SetItemRange(int, const RowRange&) {}
[[gnu::weak]] void CListCtrl::SelectItem(int) {}
[[gnu::weak]] void CListCtrl::SetExtendedStyle(std::uint32_t) {}
[[gnu::weak]] void CListCtrl::SetTextColor(std::uint32_t) {}
[[gnu::weak]] const MessageMap* CAnalysisDialog::GetMessageMap() const { return nullptr; }
[[gnu::weak]] void CAnalysisDialog::DoDataExchange(DataExchange*) {}
[[gnu::weak]] IUnknown* CAnalysisDialog::GetUnknown() { return nullptr; }
[[gnu::weak]] std::int64_t CAnalysisDialog::EventHandler(HWND, unsigned, std::uint64_t, std::int64_t) { return 0; }
[[gnu::weak]] COleAConstant* CAnalysisDialog::RecordControlValue(int) { return nullptr; }
[[gnu::weak]] std::string CAnalysisDialog::GetDialogDescription() { return {}; }
[[gnu::weak]] void CAnalysisDialog::InitOpeningDialog() {}
[[gnu::weak]] void CAnalysisDialog::AddDlgTabs(int, const TabRow*, int, const ModuleInstance*, HWND) {}
[[gnu::weak]] void CAnalysisDialog::ShowWindow(HWND, int, bool) {}
[[gnu::weak]] void CAnalysisDialog::SetDlgItemTextA(HWND, int, const char*) {}
[[gnu::weak]] void CAnalysisDialog::WriteVarListToCaption(HWND, int, int, const short*) {}
[[gnu::weak]] void CAnalysisDialog::SetIntEditRange(HWND, int, int) {}
[[gnu::weak]] void CAnalysisDialog::SetRealEditRange(HWND, double, double, int) {}
[[gnu::weak]] void CAnalysisDialog::SetDlgItemInt(HWND, int, int, int) {}
[[gnu::weak]] void CAnalysisDialog::SetDlgItemDouble(HWND, int, double, int, int) {}
[[gnu::weak]] int CAnalysisDialog::GetDlgItemInteger(HWND, int, std::int16_t*) { return 1; }
[[gnu::weak]] int CAnalysisDialog::GetDlgItemDouble(HWND, int, double*) { return 1; }
[[gnu::weak]] void CAnalysisDialog::SetControlTable(const ControlRow*) {}
[[gnu::weak]] void CAnalysisDialog::EarlyRecordState(int) {}
[[gnu::weak]] bool CAnalysisDialog::IsOleAutomation() const { return false; }
[[gnu::weak]] void CAnalysisDialog::BeginOleAutomation() {}
[[gnu::weak]] short CAnalysisModelessDialog::IsResultsMsg(HWND, unsigned, std::uint64_t, std::int64_t) { return 0; }
[[gnu::weak]] void CAnalysisModelessDialog::LockResults() {}
[[gnu::weak]] void CAnalysisModelessDialog::UnlockResults() {}
[[gnu::weak]] void CAnalysisModelessDialog::RestoreResults() {}
[[gnu::weak]] void CAnalysisModelessDialog::ReallyRestoreResults() {}
[[gnu::weak]] void CAnalysisModelessDialog::EnableStartupMenus(int) {}
[[gnu::weak]] void CAnalysisModelessDialog::FinishRecordingDialog(int, int, int) {}
[[gnu::weak]] void CAnalysisModelessDialog::RecordActionMethod(int) {}
[[gnu::weak]] void CAnalysisModelessDialog::RecordOutput(int) {}
// clang-format on
