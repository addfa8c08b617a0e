#include "workbench/statistics/ChiSquare.h"

#include <cmath>
#include <limits>

namespace quillara {
namespace {

constexpr double Precision = std::numeric_limits<double>::epsilon();
constexpr double Tiny = std::numeric_limits<double>::min();
constexpr int MostTerms = 100'000;

// The regularised incomplete gamma function of a at x; both from 0 to 1, and together 1.

/// The lower one by its power series, which is quick for x below a + 1.
double LowerGamma(double a, double x) {
    double term = 1.0 / a;
    double sum = term;
    for (int n = 1; n < MostTerms && term > sum * Precision; ++n) {
        term *= x / (a + n);
        sum += term;
    }
    return sum * std::exp(a * std::log(x) - x - std::lgamma(a));
}

/// The upper one by its continued fraction (Lentz), for x from a + 1 on.
double UpperGamma(double a, double x) {
    double denominator = x + 1.0 - a;
    double numerator = 1.0 / Tiny;
    double inverse = 1.0 / denominator;
    double fraction = inverse;
    for (int n = 1; n < MostTerms; ++n) {
        const double factor = -n * (n - a);
        denominator += 2.0;
        inverse = factor * inverse + denominator;
        inverse = 1.0 / (std::fabs(inverse) < Tiny ? Tiny : inverse);
        numerator = denominator + factor / numerator;
        numerator = std::fabs(numerator) < Tiny ? Tiny : numerator;
        const double step = inverse * numerator;
        fraction *= step;
        if (std::fabs(step - 1.0) <= Precision) {
            break;
        }
    }
    return fraction * std::exp(a * std::log(x) - x - std::lgamma(a));
}

}  // namespace

double ChanceOfChiSquare(double value, int freedom) {
    if (!std::isfinite(value) || freedom < 1) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const double a = freedom / 2.0;
    const double x = value / 2.0;
    if (x <= 0.0) {
        return 1.0;
    }
    return x < a + 1.0 ? 1.0 - LowerGamma(a, x) : UpperGamma(a, x);
}

}  // namespace quillara
