#pragma once

#include <cstddef>

#include "engine/TallyRows.h"
#include "engine/WideRows.h"

namespace drilldown {

/// Values gathered at a time at most, so that they stay in the first cache.
inline constexpr std::size_t GatheredValuesLimit = 256;
/// Room for them.
inline constexpr std::size_t GatheredValuesRoom = GatheredValuesLimit + WideSlack;

/// The same rows, told by the first where none between is left out. There is at least one.
[[nodiscard]] WeightedRows WithoutList(const WeightedRows& rows);

/// The values of some rows without gaps: where they stand so in the table, else in `room`, which has a place
/// for each and for WideSlack more.
[[nodiscard]] const double* GatherValues(const TableColumn& column, const WeightedRows& rows, double* room);

}  // namespace drilldown
