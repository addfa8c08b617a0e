#pragma once

#include <cstddef>

#include "engine/MomentKernel.h"
#include "engine/WholeDivision.h"

namespace drilldown {

// The update of moments, made for each kind of registers from one text. `Operations` are those of one register:
//   Values, Mask, Lanes; Load, Store, Fill; Add, Subtract, Multiply, Divide; Valid(x, lowest, highest);
//   AddWhere, AddWhereNot, MinWhere and MaxWhere, which leave other lanes as they are; Turn;
//   MultipliesFor: so many registers at most divide through a multiplication; if any, then also what WholeDivision.h
//   asks for, and AnyOutOfReach(d): whether some |d| is one that it doesn't take.
// They and what follows are inlined into functions of unnamed namespaces, so that no code for one processor is taken
// for that of another.

/// The statistics of the lanes of one register, and which of their values are missing.
template <typename Operations>
struct MomentRegister {
    using Values = typename Operations::Values;

    [[gnu::always_inline]] void LoadFrom(const MomentLanes& lanes, std::size_t lane) {
        Mean = Operations::Load(&lanes.Mean[lane]);
        SumSquares = Operations::Load(&lanes.SumSquares[lane]);
        Weight = Operations::Load(&lanes.SumWeights[lane]);
        Min = Operations::Load(&lanes.Min[lane]);
        Max = Operations::Load(&lanes.Max[lane]);
        MissingWeight = Operations::Load(&lanes.MissingWeight[lane]);
        MissingCount = Operations::Load(&lanes.MissingCount[lane]);
        LowestMissing = Operations::Load(&lanes.LowestMissing[lane]);
        HighestMissing = Operations::Load(&lanes.HighestMissing[lane]);
    }
    [[gnu::always_inline]] void StoreTo(MomentLanes& lanes, std::size_t lane) const {
        Operations::Store(&lanes.Mean[lane], Mean);
        Operations::Store(&lanes.SumSquares[lane], SumSquares);
        Operations::Store(&lanes.SumWeights[lane], Weight);
        Operations::Store(&lanes.Min[lane], Min);
        Operations::Store(&lanes.Max[lane], Max);
        Operations::Store(&lanes.MissingWeight[lane], MissingWeight);
        Operations::Store(&lanes.MissingCount[lane], MissingCount);
    }

    Values Mean;
    Values SumSquares;
    Values Weight;
    Values Min;
    Values Max;
    Values MissingWeight;
    Values MissingCount;
    Values LowestMissing;
    Values HighestMissing;
};

/// d / W, by a multiplication where that gives the same.
template <typename Operations, bool Multiplies>
[[gnu::always_inline]] inline typename Operations::Values MomentQuotient(const typename Operations::Values& d,
                                                                         const typename Operations::Values& weight) {
    if constexpr (Multiplies) {
        const WholeReciprocal<Operations> reciprocal(weight);
        if (!Operations::AnyOutOfReach(d)) [[likely]] {
            return reciprocal.Quotient(d);
        }
    }
    return Operations::Divide(d, weight);
}

/// Takes one value in each lane. No lane is divided by a weight of zero but one that has met no valid value, which
/// stays as it is.
template <typename Operations, MomentWeights Weighing, bool Multiplies>
[[gnu::always_inline]] inline void UpdateRegister(MomentRegister<Operations>& state,
                                                  const typename Operations::Values& x,
                                                  const typename Operations::Values& weight) {
    const auto valid = Operations::Valid(x, state.LowestMissing, state.HighestMissing);
    state.Weight = Operations::AddWhere(valid, state.Weight, weight);
    auto d = Operations::Subtract(x, state.Mean);
    if constexpr (Weighing != MomentWeights::One) {
        d = Operations::Multiply(d, weight);
    }
    state.Mean = Operations::AddWhere(valid, state.Mean, MomentQuotient<Operations, Multiplies>(d, state.Weight));
    const auto rest = Operations::Subtract(x, state.Mean);
    state.SumSquares = Operations::AddWhere(valid, state.SumSquares, Operations::Multiply(rest, d));
    state.Min = Operations::MinWhere(valid, x, state.Min);
    state.Max = Operations::MaxWhere(valid, x, state.Max);
    if constexpr (Weighing != MomentWeights::One) {
        state.MissingWeight = Operations::AddWhereNot(valid, state.MissingWeight, weight);
        state.MissingCount = Operations::AddWhereNot(valid, state.MissingCount, Operations::Fill(1.0));
    }
}

/// Cases that each weighed 1.0 and didn't add to the sum of weights were missing.
template <typename Operations>
[[gnu::always_inline]] inline void CountMissing(MomentRegister<Operations>& state, const MomentLanes& lanes,
                                                std::size_t lane, std::size_t cases) {
    const auto valid = Operations::Subtract(state.Weight, Operations::Load(&lanes.SumWeights[lane]));
    const auto missing = Operations::Subtract(Operations::Fill(static_cast<double>(cases)), valid);
    state.MissingWeight = Operations::Add(state.MissingWeight, missing);
    state.MissingCount = Operations::Add(state.MissingCount, missing);
}

/// Some lanes in so many registers; each is a member of its own, so that all stay in registers.
template <typename Operations, std::size_t Registers, MomentWeights Weighing, bool Multiplies>
struct MomentRegisterRow {
    static constexpr std::size_t Lanes = Operations::Lanes;
    using Values = typename Operations::Values;

