#include "workbench/views/GraphJson.h"

#include <vector>

#include "workbench/views/JsonText.h"

namespace quillara {
namespace {

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

Values SeriesValues(const SeriesChart& chart) {
    Values values;
    for (const GraphSeries& series : chart.Series) {
        values.push_back(SeriesValue(series));
    }
    return values;
}

/// Of a variable without cases nothing is drawn: its statistics are null.
Values SeriesValues(const BoxPlot& plot) {
    Values values;
    for (const BoxStatistics& box : plot.Boxes) {
        const auto drawn = [&box](Json value) { return box.Cases > 0 ? std::move(value) : Json(nullptr); };
        Json value = {{"kind", static_cast<int>(plot.Type)}};
        if (plot.Groups) {
            value.update({{"variable", TextValue(plot.Groups->Variable)},
                          {"label", TextValue(plot.Groups->LongName)},
                          {"by", TextValue(plot.Groups->By)},
                          {"category", TextValue(box.Variable)}});
        } else {
            value.update({{"variable", TextValue(box.Variable)}, {"label", TextValue(box.LongName)}});
        }
        value.update({{"cases", box.Cases},
                      {"middle", drawn(NumberValue(box.Middle))},
                      {"box", drawn(Pair(box.BoxLow, box.BoxHigh))},
                      {"whiskers", drawn(Pair(box.WhiskerLow, box.WhiskerHigh))},
                      {"outliers", Array(box.Outliers, NumberValue)},
                      {"extremes", Array(box.Extremes, NumberValue)}});
        values.push_back(std::move(value));
        if (!plot.Weight.empty()) {
            values.back()["weight"] = TextValue(plot.Weight);
            values.back()["weighted"] = NumberValue(box.WeightedCases);
        }
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
Values SeriesValues(const ScatterMatrix& matrix) {
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

Values SeriesValues(const Histogram3DPlot& plot) {
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

Values SeriesValues(const MosaicPlot& plot) {
    Json columns = Json::array();
    const std::size_t width = plot.Layers.Labels.size();
    for (std::size_t column = 0; column < plot.Columns.Labels.size(); ++column) {
        Json counts = Json::array();
        for (std::size_t layer = 0; layer < width; ++layer) {
            counts.push_back(NumberValue(plot.Counts[column * width + layer]));
        }
        columns.push_back(std::move(counts));
    }
    return {{{"columns", SideValue(plot.Columns)}, {"layers", SideValue(plot.Layers)}, {"counts", std::move(columns)}}};
}

// Every kind of graph has a name.
const char* NameOf(const Histogram& /*graph*/) {
    return "histogram";
}
const char* NameOf(const PieChart& /*graph*/) {
    return "pie";
}
const char* NameOf(const StackedPlot& /*graph*/) {
    return "stacked";
}
const char* NameOf(const BoxPlot& /*graph*/) {
    return "box";
}
const char* NameOf(const ScatterMatrix& /*graph*/) {
    return "scatter";
}
const char* NameOf(const Histogram3DPlot& /*graph*/) {
    return "hist3d";
}

const char* NameOf(const MosaicPlot& /*graph*/) {
    return "mosaic";
}

/// What a graph has as a chart of series has it; a computed one has no axes and few words of its own.
SeriesChart FrameOf(const GraphDocument& graph) {
    SeriesChart frame;
    if (const SeriesChart* chart = SeriesOf(graph)) {
        return {chart->Flags, chart->Options, chart->X, chart->Y, {}};
    }
    if (const auto* matrix = std::get_if<ScatterMatrix>(&graph.Content)) {
        frame.Flags = matrix->Flags;
    }
    return frame;
}

}  // namespace

std::string ChartName(const GraphDocument& graph) {
    return std::visit([](const auto& content) { return NameOf(content); }, graph.Content);
}

std::string GraphMembers(const GraphDocument& graph) {
    const SeriesChart frame = FrameOf(graph);
    const Values series = std::visit([](const auto& content) { return SeriesValues(content); }, graph.Content);
    return Member("title", OneLine(Array(graph.Title, TextValue))) + Member("flags", OneLine(frame.Flags)) +
           Member("options", OneLine(frame.Options)) + Member("x", OneLine(AxisValue(frame.X))) +
           Member("y", OneLine(AxisValue(frame.Y))) + Member("series", Stacked(series, "    ", OneLine));
}

}  // namespace quillara
