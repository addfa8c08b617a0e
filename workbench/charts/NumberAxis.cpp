#include "workbench/charts/NumberAxis.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quillara {
namespace {

constexpr double slack = 1e-9;  // of a step, for bounds that are round themselves
constexpr int mostPlainDigits = 7;

double StepFor(double width, int most) {
    const double least = width / most;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : std::array{1.0, 2.0, 5.0, 10.0}) {
        const double steps = std::floor(width / (factor * power) + slack) + 1;
        if (factor * power >= least * (1.0 - slack) && steps <= most) {
            return factor * power;
        }
    }
    return 20.0 * power;
}

/// Decimals for plain numbers; for very large or very small ones the form with an exponent.
QString TickText(double number, double step) {
    const int decimals = std::max(0, static_cast<int>(std::ceil(-std::log10(step) - slack)));
    const double magnitude = std::fabs(number);
    if (decimals > mostPlainDigits || magnitude >= std::pow(10.0, mostPlainDigits)) {
        return NumberText(number, mostPlainDigits);
    }
    return QString::number(number, 'f', decimals);
}

}  // namespace

std::vector<AxisMark> RoundNumbers(double low, double high, int most) {
    if (!(low < high) || !std::isfinite(high - low)) {
        const double number = std::isfinite(low) ? low : high;
        return std::isfinite(number) ? std::vector<AxisMark>{{number, NumberText(number)}} : std::vector<AxisMark>{};
    }
    const double step = StepFor(high - low, std::max(most, 2));
    std::vector<AxisMark> marks;
    for (double k = std::ceil(low / step - slack); k * step <= high + slack * step; ++k) {
        const double number = k == 0.0 ? 0.0 : k * step;
        marks.push_back({number, TickText(number, step)});
        if (marks.size() > static_cast<std::size_t>(most)) {
            break;  // the step is lost in the digits of the bounds
        }
    }
    return marks;
}

QString NumberText(double number, int digits) {
    return QString::number(number, 'g', digits);
}

NumberRange Widened(NumberRange range, double share) {
    const double width = range.High - range.Low;
    const double room = width > 0.0 ? width * share : std::max(std::fabs(range.Low) * 0.1, 0.5);
    return {range.Low - room, range.High + room};
}

}  // namespace quillara
