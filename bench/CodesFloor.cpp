// Compiled for the processor at hand and with sums in any order; see CMakeLists.txt.

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <limits>
#include <numeric>
#include <thread>

#if defined(__AVX512VBMI2__)
#include <immintrin.h>
#endif

#include "bench/FloorColumns.h"

namespace {

constexpr std::size_t BlockSize = 4096;
constexpr std::size_t WordBits = 64;
/// Tables of counts taken in turn, so that neighbours in one category don't wait for each other.
constexpr std::size_t Copies = 4;

/// Counts of one variable: whole numbers without weights.
struct Counts {
    template <typename Amount>
    using Tables = std::array<std::array<Amount, FloorCategories>, Copies>;

    [[nodiscard]] double Total() const {
        double total = 0.0;
        for (std::size_t copy = 0; copy < Copies; ++copy) {
            total = std::accumulate(Whole[copy].begin(), Whole[copy].end(), total);
            total = std::accumulate(Weighted[copy].begin(), Weighted[copy].end(), total);
        }
        return total;
    }

    Tables<std::uint32_t> Whole{};
    Tables<double> Weighted{};
};

struct Moments {
    double Least = std::numeric_limits<double>::max();
    double Greatest = std::numeric_limits<double>::lowest();
    double Sum = 0.0;
    double Squares = 0.0;
    double Valid = 0.0;

    void Join(const Moments& other) {
        Least = std::min(Least, other.Least);
        Greatest = std::max(Greatest, other.Greatest);
        Sum += other.Sum;
        Squares += other.Squares;
        Valid += other.Valid;
    }
};

constexpr std::size_t Lanes = 8;
using Vector = double __attribute__((vector_size(Lanes * sizeof(double))));

inline Vector Loaded(const double* values) {
    Vector vector;
    std::memcpy(&vector, values, sizeof(vector));
    return vector;
}

/// Moments of eight values at a time.
struct VectorSums {
    void Add(const double* values, double missing, const Vector& weights) {
        const Vector x = Loaded(values);
        const auto valid = x != missing;
        const Vector weight = valid ? weights : Vector{};
        Valid += weight;
        Sum += weight * x;
        Squares += weight * x * x;
        Least = (valid & (x < Least)) ? x : Least;
        Greatest = (valid & (x > Greatest)) ? x : Greatest;
    }
    void JoinTo(Moments& all) const {
        for (std::size_t lane = 0; lane < Lanes; ++lane) {
            all.Join({Least[lane], Greatest[lane], Sum[lane], Squares[lane], Valid[lane]});
        }
    }

    Vector Least = Vector{} + std::numeric_limits<double>::max();
    Vector Greatest = Vector{} + std::numeric_limits<double>::lowest();
    Vector Sum{};
    Vector Squares{};
    Vector Valid{};
};

/// The rows of a block that remain, by their place in the block.
struct BlockRows {
    std::size_t Begin = 0;
    std::size_t Size = 0;  ///< rows of the block
    std::size_t Count = 0;  ///< rows that remain
    bool All = true;  ///< every row does
    const std::uint64_t* Bits = nullptr;  ///< the rows that remain
    std::array<std::uint16_t, BlockSize + WordBits> Places{};
};

template <typename Value>
using Block = std::array<Value, BlockSize + WordBits>;

#if defined(__AVX512VBMI2__)
std::size_t Compress(const double* from, std::uint64_t bits, double* to) {
    std::size_t count = 0;
    for (std::size_t lane = 0; lane < WordBits; lane += Lanes) {
        const auto mask = static_cast<__mmask8>(bits >> lane);
        _mm512_storeu_pd(to + count, _mm512_maskz_compress_pd(mask, _mm512_loadu_pd(from + lane)));
        count += static_cast<std::size_t>(std::popcount(mask));
    }
    return count;
}

std::size_t Compress(const std::uint16_t* from, std::uint64_t bits, std::uint16_t* to) {
    constexpr std::size_t half = WordBits / 2;
    const auto low = static_cast<__mmask32>(bits);
    const auto high = static_cast<__mmask32>(bits >> half);
    _mm512_storeu_si512(to, _mm512_maskz_compress_epi16(low, _mm512_loadu_si512(from)));
    const auto count = static_cast<std::size_t>(std::popcount(low));
    _mm512_storeu_si512(to + count, _mm512_maskz_compress_epi16(high, _mm512_loadu_si512(from + half)));
    return count + static_cast<std::size_t>(std::popcount(high));
}

/// Where many rows remain they are drawn together word by word, in place of one by one.
template <typename Value>
bool CompressedRows(const Value* from, const BlockRows& rows, Value* room) {
    if (rows.Count * WordBits < rows.Size * Lanes || rows.Size % WordBits != 0) {
        return false;
    }
    std::size_t count = 0;
    for (std::size_t first = 0; first < rows.Size; first += WordBits) {
        count += Compress(from + first, rows.Bits[first / WordBits], room + count);
    }
    return true;
}
#else
template <typename Value>
bool CompressedRows(const Value*, const BlockRows&, Value*) {
    return false;
}
#endif

/// The values of the rows that remain, side by side.
template <typename Value>
const Value* Gathered(const std::vector<Value>& values, const BlockRows& rows, Block<Value>& room) {
    const Value* from = values.data() + rows.Begin;
    if (rows.All) {
        return from;
    }
    if (CompressedRows(from, rows, room.data())) {
        return room.data();
    }
    for (std::size_t i = 0; i < rows.Count; ++i) {
        room[i] = from[rows.Places[i]];
    }
    return room.data();
}

/// Eight bytes of 0 or 1 as eight bits.
std::uint64_t Packed(const std::uint8_t* bytes) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, bytes, sizeof(eight));
    return (eight * 0x0102040810204080ULL) >> 56U;
}

