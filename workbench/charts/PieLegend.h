#pragma once

#include <vector>

#include "workbench/charts/ChartPart.h"
#include "workbench/charts/PieSlices.h"

namespace quillara {

/// Which part of a place a legend of slices takes, and how.
struct PieLegendPlan {
    int Columns = 1;
    int Rows = 1;
    double NameWidth = 0.0;  ///< pixels
    double CountWidth = 0.0;
    double PercentWidth = 0.0;
    double ColumnWidth = 0.0;

    [[nodiscard]] double Width() const { return Columns * ColumnWidth; }
    [[nodiscard]] std::size_t Capacity() const { return static_cast<std::size_t>(Columns * Rows); }
};

/// A legend no wider than half the place. It may have room for fewer slices than there are.
[[nodiscard]] PieLegendPlan PlanLegend(const std::vector<PieSlice>& slices, const QSizeF& place,
                                       const ChartStyle& style);

struct PieLegend {
    std::vector<PlacedText> Texts;
    std::vector<ChartMark> Swatches;
};
/// The legend of at most Capacity() slices: swatch, name, count and percent, at the right end of the place.
[[nodiscard]] PieLegend LayOutLegend(const std::vector<PieSlice>& slices, const PieLegendPlan& plan,
                                     const QRectF& place, const ChartStyle& style);

}  // namespace quillara
