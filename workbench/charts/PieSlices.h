#pragma once

#include <QString>
#include <vector>

#include "workbench/charts/ChartStyle.h"
#include "workbench/documents/GraphDocument.h"

namespace quillara {

struct PieSlice {
    QString Name;
    double Count = 0.0;
    QString CountText;
    QColor Color;
    bool IsMissing = false;
    int Point = -1;  ///< of the series; -1: several categories together
};

/// The slices of a pie, in the order of the categories, those without a case included.
[[nodiscard]] std::vector<PieSlice> SlicesOf(const PieChart& chart, const ChartStyle& style);

/// The same with the smallest slices gathered into a last one, so that `most` (2 or more) remain.
[[nodiscard]] std::vector<PieSlice> Gathered(const std::vector<PieSlice>& slices, std::size_t most,
                                             const ChartStyle& style);

[[nodiscard]] double TotalOf(const std::vector<PieSlice>& slices);

}  // namespace quillara
