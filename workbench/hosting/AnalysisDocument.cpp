#include "workbench/hosting/AnalysisDocument.h"

#include <algorithm>
#include <utility>

#include "host/AnalysisDialog.h"
#include "workbench/data/Errors.h"
#include "workbench/hosting/AnalysisState.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/ObjectModel.h"

/// The host's way into an analysis: its document and its sequence.
struct AnalysisBinding {
    static void Bind(CAnalysisSupport& analysis, CAnalysisDoc* document) { analysis.Document = document; }
    static const SequenceStep* Sequence(const CAnalysisSupport& analysis) { return analysis.Sequence; }
    static int SequenceRows(const CAnalysisSupport& analysis) { return analysis.SequenceRows; }
};

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
        Host->Dialogs.Startup.reset();
        Owned.reset();
    }
    Host->Data.Commons = {};
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
    const bool isBusy = Host->Dialogs.Command || Host->Dialogs.ModalWindows > 0;
    if (const Window* window = StartupWindow(); window != nullptr && window->IsClosed() && !isBusy) {
        Host->Dialogs.Startup.reset();
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

void AnalysisDocument::OfferCaseBlocks(bool offered) {
    Host->Blocks.IsOffered = offered;
}

void AnalysisDocument::SetAutomated(bool automated) {
    Host->Dialogs.IsAutomated = automated;
}

OpenDocuments& AnalysisDocument::Documents() {
    return Host->Results.Documents;
}

void AnalysisDocument::RemoveFromAnalysisList(IDispatch* document) {
    Host->Results.Documents.RemoveFromAnalysis(document);
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
