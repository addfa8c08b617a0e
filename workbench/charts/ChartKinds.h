#pragma once

#include <memory>

#include "workbench/charts/ChartPart.h"
#include "workbench/documents/GraphDocument.h"

namespace quillara {

/// What a chart is made from. The document is shared with the elements, which lay themselves out again and again.
struct ChartSheet {
    QCustomPlot* Plot = nullptr;
    std::shared_ptr<const GraphDocument> Document;
    ChartStyle Style;
};

/// The elements of a chart below its title; the plot's layout takes them over.
struct ChartBody {
    QCPLayoutElement* Plot = nullptr;
    QCPLayoutElement* Key = nullptr;  ///< a legend below the plot, or none
};

// One chart kind each, in a file of its name.
[[nodiscard]] ChartBody HistogramChart(const ChartSheet& sheet);
[[nodiscard]] ChartBody StackedChart(const ChartSheet& sheet);
[[nodiscard]] ChartBody PieChart(const ChartSheet& sheet);
[[nodiscard]] ChartBody BoxChart(const ChartSheet& sheet);
[[nodiscard]] ChartBody ScatterChart(const ChartSheet& sheet);
[[nodiscard]] ChartBody Histogram3DChart(const ChartSheet& sheet);
/// The counts of a 3D histogram as coloured fields, for more categories than bars can be told apart.
[[nodiscard]] ChartBody HeatMapChart(const ChartSheet& sheet);

}  // namespace quillara
