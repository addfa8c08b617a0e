#include <span>
#include <unordered_set>
#include <vector>

#include "engine/CasePass.h"
#include "engine/DisplayNames.h"
#include "engine/DrillDown.h"
#include "engine/OutOfMemory.h"
#include "engine/RecordIndex.h"
#include "engine/StoredStatistics.h"

using namespace drilldown;

namespace {

/// One of the two lists of an analysis, and where a scan of it stores what it found.
struct VariableScan {
    const PassRules& Rules;
    PassSide Side;
    CDrillDown::DrillSet* CDrillDown::*Set;
    int (CDrillDown::*BuildIntervals)();
    bool EmptiesSetOnCancel;
};

constexpr VariableScan DrillScan{
    ScanOfDrillVariables,
    DrillSide,
    &CDrillDown::DrillDowns,
    &CDrillDown::SetNeatIntervals,
    // Intended: emptied, unlike the review records, which keep what the pass had found; without drill records
    // nothing can be drilled on half-read data.
    true,
};

constexpr VariableScan ReviewScan{
    ScanOfReviewVariables,
    ReviewSide,
    &CDrillDown::Reviews,
    &CDrillDown::SetReviewsIntervals,
    // Intended: kept, unlike the drill-down records; review tables then show what the pass had found.
    false,
};

PassVariable ScannedVariable(const VariableScan& scan, const RecordIndex& records, std::int16_t var, bool categorical) {
    Drill* target = records.Find(var);
    // Intended: distinct values are collected whatever the method becomes on the way, unlike after a drill; intervals
    // replace them at the end of the scan.
    const CategoryCounting counting = categorical ? CategoryCounting::EveryValue : CategoryCounting::None;
    return {var, scan.Side, {target, target, CategoricalVariable, counting}};
}

std::vector<PassVariable> ScannedVariables(const CDrillDown& analysis, const VariableScan& scan) {
    const SelectionMembers& selection = Selections[scan.Side];
    const RecordIndex records(*(analysis.*scan.Set));
    std::vector<PassVariable> variables;
    for (const std::int16_t var : selection.CategoricalOf(analysis)) {
        variables.push_back(ScannedVariable(scan, records, var, true));
    }
    for (const std::int16_t var : selection.ContinuousOf(analysis)) {
        variables.push_back(ScannedVariable(scan, records, var, false));
    }
    return variables;
}

/// Marks every record of a categorical variable, also a second one, as counted if its method takes distinct values.
void MarkCounted(const CDrillDown& analysis, const VariableScan& scan) {
    const auto list = Selections[scan.Side].CategoricalOf(analysis);
    const std::unordered_set<std::int16_t> categorical(list.begin(), list.end());
    for (const Drill& record : *(analysis.*scan.Set)) {
        if (categorical.contains(record.VarNo)) {
            Editable(record).Isset = record.TakesDistinctValues() ? 1 : 0;
        }
    }
}

void StoreScan(CDrillDown& analysis, const VariableScan& scan, std::span<const PassVariable> variables,
               const MomentTally& moments) {
    MarkCounted(analysis, scan);
    for (std::size_t i = 0; i < variables.size(); ++i) {
        Drill* record = variables[i].Feed.Target;
        if (record == nullptr) {
            continue;
        }
        if (variables[i].Feed.Counting == CategoryCounting::EveryValue && !NameCategories(analysis, *record)) {
            analysis.ReadFailed = true;  // the next result makes the names
        }
        StoreStatistics(*record, moments.Of(i));
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
