#include "workbench/views/GraphJson.h"

#include <array>
#include <vector>

#include "workbench/views/JsonText.h"

namespace quillara {
namespace {

constexpr std::array<const char*, 6> ChartNames = {"histogram", "pie", "stacked", "box", "scatter", "hist3d"};
static_assert(ChartNames.size() == static_cast<std::size_t>(ChartKind::Histogram3D) + 1);

using Values = std::vector<Json>;

Json LabelValue(const AxisLabel& label) {
    return {{"at", NumberValue(label.At)}, {"text", TextValue(label.Text)}};
}

Json AxisValue(const GraphAxis& axis) {
    return {{"caption", TextValue(axis.Caption)},
            {"min", NumberValue(axis.Min)},
            {"max", NumberValue(axis.Max)},
            {"step", NumberValue(axis.Step)},
            {"labels", Array(axis.Labels, LabelValue)}};
}

Json Pair(double first, double second) {
    return Json::array({NumberValue(first), NumberValue(second)});
}

Json SeriesValue(const GraphSeries& series) {
    return {{"kind", series.Kind},
            {"color", series.Color},
            {"width", NumberValue(series.Width)},
            {"flags", series.Flags},
            {"points", Array(series.Points, [](const GraphPoint& point) { return Pair(point.X, point.Y); })},
            {"labels", Array(series.Labels, TextValue)}};
}

/// Of a variable without cases nothing is drawn: its statistics are null.
Values BoxValues(const BoxPlot& plot) {
    Values values;
    for (const BoxStatistics& box : plot.Boxes) {
        const auto drawn = [&box](Json value) { return box.Cases > 0 ? std::move(value) : Json(nullptr); };
        values.push_back({{"kind", static_cast<int>(plot.Type)},
                          {"variable", TextValue(box.Variable)},
                          {"label", TextValue(box.LongName)},
                          {"cases", box.Cases},
                          {"middle", drawn(NumberValue(box.Middle))},
                          {"box", drawn(Pair(box.BoxLow, box.BoxHigh))},
                          {"whiskers", drawn(Pair(box.WhiskerLow, box.WhiskerHigh))},
                          {"outliers", Array(box.Outliers, NumberValue)},
                          {"extremes", Array(box.Extremes, NumberValue)}});
    }
    return values;
}

Json ScatterVariableValue(const ScatterVariable& variable) {
    const BinnedCounts& bins = variable.Histogram;
    return {{"variable", TextValue(variable.Name)},
            {"label", TextValue(variable.LongName)},
            {"cases", variable.Cases},
            {"min", NumberValue(variable.Min)},
            {"max", NumberValue(variable.Max)},
            {"mean", NumberValue(variable.Mean)},
            {"deviation", NumberValue(variable.StandardDeviation)},
            {"histogram",
             {{"low", NumberValue(bins.Low)},
              {"step", NumberValue(bins.Step)},
              {"counts", Array(bins.Counts, NumberValue)}}}};
}

/// The variables, then the cells row by row, those of the diagonal left out.
Values ScatterValues(const ScatterMatrix& matrix) {
    Values values;
    for (const ScatterVariable& variable : matrix.Variables) {
        values.push_back(ScatterVariableValue(variable));
    }
    const std::size_t count = matrix.Variables.size();
    for (std::size_t i = 0; i < matrix.Cells.size(); ++i) {
        const ScatterCell& cell = matrix.Cells[i];
        if (i / count != i % count) {
            values.push_back({{"x", TextValue(matrix.Variables[i % count].Name)},
                              {"y", TextValue(matrix.Variables[i / count].Name)},
                              {"cases", cell.Cases},
                              {"correlation", NumberValue(cell.Correlation)},
                              {"intercept", NumberValue(cell.Intercept)},
                              {"slope", NumberValue(cell.Slope)}});
        }
    }
    return values;
}

Json SideValue(const Histogram3DSide& side) {
    return {{"variable", TextValue(side.Variable)},
            {"label", TextValue(side.LongName)},
            {"labels", Array(side.Labels, TextValue)}};
}

Values Histogram3DValues(const Histogram3DPlot& plot) {
    Json rows = Json::array();
    const std::size_t width = plot.X.Labels.size();
    for (std::size_t y = 0; y < plot.Y.Labels.size(); ++y) {
        Json row = Json::array();
        for (std::size_t x = 0; x < width; ++x) {
            row.push_back(NumberValue(plot.Counts[y * width + x]));
        }
        rows.push_back(std::move(row));
    }
    return {{{"x", SideValue(plot.X)}, {"y", SideValue(plot.Y)}, {"cases", plot.Cases}, {"counts", std::move(rows)}}};
}

Values SeriesValues(const GraphDocument& graph) {
    if (const auto* boxes = std::get_if<BoxPlot>(&graph.Computed)) {
        return BoxValues(*boxes);
    }
    if (const auto* matrix = std::get_if<ScatterMatrix>(&graph.Computed)) {
        return ScatterValues(*matrix);
    }
    if (const auto* counts = std::get_if<Histogram3DPlot>(&graph.Computed)) {
        return Histogram3DValues(*counts);
    }
    Values values;
    for (const GraphSeries& series : graph.Series) {
        values.push_back(SeriesValue(series));
    }
    return values;
}

}  // namespace

std::string ChartName(ChartKind chart) {
    return ChartNames[static_cast<std::size_t>(chart)];
}

std::string GraphMembers(const GraphDocument& graph) {
    return Member("title", OneLine(Array(graph.Title, TextValue))) + Member("flags", OneLine(graph.Flags)) +
           Member("options", OneLine(graph.Options)) + Member("x", OneLine(AxisValue(graph.X))) +
           Member("y", OneLine(AxisValue(graph.Y))) + Member("series", Stacked(SeriesValues(graph), "    ", OneLine));
}

}  // namespace quillara
