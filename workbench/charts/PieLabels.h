#pragma once

#include <vector>

#include "workbench/charts/ChartPart.h"

namespace quillara {

/// A slice that wants a label, at the middle of its arc.
struct PieLabelWish {
    QStringList Lines;
    double Angle = 0.0;  ///< radians clockwise from the right
    QString Whole;  ///< the full text when a line was cut, else empty
};

struct PieCircle {
    QPointF Centre;
    double Radius = 0.0;
};

struct PieLabels {
    std::vector<PlacedText> Texts;
    std::vector<QPolygonF> Leaders;  ///< lines from the slices to the labels
    std::size_t Faults = 0;  ///< leaders that cross each other or the circle, and labels without room
};

/// Labels in a column on each side of a circle, as near to the heights of their slices as they can be without overlap.
/// `place` bounds them; texts wider than the room beside the circle end in an ellipsis. A label has all its lines, or
/// none where there is no room for it.
[[nodiscard]] PieLabels LayOutPieLabels(const std::vector<PieLabelWish>& wishes, const PieCircle& circle,
                                        const QRectF& place, const TextStyle& style);

/// Pixels between the circle and its labels.
[[nodiscard]] double PieLabelDistance();

}  // namespace quillara
