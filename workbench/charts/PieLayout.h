#pragma once

#include <numbers>
#include <vector>

#include "workbench/charts/PieLabels.h"
#include "workbench/charts/PieSlices.h"

namespace quillara {

constexpr double FullCircle = 2 * std::numbers::pi;  ///< radians

/// A pie as it stands in its place.
struct PieLayout {
    std::vector<PieSlice> Slices;  ///< with their colours
    PieCircle Circle;
    double Start = 0.0;  ///< where the first slice begins: radians clockwise from the right
    PieLabels Labels;  ///< one for each slice, with its name, as long as there are no faults
};

/// The largest categories as slices, each with its name, at most a dozen and as many as have their labels without one
/// leader crossing another.
[[nodiscard]] PieLayout LayOutPie(const std::vector<PieSlice>& categories, const QRectF& place,
                                  const ChartStyle& style);

}  // namespace quillara
