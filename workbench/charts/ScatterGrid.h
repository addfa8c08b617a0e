#pragma once

#include <QRectF>
#include <vector>

#include "workbench/charts/AxisLabels.h"
#include "workbench/charts/ChartPart.h"
#include "workbench/charts/NumberAxis.h"
#include "workbench/documents/GraphDocument.h"

namespace quillara {

/// Where the cells of a scatterplot matrix lie in the picture, and the numbers of its outer axes.
class ScatterGrid {
  public:
    /// Finds room for the labels of the axes within a place. Variables may be none.
    ScatterGrid(const std::vector<ScatterVariable>& variables, const QRectF& place, const ChartStyle& style);

    [[nodiscard]] QRectF Cell(std::size_t row, std::size_t column) const;
    /// A value of a variable in pixels, across a column or up a row.
    [[nodiscard]] double Across(std::size_t column, double value) const;
    [[nodiscard]] double Up(std::size_t row, double value) const;
    /// The range that the cells of a variable show.
    [[nodiscard]] NumberRange RangeOf(std::size_t variable) const { return Ranges[variable]; }
    [[nodiscard]] const std::vector<PlacedText>& Labels() const { return PlacedLabels; }
    [[nodiscard]] const std::vector<QLineF>& Ticks() const { return TickLines; }

  private:
    [[nodiscard]] std::vector<AxisSpot> SpotsAcross(std::size_t column, const TextStyle& style) const;
    [[nodiscard]] std::vector<AxisSpot> SpotsUp(std::size_t row, const TextStyle& style) const;
    double LabelRows(const TextStyle& style, double depth);
    double LabelColumns(const TextStyle& style, double depth);

    std::vector<NumberRange> Ranges;
    QRectF Area;
    std::vector<PlacedText> PlacedLabels;
    std::vector<QLineF> TickLines;
};

}  // namespace quillara
