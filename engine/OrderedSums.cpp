// Compiled for processors with registers of eight doubles; see CMakeLists.txt.

#include "engine/OrderedSums.h"

#if defined(__AVX512F__) && defined(__AVX512DQ__)

#include <immintrin.h>

void drilldown::AddInOrder(double* sums, const std::uint32_t* places, const double* weights, std::size_t count) {
    constexpr std::size_t half = OrderedSumsLimit / 2;
    __m512d low = _mm512_loadu_pd(sums);
    __m512d high = _mm512_loadu_pd(sums + half);
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned bit = 1U << places[i];
        const __m512d weight = _mm512_set1_pd(weights[i]);
        low = _mm512_mask_add_pd(low, static_cast<__mmask8>(bit), low, weight);
        high = _mm512_mask_add_pd(high, static_cast<__mmask8>(bit >> half), high, weight);
    }
    _mm512_storeu_pd(sums, low);
    _mm512_storeu_pd(sums + half, high);
}

#else

void drilldown::AddInOrder(double* sums, const std::uint32_t* places, const double* weights, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        sums[places[i]] += weights[i];
    }
}

#endif
