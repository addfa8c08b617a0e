#include "tests/workbench/charts/TestGraphs.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "workbench/documents/NamedParts.h"

namespace quillara {
namespace {

/// A graph of a content, its parts named after its labels.
GraphDocument Graph(GraphContent content) {
    GraphDocument document{{"Heading of the chart", "N Total: 32561, Selected: 10771\nsex = Female"}, {}, {}};
    document.Content = std::move(content);
    NameParts(document);
    return document;
}

/// The subject of a chart of one variable whose categories were told.
Subject About(const Names& names) {
    const bool hasMissing = !names.empty() && names.back() == "Missing";
    ShownVariable variable{.Name = "sex", .LongName = {}, .Categories = names, .HasMissing = hasMissing};
    variable.Categories.resize(names.size() - (hasMissing ? 1 : 0));
    return {ResultSide::Drill, {variable}};
}

GraphDocument About(GraphDocument document, const Names& names) {
    document.About = About(names);
    NameParts(document);
    return document;
}

void SetCategories(GraphAxis& axis, const Names& names, const std::string& caption) {
    axis.Caption = caption;
    axis.Max = static_cast<double>(names.size()) + 1.0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        axis.Labels.push_back({static_cast<double>(i) + 1.0, names[i]});
    }
}

GraphSeries Series(const Values& counts, int color) {
    GraphSeries series{.Name = {}, .Kind = 5, .Color = color, .Width = 0.9, .Points = {}, .Labels = {}};
    for (std::size_t i = 0; i < counts.size(); ++i) {
        series.Points.push_back({static_cast<double>(i) + 1.0, counts[i]});
    }
    return series;
}

ScatterVariable Scattered(const std::string& name) {
    return {.Name = name,
            .LongName = "its long name",
            .Cases = 5,
            .Min = -1.0,
            .Max = 12345.0,
            .Histogram = {0.0, 4000.0, {1.0, 3.0, 1.0}},
            .Places = std::make_shared<const std::vector<float>>(std::vector<float>{0.0F, 0.2F, 0.5F, 0.5F, 1.0F})};
}

}  // namespace

Names Numbered(int count, const std::string& name) {
    Names names;
    for (int i = 1; i <= count; ++i) {
        names.push_back(name + std::to_string(i));
    }
    return names;
}

GraphDocument Bars(const Names& categories, const Values& counts, double top) {
    Histogram document;
    SetCategories(document.X, categories, "sex");
    document.Y = {"Number of counts", 0.0, top, 1.0, {}};
    const int labels = top > 5.0 ? 10 : static_cast<int>(top) + 1;
    for (int i = 0; i <= labels; ++i) {
        const double at = top > 5.0 ? i * top / 10.0 : i;
        document.Y.Labels.push_back({at, std::to_string(static_cast<int>(at))});
    }
    document.Series = {Series(counts, 12)};
    return About(Graph(document), categories);
}

GraphDocument Pie(const Names& categories, const Values& counts) {
    PieChart document;
    document.Series = {Series(counts, 1)};
    document.Series.front().Points.push_back({0.0, 0.0});
    document.Series.front().Labels = categories;
    document.Series.front().Labels.emplace_back();
    return About(Graph(document), categories);
}

GraphDocument Stacked(const Names& variables, const std::vector<Values>& shares) {
    StackedPlot document;
    SetCategories(document.X, variables, "");
    document.Y = {"Relative number of cases(%)", 0.0, 100.1, 20.0, {}};
    const std::size_t most = std::ranges::max(shares, {}, &Values::size).size() + 1;
    document.Series.assign(most, Series(Values(variables.size()), 12));
    for (std::size_t column = 0; column < variables.size(); ++column) {
        double height = 100.0;
        for (std::size_t series = 0; series < most; ++series) {
            const std::size_t layers = shares[column].size();
            document.Series[series].Color = static_cast<int>(series);
            document.Series[series].Points[column] =
                series <= layers ? GraphPoint{static_cast<double>(column) + 1.0, height} : GraphPoint{0.0, 0.0};
            height -= series < layers ? shares[column][layers - 1 - series] : 0.0;
        }
    }
    return Graph(document);
}

GraphDocument Boxes(int count, BoxType type) {
    BoxPlot plot{type, {}};
    for (const std::string& name : Numbered(count, "variable ")) {
        plot.Boxes.push_back({name, "", 10, 5.0, 4.0, 6.0, 2.0, 8.0, {10.0}, {30.0}});
    }
    return Graph(plot);
}

GraphDocument Matrix(int variables, const std::string& name) {
    ScatterMatrix matrix{.Flags = 204, .Variables = {}, .Cells = {}};
    for (int row = 0; row < variables; ++row) {
        matrix.Variables.push_back(Scattered(name + std::to_string(row)));
        for (int column = 0; column < variables; ++column) {
            matrix.Cells.push_back(row == column ? ScatterCell{} : ScatterCell{5, 0.5, 1.0, 2.0, 0.1, 0.9});
        }
    }
    return Graph(matrix);
}

GraphDocument Bars3D(const Names& columns, const Names& rows) {
    Histogram3DPlot plot{{"education", "", columns}, {"workclass", "", rows}, {}, 0};
    for (std::size_t i = 0; i < columns.size() * rows.size(); ++i) {
        plot.Counts.push_back(static_cast<double>(i * 7 % 50));
    }
    return Graph(plot);
}

GraphDocument Mosaic(const Names& columns, const Names& layers) {
    MosaicPlot plot{{"education", "", columns}, {"workclass", "its long name", layers}, {}, "Chi-square 2.5"};
    for (std::size_t i = 0; i < columns.size() * layers.size(); ++i) {
        plot.Counts.push_back(static_cast<double>(i * i * 7 % 50) * (i < layers.size() ? 100.0 : 1.0));
    }
    return Graph(plot);
}

GraphDocument BoxesBy(const Names& categories) {
    GraphDocument graph = Boxes(static_cast<int>(categories.size()), BoxType::MedianQuartilesRange);
    auto& plot = std::get<BoxPlot>(graph.Content);
    plot.Groups = BoxGroups{"age", "Age in years", "education", "", "3 cases without a value of both are left out"};
    for (std::size_t i = 0; i < categories.size(); ++i) {
        plot.Boxes[i].Variable = categories[i];
    }
    if (categories.size() > 1) {
        plot.Boxes.back() = BoxStatistics();
        plot.Boxes.back().Variable = categories.back();
        plot.Boxes.front().WhiskerHigh = 1000.0;  // a range of its own, on the same axis
    }
    return graph;
}

GraphDocument Titled(GraphDocument document, const std::vector<std::string>& title) {
    document.Title = title;
    return document;
}

}  // namespace quillara
