#include "workbench/documents/NamedParts.h"

#include <algorithm>
#include <span>

namespace quillara {
namespace {

/// The label at a position of an axis; null when there is none.
AxisLabel* LabelAt(GraphAxis& axis, double at) {
    const auto label = std::ranges::lower_bound(axis.Labels, at, {}, &AxisLabel::At);
    return label == axis.Labels.end() || label->At != at ? nullptr : &*label;
}

/// Names points after the categories of their variable, in order; the last may stand for missing data.
void NameInOrder(std::span<GraphPoint> points, const ShownVariable* variable) {
    if (variable == nullptr || variable->Parts() != points.size()) {
        return;
    }
    for (std::size_t i = 0; i < variable->Categories.size(); ++i) {
        points[i].Name = variable->Categories[i];
    }
    if (variable->HasMissing) {
        points.back().IsMissing = true;
    }
}

void NameAll(Histogram& chart, const Subject& about) {
    for (GraphSeries& series : chart.Series) {
        NameInOrder(series.Points, about.OnlyVariable());
        for (GraphPoint& bar : series.Points) {
            if (AxisLabel* label = LabelAt(chart.X, bar.X)) {
                label->Whole = bar.Name;
                label->IsMissing = bar.IsMissing;
                bar.Name = label->Name();
            }
        }
    }
}

void NameAll(PieChart& chart, const Subject& about) {
    for (GraphSeries& series : chart.Series) {
        const bool endsOutside = !series.Points.empty() && !(series.Points.back().X > 0.0);
        NameInOrder(std::span(series.Points).first(series.Points.size() - (endsOutside ? 1 : 0)), about.OnlyVariable());
        for (std::size_t i = 0; i < std::min(series.Points.size(), series.Labels.size()); ++i) {
            GraphPoint& slice = series.Points[i];
            slice.Name = slice.Name.empty() ? series.Labels[i] : slice.Name;
        }
    }
}

/// The layers of a column from above; the point below the last bounds it and names nothing.
std::vector<GraphPoint*> LayersOf(StackedPlot& chart, std::size_t column) {
    std::vector<GraphPoint*> layers;
    for (GraphSeries& series : chart.Series) {
        if (column < series.Points.size() && series.Points[column].X > 0.0) {
            layers.push_back(&series.Points[column]);
        }
    }
    if (!layers.empty()) {
        layers.pop_back();
    }
    return layers;
}

/// Layers stand from above in the reverse order of the categories, those of missing data on top.
void NameLayers(const std::vector<GraphPoint*>& layers, const ShownVariable& variable) {
    if (variable.Parts() != layers.size()) {
        return;
    }
    const std::size_t count = variable.Categories.size();
    for (std::size_t category = 0; category < count; ++category) {
        layers[layers.size() - 1 - category]->Name = variable.Categories[category];
    }
    if (variable.HasMissing) {
        layers.front()->IsMissing = true;
    }
}

void NameAll(StackedPlot& chart, const Subject& about) {
    const std::size_t columns = chart.Series.empty() ? 0 : chart.Series.front().Points.size();
    for (std::size_t column = 0; column < std::min(columns, about.Variables.size()); ++column) {
        const ShownVariable& variable = about.Variables[column];
        NameLayers(LayersOf(chart, column), variable);
        if (AxisLabel* label = LabelAt(chart.X, chart.Series.front().Points[column].X)) {
            label->Whole = variable.Name;
        }
    }
}

// What the host computes has its names from the table.
void NameAll(BoxPlot& /*plot*/, const Subject& /*about*/) {}
void NameAll(ScatterMatrix& /*plot*/, const Subject& /*about*/) {}
void NameAll(Histogram3DPlot& /*plot*/, const Subject& /*about*/) {}
void NameAll(MosaicPlot& /*plot*/, const Subject& /*about*/) {}

}  // namespace

void NameParts(GraphDocument& graph) {
    std::visit([&graph](auto& content) { NameAll(content, graph.About); }, graph.Content);
}

void NameParts(SpreadsheetDocument& table) {
    const ShownVariable* variable = table.About.OnlyVariable();
    if (variable == nullptr || variable->Parts() != table.Rows.size()) {
        return;
    }
    for (std::size_t row = 0; row < variable->Categories.size(); ++row) {
        table.Rows[row].Whole = variable->Categories[row];
    }
    if (variable->HasMissing) {
        table.Rows.back().IsMissing = true;
    }
}

}  // namespace quillara
