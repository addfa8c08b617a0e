#pragma once

#include <string>

#include "workbench/documents/GraphDocument.h"

namespace quillara {

/// histogram, pie, stacked, box, scatter, hist3d or mosaic.
[[nodiscard]] std::string ChartName(const GraphDocument& graph);

/// The members of a graph document behind its origin and its kind of chart, as docs/json.md documents them.
[[nodiscard]] std::string GraphMembers(const GraphDocument& graph);

}  // namespace quillara
