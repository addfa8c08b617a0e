#include "workbench/views/GraphTables.h"

#include <algorithm>
#include <cmath>

#include "workbench/data/ValueText.h"
#include "workbench/documents/BoxTypes.h"
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
    return label == axis.Labels.end() || label->At != at ? "" : label->Name();
}

Tables NumbersOf(const Histogram& graph, const Subject& /*about*/) {
    SpreadsheetDocument table = CountTable();
    for (const GraphSeries& series : graph.Series) {
        for (const GraphPoint& bar : series.Points) {
            table.Rows.push_back({bar.Name, {bar.Y}, bar.IsMissing});
        }
    }
    MarkWholeColumns(table);
    return {table};
}

/// The point behind the last slice is no slice: its position is 0.
Tables NumbersOf(const PieChart& graph, const Subject& /*about*/) {
    SpreadsheetDocument table = CountTable();
    for (const GraphSeries& series : graph.Series) {
        for (const GraphPoint& slice : series.Points) {
            if (slice.X > 0.0) {
                table.Rows.push_back({slice.Name, {slice.Y}, slice.IsMissing});
            }
        }
    }
    MarkWholeColumns(table);
    return {table};
}

/// The bounds of the layers in one column, from above; each but the last is the upper bound of a layer and names it.
std::vector<GraphPoint> BoundsOf(const StackedPlot& graph, std::size_t column) {
    std::vector<GraphPoint> bounds;
    for (const GraphSeries& series : graph.Series) {
        if (column < series.Points.size() && series.Points[column].X > 0.0) {
            bounds.push_back(series.Points[column]);
        }
    }
    return bounds;
}

/// "sex = Male", or the variable alone where the category isn't known.
std::string LayerName(const RowSubject& layer) {
    return layer.Category.empty() ? layer.Variable : layer.Variable + " = " + layer.Category;
}

/// The layers of a column stand from below, as the categories are counted.
Tables NumbersOf(const StackedPlot& graph, const Subject& /*about*/) {
    SpreadsheetDocument table =
        Untitled("Variable", {{"Layer", true}, {"Percent(%)", false}, {"Cumulative\nPercent(%)", false}});
    const std::size_t columns = graph.Series.empty() ? 0 : graph.Series.front().Points.size();
    for (std::size_t column = 0; column < columns; ++column) {
        const std::vector<GraphPoint> bounds = BoundsOf(graph, column);
        const std::string variable = LabelAt(graph.X, graph.Series.front().Points[column].X);
        for (std::size_t layer = 1; layer < bounds.size(); ++layer) {
            const GraphPoint& upper = bounds[bounds.size() - layer - 1];
            const double lower = bounds[bounds.size() - layer].Y;
            const RowSubject about{variable, upper.IsMissing ? "Missing" : upper.Name};
            table.Rows.push_back(
                {LayerName(about), {static_cast<double>(layer), upper.Y - lower, upper.Y}, upper.IsMissing, {}, about});
        }
    }
    return {table};
}

/// A value of a variable: a date or a time in words.
SpreadsheetCell ValueCell(ValueKind kind, double value) {
    const bool hasWords = IsTimeKind(kind);
    return hasWords ? SpreadsheetCell(TextOfValue(kind, value)) : SpreadsheetCell(value);
}

SpreadsheetRow BoxRow(const BoxPlot& plot, const BoxStatistics& box, ValueKind kind) {
    SpreadsheetRow row{box.Variable, {static_cast<double>(box.Cases)}};
    row.About = plot.Groups ? RowSubject{plot.Groups->Variable + " by " + plot.Groups->By, box.Variable}
                            : RowSubject{box.Variable};
    if (!plot.Weight.empty()) {
        row.Cells.push_back(box.WeightedCases);
    }
    for (const double number : {box.Middle, box.BoxLow, box.BoxHigh, box.WhiskerLow, box.WhiskerHigh}) {
        row.Cells.push_back(box.Cases > 0 ? ValueCell(kind, number) : SpreadsheetCell());
    }
    if (FactsOf(plot.Type).ShowsMedian()) {
        row.Cells.push_back(static_cast<double>(box.Outliers.size()));
        row.Cells.push_back(static_cast<double>(box.Extremes.size()));
    }
    return row;
}