/// The part of the cases that one thread works on, and what it has found.
class Share {
  public:
    Share(const FloorColumns& columns, const FloorSetting& setting, std::size_t begin, std::size_t end)
        : Columns(columns),
          Setting(setting),
          Begin(begin),
          End(end),
          Bits((end - begin + WordBits - 1) / WordBits),
          CategoryCounts(columns.Categorical.size()),
          IntervalCounts(columns.Continuous.size()),
          Sums(columns.Continuous.size()) {}

    /// Finds the cases that remain, counts categories and sums.
    void Sum() {
        for (std::size_t begin = Begin; begin < End; begin += BlockSize) {
            MarkRows(begin);
            ListRows(begin);
            for (std::size_t i = static_cast<std::size_t>(Setting.Steps); i < Columns.Categorical.size(); ++i) {
                CountCategories(i);
            }
            for (std::size_t i = 0; i < Columns.Continuous.size(); ++i) {
                SumValues(i);
            }
        }
    }

    /// Counts intervals of a range known now.
    void CountIntervals(const std::vector<Moments>& all) {
        for (std::size_t begin = Begin; begin < End; begin += BlockSize) {
            ListRows(begin);
            for (std::size_t i = 0; i < Columns.Continuous.size(); ++i) {
                CountInto(i, all[i]);
            }
        }
    }

    void JoinSums(std::vector<Moments>& all) const {
        for (std::size_t i = 0; i < all.size(); ++i) {
            all[i].Join(Sums[i]);
        }
    }
    [[nodiscard]] double Total() const {
        double total = 0.0;
        for (const std::vector<Counts>* counts : {&CategoryCounts, &IntervalCounts}) {
            for (const Counts& one : *counts) {
                total += one.Total();
            }
        }
        return total;
    }

  private:
    void MarkRows(std::size_t begin) {
        const std::size_t size = std::min(BlockSize, End - begin);
        Block<std::uint8_t> keeps;
        std::fill(keeps.begin(), keeps.end(), std::uint8_t{0});
        std::fill_n(keeps.begin(), size, std::uint8_t{1});
        if (Setting.Weighted) {
            const double* weights = Columns.Weights.data() + begin;
            for (std::size_t i = 0; i < size; ++i) {
                keeps[i] = weights[i] > 0.0 ? 1 : 0;
            }
        }
        for (int step = 0; step < Setting.Steps; ++step) {
            const std::uint16_t* codes = Columns.Categorical[static_cast<std::size_t>(step)].Codes.data() + begin;
            for (std::size_t i = 0; i < size; ++i) {
                keeps[i] = static_cast<std::uint8_t>(keeps[i] & (codes[i] == KeptCategory ? 1U : 0U));
            }
        }
        std::uint64_t* words = &Bits[(begin - Begin) / WordBits];
        for (std::size_t i = 0; i < size; i += 8) {
            words[i / WordBits] |= Packed(&keeps[i]) << (i % WordBits);
        }
    }

    void ListRows(std::size_t begin) {
        Rows.Begin = begin;
        Rows.Size = std::min(BlockSize, End - begin);
        const std::uint64_t* words = &Bits[(begin - Begin) / WordBits];
        Rows.Bits = words;
        Rows.Count = 0;
        for (std::size_t first = 0; first < Rows.Size; first += WordBits) {
            Rows.Count += static_cast<std::size_t>(std::popcount(words[first / WordBits]));
        }
        Rows.All = Rows.Count == Rows.Size;
        if (!Rows.All) {
            ListPlaces(words);
        }
    }

    void ListPlaces(const std::uint64_t* words) {
        std::size_t count = 0;
        for (std::size_t first = 0; first < Rows.Size; first += WordBits) {
            std::uint64_t word = words[first / WordBits];
            for (; word != 0; word &= word - 1) {
                Rows.Places[count++] =
                    static_cast<std::uint16_t>(first + static_cast<std::size_t>(std::countr_zero(word)));
            }
        }
    }

