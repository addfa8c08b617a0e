#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "workbench/documents/GraphDocument.h"
#include "workbench/plots/CaseColumns.h"

namespace quillara {

/// What a scatterplot matrix is made of.
struct ScatterRequest {
    const DataTable& Table;
    std::vector<std::size_t> Variables;  ///< indexes in the table
    const PlotRows& Rows;
    std::uint16_t Flags = 0;  ///< see ScatterMatrix
    std::function<bool()> Cancelled;  ///< asked between the rows of cells; empty: never
    std::string UnusedWeight{};  ///< see ScatterMatrix
    PartRunner Runner{};
};

/// The scatterplot matrix of a request. A cell holds the cases in which both of its variables are valid; each counts
/// once, also in the correlation and the line, whatever its weight.
/// Throws Interrupted when cancelled.
[[nodiscard]] ScatterMatrix ScatterMatrixOf(const ScatterRequest& request);

}  // namespace quillara
