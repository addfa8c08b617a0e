#include "engine/MomentKernel.h"

#include <cstring>

#include "engine/MomentUpdate.h"
#include "engine/WideMoments.h"

using namespace drilldown;

namespace {

/// Two lanes, which every processor has.
struct TwoLanes {
    using Values = double __attribute__((vector_size(16)));
    using Mask = std::int64_t __attribute__((vector_size(16)));
    static constexpr std::size_t Lanes = 2;
    static constexpr std::size_t MultipliesFor = 0;

    [[gnu::always_inline]] static inline Values Load(const double* from) {
        Values values;
        std::memcpy(&values, from, sizeof(values));
        return values;
    }
    [[gnu::always_inline]] static inline void Store(double* to, Values a) { std::memcpy(to, &a, sizeof(a)); }
    [[gnu::always_inline]] static inline Values Fill(double a) { return Values{a, a}; }
    [[gnu::always_inline]] static inline Values Add(Values a, Values b) { return a + b; }
    [[gnu::always_inline]] static inline Values Subtract(Values a, Values b) { return a - b; }
    [[gnu::always_inline]] static inline Values Multiply(Values a, Values b) { return a * b; }
    [[gnu::always_inline]] static inline Values Divide(Values a, Values b) { return a / b; }
    [[gnu::always_inline]] static inline Mask Valid(Values x, Values lowest, Values highest) {
        return ~((lowest <= x) & (x <= highest));
    }
    [[gnu::always_inline]] static inline Values AddWhere(Mask where, Values a, Values b) { return where ? a + b : a; }
    [[gnu::always_inline]] static inline Values AddWhereNot(Mask where, Values a, Values b) {
        return where ? a : a + b;
    }
    [[gnu::always_inline]] static inline Values MinWhere(Mask where, Values x, Values min) {
        return (where & (x < min)) ? x : min;
    }
    [[gnu::always_inline]] static inline Values MaxWhere(Mask where, Values x, Values max) {
        return (where & (x > max)) ? x : max;
    }
    [[gnu::always_inline]] static inline void Turn(const double* const* columns, std::size_t row, double* to,
                                                   std::size_t stride) {
        Store(to, Values{columns[0][row], columns[1][row]});
        Store(to + stride, Values{columns[0][row + 1], columns[1][row + 1]});
    }
};

#if defined(__x86_64__)
MomentRegisters WidestRegisters() {
    if (__builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512dq") != 0) {
        return MomentRegisters::Widest;
    }
    return __builtin_cpu_supports("avx2") != 0 ? MomentRegisters::Wide : MomentRegisters::Narrow;
}
#else
MomentRegisters WidestRegisters() {
    return MomentRegisters::Narrow;
}
#endif

MomentRegisters OwnRegisters() {
    static const MomentRegisters registers = WidestRegisters();
    return registers;
}

}  // namespace

bool drilldown::HasRegisters(MomentRegisters registers) {
    return registers <= OwnRegisters();
}

void drilldown::UpdateMoments(MomentLanes& lanes, std::size_t variables, const MomentCases& cases) {
    UpdateMoments(OwnRegisters(), lanes, variables, cases);
}

void drilldown::UpdateMoments(MomentRegisters registers, MomentLanes& lanes, std::size_t variables,
                              const MomentCases& cases) {
#if defined(__x86_64__)
    if (registers == MomentRegisters::Widest) {
        UpdateMomentsWidest(lanes, variables, cases);
        return;
    }
    if (registers == MomentRegisters::Wide) {
        UpdateMomentsWide(lanes, variables, cases);
        return;
    }
#endif
    UpdateLanes<TwoLanes, 4>(lanes, variables, cases);
}
