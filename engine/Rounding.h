#pragma once

#include <cmath>

namespace drilldown {

/// The whole number nearest to x, halves away from zero; 0.0 stays as it is, and a NaN stays a NaN.
[[nodiscard]] inline double RoundHalfAwayFromZero(double x) {
    if (x == 0.0) {
        return 0.0;
    }
    return x > 0.0 ? std::floor(x + 0.5) : std::ceil(x - 0.5);
}

}  // namespace drilldown
