#include "workbench/plots/CaseColumns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

#include "host/TextFunctions.h"
#include "platform/OrderedBits.h"

namespace quillara {

namespace {

/// Parts of a sum that are added side by side, none waiting for the one before.
constexpr std::size_t Parts = 8;
using PartsOfSum = std::array<double, Parts>;

/// Calls `take(part, i)` for i = 0 .. count - 1.
template <typename Take>
void TakeInParts(std::size_t count, Take take) {
    std::size_t i = 0;
    for (; i + Parts <= count; i += Parts) {
        for (std::size_t part = 0; part < Parts; ++part) {
            take(part, i + part);
        }
    }
    for (; i < count; ++i) {
        take(0, i);
    }
}

/// As the passes over the cases test a weight: the smallest positive numbers count as 0.
bool IsPositive(double weight) {
    constexpr double smallest = 15 * std::numeric_limits<double>::denorm_min();
    return weight > smallest && std::isfinite(weight);
}

/// The weighted sum of a term of each value, in parts that are added side by side.
template <typename Term>
double SumOf(const WeightedValues& values, Term term) {
    PartsOfSum parts{};
    const std::size_t count = values.Values.size();
    const double* each = values.Values.data();
    if (values.Weights.empty()) {
        TakeInParts(count, [&](std::size_t part, std::size_t i) { parts[part] += term(each[i]); });
    } else {
        const double* weights = values.Weights.data();
        TakeInParts(count, [&](std::size_t part, std::size_t i) { parts[part] += term(each[i]) * weights[i]; });
    }
    return std::accumulate(parts.begin(), parts.end(), 0.0);
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
    if (weights.Values.empty()) {
        valid.Values.resize(rows.Count() + 1);  // what isn't valid is written over by the next one
        std::size_t count = 0;
        rows.ForEachValue(variable.Values, [&](double value) {
            valid.Values[count] = value;
            count += isValid(value) ? 1U : 0U;
        });
        valid.Values.resize(count);
        return valid;
    }
    valid.Values.reserve(rows.Count());
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

std::pair<double, double> RangeOf(std::span<const double> values) {
    PartsOfSum low{};
    low.fill(values.front());
    PartsOfSum high = low;
    TakeInParts(values.size(), [&](std::size_t part, std::size_t i) {
        low[part] = values[i] < low[part] ? values[i] : low[part];
        high[part] = values[i] > high[part] ? values[i] : high[part];
    });
    return {std::ranges::min(low), std::ranges::max(high)};
}

double SumOfWeights(const WeightedValues& values) {
    return values.Weights.empty() ? static_cast<double>(values.Values.size())
                                  : std::accumulate(values.Weights.begin(), values.Weights.end(), 0.0);
}

double ScaleFor(double min, double max) {
    constexpr int mostPower = 1000;  // a factor that is itself a double
    const double magnitude = std::max(std::fabs(min), std::fabs(max));
    return magnitude > 0.0 ? std::ldexp(1.0, -std::clamp(std::ilogb(magnitude), -mostPower, mostPower)) : 1.0;
}

ValueMoments MomentsOf(const WeightedValues& values, WeightedSize size) {
    ValueMoments moments;
    if (values.Values.empty()) {
        return moments;
    }
    moments.Cases = static_cast<std::int64_t>(values.Values.size());
    moments.Weight = SumOfWeights(values);
    const double least = size == WeightedSize::SumOfWeights ? 0.0 : static_cast<double>(moments.Cases);
    moments.Size = std::max(moments.Weight, least);
    const auto [min, max] = RangeOf(values.Values);
    moments.Min = min;
    moments.Max = max;
    moments.Mean = min;
    if (min == max) {
        return moments;
    }
    const double scale = ScaleFor(min, max);
    const double mean = SumOf(values, [=](double value) { return value * scale; }) / moments.Weight;
    const double squares = SumOf(values, [=](double value) {
        const double deviation = value * scale - mean;
        return deviation * deviation;
    });
    moments.Mean = mean / scale;
    const double freedom = moments.Weight - moments.Weight / moments.Size;  // the size less 1, in units of the weights
    const double variance = freedom > 0.0 ? squares / freedom : 0.0;
    moments.StandardDeviation = std::sqrt(variance) / scale;
    return moments;
}

std::size_t NeatBins::PlaceOf(double value) const {
    std::size_t place = 0;  // they are few: a search would take longer
    for (const double bound : UpperBounds) {
        place += bound < value ? 1U : 0U;
    }
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
