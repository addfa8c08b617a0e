// Compiled for processors with registers of eight doubles; see CMakeLists.txt. Only what the header declares is seen
// from outside, so that no other code of this source runs on other processors.

#include "engine/WideRows.h"

#if defined(__AVX512F__) && defined(__AVX512DQ__)

#include <immintrin.h>

namespace {

constexpr std::size_t Lanes = 8;
constexpr std::int32_t MostValues = 64;

std::size_t BitsIn(unsigned bits) {
    return static_cast<std::size_t>(__builtin_popcount(bits));
}

/// The bits of rows 8 * group .. 8 * group + 7.
__mmask8 BitsOf(const std::uint64_t* bits, std::size_t group) {
    return static_cast<__mmask8>(bits == nullptr ? 0xFFU : bits[group / Lanes] >> group % Lanes * Lanes);
}

/// Draws values together that `load` gives for eight rows from one on.
template <typename Load>
std::size_t DrawBy(const std::uint64_t* bits, std::size_t first, std::size_t end, double* values, Load load) {
    std::size_t count = 0;
    unsigned wanted = 0xFFU << first % Lanes;
    for (std::size_t group = first / Lanes; group < end / Lanes; ++group, wanted = 0xFFU) {
        const auto mask = static_cast<__mmask8>(BitsOf(bits, group) & wanted);
        _mm512_storeu_pd(values + count, _mm512_maskz_compress_pd(mask, load(group * Lanes)));
        count += BitsIn(mask);
    }
    return count;
}

__m512i EightCodes(const std::uint8_t* codes) {
    return _mm512_cvtepu8_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(codes)));
}

__m512i EightCodes(const std::uint16_t* codes) {
    return _mm512_cvtepu16_epi64(_mm_loadu_si128(reinterpret_cast<const __m128i*>(codes)));
}

__mmask8 FirstLanes(std::int32_t count) {
    return static_cast<__mmask8>(count < 8 ? (1U << count) - 1 : 0xFFU);
}

/// A table of `Registers` times eight values, of which the first `count` are there.
template <int Registers>
struct ValueTable {
    ValueTable(const double* values, std::int32_t count) {
        std::int32_t left = count;
        for (__m512d& part : Values) {
            part = left > 0 ? _mm512_maskz_loadu_pd(FirstLanes(left), values) : _mm512_setzero_pd();
            left -= 8;
            values += left > 0 ? 8 : 0;
        }
    }
    [[gnu::always_inline]] __m512d At(__m512i codes) const {
        if constexpr (Registers == 1) {
            return _mm512_permutexvar_pd(codes, Values[0]);
        }
        __m512d found = _mm512_permutex2var_pd(Values[0], codes, Values[Registers > 1 ? 1 : 0]);
        for (int pair = 1; pair < Registers / 2; ++pair) {
            const __m512i high = _mm512_srli_epi64(codes, 4);
            const __mmask8 here = _mm512_cmpeq_epi64_mask(high, _mm512_set1_epi64(pair));
            const __m512d others = _mm512_permutex2var_pd(Values[2 * pair], codes, Values[2 * pair + 1]);
            found = _mm512_mask_mov_pd(found, here, others);
        }
        return found;
    }

    __m512d Values[Registers];
};

template <int Registers, typename Code>
std::size_t DrawCodes(const TableColumn& column, const std::uint64_t* bits, std::size_t first, std::size_t end,
                      double* values) {
    const ValueTable<Registers> table(column.Values, column.ValueCount);
    const Code* codes = column.As<Code>();
    return DrawBy(bits, first, end, values, [&](std::size_t row) { return table.At(EightCodes(codes + row)); });
}

template <typename Code>
std::size_t DrawByCodes(const TableColumn& column, const std::uint64_t* bits, std::size_t first, std::size_t end,
                        double* values) {
    if (column.ValueCount <= 8) {
        return DrawCodes<1, Code>(column, bits, first, end, values);
    }
    if (column.ValueCount <= 16) {
        return DrawCodes<2, Code>(column, bits, first, end, values);
    }
    return column.ValueCount <= 32 ? DrawCodes<4, Code>(column, bits, first, end, values)
                                   : DrawCodes<8, Code>(column, bits, first, end, values);
}

}  // namespace

std::size_t drilldown::ListSetBits(const std::uint64_t* bits, std::size_t words, std::int32_t* rows) {
    constexpr int half = 16;
    const __m512i step = _mm512_set1_epi32(half);
    __m512i next = _mm512_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    std::size_t count = 0;
    for (std::size_t word = 0; word < words; ++word) {
        std::uint64_t rest = bits[word];
        for (int part = 0; part < 4; ++part, rest >>= half) {
            const auto mask = static_cast<__mmask16>(rest);
            _mm512_storeu_si512(rows + count, _mm512_maskz_compress_epi32(mask, next));
            count += BitsIn(mask);
            next = _mm512_add_epi32(next, step);
        }
    }
    return count;
}

bool drilldown::CanDrawTogether(const TableColumn& column) {
    const bool coded = column.Form == ColumnForm::Codes8 || column.Form == ColumnForm::Codes16;
    return coded ? column.ValueCount <= MostValues : column.Form == ColumnForm::Doubles;
}

std::size_t drilldown::DrawTogether(const TableColumn& column, const std::uint64_t* bits, std::size_t first,
                                    std::size_t end, double* values) {
    switch (column.Form) {
        case ColumnForm::Codes8:
            return DrawByCodes<std::uint8_t>(column, bits, first, end, values);
        case ColumnForm::Codes16:
            return DrawByCodes<std::uint16_t>(column, bits, first, end, values);
        case ColumnForm::Integers:
        case ColumnForm::Doubles:
            break;
    }
    const auto* entries = static_cast<const double*>(column.Entries);
    return DrawBy(bits, first, end, values, [entries](std::size_t row) {
        __builtin_prefetch(entries + row + drilldown::RowsAhead);
        return _mm512_loadu_pd(entries + row);
    });
}

#else

std::size_t drilldown::ListSetBits(const std::uint64_t*, std::size_t, std::int32_t*) {
    return 0;
}

bool drilldown::CanDrawTogether(const TableColumn&) {
    return false;
}

std::size_t drilldown::DrawTogether(const TableColumn&, const std::uint64_t*, std::size_t, std::size_t, double*) {
    return 0;
}

#endif
