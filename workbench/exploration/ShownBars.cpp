#include "workbench/exploration/ShownBars.h"

#include <variant>

namespace quillara {

ShownBars::ShownBars(const GraphDocument& graph) {
    const bool isStacked = std::holds_alternative<StackedPlot>(graph.Content);
    if (!isStacked && !std::holds_alternative<Histogram>(graph.Content)) {
        return;
    }
    const SeriesChart& chart = *SeriesOf(graph);
    for (std::size_t series = 0; series < chart.Series.size(); ++series) {
        const std::vector<GraphPoint>& points = chart.Series[series].Points;
        for (std::size_t point = 0; point < points.size(); ++point) {
            const std::size_t variable = isStacked ? point : 0;
            const bool isNamed = variable < graph.About.Variables.size();
            Add(isNamed ? graph.About.Variables[variable].Name : "", points[point],
                {static_cast<int>(series), static_cast<int>(point)});
        }
    }
}

void ShownBars::Add(const std::string& variable, const GraphPoint& point, Place place) {
    const std::string name = variable + '\n' + (point.IsMissing ? "\n" : point.Name);
    if (Places.emplace(name, place).second) {
        Names.emplace(place, name);
    }
}

std::optional<ShownBars::Place> ShownBars::Find(const ShownBars& others, Place place) const {
    const auto name = others.Names.find(place);
    const auto found = name == others.Names.end() ? Places.end() : Places.find(name->second);
    return found == Places.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace quillara
