#pragma once

#include <QPointF>
#include <QRectF>

namespace quillara {

/// An oblique view of a space with columns to the right, rows to the back (right and upwards) and heights. The front
/// stays undistorted, so heights can be compared and labels stay level.
class ObliqueView {
  public:
    struct Extent {
        double Columns = 1.0;
        double Rows = 1.0;
        double Height = 1.0;
    };

    /// The whole space fills a place in pixels.
    ObliqueView(const Extent& space, const QRectF& place);

    /// A point of the space in pixels; x in columns and y in rows, both from 0, z from 0 up.
    [[nodiscard]] QPointF Seen(double x, double y, double z) const;
    [[nodiscard]] const Extent& Space() const { return Whole; }

  private:
    Extent Whole;
    QPointF Origin;
    QPointF PerRow;
    double PerColumn = 1.0;
    double PerUnit = 1.0;
};

}  // namespace quillara
