#include "workbench/hosting/AnalysisState.h"

#include "workbench/hosting/StepRecorder.h"

namespace quillara {

AnalysisState::AnalysisState(const DataTable& table, const AnalysisServices& services)
    : Around(services, Dialogs), Data(table), Blocks(Data, Around) {
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

NewTables& NewTablesOf(CAnalysisDoc* document) {
    return StateOf(document).Tables;
}

RoutedResults& ResultsOf(CAnalysisDoc* document) {
    return StateOf(document).Results;
}

DialogState& DialogsOf(CAnalysisDoc* document) {
    return StateOf(document).Dialogs;
}

DocumentSettings& SettingsOf(CAnalysisDoc* document) {
    return StateOf(document).Settings;
}

}  // namespace quillara
