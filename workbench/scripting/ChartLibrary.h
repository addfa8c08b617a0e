#pragma once

#include <string>

#include "workbench/charts/ChartFile.h"

namespace quillara {

/// Paints a graph as PaintedChart does, with the chart library beside the workbench's core, which is opened by the
/// first call: a program that paints nothing needs no painter. Throws DataError when the library isn't there.
[[nodiscard]] std::string PaintChart(const GraphDocument& graph, const ChartLook& look, ChartFormat format);

}  // namespace quillara
