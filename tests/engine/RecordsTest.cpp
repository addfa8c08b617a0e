// Comparison of doubles, and the operations of the analysis that read and write records.

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

class RecordAccess : public DrillTest {
  protected:
    void SetUp() override { Open({Numbers("x", {1, 2, 2, NA}), Numbers("y", {1, 2, 3, 4})}); }
};
ON_EVERY_ROAD(RecordAccess);

TEST_P(RecordAccess, WithoutVariablesGivesWhatIsToldForAbsentRecords) {
    CDrillDown& analysis = Analysis();
    double min = 7, max = 7;
    EXPECT_EQ(analysis.GetCurrentDrillDown(), -1);
    EXPECT_EQ(analysis.GetCurrentDrillUp(), 0);
    EXPECT_EQ(analysis.GetCurrentDrillUpName() + analysis.GetCurrentVariableName(), "");
    EXPECT_EQ(analysis.GetCurrentMethod(), -1);
    EXPECT_EQ(analysis.GetDrillMinMax(min, max), -1);
    EXPECT_EQ(min + max, 14);
    EXPECT_EQ(analysis.SetSelectedItem(3), 0);
}

TEST_P(RecordAccess, SelectsTheItemAmongTheNonEmptyCategories) {
    Choose({"x"});
    Analysis().SetCurrentDown(Number("x"));
    Record("x").CategorySet = {{0, 5, 1, "A", 1}, {0, Moved(0.0, 15), 2, "B", 2}, {0, 3, 3, "C", 3}};
    const std::pair<int, int> items[] = {{0, 0}, {1, 2}, {2, 3}, {9, 3}};
    for (const auto& [item, selected] : items) {
        EXPECT_EQ(Analysis().SetSelectedItem(item), selected) << item;
        EXPECT_EQ(Analysis().GetSelected(), selected) << item;
    }
}

TEST_P(RecordAccess, ForgetsTheValidCasesWithNewDescriptives) {
    Review({"x"});
    Analysis().SetReviewDescriptives(Number("x"), 1, 2, 3, 4);
    EXPECT_EQ(Reviewed("x"), "x: n=0 w=3 mean=3 [1:1 2:2] missing 1");
}

TEST_P(RecordAccess, ResetGivesAnAnalysisLikeANewOne) {
    Choose({"x"}, {"y"});
    Review({"y"});
    Down("x", "2");
    Analysis().SetWM(1);
    Analysis().SetCountMD(0);
    EXPECT_EQ(Analysis().ResetMembers(), 1);
    EXPECT_EQ(State(), "| 0 open, 0 cases");
    EXPECT_EQ(Analysis().GetDrillReviewsSize() + Analysis().SelectedVariable(Number("x")), 0);
    EXPECT_EQ(Analysis().GetWM(), 0);
    EXPECT_EQ(Analysis().GetCountMD(), 1);
    EXPECT_EQ(Analysis().GetCurrentDown(), -1);
}

}  // namespace drilltest
