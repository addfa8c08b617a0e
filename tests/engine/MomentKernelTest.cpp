// The update of moments in registers of every width, and the division that it is made of, against plain arithmetic.

#include "engine/MomentKernel.h"

#include <bit>
#include <cmath>
#include <cstdlib>

#include "engine/WholeDivision.h"
#include "tests/engine/RandomTables.h"

namespace drilltest {

using namespace drilldown;

namespace {

struct PlainOperations {
    using Values = double;
    static double One() { return 1.0; }
    static double Divide(double a, double b) { return a / b; }
    static double Multiply(double a, double b) { return a * b; }
    static double FusedAdd(double a, double b, double c) { return std::fma(a, b, c); }
    static double FusedSubtract(double a, double b, double c) { return std::fma(-a, b, c); }
};

/// A number of so many bits, the highest of them set.
std::uint64_t NumberOfBits(Random& random, int bits) {
    const std::uint64_t top = std::uint64_t{1} << (bits - 1);
    return top | (random() & (top - 1));
}

/// Bits of a product above the lowest `shift` ones.
std::uint64_t HighBits(std::uint64_t a, std::uint64_t b, std::uint64_t added, int shift) {
    __extension__ using Wide = unsigned __int128;
    return static_cast<std::uint64_t>((Wide{a} * b + added) >> shift);
}

/// An odd divisor W of so many bits, and D for which D * 2^k / W misses an odd number M of 54 bits, where rounding
/// turns, by 1 / W: W * M is -1 or 1 modulo 2^k.
struct HardQuotient {
    HardQuotient(Random& random, int bits) : Divisor(NumberOfBits(random, bits) | 1) {
        const int shift = bits + 1;
        const std::uint64_t modulus = std::uint64_t{1} << shift;
        std::uint64_t inverse = Divisor;  // right in three bits, and in twice as many with each round
        for (int round = 0; round < 5; ++round) {
            inverse *= 2 - Divisor * inverse;
        }
        const bool above = Chance(random, 2);
        const std::uint64_t low = (above ? inverse : ~inverse + 1) & (modulus - 1);
        const std::uint64_t halfway = (NumberOfBits(random, 54) & ~(modulus - 1)) | low;
        // The bit below is what the product lacks to a multiple, or has beyond it.
        Dividend = HighBits(Divisor, halfway, above ? 0 : 1, shift);
    }

    std::uint64_t Divisor;
    std::uint64_t Dividend = 0;
};

void ExpectSameQuotient(Random& random, std::uint64_t dividend, double divisor) {
    const int exponent = static_cast<int>(Pick(random, 970)) - 511;
    const double d = std::ldexp(static_cast<double>(dividend), exponent - 52);
    if (std::fabs(d) < 0x1p-511 || std::fabs(d) > 0x1p512) {
        return;
    }
    const double quotient = WholeReciprocal<PlainOperations>(divisor).Quotient(d);
    ASSERT_EQ(std::bit_cast<std::uint64_t>(quotient), std::bit_cast<std::uint64_t>(d / divisor))
        << d << " / " << divisor;
}

/// Rounds of the test of division; a million rounds more for each that the environment asks for.
std::uint64_t Rounds() {
    const char* millions = std::getenv("QUILLARA_MILLION_DIVISIONS");
    return millions == nullptr ? 200'000 : std::strtoull(millions, nullptr, 10) * 1'000'000;
}

}  // namespace

TEST(WholeDivision, GivesTheQuotientOfADivisionToTheLastBit) {
    Random random(7);
    for (std::uint64_t round = 0; round < Rounds() && !HasFatalFailure(); ++round) {
        const int bits = 2 + static_cast<int>(round % 48);
        const HardQuotient hard(random, bits);
        ExpectSameQuotient(random, hard.Dividend, static_cast<double>(hard.Divisor));
        const auto even = static_cast<double>(hard.Divisor << Pick(random, static_cast<std::size_t>(51 - bits)));
        ExpectSameQuotient(random, hard.Dividend, even);
        const auto divisor = static_cast<double>(NumberOfBits(random, bits));
        for (const std::uint64_t dividend :
             {NumberOfBits(random, 53), (std::uint64_t{1} << 53) - 1 - round % 8,
              static_cast<std::uint64_t>(divisor) * NumberOfBits(random, 53 - bits + 1)}) {
            ExpectSameQuotient(random, dividend, divisor);
        }
    }
}

TEST(WholeDivision, IsTriedWhereQuotientsLieClosestToHalfway) {
    Random random(7);
    int turned = 0;
    for (int round = 0; round < 1000; ++round) {
        const HardQuotient hard(random, 40);
        const double high = 1.0 / static_cast<double>(hard.Divisor);
        const auto d = static_cast<double>(hard.Dividend);
        turned += d * high == d / static_cast<double>(hard.Divisor) ? 0 : 1;
    }
    EXPECT_GT(turned, 200) << "a reciprocal of one part would do";
}

namespace {

constexpr std::array<double, 12> Specials{0.0,    -0.0,    1e-320,   -3e-310,   1e-200, 1e300,
                                          -1e300, 1.7e308, Infinity, -Infinity, NA,     1.0};

/// Values and weights of some cases, of one of several kinds.
struct KernelCases {
    KernelCases(Random& random, std::size_t count) : Weights(count) {
        const std::size_t kind = Pick(random, 5);
        for (std::vector<double>& column : Columns) {
            const double common = static_cast<double>(Pick(random, 1000)) / 7.0;
            for (std::size_t i = 0; i < count; ++i) {
                column.push_back(Value(random, kind, common));
            }
        }
        Weighing = static_cast<MomentWeights>(Pick(random, 3));
        for (double& weight : Weights) {
            const auto whole = static_cast<double>(1 + Pick(random, 9));
            weight = Weighing == MomentWeights::Any ? whole / 3.0 : whole;
        }
    }

