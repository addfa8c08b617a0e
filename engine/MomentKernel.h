#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace drilldown {

/// Variables whose chains of updates are taken side by side at most: two of the widest registers of doubles. The time
/// is that of a chain, so that sixteen take hardly longer than one.
inline constexpr std::size_t MomentLaneLimit = 16;

/// Running statistics of some variables side by side. Lanes that no variable uses may hold anything and get anything.
struct MomentLanes {
    template <typename T>
    using Lanes = std::array<T, MomentLaneLimit>;

    alignas(64) Lanes<double> Mean;
    alignas(64) Lanes<double> SumSquares;
    alignas(64) Lanes<double> SumWeights;
    alignas(64) Lanes<double> Min;
    alignas(64) Lanes<double> Max;
    alignas(64) Lanes<double> LowestMissing;  ///< values from here
    alignas(64) Lanes<double> HighestMissing;  ///< up to here are missing
    alignas(64) Lanes<double> MissingWeight;
    alignas(64) Lanes<double> MissingCount;  ///< of the cases of one update
};

/// How cases weigh, which decides how to divide by the sum of weights.
enum class MomentWeights : std::uint8_t {
    One,  ///< each case weighs 1.0
    Whole,  ///< whole numbers whose sums stay below LargestWholeDivisor
    Any,
};

/// Values without gaps: a column for each lane, of `Count` values each.
struct MomentCases {
    std::array<const double*, MomentLaneLimit> Columns{};  ///< every lane has one
    const double* Weights = nullptr;  ///< one per case; unused where each weighs 1.0
    std::size_t Count = 0;
    MomentWeights Weighing = MomentWeights::One;
};

/// The sets of instructions that updates are made for.
enum class MomentRegisters : std::uint8_t {
    Narrow,  ///< what every processor has
    Wide,  ///< four lanes a register
    Widest,  ///< eight lanes a register
};

/// Whether this processor has them.
[[nodiscard]] bool HasRegisters(MomentRegisters registers);

/// Updates the first `variables` lanes, at most MomentLaneLimit, with some cases, by the widest registers that there
/// are. Every lane does the arithmetic of plain doubles in the order of the cases, to the last bit.
void UpdateMoments(MomentLanes& lanes, std::size_t variables, const MomentCases& cases);
/// As above, by registers that this processor has.
void UpdateMoments(MomentRegisters registers, MomentLanes& lanes, std::size_t variables, const MomentCases& cases);

}  // namespace drilldown
