// Round axes. Steps are 1, 2 or 5 times a power of ten, bounds are whole multiples of them. Everything is decided by
// exact decimal arithmetic, so that a data value on a round bound never changes its interval by rounding.

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "host/TextFunctions.h"
#include "platform/OrderedBits.h"
#include "workbench/numbers/ExactNumbers.h"

namespace {

constexpr int DefaultParts = 10;
constexpr int LongestExpansion = 767;  // significant decimal digits that a double can have
constexpr std::int64_t LargestRaise = std::int64_t{1} << 61;

/// A range and its step as they are handed back.
struct Scale {
    double Low;
    double High;
    double Step;
};

/// The decimal number Digit x 10^Power.
struct RoundStep {
    int Digit;
    int Power;

    /// The double nearest to a whole multiple of it.
    [[nodiscard]] double Times(std::int64_t count) const {
        const std::string text = std::to_string(Digit * count) + "e" + std::to_string(Power);
        return std::strtod(text.c_str(), nullptr);
    }
};

/// A double with all its decimal digits.
class ExactDecimal {
  public:
    explicit ExactDecimal(double value) : Value(value) {
        std::array<char, LongestExpansion + 16> buffer{};
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                       std::chars_format::scientific, LongestExpansion - 1)
                             .ptr;
        Digits.assign(buffer.data(), end);
        const std::size_t mark = Digits.find('e');
        Exponent = std::stoi(Digits.substr(mark + 1));
        Digits.erase(mark);
        std::erase(Digits, '.');
        Digits = quillara::WithoutTrailingZeros(Digits);
    }

    /// ceil(value / step); a value nearly equal to the nearest multiple of the step counts as that multiple.
    [[nodiscard]] std::int64_t CeilingIn(RoundStep step) const {
        const std::int64_t whole = WholePowers(step.Power);
        const std::int64_t quotient = whole / step.Digit;
        const std::int64_t remainder = whole % step.Digit;
        const bool upperHalf = 2 * remainder + (DigitAt(step.Power - 1) >= '5' ? 1 : 0) >= step.Digit;
        const std::int64_t nearest = Signed(quotient + (upperHalf ? 1 : 0));
        if (NearlyEqual(Value, step.Times(nearest))) {
            return nearest;
        }
        const bool hasFraction = remainder != 0 || HasDigitsBelow(step.Power);
        return Value < 0 ? -quotient : quotient + (hasFraction ? 1 : 0);
    }

  private:
    [[nodiscard]] std::int64_t Signed(std::int64_t magnitude) const { return Value < 0 ? -magnitude : magnitude; }

    [[nodiscard]] char DigitAt(int power) const {
        const int place = Exponent - power;
        return place >= 0 && place < static_cast<int>(Digits.size()) ? Digits[static_cast<std::size_t>(place)] : '0';
    }

    [[nodiscard]] bool HasDigitsBelow(int power) const {
        return !Digits.empty() && static_cast<int>(Digits.size()) > Exponent - power + 1;
    }

    /// The whole part of |value| / 10^power.
    [[nodiscard]] std::int64_t WholePowers(int power) const {
        std::int64_t whole = 0;
        for (int place = Exponent; place >= power; --place) {
            whole = whole * 10 + (DigitAt(place) - '0');
        }
        return whole;
    }

    double Value;
    std::string Digits;
    int Exponent = 0;
};

/// The last bound that repeated addition reaches, or nothing when one of the bounds stays below its least value.
std::optional<double> LastBound(double low, double step, const std::vector<double>& least) {
    double bound = low;
    for (const double limit : least) {
        bound += step;
        if (bound < limit) {
            return std::nullopt;
        }
    }
    return bound;
}

/// Raises the step by as few units in the last place as let every bound reach its least value.
std::optional<Scale> RaiseStep(double low, double step, const std::vector<double>& least) {
    for (std::int64_t raise = 0; raise <= LargestRaise; raise = std::max<std::int64_t>(1, 2 * raise)) {
        const double raised = FromOrderedBits(OrderedBits(step) + raise);
        if (HasFullExponent(raised)) {
            break;
        }
        if (const auto high = LastBound(low, raised, least)) {
            return Scale{low, *high, raised};
        }
    }
    return std::nullopt;
}

