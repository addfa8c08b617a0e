#include "results/graphs/CountAxis.h"

#include "tests/engine/DrillBench.h"

namespace drilltest {

TEST(NiceAxisMax, IsTheNextNumberAboveTheBarAndEndsSomewhere) {
    const std::pair<std::int32_t, std::vector<double>> cases[] = {
        // top, then the highest bars
        {0, {Moved(0, 16), 0.2, Moved(0.5, -16)}},  // fractions below 0.5 are cut to 0
        {1, {-1, 0, Moved(0, 15), Moved(0.5, -15), 0.5, 0.7, Moved(1, -16)}},
        {2, {Moved(1, -15), 1}},  // a bar this near has reached the number
        {5, {2}},
        {20, {Moved(10, -15), 10}},
        {50, {25}},
        {100, {99.5}},
        {200, {100}},
        {2'000'000'000, {1e9, 1e300, Infinity}},
    };
    for (const auto& [top, bars] : cases) {
        for (const double highest : bars) {
            EXPECT_EQ(NiceAxisMax(highest), top) << highest;
        }
    }
}

}  // namespace drilltest
