#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace drilldown {

/// Sums of one variable, and the place among them that each of some cases adds to.
struct OrderedSums {
    double* Sums;
    const std::uint32_t* Places;
};

/// Variables whose sums are added to side by side at most.
inline constexpr std::size_t OrderedSumsLimit = 6;

/// Adds each weight to the sum at its place, in every variable, one after the other: to the last bit what adding them
/// in this order gives. A sum waits for its way through memory when the next case adds to it too; meanwhile those of
/// the other variables go on.
void AddInOrder(std::span<const OrderedSums> variables, const double* weights, std::size_t count);

}  // namespace drilldown