    template <typename PlaceOf>
    void Count(Counts& counts, PlaceOf placeOf) {
        if (Setting.Weighted) {
            const double* weights = Gathered(Columns.Weights, Rows, WeightRoom);
            CountInCopies(counts.Weighted, placeOf, [weights](std::size_t i) { return weights[i]; });
        } else {
            CountInCopies(counts.Whole, placeOf, [](std::size_t) { return 1U; });
        }
    }

    template <typename Tables, typename PlaceOf, typename WeightOf>
    void CountInCopies(Tables& copies, PlaceOf placeOf, WeightOf weightOf) const {
        std::size_t i = 0;
        for (; i + Copies <= Rows.Count; i += Copies) {
            for (std::size_t copy = 0; copy < Copies; ++copy) {
                copies[copy][placeOf(i + copy)] += weightOf(i + copy);
            }
        }
        for (; i < Rows.Count; ++i) {
            copies[0][placeOf(i)] += weightOf(i);
        }
    }

    void CountCategories(std::size_t variable) {
        const std::uint16_t* codes = Gathered(Columns.Categorical[variable].Codes, Rows, CodeRoom);
        Count(CategoryCounts[variable], [codes](std::size_t i) { return codes[i]; });
    }

    void SumValues(std::size_t variable) {
        const FloorColumn& column = Columns.Continuous[variable];
        const double* values = Gathered(column.Values, Rows, ValueRoom);
        Moments& sums = Sums[variable];
        if (Setting.Weighted) {
            const double* weights = Gathered(Columns.Weights, Rows, WeightRoom);
            SumWith(sums, values, column.Missing, [weights](std::size_t i) { return Loaded(weights + i); });
        } else {
            SumWith(sums, values, column.Missing, [](std::size_t) { return Vector{} + 1.0; });
        }
    }

    template <typename WeightOf>
    void SumWith(Moments& all, const double* values, double missing, WeightOf weightOf) const {
        VectorSums sums;
        std::size_t i = 0;
        for (; i + Lanes <= Rows.Count; i += Lanes) {
            sums.Add(values + i, missing, weightOf(i));
        }
        if (i < Rows.Count) {
            Vector last = Vector{} + missing;
            std::memcpy(&last, values + i, (Rows.Count - i) * sizeof(double));
            sums.Add(reinterpret_cast<const double*>(&last), missing, weightOf(i));
        }
        sums.JoinTo(all);
    }

    void CountInto(std::size_t variable, const Moments& range) {
        const FloorColumn& column = Columns.Continuous[variable];
        const double* values = Gathered(column.Values, Rows, ValueRoom);
        const double scale = FloorIntervals / (range.Greatest - range.Least);
        for (std::size_t i = 0; i < Rows.Count; ++i) {
            const double x = values[i];
            const auto place = static_cast<std::int32_t>((x - range.Least) * scale);
            PlaceRoom[i] = x == column.Missing ? FloorIntervals + 1 : place;
        }
        Count(IntervalCounts[variable], [this](std::size_t i) { return static_cast<std::size_t>(PlaceRoom[i]); });
    }

    const FloorColumns& Columns;
    FloorSetting Setting;
    std::size_t Begin;
    std::size_t End;
    std::vector<std::uint64_t> Bits;  // of the cases that remain
    BlockRows Rows;
    Block<double> ValueRoom{};
    Block<double> WeightRoom{};
    Block<std::uint16_t> CodeRoom{};
    Block<std::int32_t> PlaceRoom{};
    std::vector<Counts> CategoryCounts;
    std::vector<Counts> IntervalCounts;
    std::vector<Moments> Sums;
};

/// Runs `work` for each share, the first one in this thread.
template <typename Work>
void OnThreads(std::vector<Share>& shares, Work work) {
    std::vector<std::thread> threads;
    for (std::size_t i = 1; i < shares.size(); ++i) {
        threads.emplace_back(work, std::ref(shares[i]));
    }
    work(shares.front());
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace

double RunCodesFloor(const FloorColumns& columns, const FloorSetting& setting, int threads) {
    const std::size_t blocks = (columns.Cases() + BlockSize - 1) / BlockSize;
    const auto parts = static_cast<std::size_t>(threads);
    std::vector<Share> shares;
    for (std::size_t part = 0; part < parts; ++part) {
        shares.emplace_back(columns, setting, blocks * part / parts * BlockSize,
                            std::min(blocks * (part + 1) / parts * BlockSize, columns.Cases()));
    }
    OnThreads(shares, [](Share& share) { share.Sum(); });
    std::vector<Moments> sums(columns.Continuous.size());
    for (const Share& share : shares) {
        share.JoinSums(sums);
    }
    OnThreads(shares, [&sums](Share& share) { share.CountIntervals(sums); });
    double total = 0.0;
    for (const Share& share : shares) {
        total += share.Total();
    }
    for (const Moments& one : sums) {
        total += one.Least + one.Greatest + one.Sum + one.Squares + one.Valid;
    }
    return total;
}
