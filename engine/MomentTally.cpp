#include "engine/MomentTally.h"

#include <algorithm>
#include <array>

namespace {

constexpr double StartOfMin = 1.7e+308;
constexpr double StartOfMax = -1.7e+308;

/// Two variables side by side. Each lane does the arithmetic of a plain double.
using Pair = double __attribute__((vector_size(16)));
using PairMask = std::int64_t __attribute__((vector_size(16)));

constexpr std::size_t LanesOfPair = 2;
/// Variables taken at a time; more chains than this no longer gain from overlapping.
constexpr std::size_t LargestPairs = 6;

/// Chains of two variables.
struct PairState {
    Pair Mean;
    Pair SumSquares;
    Pair Weight;
    Pair Min;
    Pair Max;
};

Pair Both(double value) {
    return Pair{value, value};
}

void Update(PairState& state, Pair x, Pair w) {
    state.Weight += w;
    const Pair d = (x - state.Mean) * w;
    state.Mean += d / state.Weight;
    state.SumSquares += (x - state.Mean) * d;
    state.Min = x < state.Min ? x : state.Min;
    state.Max = x > state.Max ? x : state.Max;
}

/// The update for the lanes that `missing` leaves out.
void UpdateValid(PairState& state, Pair x, Pair w, PairMask missing) {
    PairState next = state;
    Update(next, x, w);
    state.Mean = missing ? state.Mean : next.Mean;
    state.SumSquares = missing ? state.SumSquares : next.SumSquares;
    state.Weight = missing ? state.Weight : next.Weight;
    state.Min = missing ? state.Min : next.Min;
    state.Max = missing ? state.Max : next.Max;
}

}  // namespace

MomentTally::MomentTally(CAnalysisSupport& host, std::size_t variables)
    : Mean(host, variables + 1),
      SumSquares(host, variables + 1),
      Min(host, variables + 1),
      Max(host, variables + 1),
      SumWeights(host, variables + 1),
      MissingWeight(host, variables + 1),
      ValidCount(host, variables + 1),
      MissingCount(host, variables + 1),
      HasMemory(Mean && SumSquares && Min && Max && SumWeights && MissingWeight && ValidCount && MissingCount) {
    if (HasMemory) {
        std::fill_n(Min.data(), variables, StartOfMin);
        std::fill_n(Max.data(), variables, StartOfMax);
    }
}

void MomentTally::Add(std::size_t first, std::span<const TallyColumn> columns, const WeightedRows& rows) {
    using Kernel = void (MomentTally::*)(std::size_t, std::span<const TallyColumn>, const WeightedRows&);
    static constexpr std::array<Kernel, LargestPairs> Kernels{
        &MomentTally::AddPairs<1>, &MomentTally::AddPairs<2>, &MomentTally::AddPairs<3>,
        &MomentTally::AddPairs<4>, &MomentTally::AddPairs<5>, &MomentTally::AddPairs<6>,
    };
    while (!columns.empty()) {
        const std::size_t lanes = std::min(columns.size(), LargestPairs * LanesOfPair);
        const std::size_t pairs = (lanes + 1) / LanesOfPair;
        (this->*Kernels[pairs - 1])(first, columns.first(lanes), rows);
        columns = columns.subspan(lanes);
        first += lanes;
    }
}

template <std::size_t Pairs>
void MomentTally::AddPairs(std::size_t first, std::span<const TallyColumn> columns, const WeightedRows& rows) {
    std::array<PairState, Pairs> states;
    std::array<Pair, Pairs> lowestMissing;
    std::array<Pair, Pairs> highestMissing;
    std::array<const double*, Pairs * LanesOfPair> values;
    std::array<double, Pairs * LanesOfPair> missingWeight{};
    std::array<std::int32_t, Pairs * LanesOfPair> missingCount{};
    // With an odd number of variables the last one fills both lanes of its pair; only the first lane is kept.
    const auto columnOf = [&](std::size_t lane) { return std::min(lane, columns.size() - 1); };
    for (std::size_t lane = 0; lane < values.size(); ++lane) {
        const std::size_t variable = first + columnOf(lane);
        const TallyColumn& column = columns[columnOf(lane)];
        const std::size_t pair = lane / LanesOfPair;
        const std::size_t side = lane % LanesOfPair;
        values[lane] = column.Values;
        lowestMissing[pair][side] = column.Missing.Lowest;
        highestMissing[pair][side] = column.Missing.Highest;
        states[pair].Mean[side] = Mean[variable];
        states[pair].SumSquares[side] = SumSquares[variable];
        states[pair].Weight[side] = SumWeights[variable];
        states[pair].Min[side] = Min[variable];
        states[pair].Max[side] = Max[variable];
        missingWeight[lane] = MissingWeight[variable];
    }
    for (std::size_t i = 0; i < rows.Count; ++i) {
        const std::int32_t row = rows.Rows[i];
        const double weight = rows.Weights[i];
        const Pair w = Both(weight);
        std::array<Pair, Pairs> x;
        std::array<PairMask, Pairs> missing;
        PairMask anyMissing{0, 0};
        for (std::size_t pair = 0; pair < Pairs; ++pair) {
            x[pair] = Pair{values[2 * pair][row], values[2 * pair + 1][row]};
            missing[pair] = (lowestMissing[pair] <= x[pair]) & (x[pair] <= highestMissing[pair]);
            anyMissing |= missing[pair];
        }
        if ((anyMissing[0] | anyMissing[1]) == 0) {
            for (std::size_t pair = 0; pair < Pairs; ++pair) {
                Update(states[pair], x[pair], w);
            }
            continue;
        }
        for (std::size_t pair = 0; pair < Pairs; ++pair) {
            UpdateValid(states[pair], x[pair], w, missing[pair]);
            for (std::size_t side = 0; side < LanesOfPair; ++side) {
                if (missing[pair][side] != 0) {
                    missingWeight[2 * pair + side] += weight;
                    ++missingCount[2 * pair + side];
                }
            }
        }
    }
    for (std::size_t lane = 0; lane < columns.size(); ++lane) {
        const std::size_t variable = first + lane;
        const PairState& state = states[lane / LanesOfPair];
        const std::size_t side = lane % LanesOfPair;
        Mean[variable] = state.Mean[side];
        SumSquares[variable] = state.SumSquares[side];
        SumWeights[variable] = state.Weight[side];
        Min[variable] = state.Min[side];
        Max[variable] = state.Max[side];
        MissingWeight[variable] = missingWeight[lane];
        MissingCount[variable] += missingCount[lane];
        ValidCount[variable] += static_cast<std::int32_t>(rows.Count) - missingCount[lane];
    }
}

void MomentTally::AddMissing(std::size_t first, std::size_t count, const WeightedRows& rows) {
    for (std::size_t variable = first; variable < first + count; ++variable) {
        double weight = MissingWeight[variable];
        for (std::size_t i = 0; i < rows.Count; ++i) {
            weight += rows.Weights[i];
        }
        MissingWeight[variable] = weight;
        MissingCount[variable] += static_cast<std::int32_t>(rows.Count);
    }
}

MomentStatistics MomentTally::Of(std::size_t variable) const {
    return {Min[variable],          Max[variable],           Mean[variable],       SumSquares[variable],
            MissingCount[variable], MissingWeight[variable], ValidCount[variable], SumWeights[variable]};
}
