// Comparison of doubles, the two records, and the operations of the analysis that read and write records.

#include "tests/engine/DrillBench.h"

#include "platform/OrderedBits.h"

namespace drilltest {

namespace {

constexpr double Largest = std::numeric_limits<double>::max();

struct Pair {
    double Left;
    double Right;
    bool Equal;
};

const Pair Pairs[] = {
    {1.0, 1.0, true},
    {1.0, Moved(1.0, 15), true},
    {1.0, Moved(1.0, 16), false},
    {-1.0, Moved(-1.0, 15), true},
    {-1.0, Moved(-1.0, 16), false},
    {0.0, -0.0, true},
    {0.0, Moved(0.0, -15), true},
    {0.0, Moved(0.0, -16), false},
    {Moved(0.0, -7), Moved(0.0, 8), true},
    {Moved(0.0, -7), Moved(0.0, 9), false},
    {Largest, Moved(Largest, -15), true},
    {Largest, Infinity, false},
    {-Largest, -Infinity, false},
    {Infinity, Infinity, false},
    {-Infinity, -Infinity, false},
    {NA, NA, false},
    {-NA, NA, false},
    {NA, 0.0, false},
};

std::string Shown(const Drill& record) {
    std::string text;
    for (const Categories& category : record.CategorySet) {
        text += std::to_string(category.Upper) + ':' + std::to_string(static_cast<int>(category.Count)) + ' ';
    }
    return text;
}

}  // namespace

TEST(Comparison, TakesValuesWithinFifteenUnitsAsEqual) {
    for (const Pair& pair : Pairs) {
        EXPECT_EQ(NearlyEqual(pair.Left, pair.Right), pair.Equal) << pair.Left << ' ' << pair.Right;
        EXPECT_EQ(NearlyEqual(pair.Right, pair.Left), pair.Equal) << pair.Left << ' ' << pair.Right;
        EXPECT_EQ(RangeNearlyEqualTo(pair.Left).Contains(pair.Right), pair.Equal) << pair.Left << ' ' << pair.Right;
        EXPECT_EQ(RangeNearlyEqualTo(pair.Right).Contains(pair.Left), pair.Equal) << pair.Left << ' ' << pair.Right;
    }
}

TEST(Comparison, WeighsOnlyWhatLiesAboveTheFifteenSmallestDoubles) {
    const std::pair<double, bool> weights[] = {{0.0, false}, {-0.0, false}, {-1.0, false},    {Moved(0.0, 15), false},
                                               {1.0, true},  {0.1, true},   {Infinity, true}, {Moved(0.0, 16), true}};
    for (const auto& [weight, positive] : weights) {
        EXPECT_EQ(IsPositiveWeight(weight), positive) << weight;
    }
    EXPECT_FALSE(IsNonZero(Moved(0.0, 15)));
    EXPECT_TRUE(IsNonZero(Moved(0.0, 16)));
}

TEST(Records, CountNearlyEqualValuesInTheCategoryMetFirst) {
    Drill record(1, CategoricalVariable, 0, "x");
    EXPECT_EQ(record.AddDistinctValue(1.0, 0, 2.0, "one"), ValueInserted);
    EXPECT_EQ(record.AddDistinctValue(Moved(1.0, 15), 0, 3.0, "other"), ValueCounted);
    EXPECT_EQ(record.CategorySet.begin()->Upper, 1.0);
    EXPECT_EQ(record.CategorySet.begin()->Lower, 1.0);
    EXPECT_EQ(record.CategorySet.begin()->Name, "one");
    EXPECT_EQ(record.AddDistinctValue(Moved(1.0, 16), 0, 1.0, ""), ValueInserted);
    EXPECT_EQ(record.AddDistinctValue(Moved(1.0, 8), 0, 1.0, ""), ValueCounted);
    EXPECT_EQ(Shown(record), "1.000000:6 1.000000:1 ");
}

TEST(Records, CountAnInfinityOnlyWhereItIsMetFirst) {
    Drill record(1, CategoricalVariable, 0, "x");
    EXPECT_EQ(record.AddDistinctValue(Infinity, 0, 1.0, ""), ValueInserted);
    EXPECT_EQ(record.AddDistinctValue(Infinity, 0, 1.0, ""), ValueInserted);
    EXPECT_EQ(record.AddDistinctValue(Largest, 0, 1.0, ""), ValueInserted);
    EXPECT_EQ(Shown(record), "inf:1 ");
}

class RecordAccess : public DrillTest {
  protected:
    void SetUp() override {
        Open({Numbers("x", {1, 2, 2, NA}), Numbers("y", {1, 2, 3, 4}), Numbers("z", {4, 5, 6, 7})});
    }
};
ON_EVERY_ROAD(RecordAccess);

TEST_P(RecordAccess, WithoutVariablesGivesWhatIsToldForAbsentRecords) {
    CDrillDown& analysis = Analysis();
    int type = 7, count = 7, atMin = 7;
    double step = 7, start = 7;
    EXPECT_EQ(analysis.GetCurrentDrillDown(), -1);
    EXPECT_EQ(analysis.GetCurrentDrillUp(), 0);
    EXPECT_EQ(analysis.GetCurrentDrillUpName(), "");
    EXPECT_EQ(analysis.GetCurrentVariableName(), "");
    EXPECT_EQ(analysis.GetCurrentVariableType(), 0);
    EXPECT_EQ(analysis.GetCurrentMethod(), -1);
    EXPECT_EQ(analysis.GetCurrentIsset(), -1);
    EXPECT_EQ(analysis.GetDrillMethod(type, count, atMin, step, start), -1);
    EXPECT_EQ(analysis.GetDrillMinMax(step, start), -1);
    EXPECT_EQ(type + count + atMin + step + start, 35);
    EXPECT_EQ(analysis.GetCurrentUpItem(), -1);
    EXPECT_EQ(analysis.SetCurrentUpItem(0), -1);
    EXPECT_EQ(analysis.NoMissingDrill(), 1);
    EXPECT_EQ(analysis.SetSelectedItem(3), 0);
    EXPECT_EQ(analysis.GetDrillDownsContSize(), 0);
}

TEST_P(RecordAccess, TellsTheParametersOfTheMethod) {
    Choose({"x"}, {"y"});
    Analysis().SetCurrentDown(Number("y"));
    Record("y").ExactCount = 4;
    int type = 0, count = 0, atMin = 0;
    double step = 0, start = 7;
    EXPECT_EQ(Analysis().GetDrillMethod(type, count, atMin, step, start), NeatIntervals);
    EXPECT_EQ(count, 10);
    Record("y").Method = ExactIntervals;
    EXPECT_EQ(Analysis().GetDrillMethod(type, count, atMin, step, start), ExactIntervals);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(type * 100 + atMin * 10 + step, 111);
    EXPECT_EQ(Analysis().GetDrillDownsContSize(), 1);
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
    Choose({"x"});
    Review({"x"});
    Analysis().SetReviewDescriptives(Number("x"), 1, 2, 3, 4);
    EXPECT_EQ(Reviewed("x"), "x: n=0 w=3 mean=3 [1:1 2:2] missing 1");
    EXPECT_EQ(Open("x"), "x: n=3 mean=1.66667 [1:1 2:2] missing 1");
}

TEST_P(RecordAccess, TogglesAFlagToOneOnlyFromZero) {
    CDrillDown& analysis = Analysis();
    using Setter = std::int16_t (CDrillDown::*)(std::int16_t);
    using Change = std::int16_t (CDrillDown::*)();
    const std::pair<Setter, Change> flags[] = {{&CDrillDown::SetWM, &CDrillDown::ChangeWM},
                                               {&CDrillDown::SetMD, &CDrillDown::ChangeMD},
                                               {&CDrillDown::SetRVMD, &CDrillDown::ChangeRVMD},
                                               {&CDrillDown::SetCountMD, &CDrillDown::ChangeCountMD}};
    for (const auto& [set, change] : flags) {
        EXPECT_EQ((analysis.*set)(2), 2);
        EXPECT_EQ((analysis.*change)(), 0);
        EXPECT_EQ((analysis.*change)(), 1);
    }
    EXPECT_EQ(analysis.GetWM() + analysis.GetMD() + analysis.GetRVMD() + analysis.GetCountMD(), 4);
}

TEST_P(RecordAccess, ResetGivesAnAnalysisLikeANewOne) {
    Choose({"x"}, {"y"});
    Review({"z"});
    Down("x", "2");
    Analysis().SetWM(1);
    Analysis().SetCountMD(0);
    EXPECT_EQ(Analysis().ResetMembers(), 1);
    EXPECT_EQ(State(), "| 0 open, 0 cases");
    EXPECT_EQ(Analysis().GetDrillReviewsSize(), 0);
    EXPECT_EQ(Analysis().SelectedVariable(Number("x")), 0);
    EXPECT_EQ(Analysis().GetWM(), 0);
    EXPECT_EQ(Analysis().GetCountMD(), 1);
    EXPECT_EQ(Analysis().GetCurrentDown(), -1);
    EXPECT_EQ(Analysis().PlotMeanSEAndSD, 1);
}

}  // namespace drilltest
