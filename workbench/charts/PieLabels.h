#pragma once

#include <QLineF>
#include <vector>

#include "workbench/charts/ChartPart.h"

namespace quillara {

/// A slice that wants a label, at the middle of its arc.
struct PieLabelWish {
    QStringList Lines;
    double Angle = 0.0;  ///< radians clockwise from the right
    double Weight = 0.0;  ///< where there is no room for all, the lighter ones get none
};

struct PieCircle {
    QPointF Centre;
    double Radius = 0.0;
};

struct PieLabels {
    std::vector<PlacedText> Texts;
    std::vector<QPolygonF> Leaders;  ///< lines from the slices to the labels
    std::size_t LeftOut = 0;
};

/// Labels in a column on each side of a circle, at the heights of their slices as far as they can be without overlap.
/// `place` bounds them; texts wider than the room beside the circle end in an ellipsis.
[[nodiscard]] PieLabels LayOutPieLabels(const std::vector<PieLabelWish>& wishes, const PieCircle& circle,
                                        const QRectF& place, const ChartStyle& style);

/// Pixels between the circle and its labels.
[[nodiscard]] double PieLabelDistance();

}  // namespace quillara
