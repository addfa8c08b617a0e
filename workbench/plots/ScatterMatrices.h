#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "workbench/documents/GraphDocument.h"
#include "workbench/plots/CaseColumns.h"

namespace quillara {

/// More points than this in a cell are counted on a grid; fewer when there are many cells.
inline constexpr std::size_t MostScatterPoints = 20'000;
/// Places of that grid along one side; fewer when there are many cells.
inline constexpr int DensityGridSide = 128;

/// What a scatterplot matrix is made of.
struct ScatterRequest {
    const DataTable& Table;
    std::vector<std::size_t> Variables;  ///< indexes in the table
    const PlotRows& Rows;
    std::uint16_t Flags = 0;  ///< see ScatterMatrix
    std::function<bool()> Cancelled;  ///< asked between the cells; empty: never
};

/// The scatterplot matrix of a request. A cell holds the cases in which both of its variables are valid.
/// Throws Interrupted when cancelled.
[[nodiscard]] ScatterMatrix ScatterMatrixOf(const ScatterRequest& request);

}  // namespace quillara
