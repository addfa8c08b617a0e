#include "engine/MomentKernel.h"

#include <cstring>

using namespace drilldown;

namespace {

/// Four variables side by side.
using Quad = double __attribute__((vector_size(32)));
using QuadMask = std::int64_t __attribute__((vector_size(32)));

constexpr std::size_t LanesOfQuad = 4;

struct QuadState {
    Quad Mean;
    Quad SumSquares;
    Quad Weight;
    Quad Min;
    Quad Max;
};

// The helpers are inlined into the kernels for the different processors, each with its instructions.

[[gnu::always_inline]] inline void Load(Quad& quad, const double* lanes) {
    std::memcpy(&quad, lanes, sizeof(quad));
}

[[gnu::always_inline]] inline void Store(double* lanes, const Quad& quad) {
    std::memcpy(lanes, &quad, sizeof(quad));
}

[[gnu::always_inline]] inline void Update(QuadState& state, const Quad& x, double weight) {
    state.Weight += weight;
    const Quad d = (x - state.Mean) * weight;
    state.Mean += d / state.Weight;
    state.SumSquares += (x - state.Mean) * d;
    state.Min = x < state.Min ? x : state.Min;
    state.Max = x > state.Max ? x : state.Max;
}

/// The update of the lanes whose value isn't missing.
[[gnu::always_inline]] inline void UpdateValid(QuadState& state, const Quad& x, double weight,
                                               const QuadMask& missing) {
    QuadState next = state;
    Update(next, x, weight);
    state.Mean = missing ? state.Mean : next.Mean;
    state.SumSquares = missing ? state.SumSquares : next.SumSquares;
    state.Weight = missing ? state.Weight : next.Weight;
    state.Min = missing ? state.Min : next.Min;
    state.Max = missing ? state.Max : next.Max;
}

[[gnu::always_inline]] inline void CountMissing(MomentLanes& lanes, std::size_t quad, double weight,
                                                const QuadMask& missing) {
    for (std::size_t lane = 0; lane < LanesOfQuad; ++lane) {
        if (missing[lane] != 0) {
            lanes.MissingWeight[quad * LanesOfQuad + lane] += weight;
            ++lanes.MissingCount[quad * LanesOfQuad + lane];
        }
    }
}

template <std::size_t Quads>
struct QuadStates {
    [[gnu::always_inline]] explicit QuadStates(const MomentLanes& lanes) {
        for (std::size_t quad = 0; quad < Quads; ++quad) {
            const std::size_t lane = quad * LanesOfQuad;
            Load(States[quad].Mean, &lanes.Mean[lane]);
            Load(States[quad].SumSquares, &lanes.SumSquares[lane]);
            Load(States[quad].Weight, &lanes.SumWeights[lane]);
            Load(States[quad].Min, &lanes.Min[lane]);
            Load(States[quad].Max, &lanes.Max[lane]);
        }
    }

    [[gnu::always_inline]] void StoreTo(MomentLanes& lanes) const {
        for (std::size_t quad = 0; quad < Quads; ++quad) {
            const std::size_t lane = quad * LanesOfQuad;
            Store(&lanes.Mean[lane], States[quad].Mean);
            Store(&lanes.SumSquares[lane], States[quad].SumSquares);
            Store(&lanes.SumWeights[lane], States[quad].Weight);
            Store(&lanes.Min[lane], States[quad].Min);
            Store(&lanes.Max[lane], States[quad].Max);
        }
    }

    std::array<QuadState, Quads> States;
};

/// The values of one case in some variables, and which of them are missing.
template <std::size_t Quads>
struct CaseValues {
    [[gnu::always_inline]] CaseValues(const MomentLanes& lanes, std::int32_t row) {
        for (std::size_t quad = 0; quad < Quads; ++quad) {
            const std::size_t lane = quad * LanesOfQuad;
            const double* const* columns = &lanes.Values[lane];
            const Quad value{columns[0][row], columns[1][row], columns[2][row], columns[3][row]};
            Quad lowest;
            Quad highest;
            Load(lowest, &lanes.LowestMissing[lane]);
            Load(highest, &lanes.HighestMissing[lane]);
            Values[quad] = value;
            Missing[quad] = (lowest <= value) & (value <= highest);
            AnyMissing |= Missing[quad];
        }
    }

    [[gnu::always_inline]] [[nodiscard]] bool HasMissing() const {
        return (AnyMissing[0] | AnyMissing[1] | AnyMissing[2] | AnyMissing[3]) != 0;
    }

    Quad Values[Quads] = {};
    QuadMask Missing[Quads] = {};
    QuadMask AnyMissing = {};
};

template <std::size_t Quads>
[[gnu::always_inline]] inline void UpdateQuads(MomentLanes& lanes, const WeightedRows& rows) {
    QuadStates<Quads> state(lanes);
    for (std::size_t i = 0; i < rows.Count; ++i) {
        const double weight = rows.Weights[i];
        const CaseValues<Quads> values(lanes, rows.Rows[i]);
        // Most cases have no missing value among a few variables and need no masks.
        if (!values.HasMissing()) {
            for (std::size_t quad = 0; quad < Quads; ++quad) {
                Update(state.States[quad], values.Values[quad], weight);
            }
            continue;
        }
        for (std::size_t quad = 0; quad < Quads; ++quad) {
            UpdateValid(state.States[quad], values.Values[quad], weight, values.Missing[quad]);
            CountMissing(lanes, quad, weight, values.Missing[quad]);
        }
    }
    state.StoreTo(lanes);
}

[[gnu::always_inline]] inline void UpdateLanes(MomentLanes& lanes, std::size_t variables, const WeightedRows& rows) {
    if (variables <= LanesOfQuad) {
        UpdateQuads<1>(lanes, rows);
    } else {
        UpdateQuads<2>(lanes, rows);
    }
}

void UpdateOnAnyProcessor(MomentLanes& lanes, std::size_t variables, const WeightedRows& rows) {
    UpdateLanes(lanes, variables, rows);
}

#if defined(__x86_64__)
/// Four lanes in one register. Multiplication and addition stay apart, so that the results are those of any processor.
[[gnu::target("avx2,no-fma")]] void UpdateOnWideProcessor(MomentLanes& lanes, std::size_t variables,
                                                          const WeightedRows& rows) {
    UpdateLanes(lanes, variables, rows);
}

bool HasWideRegisters() {
    static const bool has = __builtin_cpu_supports("avx2") != 0;
    return has;
}
#endif

}  // namespace

void drilldown::UpdateMoments(MomentLanes& lanes, std::size_t variables, const WeightedRows& rows) {
#if defined(__x86_64__)
    if (HasWideRegisters()) {
        UpdateOnWideProcessor(lanes, variables, rows);
        return;
    }
#endif
    UpdateOnAnyProcessor(lanes, variables, rows);
}
