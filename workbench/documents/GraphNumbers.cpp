#include "workbench/documents/GraphNumbers.h"

#include <array>
#include <cmath>
#include <numeric>
#include <utility>

namespace quillara {
namespace {

using AllSeries = std::vector<NamedNumbers>;

/// Numbers at the places 1, 2, ... of their labels.
NamedNumbers InOrder(std::string name, std::vector<std::string> labels, std::vector<double> numbers) {
    std::vector<double> places(numbers.size());
    std::iota(places.begin(), places.end(), 1.0);
    return {std::move(name), std::move(labels), std::move(places), std::move(numbers)};
}

/// Whether a point of a series is shown. Pies and stacked plots have points at x = 0 that stand for nothing.
bool IsShown(const Histogram& /*chart*/, const GraphPoint& point) {
    return !std::isnan(point.X);
}
bool IsShown(const SeriesChart& /*chart*/, const GraphPoint& point) {
    return point.X > 0.0;
}

template <typename Chart>
AllSeries SeriesOfChart(const Chart& chart) {
    AllSeries all;
    for (const GraphSeries& series : chart.Series) {
        NamedNumbers& shown = all.emplace_back(NamedNumbers{series.Name, {}, {}, {}});
        for (const GraphPoint& point : series.Points) {
            if (!IsShown(chart, point)) {
                continue;
            }
            shown.Labels.push_back(point.Name);
            shown.X.push_back(point.X);
            shown.Y.push_back(point.Y);
        }
    }
    return all;
}

AllSeries SeriesIn(const Histogram& chart) {
    return SeriesOfChart(chart);
}
AllSeries SeriesIn(const PieChart& chart) {
    return SeriesOfChart(chart);
}
AllSeries SeriesIn(const StackedPlot& chart) {
    return SeriesOfChart(chart);
}

struct Statistic {
    const char* Name;
    double (*Of)(const BoxStatistics& box);
};

// clang-format off
constexpr std::array<Statistic, 6> Statistics{{
    // Name           Of
    {"Cases",         [](const BoxStatistics& box) { return static_cast<double>(box.Cases); }},
    {"Middle",        [](const BoxStatistics& box) { return box.Middle; }},
    {"Lower box",     [](const BoxStatistics& box) { return box.BoxLow; }},
    {"Upper box",     [](const BoxStatistics& box) { return box.BoxHigh; }},
    {"Lower whisker", [](const BoxStatistics& box) { return box.WhiskerLow; }},
    {"Upper whisker", [](const BoxStatistics& box) { return box.WhiskerHigh; }},
}};
// clang-format on

AllSeries SeriesIn(const BoxPlot& plot) {
    std::vector<std::string> names;
    for (const BoxStatistics& box : plot.Boxes) {
        names.push_back(box.Variable);
    }
    AllSeries all;
    for (const Statistic& statistic : Statistics) {
        std::vector<double> numbers;
        for (const BoxStatistics& box : plot.Boxes) {
            numbers.push_back(statistic.Of(box));
        }
        all.push_back(InOrder(statistic.Name, names, std::move(numbers)));
    }
    return all;
}

AllSeries SeriesIn(const ScatterMatrix& plot) {
    std::vector<std::string> names;
    for (const ScatterVariable& variable : plot.Variables) {
        names.push_back(variable.Name);
    }
    AllSeries all;
    for (std::size_t row = 0; row < names.size(); ++row) {
        std::vector<double> correlations;
        for (std::size_t column = 0; column < names.size(); ++column) {
            correlations.push_back(row == column ? 1.0 : plot.Cells[row * names.size() + column].Correlation);
        }
        all.push_back(InOrder(names[row], names, std::move(correlations)));
    }
    return all;
}

AllSeries SeriesIn(const Histogram3DPlot& plot) {
    const std::size_t width = plot.X.Labels.size();
    AllSeries all;
    for (std::size_t row = 0; row < plot.Y.Labels.size(); ++row) {
        const auto first = plot.Counts.begin() + static_cast<std::ptrdiff_t>(row * width);
        all.push_back(InOrder(plot.Y.Labels[row], plot.X.Labels, {first, first + static_cast<std::ptrdiff_t>(width)}));
    }
    return all;
}

/// A series for each column.
AllSeries SeriesIn(const MosaicPlot& plot) {
    const std::size_t width = plot.Layers.Labels.size();
    AllSeries all;
    for (std::size_t column = 0; column < plot.Columns.Labels.size(); ++column) {
        const auto first = plot.Counts.begin() + static_cast<std::ptrdiff_t>(column * width);
        all.push_back(InOrder(plot.Columns.Labels[column], plot.Layers.Labels,
                              {first, first + static_cast<std::ptrdiff_t>(width)}));
    }
    return all;
}

/// In the order of GraphContent.
constexpr std::array<const char*, std::variant_size_v<GraphContent>> KindNames{
    "histogram", "pie chart", "stacked plot", "box-whisker plot", "scatterplot matrix", "3D histogram", "mosaic"};

}  // namespace

std::vector<NamedNumbers> NumbersOf(const GraphDocument& graph) {
    return std::visit([](const auto& content) { return SeriesIn(content); }, graph.Content);
}

std::string KindOf(const GraphDocument& graph) {
    return KindNames[graph.Content.index()];
}

}  // namespace quillara
