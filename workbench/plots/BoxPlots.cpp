#include "workbench/plots/BoxPlots.h"

#include <algorithm>
#include <cmath>

#include "workbench/documents/BoxTypes.h"

namespace quillara {
namespace {

constexpr double OutlierDistance = 1.5;  // box lengths from the box
constexpr double ExtremeDistance = 3.0;

void ShowMeans(BoxStatistics& box, const std::vector<double>& values, const BoxTypeFacts& facts) {
    const ValueMoments moments = MomentsOf(values);
    const double deviation = moments.StandardDeviation();
    const double error = deviation / std::sqrt(static_cast<double>(moments.Cases));
    const double boxReach = facts.Box == BoxReach::Error ? error : deviation;
    const double whiskerReach = (facts.Whisker == BoxReach::Error ? error : deviation) * facts.WhiskerFactor;
    box.Middle = moments.Mean;
    box.BoxLow = moments.Mean - boxReach;
    box.BoxHigh = moments.Mean + boxReach;
    box.WhiskerLow = moments.Mean - whiskerReach;
    box.WhiskerHigh = moments.Mean + whiskerReach;
}

void SortOnce(std::vector<double>& values) {
    std::ranges::sort(values);
    values.erase(std::unique(values.begin(), values.end()), values.end());
}

void ShowQuartiles(BoxStatistics& box, std::vector<double> values) {
    box.Middle = QuantileOf(values, 0.5);
    box.BoxLow = QuantileOf(values, 0.25);
    box.BoxHigh = QuantileOf(values, 0.75);
    box.WhiskerLow = box.BoxLow;
    box.WhiskerHigh = box.BoxHigh;
    const double length = box.BoxHigh - box.BoxLow;
    for (const double value : values) {
        const double distance = std::max(box.BoxLow - value, value - box.BoxHigh);
        if (distance <= OutlierDistance * length) {
            box.WhiskerLow = std::min(box.WhiskerLow, value);
            box.WhiskerHigh = std::max(box.WhiskerHigh, value);
        } else {
            (distance <= ExtremeDistance * length ? box.Outliers : box.Extremes).push_back(value);
        }
    }
    SortOnce(box.Outliers);
    SortOnce(box.Extremes);
}

}  // namespace

double QuantileOf(std::vector<double>& values, double share) {
    const double place = share * static_cast<double>(values.size() - 1);
    const auto lower = static_cast<std::ptrdiff_t>(place);
    const auto at = values.begin() + lower;
    std::nth_element(values.begin(), at, values.end());
    const double part = place - static_cast<double>(lower);
    return part == 0.0 ? *at : std::lerp(*at, *std::min_element(at + 1, values.end()), part);
}

BoxPlot BoxPlotOf(const DataTable& table, const std::vector<std::size_t>& variables, const PlotRows& rows,
                  BoxType type) {
    BoxPlot plot;
    plot.Type = type;
    for (const std::size_t index : variables) {
        const Variable& variable = table.Variables[index];
        std::vector<double> values = ValidValues(variable, rows);
        BoxStatistics& box = plot.Boxes.emplace_back();
        box.Variable = variable.Name;
        box.LongName = variable.LongName;
        box.Cases = static_cast<std::int64_t>(values.size());
        if (values.empty()) {
            continue;
        }
        const BoxTypeFacts& facts = FactsOf(type);
        if (facts.ShowsMedian()) {
            ShowQuartiles(box, std::move(values));
        } else {
            ShowMeans(box, values, facts);
        }
    }
    return plot;
}

}  // namespace quillara
