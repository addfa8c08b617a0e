#include "workbench/charts/ObliqueView.h"

#include <algorithm>

namespace quillara {
namespace {

// Shares of the place that the depth takes: few rows need less of it.
constexpr double MostDepthAcross = 0.26;
constexpr double MostDepthUp = 0.45;
constexpr double LeastDepth = 0.25;  // of the most
constexpr double RowsForMost = 10.0;

}  // namespace

ObliqueView::ObliqueView(const Extent& space, const QRectF& place) : Whole(space), Origin(place.bottomLeft()) {
    const double depth = std::clamp(Whole.Rows / RowsForMost, LeastDepth, 1.0);
    const double across = place.width() * MostDepthAcross * depth;
    const double up = place.height() * MostDepthUp * depth;
    PerRow = QPointF(across, -up) / Whole.Rows;
    PerColumn = (place.width() - across) / Whole.Columns;
    PerUnit = (place.height() - up) / Whole.Height;
}

QPointF ObliqueView::Seen(double x, double y, double z) const {
    return Origin + y * PerRow + QPointF(x * PerColumn, -z * PerUnit);
}

}  // namespace quillara