    static double Value(Random& random, std::size_t kind, double common) {
        if (Chance(random, 20)) {
            return -9999.0;
        }
        const double fraction = static_cast<double>(random() >> 11) * 0x1p-53;
        switch (kind) {
            case 0:
                return common;  // the same in every case, so that d is 0.0
            case 1:
                return Specials[Pick(random, Chance(random, 50) ? Specials.size() : 5)];
            case 2:
                return std::ldexp(fraction - 0.5, static_cast<int>(Pick(random, 2000)) - 1000);
            case 3:
                return static_cast<double>(Pick(random, 5));
            default:
                return common + fraction;
        }
    }

    /// Cases from a place on.
    [[nodiscard]] MomentCases Part(std::size_t first, std::size_t count) const {
        MomentCases cases{{}, Weights.data() + first, count, Weighing};
        for (std::size_t lane = 0; lane < MomentLaneLimit; ++lane) {
            cases.Columns[lane] = Columns[lane].data() + first;
        }
        return cases;
    }

    std::array<std::vector<double>, MomentLaneLimit> Columns;
    std::vector<double> Weights;
    MomentWeights Weighing = MomentWeights::One;
};

MomentLanes EmptyLanes() {
    MomentLanes lanes{};
    lanes.Min.fill(1.7e308);
    lanes.Max.fill(-1.7e308);
    lanes.LowestMissing.fill(-9999.0);
    lanes.HighestMissing.fill(-9999.0);
    return lanes;
}

void UpdatePlainly(MomentLanes& lanes, std::size_t variables, const MomentCases& cases) {
    for (std::size_t lane = 0; lane < variables; ++lane) {
        for (std::size_t i = 0; i < cases.Count; ++i) {
            const double x = cases.Columns[lane][i];
            const double w = cases.Weighing == MomentWeights::One ? 1.0 : cases.Weights[i];
            if (lanes.LowestMissing[lane] <= x && x <= lanes.HighestMissing[lane]) {
                lanes.MissingWeight[lane] += w;
                ++lanes.MissingCount[lane];
                continue;
            }
            lanes.SumWeights[lane] += w;
            const double d = (x - lanes.Mean[lane]) * w;
            lanes.Mean[lane] += d / lanes.SumWeights[lane];
            lanes.SumSquares[lane] += (x - lanes.Mean[lane]) * d;
            lanes.Min[lane] = x < lanes.Min[lane] ? x : lanes.Min[lane];
            lanes.Max[lane] = x > lanes.Max[lane] ? x : lanes.Max[lane];
        }
    }
}

/// The bits of all figures; of a NaN no more than that it is one, since arithmetic leaves its sign open.
std::vector<std::uint64_t> Bits(const MomentLanes& lanes, std::size_t variables) {
    std::vector<std::uint64_t> bits;
    for (const auto* figures : {&lanes.Mean, &lanes.SumSquares, &lanes.SumWeights, &lanes.Min, &lanes.Max,
                                &lanes.MissingWeight, &lanes.MissingCount}) {
        for (std::size_t lane = 0; lane < variables; ++lane) {
            const double figure = (*figures)[lane];
            bits.push_back(std::bit_cast<std::uint64_t>(std::isnan(figure) ? NA : figure));
        }
    }
    return bits;
}

}  // namespace

TEST(MomentKernel, GivesTheSameBitsInRegistersOfEveryWidth) {
    Random random(11);
    for (int round = 0; round < 3000 && !HasFailure(); ++round) {
        const std::size_t count = Pick(random, 90);
        const std::size_t first = Pick(random, count + 1);
        const std::size_t variables = 1 + Pick(random, MomentLaneLimit);
        const KernelCases cases(random, count);
        MomentLanes expected = EmptyLanes();
        UpdatePlainly(expected, variables, cases.Part(0, count));
        for (const MomentRegisters registers :
             {MomentRegisters::Narrow, MomentRegisters::Wide, MomentRegisters::Widest}) {
            if (HasRegisters(registers)) {
                MomentLanes lanes = EmptyLanes();
                UpdateMoments(registers, lanes, variables, cases.Part(0, first));
                UpdateMoments(registers, lanes, variables, cases.Part(first, count - first));
                EXPECT_EQ(Bits(lanes, variables), Bits(expected, variables))
                    << "round " << round << ", registers " << static_cast<int>(registers);
            }
        }
    }
}

}  // namespace drilltest
