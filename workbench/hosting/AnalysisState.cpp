#include "workbench/hosting/AnalysisState.h"

#include <atomic>
#include <utility>

#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/StepRecorder.h"

namespace quillara {

namespace {

/// A number that no document has had before.
std::uint64_t NewRevision() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

}  // namespace

AnalysisState::AnalysisState(const DataTable& table, const AnalysisServices& services)
    : Around(services, Dialogs), Data(table), Blocks(Data, Around), Whole(Data, Around) {
    Dialogs.Queue.Trace = [this](std::string_view call) { Around.Trace(call); };
    Dialogs.Queue.Hear = [this](const Window& window, const WindowCall& call) {
        if (StepRecorder* recorder = Around.Services.Recorder) {
            recorder->RecordCall(window, call);
        }
    };
    Results.Documents.Closing = [this](const ResultDocument& document) {
        if (StepRecorder* recorder = Around.Services.Recorder) {
            recorder->RecordClose(document);
        }
    };
    Data.Changed = [this, known = 0]() mutable {
        if (std::exchange(known, Data.OthersOpened()) != Data.OthersOpened()) {
            Steps.Forget();
            Noticed = {};
        }
        Whole.Forget();
        Quick.Revision = Quick.Revision == 0 ? 0 : NewRevision();
    };
    OfferCaseServices(true);
}

void AnalysisState::OfferCaseServices(bool offered) {
    Blocks.IsOffered = offered;
    Quick = offered ? CaseServices{&Whole, &Whole, &Workers, NewRevision()} : CaseServices();
}

AnalysisState::~AnalysisState() = default;

Surroundings& SurroundingsOf(CAnalysisDoc* document) {
    return StateOf(document).Around;
}

TableInUse& TableOf(CAnalysisDoc* document) {
    return StateOf(document).Data;
}

AllocationRecord* MemoryOf(CAnalysisDoc* document) {
    return document == nullptr ? nullptr : &StateOf(document).Memory;
}

TableCaseBlocks& CaseBlocksOf(CAnalysisDoc* document) {
    return StateOf(document).Blocks;
}

CaseServices& CaseServicesOf(CAnalysisDoc* document) {
    return StateOf(document).Quick;
}

TableServices& TableServicesOf(CAnalysisDoc* document) {
    return StateOf(document).Whole;
}

WorkerThreads& WorkersOf(CAnalysisDoc* document) {
    return StateOf(document).Workers;
}

NewTables& NewTablesOf(CAnalysisDoc* document) {
    return StateOf(document).Tables;
}

RoutedResults& ResultsOf(CAnalysisDoc* document) {
    return StateOf(document).Results;
}

DialogState& DialogsOf(CAnalysisDoc* document) {
    return StateOf(document).Dialogs;
}

void Notice(CAnalysisDoc* document, Remark remark) {
    AnalysisState& state = StateOf(document);
    if (state.Noticed.Add(remark) && state.Around.Services.HearRemark) {
        state.Around.Services.HearRemark(remark);
    }
}

void Notice(CAnalysisDoc* document, const std::vector<Remark>& notices) {
    for (const Remark& notice : notices) {
        Notice(document, notice);
    }
}

const Remarks& RemarksOn(CAnalysisDoc* document) {
    return StateOf(document).Noticed;
}

StepHistory& StepsOf(CAnalysisDoc* document) {
    return StateOf(document).Steps;
}

DocumentSettings& SettingsOf(CAnalysisDoc* document) {
    return StateOf(document).Settings;
}

}  // namespace quillara
