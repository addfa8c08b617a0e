#include "workbench/hosting/AnalysisDocument.h"

#include <algorithm>
#include <utility>

#include "host/AnalysisDialog.h"
#include "workbench/data/Errors.h"
#include "workbench/hosting/AnalysisBinding.h"
#include "workbench/hosting/AnalysisObject.h"
#include "workbench/hosting/AnalysisState.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/ObjectModel.h"
#include "workbench/hosting/StepRecorder.h"
#include "workbench/windows/Window.h"

namespace quillara {

AnalysisDocument::AnalysisDocument(const DataTable& table) : Host(std::make_unique<AnalysisState>(table, Services)) {
    EnterAnalysis(*this);
}

AnalysisDocument::~AnalysisDocument() {
    Close();
    LeaveAnalysis(*this);
}

void AnalysisDocument::Close() {
    if (Owned != nullptr) {
        Owned->BeforeClose();
        EndDialog();
        if (Owned.use_count() > 1) {
            AnalysisBinding::Bind(*Owned, nullptr);  // a script holds its dialog
        }
        Owned.reset();
    }
    WithdrawFromScripts();
    Host->Data.Commons = {};
}

void AnalysisDocument::WithdrawFromScripts() {
    if (Window* window = StartupWindow()) {
        window->Close(0);
    }
    if (Object) {
        std::exchange(Object, {})->Disconnect();
    }
}

/// The window goes with its messages, whoever holds the dialog.
void AnalysisDocument::EndDialog() {
    if (Host->Dialogs.Startup != nullptr) {
        DialogHost::Of(*Host->Dialogs.Startup).EndWindow();
        Host->Dialogs.Startup.reset();
    }
}

CountedPointer<IDispatch> AnalysisDocument::AutomationObject() {
    if (!Object && Owned != nullptr) {
        Object = CountedPointer<AnalysisObject>::Adopt(new AnalysisObject(*this));
    }
    return CountedPointer<IDispatch>::Share(Object.Get());
}

AnalysisState& StateOf(CAnalysisDoc* document) {
    static const DataTable emptyTable;
    static const AnalysisServices noServices;
    static AnalysisState unbound(emptyTable, noServices);
    return document == nullptr ? unbound : static_cast<AnalysisDocument*>(document)->State();
}

void AnalysisDocument::Adopt(std::unique_ptr<CAnalysisSupport> analysis) {
    Close();
    Owned = std::move(analysis);
    AnalysisBinding::Bind(*Owned, this);
}

CAnalysisSupport& AnalysisDocument::Analysis() {
    return *Owned;
}

bool AnalysisDocument::RunSequence() {
    const SequenceStep* first = AnalysisBinding::Sequence(*Owned);
    const SequenceStep* end = first + AnalysisBinding::SequenceRows(*Owned);
    const SequenceStep* step = first;
    while (step != end) {
        if ((Owned.get()->*step->Function)() == 0) {
            return false;
        }
        Host->Data.TellVariables();
        if (step->NextId == 0 || !Owned->ForwardSequence(step->Id, step->NextId)) {
            break;
        }
        const int next = step->NextId;
        step = std::find_if(first, end, [next](const SequenceStep& row) { return row.Id == next; });
    }
    return true;
}

Window* AnalysisDocument::StartupWindow() {
    CAnalysisModelessDialog* startup = Host->Dialogs.Startup.get();
    return startup == nullptr ? nullptr : DialogHost::WindowOf(*startup);
}

void AnalysisDocument::RunMessages() {
    Host->Dialogs.Queue.DispatchAll();
    if (const std::exception_ptr failure = std::exchange(Host->Dialogs.Failure, nullptr)) {
        std::rethrow_exception(failure);
    }
    const bool isBusy = Host->Dialogs.IsBusy();
    if (const Window* window = StartupWindow(); window != nullptr && window->IsClosed() && !isBusy) {
        EndDialog();
    }
    if (!isBusy) {
        Host->Results.Documents.LetHiddenGo();
    }
}

const DataTable& AnalysisDocument::Table() const {
    return Host->Data.Table();
}

void AnalysisDocument::SetSelection(std::vector<CaseResult> results) {
    if (!results.empty() && results.size() != static_cast<std::size_t>(Table().Cases)) {
        throw DataError("The case selection was made for a table with another number of cases.");
    }
    Host->Data.Select(std::move(results));
}

void AnalysisDocument::SetWeight(std::optional<std::size_t> variable) {
    Host->Data.ChooseWeight(variable);
}

void AnalysisDocument::SetThreads(std::int32_t threads) {
    Host->Workers.SetThreads(threads);
}

void AnalysisDocument::OfferCaseBlocks(bool offered) {
    Host->OfferCaseServices(offered);
}

void AnalysisDocument::SetAutomated(bool automated) {
    ScriptDrive& script = Host->Dialogs.Script;
    script.IsDriven = automated;
    script.Scopes = automated ? 1 : 0;
}

OpenDocuments& AnalysisDocument::Documents() {
    return Host->Results.Documents;
}

void AnalysisDocument::RemoveFromAnalysisList(IDispatch* document) {
    Host->Results.Documents.RemoveFromAnalysis(document);
}

void AnalysisDocument::CloseData(const DataTable& table) {
    if (Services.Recorder != nullptr) {
        Services.Recorder->RecordDataClose(table);
    }
}

void AnalysisDocument::FailAllocation(int call) {
    Host->Memory.Calls = 0;
    Host->Memory.FailingCall = call;
}

int AnalysisDocument::AllocationCalls() const {
    return Host->Memory.Calls;
}

std::size_t AnalysisDocument::LiveAllocations() const {
    return Host->Memory.Live.size();
}

}  // namespace quillara
