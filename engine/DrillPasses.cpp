#include <vector>

#include "engine/CasePass.h"
#include "engine/DrillDown.h"
#include "engine/OutOfMemory.h"

namespace {

PassVariable Variable(const Drill& record, PassSide side, Drill* target, CategoryCounting counting) {
    return {record.VarNo, side, {&Editable(record), target, record.VarType, counting}};
}

/// All drill-down and review records with what becomes of their values after a drill.
std::vector<PassVariable> VariablesAfterDrill(const CDrillDown& analysis) {
    std::vector<PassVariable> variables;
    for (const Drill& record : *analysis.DrillDowns) {
        variables.push_back(Variable(record, DrillSide, CDrillDown::FindRecord(analysis.DrillDowns, record.VarNo),
                                     CategoryCounting::DistinctByMethod));
    }
    for (const Drill& record : *analysis.Reviews) {
        variables.push_back(Variable(record, ReviewSide, CDrillDown::FindRecord(analysis.Reviews, record.VarNo),
                                     CategoryCounting::DistinctByMethod));
    }
    return variables;
}

/// All drill-down and review records with what becomes of their values in a recount.
std::vector<PassVariable> VariablesBeforeDrill(const CDrillDown& analysis) {
    std::vector<PassVariable> variables;
    for (const Drill& record : *analysis.DrillDowns) {
        variables.push_back(Variable(record, DrillSide, CDrillDown::FindRecord(analysis.DrillDowns, record.VarNo),
                                     CategoryCounting::ByMethod));
    }
    for (const Drill& record : *analysis.Reviews) {
        // Intended: as intervals also for distinct values, unlike the drill-down records; the set holds them already.
        variables.push_back(Variable(record, ReviewSide, &Editable(record), CategoryCounting::IntoIntervals));
    }
    return variables;
}

/// Intended: Isset stays, unlike in Drill::ClearCategories; the pass that follows sets it, and after a cancel the
/// record is as it was but for its categories.
void EmptyCategories(const CDrillDown& analysis) {
    for (const CDrillDown::DrillSet* set : {analysis.DrillDowns, analysis.Reviews}) {
        for (const Drill& record : *set) {
            Editable(record).CategorySet.clear();
        }
    }
}

void ResetCounts(const CDrillDown& analysis) {
    for (const CDrillDown::DrillSet* set : {analysis.DrillDowns, analysis.Reviews}) {
        for (const Drill& record : *set) {
            Editable(record).Isset = 0;
            for (const Categories& category : record.CategorySet) {
                Editable(category).Count = 0.0;
            }
        }
    }
}

void StoreStatistics(Drill& record, const MomentStatistics& found) {
    record.Min = found.Min;
    record.Max = found.Max;
    record.Mean = found.Mean;
    record.SumSquares = found.SumSquares;
    record.MissingCount = found.MissingCount;
    record.MissingWeight = found.MissingWeight;
    record.ValidCount = found.ValidCount;
    record.ValidWeight = found.ValidWeight;
}

/// What sets the two lists apart when a drill pass is stored.
struct RecordList {
    CDrillDown::DrillSet* CDrillDown::*Set;
    int (CDrillDown::*NameCategories)(std::int16_t);
    int (Drill::*BuildIntervals)();
};

// Intended: rebuilt by their method, unlike the review records; drill variables offer every method.
constexpr RecordList DrillDownList{&CDrillDown::DrillDowns, &CDrillDown::SetCategoriesName, &Drill::RebuildCategories};
// Intended: neat intervals under every interval method, unlike the drill-down records; reviews offer no other choice.
constexpr RecordList ReviewList{&CDrillDown::Reviews, &CDrillDown::SetReviewCategoriesName, &Drill::MakeNeatCategories};

/// Stores statistics from the place `next` of the tally on, and names or rebuilds the categories.
void StoreList(CDrillDown& analysis, const RecordList& list, const MomentTally& moments, std::size_t& next) {
    for (const Drill& entry : *(analysis.*list.Set)) {
        Drill& record = Editable(entry);
        StoreStatistics(record, moments.Of(next++));
        if (record.TakesDistinctValues()) {
            if ((analysis.*list.NameCategories)(record.VarNo) == 0) {
                analysis.DataChanged = 1;  // the next result makes the names
            }
            record.Isset = 1;
        } else {
            record.Isset = 0;
            (record.*list.BuildIntervals)();
        }
    }
}

int RunAfterDrill(CDrillDown& analysis) {
    const std::vector<PassVariable> variables = VariablesAfterDrill(analysis);
    MomentTally moments(analysis, variables.size());
    if (!moments) {
        return ReportToBeReadAgain(analysis);
    }
    EmptyCategories(analysis);
    CasePass pass(analysis, StatisticsAfterDrill, variables, &moments);
    if (!pass) {
        return ReportToBeReadAgain(analysis);
    }
    if (pass.Run() == PassOutcome::Cancelled) {
        // Half-counted categories are of no use; the next complete pass makes them anew.
        EmptyCategories(analysis);
        return 0;
    }
    std::size_t next = 0;
    StoreList(analysis, DrillDownList, moments, next);
    StoreList(analysis, ReviewList, moments, next);
    return 1;
}

}  // namespace

int CDrillDown::ReadAfterDrill(unsigned short) {
    ValidVar = 0;
    try {
        return RunAfterDrill(*this);
    } catch (...) {
        // Nothing may pass for a count of the present subset: the next result reads everything again.
        EmptyCategories(*this);
        SetAllIsset(0);
        DataChanged = 1;
        throw;
    }
}

int CDrillDown::ReadBeforeDrill(unsigned short) {
    // Intended: DataChanged is cleared here, unlike by ReadAfterDrill, which leaves that to its callers.
    // Counts are reset behind a pass for changed settings, so that nothing is counted twice.
    BringUpToDate();
    ResetCounts(*this);
    const std::vector<PassVariable> variables = VariablesBeforeDrill(*this);
    CasePass pass(*this, RecountBeforeDrill, variables, nullptr);
    if (!pass) {
        return ReportNotEnoughMemory(*this);
    }
    if (pass.Run() == PassOutcome::Cancelled) {
        return 0;
    }
    for (const Drill& entry : *DrillDowns) {
        Drill& record = Editable(entry);
        // Without memory for the names the record stays to be recounted.
        record.Isset = !record.TakesDistinctValues() || SetCategoriesName(record.VarNo) != 0 ? 1 : 0;
    }
    // Intended: no naming, unlike above; the values of the reviews keep the names of the pass that met them.
    for (const Drill& entry : *Reviews) {
        Editable(entry).Isset = 1;
    }
    return 1;
}

void CDrillDown::BringUpToDate() {
    const bool reads = DataChanged != 0 && NoCategorical + NoContinuous + NoRVCategorical + NoRVContinuous > 0;
    DataChanged = 0;
    if (reads) {
        ReadAfterDrill(0);
    }
}
