#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "workbench/command/ChartOptions.h"
#include "workbench/command/NamedVariables.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// Numbers of review variables: 3D histograms of each of the first with each of the second.
struct PairedLists {
    std::vector<short> Horizontal;
    std::vector<short> Vertical;
};

/// The pairs that --hist3d names. Throws DataError for a name that isn't there or is no review variable.
[[nodiscard]] PairedLists NamedPairs(const DataTable& table, const VariableLists& reviews, const VariablePairs& names);

/// Each review variable with each one behind it, categorical ones first: the pairs that are shown when none are named.
struct AllPairs {
    static constexpr std::size_t Most = 30;  ///< more aren't shown unless they are named

    std::vector<PairedLists> Lists;  ///< the first pairs, at most so many in all
    std::size_t Count = 0;  ///< all there are
};
[[nodiscard]] AllPairs PairsOf(const VariableLists& reviews);

}  // namespace quillara
