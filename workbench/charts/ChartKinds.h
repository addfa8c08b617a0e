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

// One kind of graph each, in a file of its own; the content is that of the sheet's document.
[[nodiscard]] ChartBody BodyOf(const ChartSheet& sheet, const Histogram& chart);
[[nodiscard]] ChartBody BodyOf(const ChartSheet& sheet, const StackedPlot& chart);
[[nodiscard]] ChartBody BodyOf(const ChartSheet& sheet, const PieChart& chart);
[[nodiscard]] ChartBody BodyOf(const ChartSheet& sheet, const BoxPlot& plot);
[[nodiscard]] ChartBody BodyOf(const ChartSheet& sheet, const ScatterMatrix& matrix);
[[nodiscard]] ChartBody BodyOf(const ChartSheet& sheet, const Histogram3DPlot& plot);
[[nodiscard]] ChartBody BodyOf(const ChartSheet& sheet, const MosaicPlot& plot);
/// The counts of a 3D histogram as coloured fields, for more categories than bars can be told apart.
[[nodiscard]] ChartBody HeatMapOf(const ChartSheet& sheet, const Histogram3DPlot& plot);

}  // namespace quillara
