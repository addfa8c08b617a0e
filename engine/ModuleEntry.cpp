// The module's composition root: library load, entry function, creation and end of the analysis, and the steps by
// which the host drives it.

#include <algorithm>
#include <array>
#include <memory>
#include <new>

#include "automation/OutputTracker.h"
#include "dialogs/DefineTask.h"
#include "engine/CountMemory.h"
#include "engine/DrillDown.h"
#include "host/AnalysisContext.h"
#include "host/ModuleState.h"
#include "resources/Dialogs.h"
#include "resources/StartupControls.h"
#include "resources/StringTable.h"

namespace {

constexpr int AnalysisId = 4811;
constexpr std::array<char, 8> AnalysisMark{'Q', 'L', 'D', 'R', 'I', 'L', 'L', ' '};

constexpr ModuleInstance TheModule{"qladrilldown", StringTable, DialogTable};

/// Made when the library is loaded, destroyed when it is unloaded.
class DrillDownContext : public CAnalysisContext {
  public:
    DrillDownContext() { OrvOleRegisterTypeLib("QLADrillDown"); }
    [[nodiscard]] const ModuleInstance* Instance() const override { return &TheModule; }
    [[nodiscard]] ModuleState* State() const override { return OrvGetAppModuleState(); }
};

const DrillDownContext TheContext;

const std::array<SequenceStep, 2> StepTable{{
    // Id  Function                                                                         Next
    {100, &CAnalysisSupport::InitializeAfterFileChanged, 101},
    {101, static_cast<int (CAnalysisSupport::*)()>(&CDrillDown::StartAnalysis), 0},
}};

}  // namespace

ModuleState* OrvGetAppModuleState() {
    static constinit ModuleState theState;
    return &theState;
}

CAnalysisSupport* Orv6NewAnalysis() {
    try {
        return new (std::nothrow) CDrillDown(nullptr);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

CDrillDown::CDrillDown(CAnalysisDoc* document) : CAnalysisSupport(document, TheContext) {
    std::copy(AnalysisMark.begin(), AnalysisMark.end(), Names.AnalysisTag);
    SetSequenceTable(StepTable.data(), static_cast<int>(StepTable.size()));
    InitMembers();
    OutputTracker = new COutputTracker(*this);
}

CDrillDown::~CDrillDown() {
    try {
        BeforeClose();
    } catch (const std::bad_alloc&) {
        // The tracker lets go of what is left as it ends.
    }
    delete OutputTracker;
    OutputTracker = nullptr;
    delete DrillDowns;
    delete DrillUps;
    delete Reviews;
    ReleaseMembers();
}

int CDrillDown::StartAnalysis() {
    constexpr int opened = -1;
    const auto release = [](CDefineTask* dialog) { dialog->ReleaseDialogReference(); };
    std::unique_ptr<CDefineTask, decltype(release)> dialog(new CDefineTask(*this));
    dialog->SetControlTable(StartupControls.data());
    if (dialog->CreateAnalysisDialog() == 0) {
        return 0;
    }
    static_cast<void>(dialog.release());  // the host's from now on
    return opened;
}

int CDrillDown::InitializeAfterFileChanged() {
    return Init();
}

void CDrillDown::Initialize() {}

bool CDrillDown::ForwardSequence(int from, int to) const {
    return CAnalysisSupport::ForwardSequence(from, to);
}

const ModuleInstance* CDrillDown::GetLibInstance() {
    return &TheModule;
}

int CDrillDown::GetAnalysisID() {
    return AnalysisId;
}

std::string CDrillDown::GetAnalysisName() const {
    return const_cast<CDrillDown*>(this)->GetResourceString(AnalysisNameText);
}
