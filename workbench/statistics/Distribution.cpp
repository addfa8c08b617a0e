#include "workbench/statistics/Distribution.h"

#include <cmath>
#include <cstddef>

#include "platform/OrderedBits.h"
#include "workbench/plots/BoxPlots.h"

namespace quillara {
namespace {

/// Whole numbers add up exactly as long as a double can hold their sum.
double SumOf(const WeightedValues& sample) {
    long double sum = 0.0;
    for (std::size_t i = 0; i < sample.Values.size(); ++i) {
        const long double weight = sample.Weights.empty() ? 1.0 : sample.Weights[i];
        sum += weight * static_cast<long double>(sample.Values[i]);
    }
    return static_cast<double>(sum);
}

double SkewnessOf(const WeightedValues& sample, const ValueMoments& moments) {
    const double size = moments.Size;
    const double deviation = moments.StandardDeviation;
    if (!(size > 2.0) || !(deviation > 0.0)) {
        return Undefined;
    }
    double squares = 0.0;
    double cubes = 0.0;
    for (std::size_t i = 0; i < sample.Values.size(); ++i) {
        const double weight = sample.Weights.empty() ? 1.0 : sample.Weights[i];
        const double distance = (sample.Values[i] - moments.Mean) / deviation;  // no power is too large for a double
        squares += weight * distance * distance;
        cubes += weight * distance * distance * distance;
    }
    squares /= moments.Weight;
    cubes /= moments.Weight;
    return cubes / std::pow(squares, 1.5) * std::sqrt(size * (size - 1.0)) / (size - 2.0);
}

}  // namespace

double DeviationOf(const ValueMoments& moments) {
    return moments.Cases > 1 && moments.Size > 1.0 ? moments.StandardDeviation : Undefined;
}

Distribution DistributionOf(const Variable& variable, const RowSet& rows, const CaseWeights& weights) {
    const CountedCases counted = CountCases(rows, weights);
    const WeightedValues sample = ValidValues(variable, rows, weights);
    const ValueMoments moments = MomentsOf(sample, WeightedSize::SumOfWeights);
    Distribution found;
    found.Cases = moments.Cases;
    found.Weight = moments.Weight;
    found.Missing = counted.Cases - moments.Cases;
    found.MissingWeight = found.Missing > 0 ? counted.Weight - moments.Weight : 0.0;
    if (moments.Cases == 0) {
        return found;
    }
    found.Sum = SumOf(sample);
    found.Mean = moments.Mean;
    found.Minimum = moments.Min;
    found.Maximum = moments.Max;
    if (moments.Cases == 1 || moments.Size > 1.0) {
        const SampleQuantiles quantiles(sample, WeightedSize::SumOfWeights);
        found.LowerQuartile = quantiles.At(0.25);
        found.Median = quantiles.At(0.5);
        found.UpperQuartile = quantiles.At(0.75);
    }
    found.StandardDeviation = DeviationOf(moments);
    found.Skewness = SkewnessOf(sample, moments);
    return found;
}

CountedCases CountCases(const RowSet& rows, const CaseWeights& weights) {
    CountedCases counted;
    if (weights.Values.empty()) {
        counted.Cases = static_cast<std::int64_t>(rows.Count());
        counted.Weight = static_cast<double>(counted.Cases);
        return counted;
    }
    rows.ForEachValue(weights.Values, [&counted](double weight) {
        if (IsPositiveWeight(weight) && std::isfinite(weight)) {
            ++counted.Cases;
            counted.Weight += weight;
        }
    });
    return counted;
}

}  // namespace quillara
