#pragma once

#include <cstdint>
#include <string>

#include "platform/OrderedBits.h"

/// One value or one interval of a variable. A set of categories is ordered by Upper; two categories whose Upper
/// are nearly equal are one.
struct Categories {
    std::int32_t Kind = 0;  ///< how it was made; copied with the record, read by nothing in the engine
    double Count = 0.0;  ///< sum of the weights of its cases in the last pass
    double Upper = 0.0;  ///< the value itself, or the upper bound of the interval
    std::string Name;  ///< what it is shown as
    double Lower = 0.0;  ///< the value itself, or the lower bound of the interval
};

[[nodiscard]] inline bool operator<(const Categories& left, const Categories& right) noexcept {
    return ClearlyBelow(left.Upper, right.Upper);
}

/// A category of a set for changing its Count or Name, which play no part in the order of the set.
[[nodiscard]] inline Categories& Editable(const Categories& category) noexcept {
    return const_cast<Categories&>(category);
}
