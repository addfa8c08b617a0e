// Properties of the intervals that any range is cut into; cuts.txt has the single cuts.

#include <cmath>
#include <random>

#include "tests/engine/DrillBench.h"

namespace drilltest {

namespace {

Drill Prepared(std::int32_t method, double min, double max, double parameter) {
    Drill record(1, ContinuousVariable, 0, "x");
    record.Method = method;
    record.Min = min;
    record.Max = max;
    record.ExactCount = record.NeatCount = static_cast<std::int32_t>(parameter);
    record.StepSize = parameter;
    return record;
}

}  // namespace

TEST(Categorization, TellsWhyNothingWasBuilt) {
    Drill empty = Prepared(ExactIntervals, 1.7e+308, -1.7e+308, 3);
    EXPECT_EQ(empty.MakeExactCategories() + empty.MakeNeatCategories() + empty.MakeUserCategories(), 0);
    EXPECT_EQ(empty.MakeStepCategories(), 1);
    EXPECT_EQ(Prepared(ExactIntervals, 0, 10, 0).MakeExactCategories(), -1);
}

TEST(Categorization, IntervalsAreContiguousAndHoldTheWholeRange) {
    // Bounds are built by addition; the last interval closes although rounding may leave it a little above its end.
    std::mt19937_64 random(1);
    for (int i = 0; i < 6000; ++i) {
        const std::int32_t method = i % 2 == 0 ? NeatIntervals : ExactIntervals;
        const double scale = std::pow(10.0, static_cast<double>(random() % 581) - 290.0);
        const double min = (static_cast<double>(random() % 2000) - 1000.0) * scale / (1.0 + random() % 7);
        const double max = min + static_cast<double>(1 + random() % 3000) * scale / (1.0 + random() % 11);
        const double count = 2.0 + static_cast<double>(random() % 998);
        Drill record = Prepared(method, min, max, count);
        record.RebuildCategories();
        ASSERT_FALSE(record.CategorySet.empty()) << min << ' ' << max;
        ASSERT_TRUE(method == NeatIntervals || static_cast<double>(record.CategorySet.size()) == count) << min << max;
        ASSERT_LT(record.CategorySet.begin()->Lower, min);
        ASSERT_GE(record.CategorySet.rbegin()->Upper, max);
        double lower = record.CategorySet.begin()->Lower;
        for (const Categories& category : record.CategorySet) {
            ASSERT_EQ(std::exchange(lower, category.Upper), category.Lower);
        }
    }
}

TEST(Categorization, EndsBehindAMillionIntervals) {
    Drill record = Prepared(StepIntervals, 0, 1e6, 0.5);
    record.RebuildCategories();
    EXPECT_EQ(record.CategorySet.size(), 1'000'000U);
}

}  // namespace drilltest
