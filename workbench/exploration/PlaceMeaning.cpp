#include "workbench/exploration/PlaceMeaning.h"

#include <algorithm>
#include <cmath>

#include "workbench/documents/ResultDocument.h"

namespace quillara {
namespace {

constexpr const char* MissingName = "Missing";
constexpr const char* CountName = "Count";

using Meaning = std::vector<PlacedVariable>;

/// The categories of one variable as a document shows them.
using ShownCategories = std::vector<PlacedCategory>;

template <typename Item>
const Item* ItemAt(const std::vector<Item>& items, int place) {
    const bool isThere = place >= 0 && static_cast<std::size_t>(place) < items.size();
    return isThere ? &items[static_cast<std::size_t>(place)] : nullptr;
}

/// The category at a place, told apart from those of its name before it.
PlacedCategory CategoryAt(const ShownCategories& shown, std::size_t place) {
    PlacedCategory category = shown[place];
    category.Before = static_cast<std::size_t>(std::ranges::count_if(
        shown.begin(), shown.begin() + static_cast<std::ptrdiff_t>(place), [&](const PlacedCategory& other) {
            return !other.IsEmpty && other.IsMissing == category.IsMissing && other.Name == category.Name;
        }));
    return category;
}

bool IsEmptyPoint(const GraphPoint& point) {
    return !std::isfinite(point.Y) || point.Y == 0.0;
}

PlacedCategory Named(const std::string& name, bool isMissing, bool isEmpty) {
    return {isMissing ? MissingName : name, isMissing, isEmpty};
}

/// Of a bar or slice.
Meaning MeaningOfPoint(const GraphDocument& graph, const SeriesChart& chart, const DocumentPlace& place) {
    const ShownVariable* variable = graph.About.OnlyVariable();
    const GraphSeries* series = ItemAt(chart.Series, place.Series);
    if (variable == nullptr || series == nullptr || ItemAt(series->Points, place.Point) == nullptr) {
        return {};
    }
    ShownCategories shown;
    for (const GraphPoint& point : series->Points) {
        shown.push_back(Named(point.Name, point.IsMissing, IsEmptyPoint(point)));
    }
    return {{variable->Name, CategoryAt(shown, static_cast<std::size_t>(place.Point))}};
}

/// Of a layer: its column is a variable, its series a category, from the highest down.
Meaning MeaningOfLayer(const GraphDocument& graph, const StackedPlot& chart, const DocumentPlace& place) {
    const ShownVariable* variable = ItemAt(graph.About.Variables, place.Point);
    if (variable == nullptr || ItemAt(chart.Series, place.Series) == nullptr) {
        return {};
    }
    ShownCategories shown;
    for (const GraphSeries& series : chart.Series) {
        const GraphPoint* point = ItemAt(series.Points, place.Point);
        shown.push_back(point == nullptr ? PlacedCategory() : Named(point->Name, point->IsMissing, false));
    }
    std::ranges::reverse(shown);
    return {{variable->Name, CategoryAt(shown, shown.size() - 1 - static_cast<std::size_t>(place.Series))}};
}

Meaning WholeVariable(const std::string& name) {
    return name.empty() ? Meaning() : Meaning{{name, {}}};
}

/// A cell of a square: the variables of its column and its row.
Meaning MeaningOfCell(const ScatterMatrix& matrix, int cell) {
    const int count = static_cast<int>(matrix.Variables.size());
    const ScatterVariable* across = count == 0 ? nullptr : ItemAt(matrix.Variables, cell % count);
    const ScatterVariable* up = count == 0 ? nullptr : ItemAt(matrix.Variables, cell / count);
    if (across == nullptr || up == nullptr) {
        return {};
    }
    return across == up ? WholeVariable(up->Name) : Meaning{{across->Name, {}}, {up->Name, {}}};
}

struct GraphMeaning {
    const GraphDocument& Graph;
    const DocumentPlace& Place;

    Meaning operator()(const Histogram& chart) const { return MeaningOfPoint(Graph, chart, Place); }
    Meaning operator()(const PieChart& chart) const { return MeaningOfPoint(Graph, chart, Place); }
    Meaning operator()(const StackedPlot& chart) const { return MeaningOfLayer(Graph, chart, Place); }
    Meaning operator()(const BoxPlot& plot) const {
        const BoxStatistics* box = ItemAt(plot.Boxes, Place.Point);
        if (box == nullptr || !plot.Groups) {
            return box == nullptr ? Meaning() : WholeVariable(box->Variable);
        }
        return {{plot.Groups->By, Named(box->Variable, false, box->Cases == 0)}};
    }
    Meaning operator()(const ScatterMatrix& matrix) const { return MeaningOfCell(matrix, Place.Point); }
    Meaning operator()(const MosaicPlot& plot) const {
        return Place.Point < 0 ? Meaning() : Meaning{{plot.Columns.Variable, {}}, {plot.Layers.Variable, {}}};
    }
    Meaning operator()(const Histogram3DPlot& plot) const {
        return Place.Point < 0 ? Meaning() : Meaning{{plot.X.Variable, {}}, {plot.Y.Variable, {}}};
    }
};

/// Whether the count of a row is told, and is none.
bool IsEmptyRow(const SpreadsheetDocument& table, const SpreadsheetRow& row) {
    const auto column = std::ranges::find(table.Columns, CountName, &SpreadsheetColumn::Name);
    const auto place = static_cast<std::size_t>(column - table.Columns.begin());
    const double* count = place < row.Cells.size() ? std::get_if<double>(&row.Cells[place]) : nullptr;
    return count != nullptr && *count == 0.0;
}

/// A row of a frequency table.
PlacedCategory CategoryOfRow(const SpreadsheetDocument& table, const ShownVariable& variable, std::size_t row) {
    const SpreadsheetRow& shown = table.Rows[row];
    const bool isMissing = shown.IsMissing || (variable.HasMissing && row == variable.Categories.size());
    const bool isKnown = variable.Parts() == table.Rows.size() && row < variable.Categories.size();
    return Named(isKnown ? variable.Categories[row] : shown.NameForPeople(), isMissing, IsEmptyRow(table, shown));
}

Meaning MeaningOfRow(const SpreadsheetDocument& table, int row) {
    const SpreadsheetRow* pointed = ItemAt(table.Rows, row);
    if (pointed == nullptr) {
        return {};
    }
    if (pointed->About) {
        const RowSubject& about = *pointed->About;
        return about.Category.empty()
                   ? WholeVariable(about.Variable)
                   : Meaning{{about.Variable, Named(about.Category, pointed->IsMissing, IsEmptyRow(table, *pointed))}};
    }
    const ShownVariable* only = table.About.OnlyVariable();
    if (only != nullptr && only->Parts() == table.Rows.size()) {
        ShownCategories shown;
        for (std::size_t each = 0; each < table.Rows.size(); ++each) {
            shown.push_back(CategoryOfRow(table, *only, each));
        }
        return {{only->Name, CategoryAt(shown, static_cast<std::size_t>(row))}};
    }
    const bool isByVariable = table.About.Variables.size() == table.Rows.size();
    return WholeVariable(isByVariable ? ItemAt(table.About.Variables, row)->Name : pointed->Name);
}

}  // namespace

std::vector<PlacedVariable> MeaningOf(const ResultDocument& document, const DocumentPlace& place) {
    if (const GraphDocument* graph = document.Graph()) {
        return std::visit(GraphMeaning{*graph, place}, graph->Content);
    }
    const SpreadsheetDocument* table = document.Spreadsheet();
    return table == nullptr ? Meaning() : MeaningOfRow(*table, place.Row);
}

}  // namespace quillara
