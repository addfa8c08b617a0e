#pragma once

#include <cstdint>

#include "engine/CategoryTally.h"
#include "engine/VariableLists.h"

namespace drilldown {

/// Which cases a pass counts in ValidVar.
enum class ValidVarRule : std::uint8_t {
    Untouched,  ///< ValidVar isn't written
    KeptCases,  ///< cases that the casewise option of the drill variables leaves
    RemainingCases,  ///< all cases that remain, also those deleted casewise
};

/// When a case with missing data is deleted for all variables of a list.
enum class CasewiseTest : std::uint8_t {
    ByOption,  ///< when the option of the list is 1
    Always,
};

/// What a case that is deleted for a list counts as in its variables.
enum class DeletedCase : std::uint8_t { Nowhere, Missing };

/// What sets one pass over the cases apart from the others.
struct PassRules {
    bool Filtered;  ///< only cases that remain under the steps
    ValidVarRule ValidVar;
    CasewiseTest Casewise;
    DeletedCase DrillDeleted;
    DeletedCase ReviewDeleted;
};

// clang-format off
// Intended: three differences between passes that look alike.
// - ValidVar counts no case deleted casewise in the scan, unlike after a drill; the test for an empty subset depends on it.
// - A case deleted for the reviews counts nowhere after a drill, unlike in their scan; missing counts of review tables
//   depend on it.
// - Remaining intervals are counted without cases with missing data whatever the option, unlike all intervals; hosts that
//   call both depend on it.
// A recount counts no missing data at all: those figures stay as the pass after the drill left them.
//                                                  Filtered  ValidVar                      Casewise                DrillDeleted          ReviewDeleted
inline constexpr PassRules ScanOfDrillVariables     {false,   ValidVarRule::KeptCases,      CasewiseTest::ByOption, DeletedCase::Missing, DeletedCase::Nowhere};
inline constexpr PassRules ScanOfReviewVariables    {true,    ValidVarRule::Untouched,      CasewiseTest::ByOption, DeletedCase::Nowhere, DeletedCase::Missing};
inline constexpr PassRules StatisticsAfterDrill     {true,    ValidVarRule::RemainingCases, CasewiseTest::ByOption, DeletedCase::Missing, DeletedCase::Nowhere};
inline constexpr PassRules RecountBeforeDrill       {true,    ValidVarRule::Untouched,      CasewiseTest::ByOption, DeletedCase::Nowhere, DeletedCase::Nowhere};
inline constexpr PassRules CountOfAllIntervals      {false,   ValidVarRule::Untouched,      CasewiseTest::ByOption, DeletedCase::Nowhere, DeletedCase::Nowhere};
inline constexpr PassRules CountOfRemainingIntervals{true,    ValidVarRule::Untouched,      CasewiseTest::Always,   DeletedCase::Nowhere, DeletedCase::Nowhere};
// clang-format on

/// How the values of a list are counted in a recount.
/// Intended: the reviews as intervals also for distinct values, unlike the drill-down records; the set holds them
/// already.
constexpr CategoryCounting RecountOf(PassSide side) {
    return side == DrillSide ? CategoryCounting::ByMethod : CategoryCounting::IntoIntervals;
}

/// One variable of a pass.
struct PassVariable {
    std::int16_t VarNo = 0;
    PassSide Side = DrillSide;
    CategoryFeed Feed{};
};

}  // namespace drilldown
