// The filters of the plots that the host computes, called on rows as the host gives them: variable 1 first.

#include "results/graphs/ReviewCaseFilter.h"

#include "tests/engine/DrillBench.h"

namespace drilltest {

class ReviewFilter : public testing::Test, public DrillBench {
  protected:
    ReviewFilter() : DrillBench(Road::Columns) {
        Open({Numbers("x", {1, 2, NA}), Numbers("y", {1, 2, 2}), Numbers("z", {1, 1, 1})});
        Choose({"x", "y", "z"});
    }

    /// Takes a step on the category (or, for Method 3, [) 0 to 10 of a variable.
    void Step(const std::string& name, std::int32_t method) {
        Record(name).CategorySet = {{1, 1.0, 10.0, "", 0.0}};
        Analysis().SetCurrentDown(Number(name));
        Take(0);
        Method(name, method);
    }
    void Method(const std::string& name, std::int32_t method) { RecordIn(*Analysis().DrillUps, name).Method = method; }
    bool Keeps(std::vector<double> row) {
        const ReviewCaseFilterScope scope(Analysis());
        return ReviewCaseFilter(nullptr, nullptr, row.data(), nullptr, nullptr) == 0;
    }
};

TEST_F(ReviewFilter, TestsTheBoundsByTheMethod) {
    const std::pair<double, std::string> cases[] = {
        // methods 0 to 5
        {0, "000100"},  {5, "011101"}, {10, "111011"}, {Moved(10, 1), "000000"},
        {NA, "000100"},  // not above the lower bound, not below it either
    };
    EXPECT_TRUE(Keeps({NA, NA, NA}));  // no steps
    Step("y", DistinctValues);
    for (const auto& [value, kept] : cases) {
        for (std::int32_t method = DistinctValues; method <= UserIntervals; ++method) {
            Method("y", method);
            EXPECT_EQ(Keeps({-1, value, -1}), kept[static_cast<std::size_t>(method)] == '1') << method << ": " << value;
        }
    }
}

TEST_F(ReviewFilter, MissingStepDropsEveryCaseOfReviewPlots) {
    Down("x", "Missing");
    EXPECT_FALSE(Keeps({ValuesOf(1)[2], 2, 1}));
    EXPECT_FALSE(Keeps({1, 1, 1}));
    EXPECT_EQ(State(), "x | 2 open, 1 cases");  // which the tables keep
    RecordIn(*Analysis().DrillUps, "x").CategorySet.clear();
    EXPECT_FALSE(Keeps({1, 1, 1}));
}

TEST_F(ReviewFilter, UnknownMethodKeepsTheCaseWhateverTheStepsBehindItSay) {
    Step("x", NeatIntervals);  // each step goes before the ones taken
    Step("y", NeatIntervals);
    Step("z", NeatIntervals);
    EXPECT_FALSE(Keeps({11, 1, 1}));
    for (const std::int32_t unknown : {6, -1}) {
        Method("y", unknown);
        EXPECT_TRUE(Keeps({11, 11, 1}));
        EXPECT_FALSE(Keeps({1, 1, 11}));  // the step before it counts
    }
}

TEST_F(ReviewFilter, GivesTheTwoValuesOfAKeptCaseOnly) {
    Step("y", NeatIntervals);
    const ReviewCaseFilterScope scope(Analysis());
    Histogram3DXVar = 2;
    Histogram3DYVar = 0;
    const double kept[] = {0.1, 5, 3};
    const double dropped[] = {7, 11, 8};
    for (const CaseFilter filter : {ReviewCaseFilter, ReviewCaseFilterXY}) {
        float x = 0;
        float y = 0;
        EXPECT_EQ(filter(nullptr, nullptr, kept, &x, &y), 0);
        EXPECT_EQ(filter(nullptr, nullptr, dropped, &x, &y), 1);
        EXPECT_EQ(x, 3.0F);
        EXPECT_EQ(y, 0.1F);
    }
}

}  // namespace drilltest
