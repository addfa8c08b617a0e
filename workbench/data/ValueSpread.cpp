#include "workbench/data/ValueSpread.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <span>

#include "platform/OrderedBits.h"

namespace quillara {
namespace {

/// The values that count, ascending; those that are missing are counted in `spread`.
std::vector<double> SortedValues(const Variable& variable, ValueSpread& spread) {
    const NearlyEqualRange missing = RangeNearlyEqualTo(variable.MissingCode);
    std::vector<double> values;
    values.reserve(variable.Values.size());
    VisitRuns(variable.Values, [&](std::span<const double> run) {
        for (const double value : run) {
            if (missing.Contains(value)) {
                ++spread.Missing;
            } else if (std::isfinite(value)) {
                values.push_back(value);
            }
        }
    });
    std::ranges::sort(values);
    return values;
}

/// Between the values on either side of its place, in proportion.
double Quartile(const std::vector<double>& sorted, std::size_t quarters) {
    const std::size_t parts = (sorted.size() - 1) * quarters;
    const double lower = sorted[parts / 4];
    const double upper = sorted[std::min(parts / 4 + 1, sorted.size() - 1)];
    return lower + (upper - lower) * static_cast<double>(parts % 4) / 4.0;
}

std::size_t CountDistinct(const std::vector<double>& sorted) {
    std::size_t count = 0;
    for (auto at = sorted.begin(); at != sorted.end(); at = std::upper_bound(at, sorted.end(), *at)) {
        ++count;
    }
    return count;
}

std::vector<std::size_t> BarsByValue(const std::vector<double>& sorted, std::size_t mostBars) {
    std::vector<std::size_t> bars;
    for (auto at = sorted.begin(); at != sorted.end();) {
        const auto end = std::upper_bound(at, sorted.end(), *at);
        bars.push_back(static_cast<std::size_t>(end - at));
        at = end;
    }
    if (bars.size() > mostBars) {
        std::ranges::sort(bars, std::ranges::greater());
        bars.resize(mostBars);
    }
    return bars;
}

std::vector<std::size_t> BarsByRange(const std::vector<double>& sorted, std::size_t count) {
    std::vector<std::size_t> bars(count);
    const double width = (sorted.back() - sorted.front()) / static_cast<double>(count);
    for (const double value : sorted) {
        const double place = width > 0.0 ? (value - sorted.front()) / width : 0.0;
        ++bars[std::min(count - 1, static_cast<std::size_t>(place))];
    }
    return bars;
}

}  // namespace

ValueSpread SpreadOf(const Variable& variable, std::size_t mostBars) {
    ValueSpread spread;
    const std::vector<double> sorted = SortedValues(variable, spread);
    spread.Distinct = CountDistinct(sorted);
    if (sorted.empty()) {
        return spread;
    }
    const bool isByValue = spread.Distinct <= mostBars || variable.HasLabels();
    spread.Bars = isByValue ? BarsByValue(sorted, mostBars) : BarsByRange(sorted, mostBars);
    if (variable.Kind != ValueKind::Text) {
        spread.Numbers = {sorted.front(), Quartile(sorted, 1), Quartile(sorted, 2), Quartile(sorted, 3), sorted.back()};
    }
    return spread;
}

}  // namespace quillara
