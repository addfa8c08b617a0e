#pragma once

#include <cstddef>

#include "workbench/documents/GraphDocument.h"
#include "workbench/plots/CaseColumns.h"

namespace quillara {

/// The 3D histogram of two variables, by their indexes in the table, over the cases in which both are valid. A variable
/// with labels or of few distinct values has a place for each value that occurs, in ascending order; any other has
/// about ten neat intervals (a, b]. Of more than 200 texts the rarer ones share a last place; more than 200 labelled
/// numbers have intervals.
[[nodiscard]] Histogram3DPlot Histogram3DOf(const DataTable& table, std::size_t x, std::size_t y, const PlotRows& rows);

}  // namespace quillara
