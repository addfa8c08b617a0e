#pragma once

#include <QColor>
#include <QLineF>
#include <QPointF>
#include <QRect>
#include <cstdint>
#include <vector>

class QPainter;

namespace quillara {

/// How the points of a cell are painted.
struct PointLook {
    QColor Color;
    double Diameter = 3.0;  ///< pixels
};

/// Points as shapes of their own, for vector files.
void DrawPoints(QPainter& painter, const std::vector<QPointF>& points, const PointLook& look);

/// Points as a picture of the pixels of a cell; what would lie outside isn't painted.
void DrawPointsOnPixels(QPainter& painter, const std::vector<QPointF>& points, const QRect& pixels,
                        const PointLook& look);

/// In which of the pixels along a side of a cell each case lies, from 0; as many as there are: it isn't valid.
using PixelPlaces = std::vector<std::uint16_t>;

/// The pixel of each place (see ScatterVariable::Places) when place 0 lies at `first` and place 1 at `last`.
[[nodiscard]] PixelPlaces PixelPlacesOf(const std::vector<float>& places, double first, double last, int pixels);

/// How many cases lie in each pixel of a cell, row by row from above.
struct PixelCounts {
    int Columns = 0;
    int Rows = 0;
    std::vector<std::uint32_t> Counts;

    [[nodiscard]] std::uint32_t At(int column, int row) const {
        return Counts[static_cast<std::size_t>(row) * static_cast<std::size_t>(Columns) +
                      static_cast<std::size_t>(column)];
    }
};

/// The cases that are valid on both sides; each is counted.
[[nodiscard]] PixelCounts CountedCases(const PixelPlaces& x, int columns, const PixelPlaces& y, int rows);

/// Paints each pixel that has cases, the darker the more; one without neighbours is painted two pixels wide and high.
void DrawCounts(QPainter& painter, const PixelCounts& counts, QPoint topLeft, bool isDark);

/// The part of a line that lies between two heights, in pixels; none when it lies beyond them. It runs from left to
/// right.
[[nodiscard]] QLineF LineWithin(const QLineF& line, double top, double bottom);

}  // namespace quillara
