#include "workbench/support/AnalysisDoc.h"

#include <algorithm>

#include "workbench/data/Errors.h"
#include "workbench/support/AnalysisState.h"

using quillara::AnalysisServices;
using quillara::AnalysisState;
using quillara::DataTable;

CAnalysisDoc::CAnalysisDoc(const DataTable& table) : Host(std::make_unique<AnalysisState>(table, Services)) {}

CAnalysisDoc::~CAnalysisDoc() {
    Close();
}

void CAnalysisDoc::Close() {
    if (Owned != nullptr) {
        Owned->BeforeClose();
        Owned.reset();
    }
    Host->Commons = {};
}

AnalysisState& CAnalysisDoc::StateOf(CAnalysisDoc* document) {
    static const DataTable emptyTable;
    static const AnalysisServices noServices;
    static AnalysisState unbound(emptyTable, noServices);
    return document == nullptr ? unbound : *document->Host;
}

void CAnalysisDoc::Adopt(std::unique_ptr<CAnalysisSupport> analysis) {
    Close();
    Owned = std::move(analysis);
    Owned->Document = this;
}

CAnalysisSupport& CAnalysisDoc::Analysis() {
    return *Owned;
}

bool CAnalysisDoc::RunSequence() {
    const SequenceStep* end = Owned->Sequence + Owned->SequenceRows;
    const SequenceStep* step = Owned->Sequence;
    while (step != end) {
        if ((Owned.get()->*step->Function)() == 0) {
            return false;
        }
        if (step->NextId == 0 || !Owned->ForwardSequence(step->Id, step->NextId)) {
            break;
        }
        const int next = step->NextId;
        step = std::find_if(Owned->Sequence, end, [next](const SequenceStep& row) { return row.Id == next; });
    }
    return true;
}

void CAnalysisDoc::SetSelection(std::vector<CaseResult> results) {
    if (!results.empty() && results.size() != static_cast<std::size_t>(Host->Table.Cases)) {
        throw quillara::DataError("The case selection was made for a table with another number of cases.");
    }
    const bool selectsAll =
        std::all_of(results.begin(), results.end(), [](CaseResult result) { return result == CaseResult::Use; });
    Host->Selection = selectsAll ? std::vector<CaseResult>() : std::move(results);
}

void CAnalysisDoc::SetWeight(std::optional<std::size_t> variable) {
    Host->ChooseWeight(variable ? &Host->Table.Variables.at(*variable) : nullptr);
}

void CAnalysisDoc::OfferCaseBlocks(bool offered) {
    Host->BlocksOffered = offered;
}

void CAnalysisDoc::FailAllocation(int call) {
    Host->Memory.Calls = 0;
    Host->Memory.FailingCall = call;
}

int CAnalysisDoc::AllocationCalls() const {
    return Host->Memory.Calls;
}

std::size_t CAnalysisDoc::LiveAllocations() const {
    return Host->Memory.Live.size();
}
