#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <unordered_set>

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

bool IsTaken(const std::vector<double>& values, double code) {
    const NearlyEqualRange range = RangeNearlyEqualTo(code);
    return std::ranges::any_of(values, [&](double value) { return range.Contains(value); });
}

/// The first code up from the lowest double that no value is nearly equal to. Their ranges don't touch, so one among
/// the first values.size() + 1 is free.
double FreeCodeNearLowest(const std::vector<double>& values) {
    constexpr auto stride = static_cast<std::int64_t>(2 * BitTolerance + 1);
    std::int64_t ordered = OrderedBits(std::numeric_limits<double>::lowest());
    while (IsTaken(values, FromOrderedBits(ordered))) {
        ordered += stride;
    }
    return FromOrderedBits(ordered);
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

void EncodeTexts(Variable& variable, const std::vector<std::optional<std::string>>& texts) {
    variable.Kind = ValueKind::Text;
    variable.Texts = DistinctTexts(texts);
    std::unordered_map<std::string_view, double> places;
    for (const std::string& text : variable.Texts) {
        places.emplace(text, static_cast<double>(places.size() + 1));
    }
    variable.Values.clear();
    variable.Values.reserve(texts.size());
    for (const std::optional<std::string>& text : texts) {
        variable.Values.push_back(text ? places.at(*text) : std::numeric_limits<double>::quiet_NaN());
    }
    variable.MissingCode = EncodeMissing(variable.Values);
}

}  // namespace quillara
