#pragma once

#include <vector>

#include "workbench/charts/ChartTexts.h"

namespace quillara {

/// A label and the place on the axis that it belongs to, in pixels along the axis.
struct AxisSpot {
    double At = 0.0;
    QString Text;
    bool IsKept = false;  ///< stays when labels are thinned
    double Extent = 0.0;  ///< see AxisMark
};

/// The room that labels may take, in pixels: from Low to High along the axis, and so far away from it.
struct LabelRoom {
    double Low = 0.0;
    double High = 0.0;
    double Depth = 0.0;
    Qt::TextElideMode Cut = Qt::ElideRight;  ///< where a text is cut that is longer than the room
};

struct AxisLabels {
    std::vector<PlacedText> Texts;
    std::vector<double> Ticks;  ///< where the labels that are shown belong
    double Depth = 0.0;  ///< pixels that the texts take away from the axis
};

/// Labels of a horizontal axis, below the line y = 0. No two overlap and none leaves the room: where one line isn't
/// enough they are wrapped, else slanted, else upright; where even that is too dense only every so-many-th is shown.
/// Intervals are thinned before they are cut. A text longer than the room ends in an ellipsis; where two would be alike
/// then, all are cut in the middle. A last label that is to be kept is always among those shown. The spots stand in
/// rising order. Of spots with extents those of the largest are shown.
[[nodiscard]] AxisLabels LabelsBelow(const std::vector<AxisSpot>& spots, const LabelRoom& room, const TextStyle& style);

/// Labels of a vertical axis, level and ending left of the line x = 0; thinned in the same way. Any order.
[[nodiscard]] AxisLabels LabelsBeside(const std::vector<AxisSpot>& spots, const LabelRoom& room,
                                      const TextStyle& style);

/// Those of the largest extents that stand so far apart, in their order.
[[nodiscard]] std::vector<AxisSpot> LargestApart(const std::vector<AxisSpot>& spots, double distance);

/// Which of `count` labels stay when every `stride`-th does.
[[nodiscard]] std::vector<AxisSpot> Thinned(const std::vector<AxisSpot>& spots, std::size_t stride);

}  // namespace quillara
