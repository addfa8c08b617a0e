#pragma once

#include <vector>

#include "workbench/charts/NumberAxis.h"
#include "workbench/documents/GraphDocument.h"

namespace quillara {

/// Boxes that share an axis, by their places in the plot, ascending.
struct BoxPanel {
    std::vector<std::size_t> Boxes;
    ValueKind Kind = ValueKind::Number;
    double Unit = 1.0;  ///< see AreaAxis
    NumberRange Range;  ///< of the axis, in units
};

/// Whether a box has something to draw.
[[nodiscard]] bool IsDrawn(const BoxStatistics& box);

/// The panels of a plot, in the order of their first boxes. Boxes of one kind of values stand together as long as the
/// range of their panel is no more than ten times that of each of them; a box of no
/// length counts as long as its distance from 0. Boxes without cases go to the first panel. Those of groups all stand
/// together.
[[nodiscard]] std::vector<BoxPanel> PanelsOf(const BoxPlot& plot, const Subject& about);

}  // namespace quillara
