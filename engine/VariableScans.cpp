#include <span>
#include <vector>

#include "engine/CasePass.h"
#include "engine/DrillDown.h"
#include "engine/OutOfMemory.h"

namespace {

/// One of the two lists of an analysis, and where a scan of it stores what it found.
struct VariableScan {
    const PassRules& Rules;
    PassSide Side;
    CDrillDown::DrillSet* CDrillDown::*Set;
    int (CDrillDown::*MarkCounted)(int);
    int (CDrillDown::*NameCategories)(std::int16_t);
    int (CDrillDown::*StoreDescriptives)(std::int16_t, double, double, double, double);
    int (CDrillDown::*StoreCounts)(std::int16_t, std::int32_t, double, std::int32_t, double);
    int (CDrillDown::*BuildIntervals)();
    bool EmptiesSetOnCancel;
};

constexpr VariableScan DrillScan{
    ScanOfDrillVariables,
    DrillSide,
    &CDrillDown::DrillDowns,
    &CDrillDown::SetCategoriesIsset,
    &CDrillDown::SetCategoriesName,
    &CDrillDown::SetDrillDescriptives,
    &CDrillDown::SetMissingCount,
    &CDrillDown::SetNeatIntervals,
    // Intended: emptied, unlike the review records, which keep what the pass had found; without drill records
    // nothing can be drilled on half-read data.
    true,
};

constexpr VariableScan ReviewScan{
    ScanOfReviewVariables,
    ReviewSide,
    &CDrillDown::Reviews,
    &CDrillDown::SetReviewCategoriesIsset,
    &CDrillDown::SetReviewCategoriesName,
    &CDrillDown::SetReviewDescriptives,
    &CDrillDown::SetReviewMissingCount,
    &CDrillDown::SetReviewsIntervals,
    // Intended: kept, unlike the drill-down records; review tables then show what the pass had found.
    false,
};

PassVariable ScannedVariable(const CDrillDown& analysis, const VariableScan& scan, std::int16_t var, bool categorical) {
    Drill* target = CDrillDown::FindRecord(analysis.*scan.Set, var);
    // Intended: distinct values are collected whatever the method becomes on the way, unlike after a drill; intervals
    // replace them at the end of the scan.
    const CategoryCounting counting = categorical ? CategoryCounting::EveryValue : CategoryCounting::None;
    return {var, scan.Side, {target, target, CategoricalVariable, counting}};
}

std::vector<PassVariable> ScannedVariables(const CDrillDown& analysis, const VariableScan& scan) {
    const SelectionMembers& selection = Selections[scan.Side];
    std::vector<PassVariable> variables;
    for (const std::int16_t var : selection.CategoricalOf(analysis)) {
        variables.push_back(ScannedVariable(analysis, scan, var, true));
    }
    for (const std::int16_t var : selection.ContinuousOf(analysis)) {
        variables.push_back(ScannedVariable(analysis, scan, var, false));
    }
    return variables;
}

void StoreScan(CDrillDown& analysis, const VariableScan& scan, std::span<const PassVariable> variables,
               const MomentTally& moments) {
    for (std::size_t i = 0; i < variables.size(); ++i) {
        const std::int16_t var = variables[i].VarNo;
        if (variables[i].Feed.Counting == CategoryCounting::EveryValue) {
            (analysis.*scan.MarkCounted)(var);
            if ((analysis.*scan.NameCategories)(var) == 0) {
                analysis.DataChanged = 1;  // the next result makes the names
            }
        }
        const MomentStatistics found = moments.Of(i);
        (analysis.*scan.StoreDescriptives)(var, found.Min, found.Max, found.Mean, found.SumSquares);
        (analysis.*scan.StoreCounts)(var, found.MissingCount, found.MissingWeight, found.ValidCount, found.ValidWeight);
    }
    (analysis.*scan.BuildIntervals)();
}

int RunScan(CDrillDown& analysis, const VariableScan& scan) {
    const std::vector<PassVariable> variables = ScannedVariables(analysis, scan);
    MomentTally moments(analysis, variables.size());
    if (!moments) {
        return ReportToBeReadAgain(analysis);
    }
    CasePass pass(analysis, scan.Rules, variables, &moments);
    if (!pass) {
        return ReportToBeReadAgain(analysis);
    }
    if (pass.Run() == PassOutcome::Cancelled) {
        if (scan.EmptiesSetOnCancel) {
            (analysis.*scan.Set)->clear();
        }
        return 0;
    }
    StoreScan(analysis, scan, variables, moments);
    return 1;
}

}  // namespace

int CDrillDown::ReadDDNV(unsigned short) {
    // Intended: ValidVar is counted anew, unlike in ReadRVV; it belongs to the drill variables.
    ValidVar = 0;
    return RunScan(*this, DrillScan);
}

int CDrillDown::ReadRVV(unsigned short) {
    // Intended: ValidVar stays, unlike in ReadDDNV; it belongs to the drill variables.
    return RunScan(*this, ReviewScan);
}
