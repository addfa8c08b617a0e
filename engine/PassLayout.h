#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "engine/DrillDown.h"
#include "engine/DrillFilter.h"
#include "engine/PassRules.h"
#include "platform/OrderedBits.h"

namespace drilldown {

/// Whether some record takes the values of more than one of the variables.
[[nodiscard]] bool HasSharedTargets(std::span<const PassVariable> variables);

/// Which columns a pass reads and who uses them. Made once, before the first case.
struct PassLayout {
    PassLayout(CDrillDown& analysis, const PassRules& rules, std::span<const PassVariable> variables,
               const CompiledFilter& filter);

    /// The variables of one list of the pass: where they stand, and how their casewise test goes.
    struct Side {
        std::size_t First = 0;  ///< place of the first in the pass
        std::size_t Count = 0;
        bool Casewise = false;  ///< cases with missing data are deleted
        std::vector<std::size_t> CasewiseColumns;  ///< columns of the variables that are tested for it
    };

    std::vector<std::int16_t> Needed;  ///< variables that are read, each once; their place is their column
    std::vector<NearlyEqualRange> Missing;  ///< their missing codes
    std::vector<std::size_t> Columns;  ///< column of each variable of the pass
    std::vector<std::size_t> FilterColumns;  ///< column of each condition
    std::array<Side, PassSides> Sides;
    bool SharedTargets = false;  ///< some record takes the values of more than one variable of the pass

  private:
    static constexpr auto NoColumn = static_cast<std::size_t>(-1);

    std::size_t ColumnOf(CDrillDown& analysis, std::int16_t var);
    void PlaceSides(std::span<const PassVariable> variables);
    void CollectCasewise(CDrillDown& analysis, const PassRules& rules);

    std::vector<std::size_t> ColumnsByVariable;
};

}  // namespace drilldown
