#pragma once

#include <QRectF>
#include <vector>

#include "workbench/charts/AxisLabels.h"
#include "workbench/charts/ChartPart.h"
#include "workbench/charts/NumberAxis.h"
#include "workbench/documents/GraphDocument.h"

namespace quillara {

/// A variable of a matrix as its row and its column show it.
struct ScatterSide {
    double Min = 0.0;
    double Max = 0.0;
    bool HasCases = false;
    double LowPlace = 0.0;  ///< the places that are shown, see ScatterVariable::Places: those of its cases
    double HighPlace = 1.0;  ///< and of the bars of its histogram
    ValueKind Kind = ValueKind::Number;

    /// The place of a value, 0 at Min and 1 at Max; 0.5 for a constant.
    [[nodiscard]] double PlaceOf(double value) const;
    [[nodiscard]] double ValueAt(double place) const;
    /// Whether a place is among those that are shown.
    [[nodiscard]] bool Shows(double place) const { return LowPlace <= place && place <= HighPlace; }
};

/// Where the cells of a scatterplot matrix lie in the picture, and the numbers of its outer axes.
class ScatterGrid {
  public:
    /// Finds room for the labels of the axes within a place. Variables may be none. `shown` are the values that are
    /// shown of each variable; empty: all.
    ScatterGrid(const ScatterMatrix& matrix, const Subject& about, const QRectF& place, const ChartStyle& style,
                const std::vector<NumberRange>& shown = {});

    [[nodiscard]] QRectF Cell(std::size_t row, std::size_t column) const;
    /// Height of a strip at the top of the cells that is kept free of points, for a line of text; 0: they are too
    /// small.
    [[nodiscard]] double HeadingHeight() const;
    [[nodiscard]] TextStyle HeadingStyle() const;
    /// Diameter of a point.
    [[nodiscard]] double PointSize() const;
    /// A place of a variable in pixels, across a column or up a row. Points of its cases lie wholly within the cell and
    /// below its heading.
    [[nodiscard]] double Across(std::size_t column, double place) const;
    [[nodiscard]] double Up(std::size_t row, double place) const;
    /// And back.
    [[nodiscard]] double PlaceAcross(std::size_t column, double pixel) const;
    [[nodiscard]] double PlaceUp(std::size_t row, double pixel) const;
    [[nodiscard]] const ScatterSide& Side(std::size_t variable) const { return Sides[variable]; }
    [[nodiscard]] const std::vector<PlacedText>& Labels() const { return PlacedLabels; }
    [[nodiscard]] const std::vector<QLineF>& Ticks() const { return TickLines; }

  private:
    [[nodiscard]] std::vector<AxisSpot> SpotsAcross(std::size_t column, const TextStyle& style) const;
    [[nodiscard]] std::vector<AxisSpot> SpotsUp(std::size_t row, const TextStyle& style) const;
    [[nodiscard]] double Rim(double length) const;
    double LabelRows(const TextStyle& style, double depth);
    double LabelColumns(const TextStyle& style, double depth);

    std::vector<ScatterSide> Sides;
    ChartStyle Style;
    QRectF Area;
    std::vector<PlacedText> PlacedLabels;
    std::vector<QLineF> TickLines;
};

}  // namespace quillara
