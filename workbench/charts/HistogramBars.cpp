#include "workbench/charts/HistogramBars.h"

#include <algorithm>
#include <cmath>

#include "workbench/charts/ChartTexts.h"

namespace quillara {
namespace {

bool IsDrawn(const GraphPoint& point) {
    return std::isfinite(point.X) && std::isfinite(point.Y);
}

HistogramBar BarOf(const GraphSeries& series, std::size_t point) {
    const GraphPoint& top = series.Points[point];
    HistogramBar bar;
    bar.Left = top.X - series.Width / 2;
    bar.Right = top.X + series.Width / 2;
    bar.Height = top.Y;
    bar.Total = top.Y;
    bar.IsMissing = top.IsMissing;
    bar.Point = static_cast<int>(point);
    bar.Color = series.Color;
    return bar;
}

void Join(HistogramBar& bar, const HistogramBar& next) {
    bar.Right = next.Right;
    bar.Height = std::max(bar.Height, next.Height);
    bar.Total += next.Total;
    ++bar.Categories;
}

void Name(HistogramBar& bar, const GraphSeries& series) {
    const auto first = static_cast<std::size_t>(bar.Point);
    const auto last = first + static_cast<std::size_t>(bar.Categories) - 1;
    bar.First = Shown(series.Points[first].Name);
    bar.Last = last == first ? bar.First : Shown(series.Points[last].Name);
}

}  // namespace

std::size_t CategoriesABar(const Histogram& chart, double pixels) {
    std::size_t most = 0;
    for (const GraphSeries& series : chart.Series) {
        most = std::max(most, series.Points.size());
    }
    const auto room = static_cast<std::size_t>(std::max(1.0, pixels));
    return std::max<std::size_t>(1, (most + room - 1) / room);
}

std::vector<HistogramBar> BarsOf(const Histogram& chart, double pixels) {
    const std::size_t stride = CategoriesABar(chart, pixels);
    std::vector<HistogramBar> bars;
    for (std::size_t number = 0; number < chart.Series.size(); ++number) {
        const GraphSeries& series = chart.Series[number];
        const std::size_t begin = bars.size();
        for (std::size_t point = 0; point < series.Points.size(); ++point) {
            if (!IsDrawn(series.Points[point])) {
                continue;
            }
            HistogramBar bar = BarOf(series, point);
            bar.Series = static_cast<int>(number);
            const bool isNext = bars.size() > begin && !bar.IsMissing &&
                                bars.back().Point + bars.back().Categories == bar.Point &&
                                static_cast<std::size_t>(bars.back().Categories) < stride;
            if (isNext) {
                Join(bars.back(), bar);
            } else {
                bars.push_back(bar);
            }
        }
        std::for_each(bars.begin() + static_cast<std::ptrdiff_t>(begin), bars.end(),
                      [&](HistogramBar& bar) { Name(bar, series); });
    }
    return bars;
}

}  // namespace quillara