    [[gnu::always_inline]] void LoadFrom(const MomentLanes& lanes, std::size_t lane) {
        First.LoadFrom(lanes, lane);
        Others.LoadFrom(lanes, lane + Lanes);
    }
    [[gnu::always_inline]] void StoreTo(MomentLanes& lanes, std::size_t lane, std::size_t cases) {
        if constexpr (Weighing == MomentWeights::One) {
            CountMissing(First, lanes, lane, cases);
        }
        First.StoreTo(lanes, lane);
        Others.StoreTo(lanes, lane + Lanes, cases);
    }
    [[gnu::always_inline]] void Take(const double* values, const Values& weight) {
        UpdateRegister<Operations, Weighing, Multiplies>(First, Operations::Load(values), weight);
        Others.Take(values + Lanes, weight);
    }

    MomentRegister<Operations> First;
    MomentRegisterRow<Operations, Registers - 1, Weighing, Multiplies> Others;
};

template <typename Operations, MomentWeights Weighing, bool Multiplies>
struct MomentRegisterRow<Operations, 0, Weighing, Multiplies> {
    [[gnu::always_inline]] void LoadFrom(const MomentLanes&, std::size_t) {}
    [[gnu::always_inline]] void StoreTo(MomentLanes&, std::size_t, std::size_t) {}
    [[gnu::always_inline]] void Take(const double*, const typename Operations::Values&) {}
};

/// As many cases as a register has lanes, turned from columns into rows; fewer where fewer are left.
template <typename Operations, std::size_t Registers>
struct TurnedCases {
    static constexpr std::size_t Lanes = Operations::Lanes;
    static constexpr std::size_t Width = Registers * Lanes;

    [[gnu::always_inline]] std::size_t Turn(const MomentCases& cases, std::size_t first, std::size_t done) {
        if (cases.Count - done < Lanes) {
            Copy(cases, first, done);
            return cases.Count - done;
        }
        for (std::size_t i = 0; i < Registers; ++i) {
            Operations::Turn(&cases.Columns[first + i * Lanes], done, &Rows[i * Lanes], Width);
        }
        return Lanes;
    }
    [[gnu::always_inline]] void Copy(const MomentCases& cases, std::size_t first, std::size_t done) {
        for (std::size_t row = 0; row < cases.Count - done; ++row) {
            for (std::size_t lane = 0; lane < Width; ++lane) {
                Rows[row * Width + lane] = cases.Columns[first + lane][done + row];
            }
        }
    }

    alignas(64) double Rows[Lanes * Width];
};

/// Updates the lanes of so many registers from `first` on.
template <typename Operations, std::size_t Registers, MomentWeights Weighing>
[[gnu::always_inline]] inline void UpdateRegisters(MomentLanes& lanes, std::size_t first, const MomentCases& cases) {
    // A multiplication shortens the chain of updates and takes more instructions, which several registers wait for.
    constexpr bool multiplies = Weighing != MomentWeights::Any && Registers <= Operations::MultipliesFor;
    // NOLINTBEGIN(cppcoreguidelines-pro-type-member-init): all of them is written before it is read
    MomentRegisterRow<Operations, Registers, Weighing, multiplies> state;
    TurnedCases<Operations, Registers> turned;
    // NOLINTEND(cppcoreguidelines-pro-type-member-init)
    state.LoadFrom(lanes, first);
    for (std::size_t done = 0; done < cases.Count;) {
        const std::size_t rows = turned.Turn(cases, first, done);
        for (std::size_t row = 0; row < rows; ++row, ++done) {
            const double weight = Weighing == MomentWeights::One ? 1.0 : cases.Weights[done];
            state.Take(&turned.Rows[row * turned.Width], Operations::Fill(weight));
        }
    }
    state.StoreTo(lanes, first, cases.Count);
}

template <typename Operations, std::size_t Registers>
[[gnu::always_inline]] inline void UpdateByWeights(MomentLanes& lanes, std::size_t first, const MomentCases& cases) {
    switch (cases.Weighing) {
        case MomentWeights::One:
            UpdateRegisters<Operations, Registers, MomentWeights::One>(lanes, first, cases);
            return;
        case MomentWeights::Whole:
            UpdateRegisters<Operations, Registers, MomentWeights::Whole>(lanes, first, cases);
            return;
        case MomentWeights::Any:
            break;
    }
    UpdateRegisters<Operations, Registers, MomentWeights::Any>(lanes, first, cases);
}

/// Updates some lanes from `first` on, in as many registers as they take, at most `Registers`.
template <typename Operations, std::size_t Registers>
[[gnu::always_inline]] inline void UpdateInRegisters(MomentLanes& lanes, std::size_t first, std::size_t variables,
                                                     const MomentCases& cases) {
    if constexpr (Registers > 1) {
        if (variables <= (Registers - 1) * Operations::Lanes) {
            UpdateInRegisters<Operations, Registers - 1>(lanes, first, variables, cases);
            return;
        }
    }
    UpdateByWeights<Operations, Registers>(lanes, first, cases);
}

/// Updates the first `variables` lanes, so many registers at a time.
template <typename Operations, std::size_t Registers>
[[gnu::always_inline]] inline void UpdateLanes(MomentLanes& lanes, std::size_t variables, const MomentCases& cases) {
    constexpr std::size_t width = Registers * Operations::Lanes;
    for (std::size_t first = 0; first < variables; first += width) {
        UpdateInRegisters<Operations, Registers>(lanes, first, variables - first < width ? variables - first : width,
                                                 cases);
    }
}

}  // namespace drilldown
