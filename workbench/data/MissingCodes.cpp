#include "workbench/data/MissingCodes.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/OrderedBits.h"

namespace quillara {
namespace {

constexpr double FirstPower = 10000;  // the codes are 1 - 10^k, from -9999

struct Span {
    double Lowest = std::numeric_limits<double>::infinity();
    double Highest = -std::numeric_limits<double>::infinity();

    [[nodiscard]] bool IsEmpty() const { return Lowest > Highest; }
};

Span FiniteSpan(std::span<const double> values) {
    Span span;
    for (const double value : values) {
        if (std::isfinite(value)) {
            span.Lowest = std::min(span.Lowest, value);
            span.Highest = std::max(span.Highest, value);
        }
    }
    return span;
}

/// The first code up from the lowest double that no value is nearly equal to. The codes stand so far apart that their
/// ranges touch and don't overlap: each value takes one, so one among the first values.size() + 1 is free.
double FreeCodeNearLowest(std::span<const double> values) {
    constexpr std::uint64_t stride = 2 * BitTolerance + 1;
    const std::int64_t lowest = OrderedBits(std::numeric_limits<double>::lowest());
    std::vector<bool> isTaken(values.size() + 1);
    for (const double value : values) {
        const std::uint64_t height =
            static_cast<std::uint64_t>(OrderedBits(value)) - static_cast<std::uint64_t>(lowest);
        const std::uint64_t code = (height + BitTolerance) / stride;
        if (std::isfinite(value) && code < isTaken.size()) {
            isTaken[code] = true;
        }
    }
    const auto free = static_cast<std::int64_t>(std::ranges::find(isTaken, false) - isTaken.begin());
    return FromOrderedBits(lowest + free * static_cast<std::int64_t>(stride));
}

}  // namespace

double MissingCodeFor(std::span<const double> values) {
    const Span span = FiniteSpan(values);
    if (span.IsEmpty()) {
        return 1 - FirstPower;
    }
    const double limit = span.Lowest - 10 * (span.Highest - span.Lowest) - 10;
    for (double power = FirstPower; std::isfinite(power); power *= 10) {
        // Below all values, a code can be nearly equal to the lowest only.
        if (1 - power < limit && !NearlyEqual(1 - power, span.Lowest)) {
            return 1 - power;
        }
    }
    return FreeCodeNearLowest(values);
}

double EncodeMissing(std::vector<double>& values) {
    const double code = MissingCodeFor(values);
    std::ranges::replace_if(
        values, [](double value) { return std::isnan(value); }, code);
    return code;
}

}  // namespace quillara