struct Range {
    double Low;
    double High;
    int Parts;
};

/// The scale of `count` steps from the multiple `first` on. Nothing when it leaves the doubles, or when its step is so
/// small that the end of the range can't be told from the bound behind it.
std::optional<Scale> BuildScale(const Range& range, RoundStep step, std::int64_t first, std::int64_t count) {
    std::vector<double> least;
    for (std::int64_t i = 1; i <= count; ++i) {
        least.push_back(step.Times(first + i));
    }
    least.back() = std::max(least.back(), range.High);  // a high end just above the bound that it counts as
    const double low = step.Times(first);
    if (HasFullExponent(low) || HasFullExponent(least.back()) || low >= range.Low) {
        return std::nullopt;
    }
    const auto scale = RaiseStep(low, step.Times(1), least);
    const bool usable = scale && !HasFullExponent(scale->High) && ClearlyBelow(scale->High, scale->High + scale->Step);
    return usable ? scale : std::nullopt;
}

double UnitInTheLastPlace(double magnitude) {
    return magnitude > 0 ? magnitude - FromOrderedBits(OrderedBits(magnitude) - 1)
                         : std::numeric_limits<double>::denorm_min();
}

/// Every round step that could give a number of intervals near the one wanted, in rising order.
std::vector<RoundStep> RoundSteps(const Range& range) {
    const double largest = std::max(std::fabs(range.Low), std::fabs(range.High));
    const double unit = UnitInTheLastPlace(largest);
    // Half of the range, because the whole may be more than a double holds. A step takes less than the range over
    // itself plus two intervals, so below this smallest one there is always a better one.
    const double smallest = std::max((range.High / 2 - range.Low / 2) / (range.Parts + 3), unit);
    std::vector<RoundStep> steps;
    const int lastPower = static_cast<int>(std::ceil(std::log10(std::max(largest, unit)))) + 1;
    for (int power = static_cast<int>(std::floor(std::log10(smallest))) - 1; power <= lastPower; ++power) {
        for (const int digit : {1, 2, 5}) {
            const RoundStep step{digit, power};
            const double size = step.Times(1);
            if (size >= smallest && !HasFullExponent(size)) {
                steps.push_back(step);
            }
        }
    }
    return steps;
}

std::optional<Scale> RoundScale(const Range& range) {
    const ExactDecimal low(range.Low);
    const ExactDecimal high(range.High);
    std::optional<Scale> best;
    std::int64_t bestCount = 0;
    for (const RoundStep step : RoundSteps(range)) {
        const std::int64_t first = low.CeilingIn(step) - 1;
        const std::int64_t count = high.CeilingIn(step) - first;
        const std::int64_t distance = std::abs(count - range.Parts);
        const std::int64_t bestDistance = std::abs(bestCount - range.Parts);
        if (best && (distance > bestDistance || (distance == bestDistance && count >= bestCount))) {
            continue;
        }
        if (const auto scale = BuildScale(range, step, first, count)) {
            best = scale;
            bestCount = count;
        }
    }
    return best;
}

/// For ranges at the end of the doubles, where no round bound encloses them: equal parts.
Scale EqualParts(const Range& range) {
    const double below = FromOrderedBits(OrderedBits(range.Low) - 1);
    const double low = HasFullExponent(below) ? range.Low : below;
    // The lowest double alone has no number below it to make its range more than a point.
    const double step = low < range.High ? range.High / range.Parts - low / range.Parts : UnitInTheLastPlace(-low);
    std::vector<double> least(static_cast<std::size_t>(range.Parts), low);
    least.back() = range.High;
    const auto scale = RaiseStep(low, step, least);
    if (!scale || HasFullExponent(scale->High)) {
        return {low, range.High, scale ? scale->Step : step};
    }
    return *scale;
}

}  // namespace

void scling_double_QUA(double* low, double* high, double* step, short /*cases*/, short parts) {
    if (HasFullExponent(*low) || HasFullExponent(*high) || *high < *low) {
        return;
    }
    const Range range{*low, *high, parts < 1 ? DefaultParts : parts};
    const auto round = RoundScale(range);
    const Scale scale = round ? *round : EqualParts(range);
    *low = scale.Low;
    *high = scale.High;
    *step = scale.Step;
}
