#include "workbench/views/GraphTables.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

using Tables = std::vector<SpreadsheetDocument>;

SpreadsheetDocument Untitled(const std::string& corner, std::vector<SpreadsheetColumn> columns) {
    return {{}, corner, std::move(columns), {}};
}

bool AreWhole(const SpreadsheetDocument& table, std::size_t column) {
    return std::ranges::all_of(table.Rows, [column](const SpreadsheetRow& row) {
        const auto* number = std::get_if<double>(&row.Cells[column]);
        return number == nullptr || IsExactWhole(*number);
    });
}

/// Counts are whole unless they are sums of fractional weights.
void MarkWholeColumns(SpreadsheetDocument& table) {
    for (std::size_t column = 0; column < table.Columns.size(); ++column) {
        table.Columns[column].Whole = AreWhole(table, column);
    }
}

SpreadsheetDocument CountTable() {
    return Untitled("Category", {{"Count", false}});
}

std::string LabelAt(const GraphAxis& axis, double at) {
    const auto label = std::ranges::lower_bound(axis.Labels, at, {}, &AxisLabel::At);
    return label == axis.Labels.end() || label->At != at ? "" : label->Text;
}

Tables HistogramTables(const GraphDocument& graph) {
    SpreadsheetDocument table = CountTable();
    for (const GraphSeries& series : graph.Series) {
        for (const GraphPoint& point : series.Points) {
            table.Rows.push_back({LabelAt(graph.X, point.X), {point.Y}});
        }
    }
    MarkWholeColumns(table);
    return {table};
}

/// The point behind the last slice is no slice: its position is 0.
Tables PieTables(const GraphDocument& graph) {
    SpreadsheetDocument table = CountTable();
    for (const GraphSeries& series : graph.Series) {
        for (std::size_t i = 0; i < series.Points.size(); ++i) {
            if (series.Points[i].X > 0.0) {
                table.Rows.push_back({i < series.Labels.size() ? series.Labels[i] : "", {series.Points[i].Y}});
            }
        }
    }
    MarkWholeColumns(table);
    return {table};
}

/// The upper bounds of the layers in one column, from above, and the lower bound of the last.
std::vector<double> BoundsOf(const GraphDocument& graph, std::size_t column) {
    std::vector<double> bounds;
    for (const GraphSeries& series : graph.Series) {
        if (column < series.Points.size() && series.Points[column].X > 0.0) {
            bounds.push_back(series.Points[column].Y);
        }
    }
    return bounds;
}

/// The layers of a column are told from below, as the categories are counted.
Tables StackedTables(const GraphDocument& graph) {
    SpreadsheetDocument table =
        Untitled("Variable", {{"Layer", true}, {"Percent(%)", false}, {"Cumulative\nPercent(%)", false}});
    const std::size_t columns = graph.Series.empty() ? 0 : graph.Series.front().Points.size();
    for (std::size_t column = 0; column < columns; ++column) {
        const std::vector<double> bounds = BoundsOf(graph, column);
        const std::string name = LabelAt(graph.X, graph.Series.front().Points[column].X);
        for (std::size_t layer = 1; layer < bounds.size(); ++layer) {
            const double upper = bounds[bounds.size() - layer - 1];
            const double lower = bounds[bounds.size() - layer];
            table.Rows.push_back({name, {static_cast<double>(layer), upper - lower, upper}});
        }
    }
    return {table};
}

struct BoxNames {
    BoxType Type;
    const char* Middle;
    const char* BoxLow;
    const char* BoxHigh;
    const char* WhiskerLow;
    const char* WhiskerHigh;
};

// clang-format off
constexpr std::array<BoxNames, 4> BoxColumns{{
    // Type                        Middle    BoxLow              BoxHigh             WhiskerLow          WhiskerHigh
    {BoxType::MedianQuartilesRange, "Median", "Lower\nQuartile", "Upper\nQuartile", "Lower\nWhisker",   "Upper\nWhisker"},
    {BoxType::MeanSDAnd196SD,       "Mean",   "Mean-SD",         "Mean+SD",         "Mean\n-1.96*SD",   "Mean\n+1.96*SD"},
    {BoxType::MeanSEAndSD,          "Mean",   "Mean-SE",         "Mean+SE",         "Mean-SD",          "Mean+SD"},
    {BoxType::MeanSEAnd196SE,       "Mean",   "Mean-SE",         "Mean+SE",         "Mean\n-1.96*SE",   "Mean\n+1.96*SE"},
}};
// clang-format on

