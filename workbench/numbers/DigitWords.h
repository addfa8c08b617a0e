#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace quillara {

// Characters are taken eight at a time, as a word whose lowest byte is the first of them.
static_assert(std::endian::native == std::endian::little);

/// The same byte eight times.
constexpr std::uint64_t Repeated(unsigned char byte) {
    return 0x0101010101010101U * byte;
}

/// The eight characters from a place on.
inline std::uint64_t WordAt(const char* place) {
    std::uint64_t word = 0;
    std::memcpy(&word, place, sizeof(word));
    return word;
}

/// Which of eight characters is the first such; 8: none is.
constexpr std::size_t FindInWord(std::uint64_t word, char character) {
    const std::uint64_t others = word ^ Repeated(static_cast<unsigned char>(character));
    const std::uint64_t same = ~(((others & Repeated(0x7F)) + Repeated(0x7F)) | others | Repeated(0x7F));
    return static_cast<std::size_t>(std::countr_zero(same)) / 8;
}

/// The values of the first `count` of eight digits, at most 8, with zeros before them: what isn't a digit has a value
/// above 9.
constexpr std::uint64_t DigitsOf(std::uint64_t word, std::size_t count) {
    const std::size_t half = 4 * (8 - count);  // a word isn't to be shifted by all its bits at once
    return (word ^ Repeated('0')) << half << half;
}

/// Whether eight values are those of digits.
constexpr bool AreDigits(std::uint64_t values) {
    return ((values | (values + Repeated(0x76))) & Repeated(0x80)) == 0;
}

/// Two times eight values of digits.
class TwiceEightDigits {
  public:
    struct Numbers {
        std::uint32_t First = 0;
        std::uint32_t Second = 0;
    };

#ifdef __SSE2__
    TwiceEightDigits(std::uint64_t first, std::uint64_t second)
        : Values(_mm_set_epi64x(static_cast<long long>(second), static_cast<long long>(first))) {}

    /// Whether all are values of digits.
    [[nodiscard]] bool AreDigits() const {
        const __m128i atMostNine = _mm_min_epu8(Values, _mm_set1_epi8(9));
        return _mm_movemask_epi8(_mm_cmpeq_epi8(atMostNine, Values)) == 0xFFFF;
    }
    /// The numbers that they make, if they are.
    [[nodiscard]] Numbers Joined() const {
        const __m128i tens = _mm_mullo_epi16(_mm_and_si128(Values, _mm_set1_epi16(0xFF)), _mm_set1_epi16(10));
        const __m128i pairs = _mm_add_epi16(tens, _mm_srli_epi16(Values, 8));
        const __m128i fours = _mm_madd_epi16(pairs, _mm_set1_epi32(1 << 16 | 100));
        const __m128i packed = _mm_packs_epi32(fours, fours);
        const __m128i eights = _mm_madd_epi16(packed, _mm_set1_epi32(1 << 16 | 10000));
        const auto both = static_cast<std::uint64_t>(_mm_cvtsi128_si64(eights));
        return {static_cast<std::uint32_t>(both), static_cast<std::uint32_t>(both >> 32)};
    }

  private:
    __m128i Values;
#else
    TwiceEightDigits(std::uint64_t first, std::uint64_t second) : First(first), Second(second) {}

    [[nodiscard]] bool AreDigits() const {
        return quillara::AreDigits(First) && quillara::AreDigits(Second);
    }
    [[nodiscard]] Numbers Joined() const {
        return {NumberOf(First), NumberOf(Second)};
    }

  private:
    static std::uint32_t NumberOf(std::uint64_t values) {
        constexpr std::uint64_t everyFourth = 0x000000FF000000FF;
        const std::uint64_t pairs = 10 * values + (values >> 8);
        const std::uint64_t first = (pairs & everyFourth) * (100 + (std::uint64_t{1000000} << 32));
        const std::uint64_t last = (pairs >> 16 & everyFourth) * (1 + (std::uint64_t{10000} << 32));
        return static_cast<std::uint32_t>((first + last) >> 32);
    }

    std::uint64_t First;
    std::uint64_t Second;
#endif
};

}  // namespace quillara
