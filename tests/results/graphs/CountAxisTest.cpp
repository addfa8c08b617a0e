#include "results/graphs/CountAxis.h"

#include "tests/engine/DrillBench.h"

namespace drilltest {

TEST(NiceAxisMax, IsTheNextNumberAboveTheBarAndEndsSomewhere) {
    struct Case {
        double Highest;
        std::int32_t Top;
    };
    // clang-format off
    const Case cases[] = {
        // Highest           Top
        {-1,                  1},
        {0,                   1},
        {Moved(0, 15),        1},
        {Moved(0, 16),        0},   // fractions below 0.5 are cut to 0
        {0.2,                 0},
        {Moved(0.5, -16),     0},
        {Moved(0.5, -15),     1},
        {0.5,                 1},
        {0.7,                 1},
        {Moved(1, -16),       1},
        {Moved(1, -15),       2},   // a bar this near has reached the number
        {1,                   2},
        {2,                   5},
        {Moved(10, -15),     20},
        {10,                 20},
        {25,                 50},
        {99.5,              100},
        {100,               200},
        {1e9,     2'000'000'000},
        {1e300,   2'000'000'000},
        {Infinity, 2'000'000'000},
    };
    // clang-format on
    for (const Case& each : cases) {
        EXPECT_EQ(NiceAxisMax(each.Highest), each.Top) << each.Highest;
    }
}

}  // namespace drilltest
