#include "workbench/charts/PieSlices.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartColors.h"

namespace quillara {
namespace {

/// The call ends with a point that stands for no category.
bool IsCategory(const GraphPoint& point) {
    return point.X > 0.0 && std::isfinite(point.Y);
}

PieSlice SliceOf(const GraphSeries& series, std::size_t point) {
    PieSlice slice;
    slice.Name = Shown(series.Points[point].Name);
    slice.Count = std::max(0.0, series.Points[point].Y);
    slice.IsMissing = series.Points[point].IsMissing;
    slice.Point = static_cast<int>(point);
    return slice;
}

void Describe(std::vector<PieSlice>& slices, const GraphSeries& series, const ChartStyle& style) {
    const std::vector<QString> counts = CountTexts(series.Points);
    for (std::size_t i = 0; i < slices.size(); ++i) {
        slices[i].CountText = counts[static_cast<std::size_t>(slices[i].Point)];
        slices[i].Color = SliceColor(static_cast<int>(i), style.IsDark);
    }
    // The last colour may meet the first where the circle closes.
    if (slices.size() > 2 && slices.back().Color == slices.front().Color) {
        slices.back().Color = SliceColor(static_cast<int>(slices.size()) / 2, style.IsDark);
    }
}

}  // namespace

std::vector<PieSlice> SlicesOf(const PieChart& chart, const ChartStyle& style) {
    std::vector<PieSlice> slices;
    if (chart.Series.empty()) {
        return slices;
    }
    const GraphSeries& series = chart.Series.front();
    for (std::size_t point = 0; point < series.Points.size(); ++point) {
        if (IsCategory(series.Points[point])) {
            slices.push_back(SliceOf(series, point));
        }
    }
    Describe(slices, series, style);
    return slices;
}

std::vector<PieSlice> Gathered(const std::vector<PieSlice>& slices, std::size_t most, const ChartStyle& style) {
    if (slices.size() <= most) {
        return slices;
    }
    std::vector<double> counts(slices.size());
    std::ranges::transform(slices, counts.begin(), &PieSlice::Count);
    std::ranges::sort(counts, std::greater<>());
    const double least = counts[most - 1];

    std::vector<PieSlice> kept;
    std::size_t gathered = 0;
    double rest = 0.0;
    for (const PieSlice& slice : slices) {
        if (kept.size() + 1 < most && (slice.Count > least || slice.IsMissing)) {
            kept.push_back(slice);
        } else {
            ++gathered;
            rest += slice.Count;
        }
    }
    const QString name = QStringLiteral("Other (%1 categories)").arg(gathered);
    kept.push_back({name, rest, CountText(rest), style.Grid, false, -1});
    return kept;
}

double TotalOf(const std::vector<PieSlice>& slices) {
    return std::accumulate(slices.begin(), slices.end(), 0.0,
                           [](double sum, const PieSlice& slice) { return sum + slice.Count; });
}

}  // namespace quillara
