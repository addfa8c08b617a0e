#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include "engine/CaseDecisions.h"
#include "engine/PassRules.h"
#include "host/CaseConditions.h"

class CDrillDown;

namespace drilldown {

class CasePass;

/// Everything but the categories that decides what a recount comes to.
struct CountingState {
    std::uint64_t Revision = 0;
    std::vector<CaseCondition> Steps;
    WeightRule Weighing = WeightRule::None;
    std::array<std::int16_t, PassSides> Casewise{};
    std::array<std::vector<std::int16_t>, PassSides> Variables;  ///< that are tested for casewise deletion

    friend bool operator==(const CountingState&, const CountingState&) = default;
};

/// What passes have counted, so that a recount of the same cases into the same categories takes it over. Records are
/// compared with what is remembered, so whatever else changes them does no harm.
class CountMemory {
  public:
    /// Forgets what was counted in another state.
    void Enter(CountingState state);
    /// Remembers the counts of a record, which a recount would give again.
    void Remember(const PassVariable& variable);
    /// Whether the counts of the record are remembered, and good for its present categories.
    [[nodiscard]] bool Knows(const PassVariable& variable) const;
    /// Writes them into it.
    void Restore(const PassVariable& variable) const;

  private:
    struct Counts {
        std::int32_t Method;
        std::vector<std::pair<double, double>> Categories;  ///< Upper and Count of each
    };
    using Key = std::pair<PassSide, std::int16_t>;

    CountingState State;
    std::map<Key, Counts> Records;
};

// The memory of an analysis. It stays empty where the host doesn't say whether the cases are the same, or has no whole
// columns, of which a part can be counted again when a recount is cancelled. Without memory of the language it forgets.

/// The host's revision of the cases; 0 when nothing may be remembered.
[[nodiscard]] std::uint64_t RevisionOf(CDrillDown& analysis);
/// Remembers what a pass has counted in each variable that a recount would count alike; nothing when the cases aren't
/// those of the revision in which it began any more.
void RememberCounts(CDrillDown& analysis, const CasePass& pass, std::span<const PassVariable> variables,
                    std::uint64_t revision);
/// Takes those whose counts are remembered out of the variables of a recount.
[[nodiscard]] std::vector<PassVariable> TakeKnown(CDrillDown& analysis, std::vector<PassVariable>& variables);
/// Writes remembered counts into their records.
void RestoreCounts(const CDrillDown& analysis, std::span<const PassVariable> known);

}  // namespace drilldown