const BoxNames& NamesFor(BoxType type) {
    const auto* names = std::ranges::find(BoxColumns, type, &BoxNames::Type);
    return names == BoxColumns.end() ? BoxColumns.front() : *names;
}

SpreadsheetRow BoxRow(const BoxStatistics& box, bool hasOutliers) {
    SpreadsheetRow row{box.Variable, {static_cast<double>(box.Cases)}};
    for (const double number : {box.Middle, box.BoxLow, box.BoxHigh, box.WhiskerLow, box.WhiskerHigh}) {
        row.Cells.push_back(box.Cases > 0 ? SpreadsheetCell(number) : SpreadsheetCell());
    }
    if (hasOutliers) {
        row.Cells.push_back(static_cast<double>(box.Outliers.size()));
        row.Cells.push_back(static_cast<double>(box.Extremes.size()));
    }
    return row;
}

Tables BoxTables(const BoxPlot& plot) {
    const BoxNames& names = NamesFor(plot.Type);
    const bool hasOutliers = plot.Type == BoxType::MedianQuartilesRange;
    SpreadsheetDocument table = Untitled("Variable", {{"Cases", true}});
    for (const char* name : {names.Middle, names.BoxLow, names.BoxHigh, names.WhiskerLow, names.WhiskerHigh}) {
        table.Columns.push_back({name, false});
    }
    if (hasOutliers) {
        table.Columns.push_back({"Outlying\nValues", true});
        table.Columns.push_back({"Extreme\nValues", true});
    }
    for (const BoxStatistics& box : plot.Boxes) {
        table.Rows.push_back(BoxRow(box, hasOutliers));
    }
    return {table};
}

Tables ScatterTables(const ScatterMatrix& matrix) {
    SpreadsheetDocument variables = Untitled(
        "Variable", {{"Cases", true}, {"Minimum", false}, {"Maximum", false}, {"Mean", false}, {"Std.Dev.", false}});
    SpreadsheetDocument pairs =
        Untitled("y by x", {{"Cases", true}, {"Correlation", false}, {"Intercept", false}, {"Slope", false}});
    const std::size_t count = matrix.Variables.size();
    for (std::size_t row = 0; row < count; ++row) {
        const ScatterVariable& y = matrix.Variables[row];
        variables.Rows.push_back({y.Name, {static_cast<double>(y.Cases), y.Min, y.Max, y.Mean, y.StandardDeviation}});
        for (std::size_t column = 0; column < count; ++column) {
            if (row != column) {
                const ScatterCell& cell = matrix.Cells[row * count + column];
                pairs.Rows.push_back({y.Name + " by " + matrix.Variables[column].Name,
                                      {static_cast<double>(cell.Cases), cell.Correlation, cell.Intercept, cell.Slope}});
            }
        }
    }
    return {variables, pairs};
}

Tables Histogram3DTables(const Histogram3DPlot& plot) {
    SpreadsheetDocument table = Untitled(plot.Y.Variable + " by " + plot.X.Variable, {});
    const std::size_t width = plot.X.Labels.size();
    for (const std::string& label : plot.X.Labels) {
        table.Columns.push_back({label, false});
    }
    for (std::size_t y = 0; y < plot.Y.Labels.size(); ++y) {
        SpreadsheetRow row{plot.Y.Labels[y], {}};
        for (std::size_t x = 0; x < width; ++x) {
            row.Cells.emplace_back(plot.Counts[y * width + x]);
        }
        table.Rows.push_back(std::move(row));
    }
    MarkWholeColumns(table);
    return {table};
}

Tables NumbersOf(const GraphDocument& graph) {
    if (const auto* boxes = std::get_if<BoxPlot>(&graph.Computed)) {
        return BoxTables(*boxes);
    }
    if (const auto* matrix = std::get_if<ScatterMatrix>(&graph.Computed)) {
        return ScatterTables(*matrix);
    }
    if (const auto* counts = std::get_if<Histogram3DPlot>(&graph.Computed)) {
        return Histogram3DTables(*counts);
    }
    switch (graph.Chart) {
        case ChartKind::Pie:
            return PieTables(graph);
        case ChartKind::Stacked:
            return StackedTables(graph);
        default:
            return HistogramTables(graph);
    }
}

}  // namespace

std::vector<SpreadsheetDocument> TablesOf(const DocumentContent& content) {
    if (const auto* sheet = std::get_if<SpreadsheetDocument>(&content)) {
        return {*sheet};
    }
    const auto& graph = std::get<GraphDocument>(content);
    Tables tables = NumbersOf(graph);
    tables.front().Title = graph.Title;
    return tables;
}

}  // namespace quillara
