#include "workbench/hosting/AnalysisState.h"

#include <utility>

namespace quillara {

AnalysisState::AnalysisState(const DataTable& table, const AnalysisServices& services)
    : Services(services), Data(table), Blocks(*this) {
    Dialogs.Queue.Trace = [this](std::string_view call) { Trace(call); };
}

AnalysisState::~AnalysisState() = default;

void AnalysisState::Exchange(std::shared_ptr<const DataTable> table) {
    Data.Exchange(std::move(table));
    Commons.Fill(Data);
}

void AnalysisState::ChooseWeight(std::optional<std::size_t> variable, bool isOn) {
    Data.ChooseWeight(variable, isOn);
    Commons.Fill(Data);
}

bool AnalysisState::AskForBreak() const {
    const bool flagged = Services.BreakFlag != nullptr && Services.BreakFlag->load(std::memory_order_relaxed);
    return flagged || (Services.BreakRequested && Services.BreakRequested());
}

void AnalysisState::ReportProgress(std::int32_t done) const {
    if (Progress.Running && Services.ProgressAdvanced) {
        Services.ProgressAdvanced(done);
    }
}

void AnalysisState::Trace(std::string_view call) const {
    if (Services.Trace) {
        Services.Trace(call);
    }
}

TableInUse& TableOf(CAnalysisDoc* document) {
    return StateOf(document).Data;
}

AllocationRecord* MemoryOf(CAnalysisDoc* document) {
    return document == nullptr ? nullptr : &StateOf(document).Memory;
}

}  // namespace quillara
