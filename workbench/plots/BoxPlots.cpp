#include "workbench/plots/BoxPlots.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "workbench/documents/BoxTypes.h"

namespace quillara {
namespace {

constexpr double OutlierDistance = 1.5;  // box lengths from the box
constexpr double ExtremeDistance = 3.0;

void ShowMeans(BoxStatistics& box, const ValueMoments& moments, const BoxTypeFacts& facts) {
    const double deviation = moments.StandardDeviation;
    const double error = deviation / std::sqrt(moments.Size);
    const double boxReach = facts.Box == BoxReach::Error ? error : deviation;
    const double whiskerReach = (facts.Whisker == BoxReach::Error ? error : deviation) * facts.WhiskerFactor;
    box.Middle = moments.Mean;
    box.BoxLow = moments.Mean - boxReach;
    box.BoxHigh = moments.Mean + boxReach;
    box.WhiskerLow = moments.Mean - whiskerReach;
    box.WhiskerHigh = moments.Mean + whiskerReach;
}

void SortOnce(std::vector<double>& values) {
    SortByBits(values);
    values.erase(std::unique(values.begin(), values.end()), values.end());
}

void ShowQuartiles(BoxStatistics& box, const WeightedValues& sample) {
    const SampleQuantiles quantiles(sample);
    box.BoxLow = quantiles.At(Quartiles[0]);
    box.Middle = quantiles.At(Quartiles[1]);
    box.BoxHigh = quantiles.At(Quartiles[2]);
    const double length = box.BoxHigh / 2 - box.BoxLow / 2;  // halves, so that none is too large for a double
    const auto distance = [low = box.BoxLow / 2, high = box.BoxHigh / 2](double value) {
        return std::max(low - value / 2, value / 2 - high);
    };
    std::vector<double> beyond(sample.Values.size() + 1);  // values in the reach are written over by the next one
    std::size_t count = 0;
    double whiskerLow = box.BoxLow;
    double whiskerHigh = box.BoxHigh;
    for (const double value : sample.Values) {
        const bool isInReach = distance(value) <= OutlierDistance * length;
        whiskerLow = std::min(whiskerLow, isInReach ? value : whiskerLow);
        whiskerHigh = std::max(whiskerHigh, isInReach ? value : whiskerHigh);
        beyond[count] = value;
        count += isInReach ? 0U : 1U;
    }
    box.WhiskerLow = whiskerLow;
    box.WhiskerHigh = whiskerHigh;
    beyond.resize(count);
    for (const double value : beyond) {
        (distance(value) <= ExtremeDistance * length ? box.Outliers : box.Extremes).push_back(value);
    }
    SortOnce(box.Outliers);
    SortOnce(box.Extremes);
}

}  // namespace

SampleQuantiles::SampleQuantiles(const WeightedValues& sample, WeightedSize size, std::span<const double> shares)
    : Size(static_cast<double>(sample.Values.size())) {
    if (!sample.Weights.empty()) {
        PutInOrder(sample, size);
        return;
    }
    std::vector<std::size_t> places;
    for (const double share : shares) {
        places.push_back(static_cast<std::size_t>(share * (Size - 1.0)));
    }
    Unweighted.emplace(sample.Values, places);
}

void SampleQuantiles::PutInOrder(const WeightedValues& sample, WeightedSize size) {
    Values.resize(sample.Values.size());
    std::vector<std::size_t> order(Values.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, {}, [&](std::size_t place) { return sample.Values[place]; });
    double reached = 0.0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        Values[i] = sample.Values[order[i]];
        Reached.push_back(reached += sample.Weights[order[i]]);
    }
    Size = size == WeightedSize::SumOfWeights ? reached : std::max(reached, Size);
}

double SampleQuantiles::WeightedValueAt(double place) const {
    constexpr double slack = 1e-12;  // of the sum: what adding fractions loses
    const double sum = Reached.back();
    const auto reached = std::ranges::upper_bound(Reached, place / Size * sum + slack * sum);
    const auto index = static_cast<std::size_t>(reached - Reached.begin());
    return Values[std::min(index, Values.size() - 1)];
}

std::pair<double, double> SampleQuantiles::ValuesAt(double place) const {
    return Unweighted ? Unweighted->At(static_cast<std::size_t>(place))
                      : std::pair(WeightedValueAt(place), WeightedValueAt(place + 1.0));
}

double SampleQuantiles::At(double share) const {
    const double place = std::max(share * (Size - 1.0), 0.0);
    const double lower = std::floor(place);
    const auto [low, high] = ValuesAt(lower);
    return std::lerp(low, high, place - lower);
}

BoxStatistics BoxOf(const WeightedValues& sample, BoxType type) {
    const BoxTypeFacts& facts = FactsOf(type);
    BoxStatistics box;
    box.Cases = static_cast<std::int64_t>(sample.Values.size());
    box.WeightedCases = SumOfWeights(sample);
    if (!sample.Values.empty() && facts.ShowsMedian()) {
        ShowQuartiles(box, sample);
    } else if (!sample.Values.empty()) {
        ShowMeans(box, MomentsOf(sample), facts);
    }
    return box;
}

BoxPlot BoxPlotOf(const BoxRequest& request) {
    BoxPlot plot;
    plot.Type = request.Type;
    plot.Weight = request.Weights.Variable;
    plot.Boxes.resize(request.Variables.size());
    RunParts(request.Runner, plot.Boxes.size(), [&](std::size_t part) {
        const Variable& variable = request.Table.Variables[request.Variables[part]];
        BoxStatistics& box = plot.Boxes[part];
        box = BoxOf(ValidValues(variable, request.Rows, request.Weights), request.Type);
        box.Variable = variable.Name;
        box.LongName = variable.LongName;
    });
    return plot;
}

}  // namespace quillara
