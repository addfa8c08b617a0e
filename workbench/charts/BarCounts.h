#pragma once

#include <vector>

#include "workbench/charts/ChartPart.h"

namespace quillara {

/// A bar that wants its count as a text.
struct CountedBar {
    QRectF Place;  ///< pixels
    QString Count;
    QColor Fill;
    bool IsMissing = false;
};

/// The counts that have room, each above its bar or, where the area ends, inside its top. A text may stand above lower
/// neighbours, but touches no bar and no other text; where not all have room those of higher bars come first. The bars
/// stand from left to right.
[[nodiscard]] std::vector<PlacedText> CountsOfBars(const std::vector<CountedBar>& bars, const QRectF& area,
                                                   const ChartStyle& style);

}  // namespace quillara
