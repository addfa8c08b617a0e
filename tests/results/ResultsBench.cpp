#include "tests/results/ResultsBench.h"

#include <sstream>

#include "workbench/documents/GraphDocument.h"

namespace drilltest {

namespace {

std::string TextOf(const quillara::SpreadsheetCell& cell) {
    const auto* number = std::get_if<double>(&cell);
    const auto* words = std::get_if<std::string>(&cell);
    return words != nullptr ? "'" + *words + "'" : number != nullptr ? (std::ostringstream() << *number).str() : ".";
}

std::string TextOf(const quillara::SpreadsheetDocument& sheet) {
    std::string text = sheet.Corner;
    for (const auto& column : sheet.Columns) {
        text += " | " + column.Name + (column.Whole ? "*" : "");
    }
    for (const auto& row : sheet.Rows) {
        text += '\n' + row.Name;
        for (const auto& cell : row.Cells) {
            text += " | " + TextOf(cell);
        }
    }
    return text + '\n';
}

std::string TextOf(const quillara::SeriesChart& chart) {
    std::ostringstream text;
    text << "x '" << chart.X.Caption << "', y '" << chart.Y.Caption << "' up to " << chart.Y.Max << ":\n";
    for (const quillara::GraphSeries& series : chart.Series) {
        for (std::size_t bar = 0; bar < series.Points.size(); ++bar) {
            const bool isNamed = bar < series.Labels.size();
            const bool isOnAxis = series.Labels.empty() && bar < chart.X.Labels.size();
            text << (bar == 0 ? "" : " ")
                 << (isNamed    ? series.Labels[bar]
                     : isOnAxis ? chart.X.Labels[bar].Text
                                : "")
                 << ':' << series.Points[bar].Y;
        }
        text << '\n';
    }
    return text.str();
}

std::string TextOf(const quillara::GraphDocument& graph) {
    if (const quillara::SeriesChart* chart = SeriesOf(graph)) {
        return TextOf(*chart);
    }
    const auto cases = [](int count) { return std::to_string(count) + " cases\n"; };
    if (const auto* box = std::get_if<quillara::BoxPlot>(&graph.Content)) {
        return "type " + std::to_string(static_cast<int>(box->Type)) + ", " +
               cases(box->Boxes.empty() ? 0 : box->Boxes.front().Cases);
    }
    if (const auto* matrix = std::get_if<quillara::ScatterMatrix>(&graph.Content)) {
        return "flags " + std::to_string(matrix->Flags) + ", " +
               cases(matrix->Variables.empty() ? 0 : matrix->Variables.front().Cases);
    }
    const auto& histogram = std::get<quillara::Histogram3DPlot>(graph.Content);
    return histogram.X.Variable + ' ' + histogram.Y.Variable + ", " + cases(histogram.Cases);
}

}  // namespace

std::string TextOf(const quillara::ResultDocument& document) {
    return std::visit(
        [](const auto& content) {
            std::string text;
            for (const std::string& line : content.Title) {
                text += line + '\n';
            }
            return text + TextOf(content);
        },
        document.Content());
}

std::string AboutOf(const quillara::ResultDocument& document) {
    const auto& about = std::visit(
        [](const auto& content) -> const auto& { return content.About; }, document.Content());
    std::string text = about.Side == ResultSide::Drill ? "drill" : about.Side == ResultSide::Review ? "review" : "?";
    for (const auto& variable : about.Variables) {
        text += ' ' + std::to_string(variable.Number);
        for (const std::string& name : variable.Categories) {
            text += (&name == &variable.Categories.front() ? " " : ",") + name;
        }
        text += variable.HasMissing ? "+" : "";
    }
    return text;
}

std::string TextOf(const quillara::DataTable& table) {
    std::ostringstream text;
    text.precision(17);
    for (const quillara::Variable& variable : table.Variables) {
        text << variable.Name << (&variable == &table.Variables.back() ? ":" : " ");
    }
    for (std::size_t row = 0; row < static_cast<std::size_t>(table.Cases); ++row) {
        text << (row == 0 ? "" : ",") << (table.CaseNames.empty() ? "" : " '" + table.CaseNames[row] + "'");
        for (const quillara::Variable& variable : table.Variables) {
            variable.IsMissing(variable.Values[row]) ? text << " -" : text << ' ' << variable.Values[row];
        }
    }
    return text.str();
}

}  // namespace drilltest
