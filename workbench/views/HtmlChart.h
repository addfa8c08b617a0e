#pragma once

#include <string>

#include "workbench/views/DocumentViews.h"

namespace quillara {

/// A graph in HTML as it is painted, with its numbers to be opened below it unless it stands beside the table that has
/// them. Without a painter it is its numbers.
[[nodiscard]] std::string HtmlChart(const GraphDocument& graph, const std::string& anchor, const GraphPainter& paint,
                                    bool isBesideTable);

}  // namespace quillara
