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

/// In which of the pixels of its column and its row each case of a variable lies: the places are cut where either has a
/// bound, and a case is in one of these steps.
struct PixelSteps {
    std::vector<std::uint16_t> Cases;  ///< the step of each case, from 0; as many as there are: it isn't valid
    std::vector<std::uint16_t> Across;  ///< the pixel of each step from the left of the column
    std::vector<std::uint16_t> Up;  ///< and from the top of the row
    int Columns = 0;  ///< pixels of the column
    int Rows = 0;  ///< and of the row
};

/// Where places 0 and 1 (see ScatterVariable::Places) lie along a side of so many pixels.
struct PixelSide {
    double First = 0.0;
    double Last = 0.0;
    int Pixels = 0;
};

/// Places rise across a column from left to right, and up a row from below.
[[nodiscard]] PixelSteps PixelStepsOf(const std::vector<float>& places, const PixelSide& across, const PixelSide& up);

/// How many cases lie in each pixel of a cell, row by row from above.
struct PixelCounts {
    int Columns = 0;
    int Rows = 0;
    std::vector<std::uint32_t> Counts;

    [[nodiscard]] std::uint32_t At(int column, int row) const { return Counts[PlaceOf(column, row)]; }
    [[nodiscard]] std::uint32_t& At(int column, int row) { return Counts[PlaceOf(column, row)]; }

  private:
    [[nodiscard]] std::size_t PlaceOf(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(Columns) + static_cast<std::size_t>(column);
    }
};

/// The two cells of a pair of variables: the second against the first, and the first against the second.
struct CellCounts {
    PixelCounts SecondUp;
    PixelCounts FirstUp;
};

/// Counts the cases that are valid on both sides, once for both cells.
[[nodiscard]] CellCounts CountedCases(const PixelSteps& first, const PixelSteps& second);

/// Paints each pixel that has cases, the darker the more; one without neighbours is painted two pixels wide and high.
void DrawCounts(QPainter& painter, const PixelCounts& counts, QPoint topLeft, bool isDark);

/// The part of a line that lies between two heights, in pixels; none when it lies beyond them. It runs from left to
/// right.
[[nodiscard]] QLineF LineWithin(const QLineF& line, double top, double bottom);

}  // namespace quillara
