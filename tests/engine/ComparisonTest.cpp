// Comparison of doubles.

#include "platform/OrderedBits.h"
#include "tests/engine/DrillBench.h"

namespace drilltest {

TEST(Comparison, TakesValuesWithinFifteenUnitsAsEqual) {
    constexpr double largest = std::numeric_limits<double>::max();
    for (const double value : {1.0, -1.0, 0.0, Moved(0.0, -7), Moved(largest, -16)}) {
        for (const int units : {-16, -15, 0, 15, 16}) {
            const double other = Moved(value, units);
            EXPECT_EQ(NearlyEqual(value, other), units / 16 == 0) << value << ' ' << units;
            EXPECT_EQ(RangeNearlyEqualTo(value).Contains(other), units / 16 == 0) << value << ' ' << units;
        }
    }
    for (const double special : {Infinity, -Infinity, NA, -NA}) {
        for (const double other : {special, largest, -largest, 0.0}) {
            EXPECT_FALSE(NearlyEqual(special, other) || RangeNearlyEqualTo(special).Contains(other)) << special;
            EXPECT_FALSE(NearlyEqual(other, special) || RangeNearlyEqualTo(other).Contains(special)) << special;
        }
    }
}

TEST(Comparison, WeighsOnlyWhatLiesAboveTheFifteenSmallestDoubles) {
    for (const double weight : {0.0, -0.0, -1.0, Moved(0.0, 15)}) {
        EXPECT_FALSE(IsPositiveWeight(weight)) << weight;
    }
    for (const double weight : {Moved(0.0, 16), 0.1, Infinity}) {
        EXPECT_TRUE(IsPositiveWeight(weight) && IsNonZero(weight)) << weight;
    }
    EXPECT_FALSE(IsNonZero(Moved(0.0, 15)));
}

}  // namespace drilltest
