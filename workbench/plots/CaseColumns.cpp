#include "workbench/plots/CaseColumns.h"

#include <algorithm>
#include <cmath>

#include "host/TextFunctions.h"

namespace quillara {

std::vector<double> ValidValues(const Variable& variable, const PlotRows& rows) {
    std::vector<double> values;
    values.reserve(rows.size());
    for (const std::uint32_t row : rows) {
        const double value = variable.Values[row];
        if (std::isfinite(value) && !variable.IsMissing(value)) {
            values.push_back(value);
        }
    }
    return values;
}

double ValueMoments::StandardDeviation() const {
    return Cases < 2 ? 0.0 : std::sqrt(SumSquares / static_cast<double>(Cases - 1));
}

ValueMoments MomentsOf(std::span<const double> values) {
    ValueMoments moments;
    if (values.empty()) {
        return moments;
    }
    moments.Min = moments.Max = values.front();
    for (const double value : values) {
        ++moments.Cases;
        moments.Min = std::min(moments.Min, value);
        moments.Max = std::max(moments.Max, value);
        const double deviation = value - moments.Mean;
        moments.Mean += deviation / static_cast<double>(moments.Cases);
        moments.SumSquares += deviation * (value - moments.Mean);
    }
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
        bound += step;
        bins.UpperBounds.push_back(bound);
    } while (bound < max);
    return bins;
}

}  // namespace quillara
