#include "workbench/charts/PieSlices.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartColors.h"

namespace quillara {
namespace {

/// The call ends with a point that stands for no category.
bool IsCategory(const GraphPoint& point) {
    return point.X > 0.0 && std::isfinite(point.Y);
}

/// The least count that is kept, and how many of the categories with exactly this count.
struct Limit {
    double Count = 0.0;
    std::size_t Equals = 0;
};

Limit LimitOf(const std::vector<PieSlice>& categories, std::size_t most) {
    std::vector<double> counts(categories.size());
    std::ranges::transform(categories, counts.begin(), &PieSlice::Count);
    std::ranges::sort(counts, std::greater<>());
    const double least = counts[most - 1];
    const auto larger =
        static_cast<std::size_t>(std::ranges::count_if(counts, [&](double one) { return one > least; }));
    return {least, most - larger};
}

PieSlice Together(const std::vector<PieSlice>& slices) {
    PieSlice other;
    other.Name = QStringLiteral("Other (%1 categories)").arg(slices.size());
    other.Count = TotalOf(slices);
    other.CountText = CountText(other.Count);
    return other;
}

}  // namespace

std::vector<PieSlice> SlicesOf(const PieChart& chart) {
    std::vector<PieSlice> slices;
    if (chart.Series.empty()) {
        return slices;
    }
    const GraphSeries& series = chart.Series.front();
    std::vector<double> counts(series.Points.size());
    std::ranges::transform(series.Points, counts.begin(), &GraphPoint::Y);
    const std::vector<QString> texts = CountTexts(counts);
    for (std::size_t i = 0; i < series.Points.size(); ++i) {
        const GraphPoint& point = series.Points[i];
        if (IsCategory(point) && point.Y > 0.0) {
            slices.push_back({Shown(point.Name), point.Y, texts[i], QColor(), point.IsMissing, static_cast<int>(i)});
        }
    }
    return slices;
}

std::vector<PieSlice> Gathered(const std::vector<PieSlice>& slices, std::size_t most) {
    std::vector<PieSlice> categories;
    std::vector<PieSlice> missing;
    std::ranges::partition_copy(slices, std::back_inserter(missing), std::back_inserter(categories),
                                &PieSlice::IsMissing);
    if (categories.size() <= most + 1) {
        return slices;
    }
    Limit limit = LimitOf(categories, most);
    std::vector<PieSlice> kept;
    std::vector<PieSlice> rest;
    for (const PieSlice& slice : categories) {
        const bool isEqual = slice.Count == limit.Count && limit.Equals > 0;
        limit.Equals -= isEqual ? 1 : 0;
        (isEqual || slice.Count > limit.Count ? kept : rest).push_back(slice);
    }
    kept.push_back(Together(rest));
    kept.insert(kept.end(), missing.begin(), missing.end());
    return kept;
}

void Paint(std::vector<PieSlice>& slices, const ChartStyle& style) {
    int number = 0;
    for (PieSlice& slice : slices) {
        slice.Color = slice.Point < 0 || slice.IsMissing ? style.OtherFill : SliceColor(number++, style.IsDark);
    }
}

double TotalOf(const std::vector<PieSlice>& slices) {
    return std::accumulate(slices.begin(), slices.end(), 0.0,
                           [](double sum, const PieSlice& slice) { return sum + slice.Count; });
}

}  // namespace quillara
