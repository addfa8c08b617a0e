#include "tests/results/ResultsBench.h"

namespace quillara {
namespace {

class SelectionTextTest : public ResultsBench {
  protected:
    void SetUp() override {
        Open({Numbers("x", {1, 2, NA, 2}), Numbers("y", {1, 2, 3, 4}), Numbers("a longer name", {1, 1, 2, 2})});
        Choose({"x", "y", "a longer name"});
    }

    /// A step on x or another variable among the categories (-1.5, 0], (0, 2.5], (2.5, 1e6], of which `size` are there.
    void Step(std::int32_t method, int size, int chosen, double max = 9, const std::string& name = "x") {
        const Categories all[]{{1, 1, 0, "low", -1.5}, {1, 1, 2.5, "mid", 0}, {1, 1, 1e6, "high", 2.5}};
        ::Drill step(Number(name), 1, static_cast<std::int16_t>(-Analysis().GetDrillUpsSize()), name);
        step.Method = method;
        step.Max = max;
        step.ChosenCategory = chosen;
        step.CategorySet.insert(all, all + size);
        Analysis().DrillUps->insert(step);
    }

    std::string ClauseOf(std::int32_t method, int size, int chosen, double max = 9) {
        Analysis().DrillUps->clear();
        Step(method, size, chosen, max);
        return LongTextOf(Analysis().DrillString()).substr(std::string("N Total: 4, Selected: 3").size());
    }
};

TEST_F(SelectionTextTest, CountsTheValidCasesOfTheFirstVariable) {
    EXPECT_EQ(LongTextOf(Analysis().DrillString()), "N Total: 4, Selected: 3");  // one case of x is missing
    Choose({"y", "x"});
    EXPECT_EQ(LongTextOf(Analysis().DrillString()), "N Total: 4, Selected: 4");
    Drill("y", 3);
    EXPECT_EQ(LongTextOf(Analysis().DrillString()), "N Total: 4, Selected: 1\ny = 4");
}

TEST_F(SelectionTextTest, CountsTheFirstReviewVariableWithoutDrillVariables) {
    Analysis().DrillDowns->clear();
    EXPECT_EQ(LongTextOf(Analysis().DrillString()), "N Total: 4, Selected: 0");
    Review({"x"});
    EXPECT_EQ(LongTextOf(Analysis().DrillString()), "N Total: 4, Selected: 3");
}

TEST_F(SelectionTextTest, EachMethodHasItsClauses) {
    for (const int method : {0, 4}) {
        EXPECT_EQ(ClauseOf(method, 3, 1), "\nx = mid");
    }
    for (const int method : {1, 2}) {
        EXPECT_EQ(ClauseOf(method, 3, 0), "\n-1.5 < x <= 0");
        EXPECT_EQ(ClauseOf(method, 3, 2), "\n2.5 < x <= 1000000");
        EXPECT_EQ(ClauseOf(method, 3, 1, 0.0), "\nx = 2.5");  // a single value: Min and Max are 0
    }
    EXPECT_EQ(ClauseOf(3, 3, 0), "\n-1.5 <= x < 0");
    EXPECT_EQ(ClauseOf(3, 3, 2), "\nx >= 2.5");
    EXPECT_EQ(ClauseOf(3, 1, 0), "\nx >= -1.5");
    EXPECT_EQ(ClauseOf(5, 3, 1), "\n0 < x <= 2.5");
    EXPECT_EQ(ClauseOf(5, 3, 2), "\nx > 2.5");
}

TEST_F(SelectionTextTest, FirstUserIntervalContinuesTheLineBefore) {
    EXPECT_EQ(ClauseOf(5, 3, 0), "x <= 0");
    EXPECT_EQ(ClauseOf(5, 1, 0), "x <= 0");
    Step(5, 3, 0, 9, "y");
    EXPECT_EQ(LongTextOf(Analysis().DrillString()), "N Total: 4, Selected: 3y <= 0x <= 0");
}

TEST_F(SelectionTextTest, MissingAndOtherPlacesDontDependOnTheMethod) {
    for (int method = 0; method <= 5; ++method) {
        EXPECT_EQ(ClauseOf(method, 3, 3), "\nx = Missing");
        EXPECT_EQ(ClauseOf(method, 0, 0), "\nx = Missing");
        EXPECT_EQ(ClauseOf(method, 3, 4), "");
        EXPECT_EQ(ClauseOf(method, 3, -1), "");
    }
    EXPECT_EQ(ClauseOf(6, 3, 1), "");
    EXPECT_EQ(ClauseOf(6, 3, 3), "");
}

TEST_F(SelectionTextTest, BoundsShowSixDecimals) {
    Step(2, 1, 0);
    const auto show = [this](double upper) {
        Editable(*Analysis().DrillUps->begin()).CategorySet = {Categories{1, 1, upper, "", upper - 1}};
        const std::string text = LongTextOf(Analysis().DrillString());
        return text.substr(text.find("<= ") + 3);
    };
    EXPECT_EQ(show(0.0000001), "0");
    EXPECT_EQ(show(10), "10");
    EXPECT_EQ(show(0.1234567), "0.123457");
    EXPECT_EQ(show(1e20), "100000000000000000000");
}

TEST_F(SelectionTextTest, NamesAreRawInTheOneCaptionAndWholeInTheOther) {
    Step(0, 3, 1, 9, "a longer name");
    EXPECT_EQ(LongTextOf(Analysis().DrillString()),
              "N Total: 4, Selected: 3\n" + LongTextKey("a longer name") + " = mid");
    EXPECT_EQ(LongTextOf(Analysis().ScatterDrillString()), "N Total: 4, Selected: 3\na longer name = mid");
}

}  // namespace
}  // namespace quillara
