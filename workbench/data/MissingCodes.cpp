#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "platform/OrderedBits.h"
#include "workbench/data/DataTable.h"

namespace quillara {
namespace {

constexpr double FirstPower = 10000;  // the codes are 1 - 10^k, from -9999

struct Span {
    double Lowest = std::numeric_limits<double>::infinity();
    double Highest = -std::numeric_limits<double>::infinity();

    [[nodiscard]] bool IsEmpty() const { return Lowest > Highest; }
};

Span FiniteSpan(const std::vector<double>& values) {
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
double FreeCodeNearLowest(const std::vector<double>& values) {
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

double ChooseMissingCode(const std::vector<double>& values) {
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

std::vector<std::string> DistinctTexts(const std::vector<std::optional<std::string>>& texts) {
    std::unordered_set<std::string_view> seen;
    std::vector<std::string> distinct;
    for (const std::optional<std::string>& text : texts) {
        if (text && seen.insert(*text).second) {
            distinct.push_back(*text);
        }
    }
    std::ranges::sort(distinct);
    return distinct;
}

}  // namespace

double EncodeMissing(std::vector<double>& values) {
    const double code = ChooseMissingCode(values);
    std::ranges::replace_if(
        values, [](double value) { return std::isnan(value); }, code);
    return code;
}

void EncodeNumbers(Variable& variable, std::vector<double> values) {
    variable.MissingCode = EncodeMissing(values);
    variable.Values = std::move(values);
}

void EncodeTexts(Variable& variable, const std::vector<std::optional<std::string>>& texts) {
    variable.Kind = ValueKind::Text;
    variable.Texts = DistinctTexts(texts);
    std::unordered_map<std::string_view, double> places;
    for (const std::string& text : variable.Texts) {
        places.emplace(text, static_cast<double>(places.size() + 1));
    }
    std::vector<double> values;
    values.reserve(texts.size());
    for (const std::optional<std::string>& text : texts) {
        values.push_back(text ? places.at(*text) : std::numeric_limits<double>::quiet_NaN());
    }
    EncodeNumbers(variable, std::move(values));
}

}  // namespace quillara
