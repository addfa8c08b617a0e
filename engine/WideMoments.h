#pragma once

#include <cstddef>

namespace drilldown {

struct MomentLanes;
struct MomentCases;

// The update of moments by registers that not every processor has. They exist on x86-64 only, and only processors that
// have such registers may call them.

/// Four lanes a register (AVX2).
void UpdateMomentsWide(MomentLanes& lanes, std::size_t variables, const MomentCases& cases);
/// Eight lanes a register (AVX-512 F and DQ).
void UpdateMomentsWidest(MomentLanes& lanes, std::size_t variables, const MomentCases& cases);

}  // namespace drilldown
