#include <optional>
#include <span>
#include <vector>

#include "engine/CasePass.h"
#include "engine/CountMemory.h"
#include "engine/DisplayNames.h"
#include "engine/DrillDown.h"
#include "engine/OutOfMemory.h"
#include "engine/RecordIndex.h"
#include "engine/StoredStatistics.h"

using namespace drilldown;

namespace {

PassVariable Variable(const Drill& record, PassSide side, Drill* target, CategoryCounting counting) {
    return {record.VarNo, side, {&Editable(record), target, record.VarType, counting}};
}

/// All drill-down and review records with what becomes of their values after a drill.
std::vector<PassVariable> VariablesAfterDrill(const CDrillDown& analysis) {
    const RecordIndex drills(*analysis.DrillDowns);
    const RecordIndex reviews(*analysis.Reviews);
    std::vector<PassVariable> variables;
    for (const Drill& record : *analysis.DrillDowns) {
        variables.push_back(Variable(record, DrillSide, drills.Find(record.VarNo), CategoryCounting::DistinctByMethod));
    }
    for (const Drill& record : *analysis.Reviews) {
        variables.push_back(
            Variable(record, ReviewSide, reviews.Find(record.VarNo), CategoryCounting::DistinctByMethod));
    }
    return variables;
}

/// All drill-down and review records with what becomes of their values in a recount.
std::vector<PassVariable> VariablesBeforeDrill(const CDrillDown& analysis) {
    const RecordIndex drills(*analysis.DrillDowns);
    std::vector<PassVariable> variables;
    for (const Drill& record : *analysis.DrillDowns) {
        variables.push_back(Variable(record, DrillSide, drills.Find(record.VarNo), RecountOf(DrillSide)));
    }
    for (const Drill& record : *analysis.Reviews) {
        variables.push_back(Variable(record, ReviewSide, &Editable(record), RecountOf(ReviewSide)));
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

void MarkUncounted(const CDrillDown& analysis) {
    for (const CDrillDown::DrillSet* set : {analysis.DrillDowns, analysis.Reviews}) {
        for (const Drill& record : *set) {
            Editable(record).Isset = 0;
        }
    }
}

void ResetCounts(const CDrillDown& analysis) {
    MarkUncounted(analysis);
    for (const CDrillDown::DrillSet* set : {analysis.DrillDowns, analysis.Reviews}) {
        for (const Drill& record : *set) {
            for (const Categories& category : record.CategorySet) {
                Editable(category).Count = 0.0;
            }
        }
    }
}

/// How the intervals of a list are cut when a drill pass is stored.
using BuildIntervals = int (Drill::*)();

// Intended: rebuilt by their method, unlike the review records; drill variables offer every method.
constexpr BuildIntervals BuildDrillIntervals = &Drill::RebuildCategories;
// Intended: neat intervals under every interval method, unlike the drill-down records; reviews offer no other choice.
constexpr BuildIntervals BuildReviewIntervals = &Drill::MakeNeatCategories;

/// Stores the statistics of the variables, and names or rebuilds their categories.
void StorePass(CDrillDown& analysis, const std::vector<PassVariable>& variables, const MomentTally& moments) {
    for (std::size_t i = 0; i < variables.size(); ++i) {
        Drill& record = *variables[i].Feed.Feeder;
        StoreStatistics(record, moments.Of(i));
        if (!record.TakesDistinctValues()) {
            record.Isset = 0;
            (record.*(variables[i].Side == DrillSide ? BuildDrillIntervals : BuildReviewIntervals))();
            continue;
        }
        if (!NameCategories(analysis, *variables[i].Feed.Target)) {
            analysis.ReadFailed = true;  // the next result makes the names
        }
        record.Isset = 1;
    }
}

int RunAfterDrill(CDrillDown& analysis) {
    const std::uint64_t revision = RevisionOf(analysis);
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
    StorePass(analysis, variables, moments);
    RememberCounts(analysis, pass, variables, revision);
    return 1;
}

/// Counts `counted` anew and takes over the counts of those that are `known`. Nothing when the host can't give a part
/// of the cases again, which a cancel would ask for.
std::optional<int> Recount(CDrillDown& analysis, std::span<const PassVariable> counted,
                           std::span<const PassVariable> known) {
    const std::uint64_t revision = RevisionOf(analysis);
    CasePass pass(analysis, RecountBeforeDrill, counted, nullptr);
    if (!pass) {
        return ReportNotEnoughMemory(analysis);
    }
    if (!known.empty() && !pass.CanRunAgain()) {
        return std::nullopt;
    }
    if (pass.Run() == PassOutcome::Completed) {
        RestoreCounts(analysis, known);
        RememberCounts(analysis, pass, counted, revision);
        return 1;
    }
    if (!known.empty()) {
        CasePass again(analysis, RecountBeforeDrill, known, nullptr);
        // Intended: no message without memory, unlike in the pass itself; a cancel is silent, and the next recount
        // makes these counts, of which none is left.
        if (again && again.CanRunAgain()) {
            again.RunAgainUpTo(pass.CasesRead());
        }
    }
    return 0;
}

int RecountAll(CDrillDown& analysis, const std::vector<PassVariable>& variables) {
    std::vector<PassVariable> counted = variables;
    const std::vector<PassVariable> known = TakeKnown(analysis, counted);
    if (const std::optional<int> result = Recount(analysis, counted, known)) {
        return *result;
    }
    return Recount(analysis, variables, {}).value_or(0);
}

}  // namespace

int CDrillDown::ReadAfterDrill(unsigned short) {
    ValidVar = 0;
    ReadFailed = false;
    try {
        return RunAfterDrill(*this);
    } catch (...) {
        // Nothing may pass for a count of the present subset: the next result reads everything again.
        EmptyCategories(*this);
        MarkUncounted(*this);
        ReadFailed = true;
        throw;
    }
}

int CDrillDown::ReadBeforeDrill(unsigned short) {
    // Intended: DataChanged is cleared here, unlike in ReadAfterDrill, which leaves that to its callers; those of a
    // recount rely on it.
    // A stale pass is made good before the counts are reset, so that no category is counted twice.
    ReadIfChanged();
    ResetCounts(*this);
    const std::vector<PassVariable> variables = VariablesBeforeDrill(*this);
    if (RecountAll(*this, variables) == 0) {
        return 0;
    }
    for (const PassVariable& variable : variables) {
        Drill& record = *variable.Feed.Feeder;
        // Intended: no naming of reviews, unlike drill-down records; the values of the reviews keep the names of the
        // pass that met them.
        // Intended: counted also without memory for the names, unlike a pass without memory; the next result makes
        // them.
        const bool named = variable.Side == ReviewSide || !record.TakesDistinctValues() ||
                           NameCategories(*this, *variable.Feed.Target);
        ReadFailed = ReadFailed || !named;
        record.Isset = 1;
    }
    return 1;
}

void CDrillDown::BringUpToDate() {
    if (ReadFailed) {
        DataChanged = 1;
    }
    ReadIfChanged();
}

void CDrillDown::ReadIfChanged() {
    if (DataChanged != 0 && NoCategorical + NoContinuous + NoRVCategorical + NoRVContinuous > 0) {
        ReadAfterDrill(0);
    }
    DataChanged = 0;
}
