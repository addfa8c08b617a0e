// What every dialog of an analysis inherits: its start and end, its pages, colours, memory and recording.

#include "host/AnalysisDialog.h"

#include <algorithm>

#include "host/AnalysisSupport.h"
#include "host/Exceptions.h"
#include "platform/ModuleInstance.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/DialogState.h"

using quillara::Window;

namespace {

constexpr int ResultFieldAttribute = 1;
constexpr std::uint32_t ResultFieldColour = 0x800000;  // dark blue
constexpr std::uint32_t TextColour = 0x000000;

}  // namespace

CAnalysisDialog::CAnalysisDialog(CAnalysisSupport& analysis, int resource, HWND /*parent*/)
    : Owner(analysis), Side(std::make_unique<DialogHost>()) {
    Side->Resource = resource;
}

CAnalysisDialog::~CAnalysisDialog() = default;

const MessageMap* CAnalysisDialog::GetMessageMap() const {
    return nullptr;
}

void CAnalysisDialog::DoDataExchange(DataExchange* /*exchange*/) {}

IUnknown* CAnalysisDialog::GetUnknown() {
    return nullptr;
}

std::int64_t CAnalysisDialog::EventHandler(HWND /*window*/, unsigned /*message*/, std::uint64_t /*wParam*/,
                                           std::int64_t /*lParam*/) {
    return 0;
}

std::string CAnalysisDialog::GetDialogDescription() {
    return {};
}

void CAnalysisDialog::InitOpeningDialog() {
    DialogHost::Trace(*this, "InitOpeningDialog");
}

void CAnalysisDialog::AddDlgTabs(int /*tabControl*/, const TabRow* tabs, int /*first*/, const ModuleInstance* scope,
                                 HWND /*parent*/) {
    Window* window = DialogHost::WindowOf(*this);
    for (; window != nullptr && tabs->Resource != 0; ++tabs) {
        const auto page = std::ranges::find(scope->Dialogs, tabs->Resource, &DialogResource::Id);
        if (page != scope->Dialogs.end()) {
            window->AddPage(*page);
        }
    }
}

void CAnalysisDialog::ExitDialog(int result, int /*reserved1*/, int /*reserved2*/) {
    DialogHost::Trace(*this, "ExitDialog " + std::to_string(result));
    if (Window* window = DialogHost::WindowOf(*this)) {
        window->Close(result);
    }
}

std::uint32_t CAnalysisDialog::RGBAttrType(int attribute) {
    return attribute == ResultFieldAttribute ? ResultFieldColour : TextColour;
}

std::int64_t CAnalysisDialog::HandleWM_CTLCOLOR(HWND /*window*/, std::uint64_t /*wParam*/, std::int64_t lParam,
                                                std::uint32_t colour) {
    auto* control = dynamic_cast<quillara::Control*>(reinterpret_cast<HWND>(lParam));
    if (control == nullptr) {
        return 0;
    }
    control->Colour = colour;
    return 1;
}

int CAnalysisDialog::AllocMem(void** address, unsigned long size) {
    return Owner.AllocMem(address, size);
}

void CAnalysisDialog::FreeMem(void* address) {
    Owner.FreeMem(address);
}

std::string CAnalysisDialog::szLoadResString(const ModuleInstance* module, int id) {
    const auto row = std::ranges::lower_bound(module->Strings, id, {}, &StringResource::Id);
    return row != module->Strings.end() && row->Id == id ? row->Text : "";
}

bool CAnalysisDialog::IsOleAutomation() const {
    return Owner.IsOleAutomation() != 0;
}

void CAnalysisDialog::BeginOleAutomation() {
    quillara::DialogState& dialogs = quillara::DialogsOf(Owner.GetDocument());
    if (dialogs.IsBusy()) {
        throw new COleException(RPC_E_SERVERCALL_RETRYLATER);
    }
    dialogs.Script.IsDriven = true;
}
