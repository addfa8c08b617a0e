#include "workbench/hosting/RemainingCases.h"

#include <algorithm>
#include <new>
#include <vector>

#include "platform/OrderedBits.h"
#include "workbench/hosting/AllocationRecord.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/hosting/TableServices.h"

namespace quillara {
namespace {

using Conditions = std::vector<CaseCondition>;

/// What the host asks for itself is no matter of what the analysis allocates.
class UncountedAllocations {
  public:
    explicit UncountedAllocations(AnalysisDocument& document)
        : Record(*MemoryOf(&document)), Calls(Record.Calls), FailingCall(Record.FailingCall) {
        Record.FailingCall = 0;
    }
    UncountedAllocations(const UncountedAllocations&) = delete;
    UncountedAllocations& operator=(const UncountedAllocations&) = delete;
    ~UncountedAllocations() {
        Record.Calls = Calls;
        Record.FailingCall = FailingCall;
    }

  private:
    AllocationRecord& Record;
    const int Calls;
    const int FailingCall;
};

/// Nothing when the analysis doesn't tell its steps.
std::optional<Conditions> ConditionsOf(AnalysisDocument& document) {
    if (!document.HasAnalysis()) {
        return std::nullopt;
    }
    const UncountedAllocations uncounted(document);
    Conditions conditions;
    return document.Analysis().FindStepConditions(conditions) ? std::optional(conditions) : std::nullopt;
}

/// Of the newest step first.
template <typename Test>
std::optional<CaseCondition> FirstCondition(AnalysisDocument& document, Test test) {
    try {
        const Conditions conditions = ConditionsOf(document).value_or(Conditions());
        const auto found = std::ranges::find_if(conditions, test);
        return found == conditions.end() ? std::nullopt : std::optional(*found);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

SubsetSize SizeOf(const RowSet& rows, const Column& weights) {
    if (weights.empty()) {
        return {static_cast<std::int32_t>(rows.Count()), std::nullopt};
    }
    SubsetSize size{0, 0.0};
    rows.ForEachValue(weights, [&size](double weight) {
        if (IsPositiveWeight(weight)) {
            ++size.Cases;
            *size.Weight += weight;
        }
    });
    return size;
}

std::optional<SubsetSize> Count(AnalysisDocument& document, const Conditions& conditions) {
    return SizeOf(TableServicesOf(&document).Find(conditions), TableOf(&document).Weights);
}

}  // namespace

const RowSet* RemainingCases(AnalysisDocument& document) {
    try {
        const std::optional<Conditions> conditions = ConditionsOf(document);
        return conditions ? &TableServicesOf(&document).Find(*conditions) : nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

std::optional<std::size_t> StepsInForceNow(AnalysisDocument& document) {
    try {
        const std::optional<Conditions> conditions = ConditionsOf(document);
        return conditions ? std::optional(conditions->size()) : std::nullopt;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

std::optional<CaseCondition> NewestCondition(AnalysisDocument& document) {
    return FirstCondition(document, [](const CaseCondition&) { return true; });
}

std::optional<CaseCondition> ConditionOn(AnalysisDocument& document, int variable) {
    return FirstCondition(document,
                          [variable](const CaseCondition& condition) { return condition.Variable == variable; });
}

std::optional<SubsetSize> CountRemaining(AnalysisDocument& document) {
    try {
        const std::optional<Conditions> conditions = ConditionsOf(document);
        return conditions ? Count(document, *conditions) : std::nullopt;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

std::optional<SubsetSize> CountDroppedWithoutValue(AnalysisDocument& document) {
    try {
        std::optional<Conditions> conditions = ConditionsOf(document);
        const Variable* variable =
            !conditions || conditions->empty() ? nullptr : TableOf(&document).Find(conditions->front().Variable);
        if (variable == nullptr || conditions->front().IsMetBy(variable->MissingCode)) {
            return std::nullopt;
        }
        const NearlyEqualRange missing = RangeNearlyEqualTo(variable->MissingCode);
        conditions->front() = {conditions->front().Variable, ConditionRule::Closed, missing.Lowest, missing.Highest};
        return Count(document, *conditions);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

std::optional<SubsetSize> CountSelected(AnalysisDocument& document) {
    try {
        return ConditionsOf(document) ? Count(document, {}) : std::nullopt;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

std::vector<SubsetSize> CountAlong(AnalysisDocument& document, std::span<const StepTaken> steps) {
    try {
        std::optional<Conditions> conditions = ConditionsOf(document);
        std::vector<SubsetSize> sizes;
        for (std::size_t step = 0; conditions && conditions->size() == steps.size() && step < steps.size(); ++step) {
            const std::optional<std::size_t> variable = document.Table().Find(steps[step].Variable);
            const auto own = std::find_if(conditions->begin() + static_cast<std::ptrdiff_t>(step), conditions->end(),
                                          [&](const CaseCondition& condition) {
                                              return variable && condition.Variable == static_cast<int>(*variable) + 1;
                                          });
            if (own == conditions->end()) {
                return {};
            }
            std::swap((*conditions)[step], *own);
            sizes.push_back(*Count(document, Conditions(conditions->begin(),
                                                        conditions->begin() + static_cast<std::ptrdiff_t>(step) + 1)));
        }
        return sizes;
    } catch (const std::bad_alloc&) {
        return {};
    }
}

}  // namespace quillara
