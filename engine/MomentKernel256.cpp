// Compiled for processors with registers of four doubles; see CMakeLists.txt. Only UpdateMomentsWide is seen from
// outside, so that no other code of this source runs on other processors.

#include "engine/WideMoments.h"

#if defined(__AVX2__)

#include <immintrin.h>

#include "engine/MomentUpdate.h"

using namespace drilldown;

namespace {

struct FourLanes {
    using Values = __m256d;
    using Mask = __m256d;
    static constexpr std::size_t Lanes = 4;
    static constexpr std::size_t MultipliesFor = 0;

    [[gnu::always_inline]] static inline Values Load(const double* from) { return _mm256_loadu_pd(from); }
    [[gnu::always_inline]] static inline void Store(double* to, Values a) { _mm256_storeu_pd(to, a); }
    [[gnu::always_inline]] static inline Values Fill(double a) { return _mm256_set1_pd(a); }
    [[gnu::always_inline]] static inline Values Add(Values a, Values b) { return _mm256_add_pd(a, b); }
    [[gnu::always_inline]] static inline Values Subtract(Values a, Values b) { return _mm256_sub_pd(a, b); }
    [[gnu::always_inline]] static inline Values Multiply(Values a, Values b) { return _mm256_mul_pd(a, b); }
    [[gnu::always_inline]] static inline Values Divide(Values a, Values b) { return _mm256_div_pd(a, b); }
    [[gnu::always_inline]] static inline Mask Valid(Values x, Values lowest, Values highest) {
        return _mm256_or_pd(_mm256_cmp_pd(lowest, x, _CMP_NLE_UQ), _mm256_cmp_pd(x, highest, _CMP_NLE_UQ));
    }
    [[gnu::always_inline]] static inline Values AddWhere(Mask where, Values a, Values b) {
        return _mm256_blendv_pd(a, _mm256_add_pd(a, b), where);
    }
    [[gnu::always_inline]] static inline Values AddWhereNot(Mask where, Values a, Values b) {
        return _mm256_blendv_pd(_mm256_add_pd(a, b), a, where);
    }
    [[gnu::always_inline]] static inline Values MinWhere(Mask where, Values x, Values min) {
        return _mm256_blendv_pd(min, _mm256_min_pd(x, min), where);
    }
    [[gnu::always_inline]] static inline Values MaxWhere(Mask where, Values x, Values max) {
        return _mm256_blendv_pd(max, _mm256_max_pd(x, max), where);
    }

    /// Turns four rows of four columns into four rows of lanes that lie `stride` apart.
    [[gnu::always_inline]] static inline void Turn(const double* const* columns, std::size_t row, double* to,
                                                   std::size_t stride) {
        const Values even01 = _mm256_unpacklo_pd(Load(columns[0] + row), Load(columns[1] + row));
        const Values odd01 = _mm256_unpackhi_pd(Load(columns[0] + row), Load(columns[1] + row));
        const Values even23 = _mm256_unpacklo_pd(Load(columns[2] + row), Load(columns[3] + row));
        const Values odd23 = _mm256_unpackhi_pd(Load(columns[2] + row), Load(columns[3] + row));
        Store(to, _mm256_permute2f128_pd(even01, even23, 0x20));
        Store(to + stride, _mm256_permute2f128_pd(odd01, odd23, 0x20));
        Store(to + 2 * stride, _mm256_permute2f128_pd(even01, even23, 0x31));
        Store(to + 3 * stride, _mm256_permute2f128_pd(odd01, odd23, 0x31));
    }
};

}  // namespace

void drilldown::UpdateMomentsWide(MomentLanes& lanes, std::size_t variables, const MomentCases& cases) {
    UpdateLanes<FourLanes, 4>(lanes, variables, cases);
}

#endif
