#pragma once

#include <cstddef>
#include <cstdint>

namespace drilldown {

/// Sums that fit the registers.
inline constexpr std::size_t OrderedSumsLimit = 16;

/// Adds each weight to the sum at its place, below OrderedSumsLimit, one after the other: to the last bit what adding
/// them in this order gives. An addition waits for the one before, and not for its way through memory. Only where the
/// processor HasRegisters(MomentRegisters::Widest).
void AddInOrder(double* sums, const std::uint32_t* places, const double* weights, std::size_t count);

}  // namespace drilldown
