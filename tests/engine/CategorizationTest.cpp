// Properties of the intervals that any range is cut into; cuts.txt has the single cuts.

#include <cmath>
#include <random>

#include "tests/engine/DrillBench.h"

namespace drilltest {

TEST(Categorization, IntervalsAreContiguousAndHoldTheWholeRange) {
    // Bounds are built by addition; the last interval closes although rounding may leave it a little above its end.
    std::mt19937_64 random(1);
    for (int i = 0; i < 6000; ++i) {
        Drill record(1, ContinuousVariable, 0, "x");
        record.Method = i % 2 == 0 ? NeatIntervals : ExactIntervals;
        const double scale = std::pow(10.0, static_cast<double>(random() % 581) - 290.0);
        record.Min = (static_cast<double>(random() % 2000) - 1000.0) * scale / (1.0 + random() % 7);
        record.Max = record.Min + static_cast<double>(1 + random() % 3000) * scale / (1.0 + random() % 11);
        record.ExactCount = record.NeatCount = static_cast<std::int32_t>(2 + random() % 998);
        record.RebuildCategories();
        SCOPED_TRACE(testing::PrintToString(std::pair(record.Min, record.Max)));
        ASSERT_FALSE(record.CategorySet.empty());
        ASSERT_TRUE(record.Method == NeatIntervals || std::ssize(record.CategorySet) == record.ExactCount);
        ASSERT_LT(record.CategorySet.begin()->Lower, record.Min);
        ASSERT_GE(record.CategorySet.rbegin()->Upper, record.Max);
        double lower = record.CategorySet.begin()->Lower;
        for (const Categories& category : record.CategorySet) {
            ASSERT_EQ(std::exchange(lower, category.Upper), category.Lower);
        }
    }
}

}  // namespace drilltest
