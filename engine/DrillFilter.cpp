#include "engine/DrillFilter.h"

#include <iterator>
#include <new>

using namespace drilldown;

namespace {

std::int32_t CategoryCount(const Drill& record) {
    return static_cast<std::int32_t>(record.CategorySet.size());
}

bool IsStepOnMissing(const Drill& record) {
    return record.ChosenCategory == CategoryCount(record);
}

/// A script can drill on a row that the category list doesn't have.
bool HasChosenCategory(const Drill& record) {
    return record.ChosenCategory >= 0 && record.ChosenCategory < CategoryCount(record);
}

/// Intended: an unknown method ends the test of all steps behind it, unlike any other step; a case that came so far
/// remains.
bool EndsTheTest(const Drill& record) {
    return !IsStepOnMissing(record) && record.Method > UserIntervals;
}

/// How the host and the pass test what a method keeps.
ConditionRule RuleOf(KeepRule kept) {
    switch (kept) {
        case KeepRule::MissingOnly:
            return ConditionRule::Closed;
        case KeepRule::Equal:
            // Intended: exact, unlike the counting of values, which takes nearly equal ones together; a drill keeps the
            // value that was met first.
            return ConditionRule::Equal;
        case KeepRule::OpenClosed:
            // Intended: Lower is tested, unlike in the counting, where the first interval takes what lies below; a step
            // keeps what the name of its interval says. A NaN passes, since an interval excludes only what lies outside
            // its bounds.
            return ConditionRule::OpenClosed;
        case KeepRule::ClosedOpen:
            return ConditionRule::ClosedOpen;
        case KeepRule::Nothing:
            return ConditionRule::Nothing;
        case KeepRule::Everything:
            break;
    }
    return ConditionRule::Everything;
}

CaseCondition ConditionOf(CDrillDown& analysis, const Drill& record) {
    if (IsStepOnMissing(record)) {
        double code = 0.0;
        analysis.getmd5(record.VarNo, &code);
        const NearlyEqualRange missing = RangeNearlyEqualTo(code);
        return {record.VarNo, RuleOf(KeepRule::MissingOnly), missing.Lowest, missing.Highest};
    }
    if (!HasChosenCategory(record)) {
        return {record.VarNo, RuleOf(KeepRule::Nothing), 0.0, 0.0};
    }
    const Categories& kept = *std::next(record.CategorySet.begin(), record.ChosenCategory);
    return {record.VarNo, RuleOf(FactsOf(record.Method).Rule), kept.Lower, kept.Upper};
}

}  // namespace

CompiledFilter::CompiledFilter(CDrillDown& analysis) : Conditions(analysis, analysis.DrillUps->size() + 1) {
    if (!Conditions) {
        return;
    }
    for (const Drill& record : *analysis.DrillUps) {
        if (EndsTheTest(record)) {
            return;
        }
        Conditions[Count++] = ConditionOf(analysis, record);
    }
}

int CDrillDown::HasBeenDrilled(const double* values) {
    for (const Drill& record : *DrillUps) {
        if (EndsTheTest(record)) {
            return 0;
        }
        if (!ConditionOf(*this, record).IsMetBy(values[record.VarNo])) {
            return 1;
        }
    }
    return 0;
}

bool CDrillDown::FindStepConditions(std::vector<CaseCondition>& conditions) {
    const CompiledFilter filter(*this);
    if (!filter) {
        return false;
    }
    try {
        conditions.assign(filter.begin(), filter.end());
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}
