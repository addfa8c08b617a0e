#include "workbench/charts/StackedLayers.h"

#include <algorithm>
#include <cmath>

#include "workbench/charts/ChartTexts.h"

namespace quillara {
namespace {

constexpr double LeastLayer = 1e-6;  // percent; thinner ones are what rounding has left

/// The height of a line between layers. A series that the column doesn't reach has its point at x = 0.
double HeightOf(const StackedPlot& chart, std::size_t series, std::size_t column) {
    if (series >= chart.Series.size() || column >= chart.Series[series].Points.size()) {
        return 0.0;
    }
    const GraphPoint& point = chart.Series[series].Points[column];
    return point.X > 0.0 && std::isfinite(point.Y) ? std::max(0.0, point.Y) : 0.0;
}

/// The lower layer becomes part of the one above it.
void Join(StackedLayer& upper, const StackedLayer& lower) {
    upper.Bottom = lower.Bottom;
    upper.First = lower.First;
    upper.Categories += lower.Categories;
}

void SetShades(std::vector<StackedLayer>& layers) {
    const auto categories = std::ranges::count(layers, false, &StackedLayer::IsMissing);
    double place = 0.0;
    for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
        if (!layer->IsMissing) {
            layer->Shade = categories > 1 ? place++ / static_cast<double>(categories - 1) : 0.0;
        }
    }
}

}  // namespace

std::vector<StackedLayer> LayersOf(const StackedPlot& chart, std::size_t column, double least) {
    std::vector<StackedLayer> layers;
    for (std::size_t series = 0; series < chart.Series.size(); ++series) {
        StackedLayer layer;
        layer.Top = HeightOf(chart, series, column);
        layer.Bottom = HeightOf(chart, series + 1, column);
        if (layer.Share() < LeastLayer) {
            continue;
        }
        const GraphPoint& point = chart.Series[series].Points[column];
        layer.First = layer.Last = Shown(point.Name);
        layer.IsMissing = point.IsMissing;
        layer.Series = static_cast<int>(series);
        const bool joins =
            !layers.empty() && !layers.back().IsMissing && layers.back().Share() < least && layer.Share() < least;
        if (joins) {
            Join(layers.back(), layer);
        } else {
            layers.push_back(layer);
        }
    }
    SetShades(layers);
    return layers;
}

}  // namespace quillara