Tables NumbersOf(const BoxPlot& plot, const Subject& about) {
    const BoxTypeFacts& facts = FactsOf(plot.Type);
    const bool hasOutliers = facts.ShowsMedian();
    SpreadsheetDocument table = Untitled(plot.Groups ? plot.Groups->By : "Variable", {{"Cases", true}});
    if (!plot.Weight.empty()) {
        table.Columns.push_back({"Weighted\ncases", false});
    }
    for (const char* name :
         {facts.MiddleName, facts.BoxNames[0], facts.BoxNames[1], facts.WhiskerNames[0], facts.WhiskerNames[1]}) {
        table.Columns.push_back({name, false});
    }
    if (hasOutliers) {
        table.Columns.push_back({"Outlying\nvalues", true});
        table.Columns.push_back({"Extreme\nvalues", true});
    }
    for (std::size_t i = 0; i < plot.Boxes.size(); ++i) {
        table.Rows.push_back(BoxRow(plot, plot.Boxes[i], about.KindOf(plot.Groups ? 0 : i)));
    }
    return {table};
}

SpreadsheetRow ScatterRow(const ScatterVariable& variable, ValueKind kind) {
    SpreadsheetRow row{variable.Name, {static_cast<double>(variable.Cases)}};
    row.About = {variable.Name};
    for (const double number : {variable.Min, variable.Max, variable.Mean}) {
        row.Cells.push_back(variable.Cases > 0 ? ValueCell(kind, number) : SpreadsheetCell());
    }
    row.Cells.push_back(variable.Cases > 0 ? SpreadsheetCell(variable.StandardDeviation) : SpreadsheetCell());
    return row;
}

Tables NumbersOf(const ScatterMatrix& matrix, const Subject& about) {
    SpreadsheetDocument variables = Untitled(
        "Variable", {{"Cases", true}, {"Minimum", false}, {"Maximum", false}, {"Mean", false}, {"Std.Dev.", false}});
    SpreadsheetDocument pairs =
        Untitled("y by x", {{"Cases", true}, {"Correlation", false}, {"Intercept", false}, {"Slope", false}});
    const std::size_t count = matrix.Variables.size();
    for (std::size_t row = 0; row < count; ++row) {
        const ScatterVariable& y = matrix.Variables[row];
        variables.Rows.push_back(ScatterRow(y, about.KindOf(row)));
        for (std::size_t column = 0; column < count; ++column) {
            if (row != column) {
                const ScatterCell& cell = matrix.Cells[row * count + column];
                const std::string name = y.Name + " by " + matrix.Variables[column].Name;
                pairs.Rows.push_back({name,
                                      {static_cast<double>(cell.Cases), cell.Correlation, cell.Intercept, cell.Slope},
                                      false,
                                      {},
                                      RowSubject{name}});
            }
        }
    }
    return {variables, pairs};
}

/// The counts of one variable's categories together with those of another, row by row.
Tables CrossedCounts(const auto& rows, const auto& columns, const std::vector<double>& counts) {
    SpreadsheetDocument table = Untitled(rows.Variable + " by " + columns.Variable, {});
    const std::size_t width = columns.Labels.size();
    for (const std::string& label : columns.Labels) {
        table.Columns.push_back(
            {.Name = label, .Variable = columns.Variable, .Statistic = "Count", .Category = label, .IsCrossed = true});
    }
    for (std::size_t place = 0; place < rows.Labels.size(); ++place) {
        SpreadsheetRow row{rows.Labels[place], {}};
        for (std::size_t column = 0; column < width; ++column) {
            row.Cells.emplace_back(counts[place * width + column]);
        }
        row.About = {rows.Variable, row.Name};
        table.Rows.push_back(std::move(row));
    }
    MarkWholeColumns(table);
    return {table};
}

Tables NumbersOf(const Histogram3DPlot& plot, const Subject& /*about*/) {
    return CrossedCounts(plot.Y, plot.X, plot.Counts);
}

