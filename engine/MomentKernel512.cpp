// Compiled for processors with registers of eight doubles; see CMakeLists.txt. Only UpdateMomentsWidest is seen from
// outside, so that no other code of this source runs on other processors.

#include "engine/WideMoments.h"

#if defined(__AVX512F__) && defined(__AVX512DQ__)

#include <immintrin.h>

#include "engine/MomentUpdate.h"

using namespace drilldown;

namespace {

struct EightLanes {
    using Values = __m512d;
    using Mask = __mmask8;
    static constexpr std::size_t Lanes = 8;
    static constexpr std::size_t MultipliesFor = 1;

    [[gnu::always_inline]] static inline Values Load(const double* from) { return _mm512_loadu_pd(from); }
    [[gnu::always_inline]] static inline void Store(double* to, Values a) { _mm512_storeu_pd(to, a); }
    [[gnu::always_inline]] static inline Values Fill(double a) { return _mm512_set1_pd(a); }
    [[gnu::always_inline]] static inline Values One() { return Fill(1.0); }
    [[gnu::always_inline]] static inline Values Add(Values a, Values b) { return _mm512_add_pd(a, b); }
    [[gnu::always_inline]] static inline Values Subtract(Values a, Values b) { return _mm512_sub_pd(a, b); }
    [[gnu::always_inline]] static inline Values Multiply(Values a, Values b) { return _mm512_mul_pd(a, b); }
    [[gnu::always_inline]] static inline Values Divide(Values a, Values b) { return _mm512_div_pd(a, b); }
    [[gnu::always_inline]] static inline Values FusedAdd(Values a, Values b, Values c) {
        return _mm512_fmadd_pd(a, b, c);
    }
    [[gnu::always_inline]] static inline Values FusedSubtract(Values a, Values b, Values c) {
        return _mm512_fnmadd_pd(a, b, c);
    }
    [[gnu::always_inline]] static inline bool AnyOutOfReach(Values d) {
        // The two highest bits of the exponent differ where 2^-511 <= |d| < 2^513.
        const __m512i raised = _mm512_add_epi64(_mm512_castpd_si512(d), _mm512_set1_epi64(0x2000000000000000));
        return _mm512_testn_epi64_mask(raised, _mm512_set1_epi64(0x4000000000000000)) != 0;
    }
    [[gnu::always_inline]] static inline Mask Valid(Values x, Values lowest, Values highest) {
        return static_cast<Mask>(_mm512_cmp_pd_mask(lowest, x, _CMP_NLE_UQ) |
                                 _mm512_cmp_pd_mask(x, highest, _CMP_NLE_UQ));
    }
    [[gnu::always_inline]] static inline Values AddWhere(Mask where, Values a, Values b) {
        return _mm512_mask_add_pd(a, where, a, b);
    }
    [[gnu::always_inline]] static inline Values AddWhereNot(Mask where, Values a, Values b) {
        return _mm512_mask_add_pd(a, static_cast<Mask>(~where), a, b);
    }
    [[gnu::always_inline]] static inline Values MinWhere(Mask where, Values x, Values min) {
        return _mm512_mask_min_pd(min, where, x, min);
    }
    [[gnu::always_inline]] static inline Values MaxWhere(Mask where, Values x, Values max) {
        return _mm512_mask_max_pd(max, where, x, max);
    }

    /// Turns eight rows of eight columns into eight rows of lanes that lie `stride` apart.
    [[gnu::always_inline]] static inline void Turn(const double* const* columns, std::size_t row, double* to,
                                                   std::size_t stride) {
        Values column[Lanes];
        for (std::size_t i = 0; i < Lanes; ++i) {
            column[i] = Load(columns[i] + row);
        }
        Values pairs[Lanes];  // rows 0, 2, 4, 6 and 1, 3, 5, 7 of two columns
        for (std::size_t i = 0; i < Lanes; i += 2) {
            pairs[i] = _mm512_unpacklo_pd(column[i], column[i + 1]);
            pairs[i + 1] = _mm512_unpackhi_pd(column[i], column[i + 1]);
        }
        for (std::size_t odd = 0; odd < 2; ++odd) {
            // Rows 0, 4 and 2, 6 of four columns, then each of eight.
            const Values low04 = _mm512_shuffle_f64x2(pairs[odd], pairs[odd + 2], 0x88);
            const Values low26 = _mm512_shuffle_f64x2(pairs[odd], pairs[odd + 2], 0xDD);
            const Values high04 = _mm512_shuffle_f64x2(pairs[odd + 4], pairs[odd + 6], 0x88);
            const Values high26 = _mm512_shuffle_f64x2(pairs[odd + 4], pairs[odd + 6], 0xDD);
            Store(to + odd * stride, _mm512_shuffle_f64x2(low04, high04, 0x88));
            Store(to + (odd + 2) * stride, _mm512_shuffle_f64x2(low26, high26, 0x88));
            Store(to + (odd + 4) * stride, _mm512_shuffle_f64x2(low04, high04, 0xDD));
            Store(to + (odd + 6) * stride, _mm512_shuffle_f64x2(low26, high26, 0xDD));
        }
    }
};

}  // namespace

void drilldown::UpdateMomentsWidest(MomentLanes& lanes, std::size_t variables, const MomentCases& cases) {
    UpdateLanes<EightLanes, 2>(lanes, variables, cases);
}

#endif
