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
    QColor Color;  ///< of a slice that isn't missing data; no two slices of a pie share one
    bool IsMissing = false;
    int Point = -1;  ///< of the series; -1: several categories together
};

/// The categories of a pie that have cases, in their order.
[[nodiscard]] std::vector<PieSlice> SlicesOf(const PieChart& chart);

/// At most `most` of the categories, the largest (of equal ones the first), in their order; behind them a slice named
/// Other for all the rest, if it is more than one, and the missing data, which always keep their own.
[[nodiscard]] std::vector<PieSlice> Gathered(const std::vector<PieSlice>& slices, std::size_t most);

/// Gives each slice its colour.
void Paint(std::vector<PieSlice>& slices, const ChartStyle& style);

[[nodiscard]] double TotalOf(const std::vector<PieSlice>& slices);

}  // namespace quillara
