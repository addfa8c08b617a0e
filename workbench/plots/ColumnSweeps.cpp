#include "workbench/plots/ColumnSweeps.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)
/// Compiled for several kinds of registers, one of which is chosen when the program starts.
#define QUILLARA_WIDE_CODE [[gnu::target_clones("avx512f", "avx2", "default")]]
#else
#define QUILLARA_WIDE_CODE
#endif

namespace quillara {
namespace {

using WideLanes = double __attribute__((vector_size(64)));
using WideFloats = float __attribute__((vector_size(32)));
static_assert(sizeof(WideLanes) / sizeof(double) == SweepLanes);

constexpr std::size_t BlockLength = 512;  // values that stay in the first cache
constexpr double NotValid = std::numeric_limits<double>::quiet_NaN();
constexpr double Unbounded = std::numeric_limits<double>::infinity();

[[gnu::always_inline]] inline void LoadLanes(WideLanes& lanes, const double* from) {
    std::memcpy(&lanes, from, sizeof(lanes));
}

[[gnu::always_inline]] inline void StoreLanes(double* to, const WideLanes& lanes) {
    std::memcpy(to, &lanes, sizeof(lanes));
}

[[gnu::always_inline]] inline double SumOfLanes(const WideLanes& lanes) {
    double total = lanes[0];
    for (std::size_t i = 1; i < SweepLanes; ++i) {
        total += lanes[i];
    }
    return total;
}

/// Deviations of a block of a column, 0 where a case isn't valid, and 1 where it is.
struct Deviations {
    std::array<double, BlockLength> From;
    std::array<double, BlockLength> IsValid;
};

QUILLARA_WIDE_CODE
void TakeDeviations(const CentredColumn& column, std::size_t first, std::size_t count, Deviations& to) {
    for (std::size_t i = 0; i < count; i += SweepLanes) {
        WideLanes values;
        LoadLanes(values, column.Values.data() + first + i);
        const WideLanes from = values * column.Scale - column.Centre;
        const auto isValid = values == values;
        StoreLanes(to.From.data() + i, isValid ? from : WideLanes{});
        StoreLanes(to.IsValid.data() + i, isValid ? WideLanes{} + 1.0 : WideLanes{});
    }
}

QUILLARA_WIDE_CODE
void AddPairs(const Deviations& x, const Deviations& y, std::size_t count, PairSums& sums) {
    WideLanes cases{};
    WideLanes sumX{};
    WideLanes sumY{};
    WideLanes squaresX{};
    WideLanes squaresY{};
    WideLanes products{};
    for (std::size_t i = 0; i < count; i += SweepLanes) {
        WideLanes fromX;
        WideLanes fromY;
        WideLanes hasX;
        WideLanes hasY;
        LoadLanes(fromX, x.From.data() + i);
        LoadLanes(fromY, y.From.data() + i);
        LoadLanes(hasX, x.IsValid.data() + i);
        LoadLanes(hasY, y.IsValid.data() + i);
        const WideLanes onlyX = fromX * hasY;
        const WideLanes onlyY = fromY * hasX;
        cases += hasX * hasY;
        sumX += onlyX;
        sumY += onlyY;
        squaresX += onlyX * fromX;
        squaresY += onlyY * fromY;
        products += fromX * fromY;
    }
    sums += {SumOfLanes(cases),    SumOfLanes(sumX),     SumOfLanes(sumY),
             SumOfLanes(squaresX), SumOfLanes(squaresY), SumOfLanes(products)};
}

/// Also what is missing nearly, and what isn't finite. Written so that the compiler takes the values side by side.
QUILLARA_WIDE_CODE
void MarkMissing(double* values, std::size_t count, double lowest, double highest) {
    constexpr double largest = std::numeric_limits<double>::max();
    for (std::size_t i = 0; i < count; ++i) {
        const double value = values[i];
        const bool isKept = ((value < lowest) | (value > highest)) & (value >= -largest) & (value <= largest);
        values[i] = isKept ? value : NotValid;
    }
}

QUILLARA_WIDE_CODE
ColumnRange RangeOfValid(std::span<const double> column) {
    WideLanes low = WideLanes{} + Unbounded;
    WideLanes high = WideLanes{} - Unbounded;
    const WideLanes one = WideLanes{} + 1.0;
    WideLanes cases{};
    for (std::size_t i = 0; i < column.size(); i += SweepLanes) {
        WideLanes values;
        LoadLanes(values, column.data() + i);
        low = values < low ? values : low;
        high = values > high ? values : high;
        cases += values == values ? one : WideLanes{};
    }
    ColumnRange range{.Cases = static_cast<std::int64_t>(SumOfLanes(cases))};
    if (range.Cases > 0) {
        range.Min = low[0];
        range.Max = high[0];
        for (std::size_t i = 1; i < SweepLanes; ++i) {
            range.Min = std::min<double>(range.Min, low[i]);
            range.Max = std::max<double>(range.Max, high[i]);
        }
    }
    return range;
}

QUILLARA_WIDE_CODE
std::int64_t CountAbove(const double* values, std::size_t count, double bound) {
    const WideLanes one = WideLanes{} + 1.0;
    WideLanes above{};
    for (std::size_t i = 0; i < count; i += SweepLanes) {
        WideLanes lanes;
        LoadLanes(lanes, values + i);
        above += lanes > bound ? one : WideLanes{};
    }
    return static_cast<std::int64_t>(SumOfLanes(above));
}

}  // namespace

ColumnRange KeepValid(std::span<double> column, const NearlyEqualRange& missing) {
    MarkMissing(column.data(), column.size(), missing.Lowest, missing.Highest);
    return RangeOfValid(column);
}

QUILLARA_WIDE_CODE
double ScaledSum(std::span<const double> column, double scale) {
    WideLanes sum{};
    for (std::size_t i = 0; i < column.size(); i += SweepLanes) {
        WideLanes values;
        LoadLanes(values, column.data() + i);
        sum += values == values ? values * scale : WideLanes{};
    }
    return SumOfLanes(sum);
}

std::vector<std::int64_t> CasesAbove(std::span<const double> column, std::span<const double> bounds) {
    std::vector<std::int64_t> above(bounds.size());
    for (std::size_t first = 0; first < column.size(); first += BlockLength) {
        const std::size_t count = std::min(BlockLength, column.size() - first);
        for (std::size_t bound = 0; bound < bounds.size(); ++bound) {
            above[bound] += CountAbove(column.data() + first, count, bounds[bound]);
        }
    }
    return above;
}

QUILLARA_WIDE_CODE
void WritePlaces(std::span<const double> column, double scale, double low, double factor, std::span<float> places) {
    for (std::size_t i = 0; i < column.size(); i += SweepLanes) {
        WideLanes values;
        LoadLanes(values, column.data() + i);
        const WideFloats written = __builtin_convertvector((values * scale - low) * factor, WideFloats);
        std::memcpy(places.data() + i, &written, sizeof(written));
    }
}

PairSums& PairSums::operator+=(const PairSums& other) {
    Cases += other.Cases;
    X += other.X;
    Y += other.Y;
    XX += other.XX;
    YY += other.YY;
    XY += other.XY;
    return *this;
}

std::vector<PairSums> SumsOfPairs(std::span<const CentredColumn> columns, std::size_t first, std::size_t count) {
    std::vector<PairSums> sums(columns.size() * (columns.size() + 1) / 2);
    std::vector<Deviations> blocks(columns.size());
    for (std::size_t done = 0; done < count; done += BlockLength) {
        const std::size_t length = std::min(BlockLength, count - done);
        std::size_t pair = 0;
        for (std::size_t y = 0; y < columns.size(); ++y) {
            TakeDeviations(columns[y], first + done, length, blocks[y]);
            for (std::size_t x = 0; x <= y; ++x) {
                AddPairs(blocks[x], blocks[y], length, sums[pair++]);
            }
        }
    }
    return sums;
}

}  // namespace quillara
