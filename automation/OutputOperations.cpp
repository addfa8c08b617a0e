#include "automation/OutputTracker.h"
#include "engine/DrillDown.h"

using namespace drilldown;

std::int32_t CDrillDown::AutoUpdate(std::uint16_t /*unused*/) {
    if (StandAloneResults == 0) {
        return 0;
    }
    OutputTracker->Update();
    return 1;
}

bool CDrillDown::OutputExists(unsigned outputId, unsigned outputSeq) const {
    return OutputTracker->FindOutput({outputId, outputSeq}) != OutputTracker->Outputs.end();
}

void CDrillDown::SetNextOutputID(unsigned outputId, unsigned outputSeq) {
    OutputTracker->NextId = outputId;
    OutputTracker->NextSeq = outputSeq;
}

void CDrillDown::HideOutput(unsigned outputId, unsigned outputSeq) {
    if (const auto entry = OutputTracker->FindOutput({outputId, outputSeq}); entry != OutputTracker->Outputs.end()) {
        OutputTracker->RemoveOutput(entry, true);
    }
}

bool CDrillDown::BeforeRouteOutput(IDispatch* document) {
    return StandAloneResults != 0 && OutputTracker->BeforeRoute(document);
}

void CDrillDown::BeforeClose() {
    // Intended: an analysis that the user ends hides its documents, unlike one that a script drives; what a script has
    // made stays on the screen.
    if (OutputTracker != nullptr) {
        OutputTracker->RemoveAll(IsOleAutomation() == 0);
    }
}
