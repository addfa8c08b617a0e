// Compiled for processors with registers of eight doubles; see CMakeLists.txt. Only what the header declares is seen
// from outside, so that no other code of this source runs on other processors.

#include "engine/FewBounds.h"

#if defined(__AVX512F__) && defined(__AVX512DQ__)

#include <immintrin.h>

namespace {

/// The counters of so many bounds; each is a member of its own, so that all stay in registers.
template <int Bounds>
struct Counters {
    /// To `place` of eight values, one for each bound below.
    template <int Compare>
    [[gnu::always_inline]] static void AddPlaces(__m512d x, const double* bounds, __m512i one, __m512i& place) {
        const __mmask8 above = _mm512_cmp_pd_mask(x, _mm512_set1_pd(*bounds), Compare);
        place = _mm512_mask_add_epi64(place, above, place, one);
        Counters<Bounds - 1>::template AddPlaces<Compare>(x, bounds + 1, one, place);
    }
    template <int Compare>
    [[gnu::always_inline]] void Add(__m512d x, __mmask8 valid, const double* bounds, __m512i one) {
        const __mmask8 above = _mm512_mask_cmp_pd_mask(valid, x, _mm512_set1_pd(*bounds), Compare);
        Count = _mm512_mask_add_epi64(Count, above, Count, one);
        Others.template Add<Compare>(x, valid, bounds + 1, one);
    }
    [[gnu::always_inline]] void LoadFrom(const std::uint64_t* counts) {
        Count = _mm512_loadu_si512(counts);
        Others.LoadFrom(counts + 8);
    }
    [[gnu::always_inline]] void StoreTo(std::uint64_t* counts) const {
        _mm512_storeu_si512(counts, Count);
        Others.StoreTo(counts + 8);
    }

    __m512i Count;
    Counters<Bounds - 1> Others;
};

template <>
struct Counters<0> {
    template <int Compare>
    [[gnu::always_inline]] static void AddPlaces(__m512d, const double*, __m512i, __m512i&) {}
    template <int Compare>
    [[gnu::always_inline]] void Add(__m512d, __mmask8, const double*, __m512i) {}
    [[gnu::always_inline]] void LoadFrom(const std::uint64_t*) {}
    [[gnu::always_inline]] void StoreTo(std::uint64_t*) const {}
};

/// Values, and which of them are missing.
struct Values {
    const double* First;
    std::size_t Count;
    double LowestMissing;
    double HighestMissing;
};

__mmask8 LanesOf(const Values& values, std::size_t done) {
    const std::size_t left = values.Count - done;
    return static_cast<__mmask8>(left < 8 ? (1U << left) - 1 : 0xFFU);
}

__mmask8 ValidLanes(const Values& values, __mmask8 there, __m512d x) {
    return static_cast<__mmask8>(_mm512_mask_cmp_pd_mask(there, x, _mm512_set1_pd(values.LowestMissing), _CMP_LT_OQ) |
                                 _mm512_mask_cmp_pd_mask(there, x, _mm512_set1_pd(values.HighestMissing), _CMP_GT_OQ));
}

template <int Bounds, int Compare>
void CountAbove(const Values& values, const double* bounds, std::uint64_t* counts) {
    const __m512i one = _mm512_set1_epi64(1);
    __m512i counted = _mm512_loadu_si512(counts);
    Counters<Bounds> counters{};
    counters.LoadFrom(counts + 8);
    for (std::size_t done = 0; done < values.Count; done += 8) {
        const __mmask8 there = LanesOf(values, done);
        const __m512d x = _mm512_maskz_loadu_pd(there, values.First + done);
        const __mmask8 valid = ValidLanes(values, there, x);
        counted = _mm512_mask_add_epi64(counted, valid, counted, one);
        counters.template Add<Compare>(x, valid, bounds, one);
    }
    _mm512_storeu_si512(counts, counted);
    counters.StoreTo(counts + 8);
}

template <int Bounds, int Compare>
void PlacesAmong(const Values& values, const double* bounds, std::size_t nowhere, std::uint32_t* places) {
    const __m512i one = _mm512_set1_epi64(1);
    const __m512i behind = _mm512_set1_epi64(static_cast<long long>(nowhere));
    for (std::size_t done = 0; done < values.Count; done += 8) {
        const __mmask8 there = LanesOf(values, done);
        const __m512d x = _mm512_maskz_loadu_pd(there, values.First + done);
        __m512i place = _mm512_setzero_si512();
        Counters<Bounds>::template AddPlaces<Compare>(x, bounds, one, place);
        place = _mm512_mask_mov_epi64(behind, ValidLanes(values, there, x), place);
        _mm512_mask_cvtepi64_storeu_epi32(places + done, there, place);
    }
}

template <int Bounds>
void CountBy(bool closedBelow, const Values& values, const double* bounds, std::uint64_t* counts) {
    if (closedBelow) {
        CountAbove<Bounds, _CMP_GE_OQ>(values, bounds, counts);
    } else {
        CountAbove<Bounds, _CMP_GT_OQ>(values, bounds, counts);
    }
}

template <int Bounds>
void FindBy(bool closedBelow, const Values& values, const double* bounds, std::size_t nowhere, std::uint32_t* places) {
    if (closedBelow) {
        PlacesAmong<Bounds, _CMP_GE_OQ>(values, bounds, nowhere, places);
    } else {
        PlacesAmong<Bounds, _CMP_GT_OQ>(values, bounds, nowhere, places);
    }
}

}  // namespace

void drilldown::FewBounds::Count(const double* values, std::size_t count) {
    const Values given{values, count, Missing.Lowest, Missing.Highest};
    if (BoundCount <= 8) {
        CountBy<8>(ClosedBelow, given, Bounds, Counts[0]);
    } else if (BoundCount <= 12) {
        CountBy<12>(ClosedBelow, given, Bounds, Counts[0]);
    } else {
        CountBy<16>(ClosedBelow, given, Bounds, Counts[0]);
    }
}

void drilldown::FewBounds::FindPlaces(const double* values, std::size_t count, std::uint32_t* places) const {
    const Values given{values, count, Missing.Lowest, Missing.Highest};
    if (BoundCount <= 8) {
        FindBy<8>(ClosedBelow, given, Bounds, BoundCount, places);
    } else if (BoundCount <= 12) {
        FindBy<12>(ClosedBelow, given, Bounds, BoundCount, places);
    } else {
        FindBy<16>(ClosedBelow, given, Bounds, BoundCount, places);
    }
}

#else

void drilldown::FewBounds::Count(const double*, std::size_t) {}

void drilldown::FewBounds::FindPlaces(const double*, std::size_t, std::uint32_t*) const {}

#endif
