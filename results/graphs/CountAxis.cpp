#include "results/graphs/CountAxis.h"

#include <cmath>
#include <string>

#include "platform/OrderedBits.h"
#include "results/graphs/ChartBuilder.h"

namespace {

constexpr std::int32_t HighestTop = 2'000'000'000;

/// The largest power of ten that a positive value has reached.
double PowerOfTenReached(double value) {
    double power = 1.0;
    if (ClearlyBelow(value, power)) {
        while (ClearlyBelow(value, power)) {
            power /= 10.0;
        }
        return power;
    }
    while (!ClearlyBelow(value, power * 10.0)) {
        power *= 10.0;
    }
    return power;
}

/// The labels of a count axis up to a top: 0, Unit, 2 x Unit, ...
struct AxisLabels {
    std::int32_t Count;
    std::int32_t Unit;
};

AxisLabels LabelsUpTo(std::int32_t top) {
    // Intended: labels up to 2 also on an axis that ends at 1 or 0, unlike any other, which ends at its last label; the
    // shortest axis depends on having three.
    if (top <= 2) {
        return {3, 1};
    }
    return top <= 5 ? AxisLabels{6, 1} : AxisLabels{11, top / 10};
}

}  // namespace

std::int32_t NiceAxisMax(double highest) {
    if (OrderedBits(highest) <= static_cast<std::int64_t>(BitTolerance)) {
        return 1;
    }
    if (!ClearlyBelow(highest, HighestTop)) {
        return HighestTop;
    }
    const double power = PowerOfTenReached(highest);
    for (const double factor : {2.0, 5.0}) {
        if (ClearlyBelow(highest, factor * power)) {
            // Intended: cut to a whole number, unlike the tops above 1, which are whole; an axis of fractions below 0.5
            // depends on ending at 0.
            return static_cast<std::int32_t>(std::floor(factor * power));
        }
    }
    return static_cast<std::int32_t>(std::floor(10.0 * power));
}

void FillCountAxis(CChartBuilder& chart, double highest) {
    const std::int32_t top = NiceAxisMax(highest);
    const AxisLabels labels = LabelsUpTo(top);
    chart.YMax = top;
    chart.YStep = labels.Unit;
    chart.AllocYScale(labels.Count);
    for (std::int32_t label = 0; label < labels.Count; ++label) {
        const std::int32_t value = label * labels.Unit;
        chart.SetYScale(label, value, std::to_string(value));
    }
}
