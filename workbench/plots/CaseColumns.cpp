#include "workbench/plots/CaseColumns.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/TextFunctions.h"
#include "platform/OrderedBits.h"

namespace quillara {

namespace {

/// As the passes over the cases test a weight: the smallest positive numbers count as 0.
bool IsPositive(double weight) {
    constexpr double smallest = 15 * std::numeric_limits<double>::denorm_min();
    return weight > smallest && std::isfinite(weight);
}

}  // namespace

void RunParts(const PartRunner& runner, std::size_t parts, const std::function<void(std::size_t part)>& work) {
    if (runner) {
        runner(static_cast<std::int32_t>(parts), [&](std::int32_t part) { work(static_cast<std::size_t>(part)); });
        return;
    }
    for (std::size_t part = 0; part < parts; ++part) {
        work(part);
    }
}

WeightedValues ValidValues(const Variable& variable, const PlotRows& rows, const CaseWeights& weights) {
    const NearlyEqualRange missing = RangeNearlyEqualTo(variable.MissingCode);
    const auto isValid = [&](double value) { return std::isfinite(value) && !missing.Contains(value); };
    WeightedValues valid;
    valid.Values.reserve(rows.Count());
    if (weights.Values.empty()) {
        rows.ForEachValue(variable.Values, [&](double value) {
            if (isValid(value)) {
                valid.Values.push_back(value);
            }
        });
        return valid;
    }
    valid.Weights.reserve(rows.Count());
    rows.ForEach([&](std::size_t row) {
        const double value = variable.Values[row];
        const double weight = weights.Values[row];
        if (isValid(value) && IsPositive(weight)) {
            valid.Values.push_back(value);
            valid.Weights.push_back(weight);
        }
    });
    return valid;
}

double ValueMoments::Size() const {
    return std::max(Weight, static_cast<double>(Cases));
}

double ScaleFor(double min, double max) {
    constexpr int mostPower = 1000;  // a factor that is itself a double
    const double magnitude = std::max(std::fabs(min), std::fabs(max));
    return magnitude > 0.0 ? std::ldexp(1.0, -std::clamp(std::ilogb(magnitude), -mostPower, mostPower)) : 1.0;
}

ValueMoments MomentsOf(const WeightedValues& values) {
    ValueMoments moments;
    if (values.Values.empty()) {
        return moments;
    }
    const auto [min, max] = std::ranges::minmax(values.Values);
    const double scale = ScaleFor(min, max);
    double mean = 0.0;
    double squares = 0.0;
    for (std::size_t i = 0; i < values.Values.size(); ++i) {
        const double weight = values.Weights.empty() ? 1.0 : values.Weights[i];
        const double value = values.Values[i] * scale;
        moments.Weight += weight;
        const double deviation = (value - mean) * weight;
        mean += deviation / moments.Weight;
        squares += deviation * (value - mean);
    }
    moments.Cases = static_cast<std::int64_t>(values.Values.size());
    moments.Min = min;
    moments.Max = max;
    moments.Mean = mean / scale;
    const double freedom =
        moments.Weight - moments.Weight / moments.Size();  // the size less 1, in units of the weights
    const double variance = freedom > 0.0 ? squares / freedom : 0.0;
    moments.StandardDeviation = std::sqrt(variance) / scale;
    return moments;
}

std::size_t NeatBins::PlaceOf(double value) const {
    const auto bound = std::ranges::lower_bound(UpperBounds, value);
    const auto place = static_cast<std::size_t>(bound - UpperBounds.begin());
    return std::min(place, UpperBounds.size() - 1);
}

NeatBins NeatBinsOver(double min, double max, int parts) {
    double low = min;
    double high = max;
    double step = (max - min) / parts;
    scling_double_QUA(&low, &high, &step, 0, static_cast<short>(parts));
    NeatBins bins{low, step, {}};
    double bound = low;
    do {
        const double next = bound + step;
        bound = next > bound ? next : max;  // a step that is lost in the digits of the bound ends at once
        bins.UpperBounds.push_back(bound);
    } while (bound < max);
    return bins;
}

}  // namespace quillara
