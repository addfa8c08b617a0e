#include "workbench/data/DefaultRole.h"

#include <cmath>
#include <unordered_set>

#include "platform/OrderedBits.h"

namespace quillara {
namespace {

constexpr std::size_t MostLabelled = 100;
constexpr std::size_t MostWhole = 12;

/// Whether there are values, all pass the test, and no more than so many are distinct.
template <typename Test>
bool HasFewValues(const Variable& variable, std::size_t most, Test test) {
    const NearlyEqualRange missing = RangeNearlyEqualTo(variable.MissingCode);
    std::unordered_set<double> distinct;
    return HoldsForAll(variable.Values, [&](double value) {
        return missing.Contains(value) || (test(value) && (!distinct.insert(value).second || distinct.size() <= most));
    });
}

bool HasValues(const Variable& variable) {
    const NearlyEqualRange missing = RangeNearlyEqualTo(variable.MissingCode);
    return !HoldsForAll(variable.Values, [&missing](double value) { return missing.Contains(value); });
}

}  // namespace

DefaultRole DefaultRoleOf(const Variable& variable) {
    const auto isAny = [](double) { return true; };
    const auto isWhole = [](double value) { return value == std::floor(value); };
    if (variable.HasLabels() && HasFewValues(variable, MostLabelled, isAny)) {
        return DefaultRole::Categorical;
    }
    if (variable.Kind == ValueKind::Text) {
        return DefaultRole::None;
    }
    const bool isFewWhole = variable.Kind == ValueKind::Number && !variable.HasLabels() &&
                            HasFewValues(variable, MostWhole, isWhole) && HasValues(variable);
    return isFewWhole ? DefaultRole::Categorical : DefaultRole::Continuous;
}

}  // namespace quillara
