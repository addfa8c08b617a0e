#include "results/graphs/ReviewCaseFilter.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "engine/DrillDown.h"

using namespace drilldown;

std::int16_t Histogram3DXVar = 0;
std::int16_t Histogram3DYVar = 0;

namespace {

/// The steps of the plot being made.
std::span<const CaseCondition> Steps;

/// The conditions of the drill filter as those of a plot.
std::vector<CaseCondition> PlotConditions(const CompiledFilter& filter) {
    std::vector<CaseCondition> conditions;
    for (CaseCondition condition : filter) {
        // Intended: an unknown method ends the test with the case kept, unlike a known one; steps behind it don't
        // count.
        if (condition.Rule == ConditionRule::Everything) {
            break;
        }
        // Intended: a step on Missing drops every case, unlike in the drill filter, which keeps the missing ones;
        // review plots don't follow such a step.
        if (condition.Rule == ConditionRule::Closed) {
            condition.Rule = ConditionRule::Nothing;
        }
        // Intended: a NaN is dropped by an interval (a, b], unlike in the drill filter, which lets it pass; the host's
        // plots depend on numbers.
        if (condition.Rule == ConditionRule::OpenClosed) {
            condition.Rule = ConditionRule::OpenClosedNumber;
        }
        conditions.push_back(condition);
    }
    return conditions;
}

}  // namespace

ReviewCaseFilterScope::ReviewCaseFilterScope(CDrillDown& analysis) : Analysis(analysis) {
    const CompiledFilter filter(analysis);
    if (filter) {
        Conditions = PlotConditions(filter);
        Compiled = true;
    }
    Steps = Conditions;
    Analysis.SetPlotConditions(&Conditions);
}

ReviewCaseFilterScope::~ReviewCaseFilterScope() {
    Steps = {};
    Analysis.SetPlotConditions(nullptr);
}

int ReviewCaseFilter(char*, long*, const double* values, float* x, float* y) {
    // Intended: variable v is read at v - 1, unlike in a case buffer, whose first value is spare; the host that calls
    // begins its array with variable 1.
    for (const CaseCondition& step : Steps) {
        if (!step.IsMetBy(values[step.Variable - 1])) {
            return 1;
        }
    }
    if (x != nullptr && y != nullptr) {
        *x = static_cast<float>(values[Histogram3DXVar]);
        *y = static_cast<float>(values[Histogram3DYVar]);
    }
    return 0;
}

int ReviewCaseFilterXY(char* reserved1, long* reserved2, const double* values, float* x, float* y) {
    float pairX = 0.0F;
    float pairY = 0.0F;
    if (ReviewCaseFilter(reserved1, reserved2, values, &pairX, &pairY) != 0) {
        return 1;
    }
    *x = pairX;
    *y = pairY;
    return 0;
}
