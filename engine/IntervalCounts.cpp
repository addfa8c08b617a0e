#include <vector>

#include "engine/CasePass.h"
#include "engine/DrillDown.h"
#include "engine/OutOfMemory.h"
#include "engine/RecordIndex.h"

using namespace drilldown;

namespace {

/// A drill variable whose values go into the intervals of the first drill-down record with its number.
PassVariable CountedVariable(const RecordIndex& records, std::int16_t var) {
    Drill* target = records.Find(var);
    return {var, DrillSide, {target, target, 0, CategoryCounting::IntoIntervals}};
}

int CountIntervals(CDrillDown& analysis, const PassRules& rules, const std::vector<PassVariable>& variables) {
    CasePass pass(analysis, rules, variables, nullptr);
    if (!pass) {
        return ReportNotEnoughMemory(analysis);
    }
    return pass.Run() == PassOutcome::Completed ? 1 : 0;
}

}  // namespace

int CDrillDown::SetNeatIntervals() {
    for (const Drill& record : *DrillDowns) {
        // Intended: neat intervals for every method but 0, unlike SetReviewsIntervals; a scan starts from them.
        if (record.Method != DistinctValues) {
            Editable(record).MakeNeatCategories();
        }
    }
    return 1;
}

int CDrillDown::SetReviewsIntervals() {
    for (const Drill& record : *Reviews) {
        // Intended: Method 2 only, unlike SetNeatIntervals, which takes every method but 0; what another method has cut
        // stays.
        if (record.Method == NeatIntervals) {
            Editable(record).MakeNeatCategories();
        }
    }
    return 1;
}

int CDrillDown::SetContinuousIntervals() {
    for (const DrillSet* set : {DrillDowns, Reviews}) {
        for (const Drill& record : *set) {
            if (record.VarType == ContinuousVariable) {
                Editable(record).RebuildCategories();
            }
        }
    }
    return 1;
}

int CDrillDown::FillNeatIntervals() {
    const RecordIndex records(*DrillDowns);
    std::vector<PassVariable> variables;
    for (int i = 0; i < NoContinuous; ++i) {
        variables.push_back(CountedVariable(records, Continuous[i]));
    }
    if (CountIntervals(*this, CountOfAllIntervals, variables) == 0) {
        return 0;
    }
    for (const PassVariable& variable : variables) {
        SetIsset(variable.VarNo, 1);
    }
    return 1;
}

int CDrillDown::FillContinuousIntervals() {
    const RecordIndex records(*DrillDowns);
    std::vector<PassVariable> variables;
    for (const Drill& record : *DrillDowns) {
        if (record.VarType == ContinuousVariable) {
            variables.push_back(CountedVariable(records, record.VarNo));
        }
    }
    if (CountIntervals(*this, CountOfRemainingIntervals, variables) == 0) {
        return 0;
    }
    for (const Drill& record : *DrillDowns) {
        if (record.VarType == ContinuousVariable) {
            Editable(record).Isset = 1;
        }
    }
    return 1;
}

int CDrillDown::AddCategories(double value, std::int16_t var, double weight) {
    Drill* record = FindRecord(DrillDowns, var);
    return record == nullptr ? 1 : record->AddToInterval(value, weight);
}

int CDrillDown::SetNumOfCases() {
    for (const Drill& record : *DrillDowns) {
        Editable(record).ValidCount = NumOfCases;
    }
    return 1;
}
