#include <algorithm>
#include <array>

#include "engine/CountMemory.h"
#include "engine/DrillDown.h"
#include "engine/OutOfMemory.h"

using namespace drilldown;

namespace {

/// The variable arrays, in the order in which they are allocated and freed.
struct VariableArray {
    std::int16_t* CDrillDown::*Member;
    unsigned long Entries;
};

constexpr std::array<VariableArray, 7> VariableArrays{{
    // Member                     Entries, times (variables + 1)
    {&CDrillDown::RVCategorical, 1},
    {&CDrillDown::RVContinuous, 1},
    {&CDrillDown::Categorical, 1},
    {&CDrillDown::Continuous, 1},
    {&CDrillDown::FirstVarList, 1},
    {&CDrillDown::SecondVarList, 1},
    {&CDrillDown::AllReviewVars, 2},
}};

/// Makes the set, or empties the one that is there.
void Renew(CDrillDown::DrillSet*& set) {
    if (set == nullptr) {
        set = new CDrillDown::DrillSet;
    } else {
        set->clear();
    }
}

/// Without arrays there are no variables.
void ForgetVariables(CDrillDown& analysis) {
    analysis.NoRVCategorical = analysis.NoRVContinuous = 0;
    analysis.NoCategorical = analysis.NoContinuous = 0;
    analysis.FirstVarCount = analysis.SecondVarCount = 0;
    for (CDrillDown::DrillSet* set : {analysis.DrillDowns, analysis.DrillUps, analysis.Reviews}) {
        if (set != nullptr) {
            set->clear();
        }
    }
}

bool AllocateArrays(CDrillDown& analysis) {
    const auto size = static_cast<unsigned long>(analysis.Table.Variables) + 1;
    for (const VariableArray& array : VariableArrays) {
        void* address = nullptr;
        if (analysis.AllocMem(&address, size * array.Entries * sizeof(std::int16_t)) != 0) {
            return false;
        }
        analysis.*array.Member = static_cast<std::int16_t*>(address);
        std::fill_n(analysis.*array.Member, size * array.Entries, std::int16_t{0});
    }
    return true;
}

}  // namespace

void CDrillDown::InitMembers() {
    StandAloneResults = 0;
    DataChanged = 0;
    PlotMedianQuartileRange = 0;
    PlotMeanSEAndSD = 1;
    PlotMeanSD196TimesSD = 0;
    PlotMeanSE196TimesSE = 0;
    NoRVCategorical = NoRVContinuous = 0;
    NoCategorical = NoContinuous = 0;
    WeightedMoments = 0;
    CasewiseDeletionOfMD = RVCasewiseDeletionOfMD = 0;
    CountMD = 1;
    ValidVar = NumOfCases = 0;
    ProgressOn = false;
    CurrentDown = CurrentUp = -1;
    Selected = -1;
    FirstVarCount = SecondVarCount = 0;
}

void CDrillDown::ReleaseMembers() {
    for (const VariableArray& array : VariableArrays) {
        if (this->*array.Member != nullptr) {
            FreeMem(this->*array.Member);
            this->*array.Member = nullptr;
        }
    }
}

int CDrillDown::Init() {
    InitCommons(&Table, &Names, &CaseLine, &CaseWeight, nullptr);
    ReleaseMembers();
    // Of another table: its host may number revisions from the start.
    Counted.reset();
    ReadFailed = false;
    if (!AllocateArrays(*this)) {
        ReleaseMembers();
        ForgetVariables(*this);
        return ReportNotEnoughMemory(*this);
    }
    Renew(DrillDowns);
    Renew(DrillUps);
    Renew(Reviews);
    return 1;
}

int CDrillDown::ResetMembers() {
    const int result = Init();
    InitMembers();
    ForgetVariables(*this);
    return result;
}

void CDrillDown::tdstar(int total, const char* text) {
    if (ProgressOn) {
        dstop();
    }
    d_pbar(text);
    dstart(static_cast<unsigned long>(total));
    ProgressOn = true;
}

void CDrillDown::ddstop() {
    if (ProgressOn) {
        dstop();
    }
    ProgressOn = false;
}