Tables NumbersOf(const MosaicPlot& plot, const Subject& /*about*/) {
    return CrossedCounts(plot.Columns, plot.Layers, plot.Counts);
}

double CasesOf(const SeriesChart& chart) {
    double cases = 0.0;
    for (const GraphSeries& series : chart.Series) {
        for (const GraphPoint& point : series.Points) {
            cases += std::isfinite(point.Y) ? point.Y : 0.0;
        }
    }
    return cases;
}

double CasesOf(const BoxPlot& plot) {
    double cases = 0.0;
    for (const BoxStatistics& box : plot.Boxes) {
        cases += static_cast<double>(box.Cases);
    }
    return cases;
}

double CasesOf(const ScatterMatrix& matrix) {
    double cases = 0.0;
    for (const ScatterVariable& variable : matrix.Variables) {
        cases += static_cast<double>(variable.Cases);
    }
    return cases;
}

double CasesOf(const Histogram3DPlot& plot) {
    return static_cast<double>(plot.Cases);
}

double CasesOf(const MosaicPlot& plot) {
    double cases = 0.0;
    for (const double count : plot.Counts) {
        cases += count;
    }
    return cases;
}

/// A table with the values of variables as people write them.
SpreadsheetDocument InWords(SpreadsheetDocument sheet) {
    const auto write = [](SpreadsheetCell& cell, ValueKind kind) {
        if (const double* value = std::get_if<double>(&cell)) {
            cell = ValueCell(kind, *value);
        }
    };
    for (std::size_t row = 0; row < sheet.Rows.size(); ++row) {
        std::vector<SpreadsheetCell>& cells = sheet.Rows[row].Cells;
        for (const std::size_t column : sheet.About.ValueColumns) {
            write(cells.at(column), sheet.About.KindOf(row));
        }
        for (std::size_t column = 0; column < std::min(cells.size(), sheet.Columns.size()); ++column) {
            if (sheet.Columns[column].Kind != ValueKind::Number) {
                write(cells[column], sheet.Columns[column].Kind);
            }
        }
    }
    return sheet;
}

/// What a graph says that shows no case; nothing for others. No step but one on missing data drops all cases of the
/// plots that the host computes.
std::vector<std::string> NoCasesLines(const GraphDocument& graph) {
    if (std::visit([](const auto& shown) { return CasesOf(shown); }, graph.Content) > 0.0) {
        return {};
    }
    std::vector<std::string> lines{"No cases"};
    if (graph.About.IsEmptied) {
        lines.emplace_back("A drill step on Missing leaves none in the plots of review variables.");
    }
    return lines;
}

/// On the first line of the title.
void NoteWeights(SpreadsheetDocument& table) {
    if (!table.Title.empty()) {
        std::string& title = table.Title.front();
        const std::size_t end = std::min(title.find_first_of("\r\n"), title.size());
        title.replace(0, end, table.About.Noted(title.substr(0, end)));
    }
}

Tables NumbersOf(const GraphDocument& graph, const Subject& about) {
    return std::visit([&about](const auto& shown) { return NumbersOf(shown, about); }, graph.Content);
}

}  // namespace

std::vector<SpreadsheetDocument> TablesOf(const DocumentContent& content) {
    if (const auto* sheet = std::get_if<SpreadsheetDocument>(&content)) {
        Tables tables{InWords(*sheet)};
        NoteWeights(tables.front());
        return tables;
    }
    const auto& graph = std::get<GraphDocument>(content);
    Tables tables = NumbersOf(graph, graph.About);
    tables.front().Title = graph.Title;
    std::ranges::move(NoCasesLines(graph), std::back_inserter(tables.front().Title));
    tables.front().About = graph.About;
    NoteWeights(tables.front());
    return tables;
}

std::vector<SpreadsheetDocument> ExactTablesOf(const DocumentContent& content) {
    if (const auto* sheet = std::get_if<SpreadsheetDocument>(&content)) {
        return {*sheet};
    }
    const auto& graph = std::get<GraphDocument>(content);
    Tables tables = NumbersOf(graph, {});  // of no kind in particular
    tables.front().About = graph.About;
    return tables;
}

}  // namespace quillara
