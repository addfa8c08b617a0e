#include "tests/results/ResultsBench.h"

namespace drilltest {

class DescriptivesTest : public ResultsBench {
  protected:
    /// The lines above the rows; a star in `whole` marks a column displayed as whole numbers.
    static std::string Head(const std::string& counts, const std::string& whole, const char* cases = "Cases  ") {
        std::string text = "Descriptive statistics\nN Total: " + counts + "\n";
        const char* separator = " | ";
        const char* mark = whole.c_str();
        for (const char* name :
             {"Mean          ", "Std.Dev.              ", "Minimum       ", "Maximum       ", cases, "Missing"}) {
            text.append(separator).append(name).append(*mark++ == '*' ? "*" : "");
        }
        return text + "\n";
    }
    std::string Descriptives() { return Show(&CDrillDown::DDNDescriptive); }
    std::string Reviewed() { return Show(&CDrillDown::RVSummary); }
    Drill& ReviewRecord(const std::string& name) { return RecordIn(*Analysis().Reviews, name); }
};

TEST_F(DescriptivesTest, ShowContinuousVariablesUnderAnyMethodByTrimmedNames) {
    Open({Numbers("g", {1, 1, 2}), Numbers(" x", {1, 3, 8}), Numbers("y", {1, 2, NA})});
    Choose({"g"});
    EXPECT_EQ(Descriptives(), "");
    Choose({"g"}, {"y", " x"});
    Record(" x").Method = 1;
    EXPECT_EQ(Descriptives(), Head("3, Selected: 3", "..****") +
                                  "y | 1.5 | 0.707107 | 1 | 2 | 2 | 1\nx | 4 | 3.60555 | 1 | 8 | 3 | 0\n");
    Down("g", "1");
    Record("y").ValidCount = 1;
    EXPECT_EQ(Descriptives(), Head("3, Selected: 1\ng = 1", "..****") +
                                  "y | 1.5 | 0 | 1 | 2 | 2 | 0\nx | 2 | 1.41421 | 1 | 3 | 2 | 0\n");
    EXPECT_TRUE(TakeMessages().empty());
}

TEST_F(DescriptivesTest, NoWeightMeansDashesAndNoWholeStatistics) {
    Open({Numbers("x", {NA, NA}), Numbers("y", {2, 4})});
    Choose({}, {"x", "y"});
    EXPECT_EQ(Descriptives(), Head("2, Selected: 0", "....**") +
                                  "x | '-' | '-' | '-' | '-' | 0 | 2\ny | 3 | 1.41421 | 2 | 4 | 2 | 0\n");
}

TEST_F(DescriptivesTest, WholeDisplayEndsBehindTenThousandMillions) {
    Open({Numbers("x", {1e10, 1e10}), Numbers("y", {1, 1})});
    Choose({}, {"x", "y"});
    EXPECT_TRUE(Descriptives().starts_with(Head("2, Selected: 2", "******")));
    Record("y").Max = -1e10 - 1;
    Record("y").SumSquares = -1e-20;  // left by rounding: counts as 0
    EXPECT_TRUE(Descriptives().starts_with(Head("2, Selected: 2", "***.**")));
}

TEST_F(DescriptivesTest, DeviationDividesByCasesAlsoWithWeights) {
    Open({Numbers("x", {1, 4}), Numbers("w", {2, 1})});
    Weigh("w");
    Choose({}, {"x"});
    EXPECT_EQ(Descriptives(), Head("2, Selected: 2", "*.****", "Weighted cases") + "x | 2 | 2.44949 | 1 | 4 | 3 | 0\n");
}

TEST_F(DescriptivesTest, ReviewsShowNeatIntervalsWhateverTheTypeByRawNames) {
    Open({Numbers("a longer name", {1, 2}), Numbers(" y", {2, 4}), Numbers("z", {1, 1})});
    Review({" y", "z"}, {"a longer name"});
    ReviewRecord(" y").Method = 2;
    EXPECT_EQ(Reviewed(), Head("2, Selected: 2", "..****") +
                              " y | 3 | 1.41421 | 2 | 4 | 2 | 0\n"
                              "a longer name | 1.5 | 0.707107 | 1 | 2 | 2 | 0\n");
    ReviewRecord(" y").Method = 0;
    ReviewRecord("a longer name").Method = 5;
    EXPECT_EQ(Reviewed(), "");
}

TEST_F(DescriptivesTest, NoCasesIsARefusalExceptForReviewsWithoutDrillVariables) {
    Open({Numbers("x", {1, 2})});
    Review({}, {"x"});
    Analysis().ValidVar = 0;
    EXPECT_EQ(Descriptives(), "refused");
    EXPECT_NE(Reviewed(), "refused");
    EXPECT_EQ(TakeMessages(), Names{"The number of cases is zero."});
    Analysis().NoContinuous = 1;
    EXPECT_EQ(Reviewed(), "refused");
}

}  // namespace drilltest
