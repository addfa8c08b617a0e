#pragma once

#include "workbench/documents/GraphDocument.h"
#include "workbench/statistics/CrossTable.h"
#include "workbench/statistics/StatisticTables.h"

namespace quillara {

/// The box-whisker plot of a variable of numbers with a box for each category of another that has cases, over the cases
/// that have a value of both; what a box shows is what that of BoxPlotOf shows. Throws as ValueGroups, and DataError
/// for a variable of texts.
[[nodiscard]] GraphDocument BoxesByGroup(const StatisticsScope& scope, std::size_t variable, const CrossVariable& by,
                                         BoxType type = BoxType::MedianQuartilesRange);

}  // namespace quillara
