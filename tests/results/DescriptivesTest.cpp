#include "tests/results/ResultsBench.h"

namespace quillara {
namespace {

class DescriptivesTest : public ResultsBench {
  protected:
    /// The two lines of title and the column names; a star in `whole` marks the display of whole numbers.
    static std::string Head(const std::string& counts, const std::string& whole, const std::string& cases = "Cases  ") {
        const std::string names[]{"Mean          ", "Std.Dev.              ", "Minimum       ", "Maximum       ", cases,
                                  "Missing"};
        std::string text = "Descriptive statistics\nN Total: " + counts + "\n";
        for (std::size_t column = 0; column < 6; ++column) {
            text += " | " + names[column] + (whole[column] == '*' ? "*" : "");
        }
        return text + "\n";
    }

    std::string Descriptives() { return Analysis().DDNDescriptive(nullptr) == 1 ? Sheets() : "refused"; }
    std::string Reviewed() { return Analysis().RVSummary(nullptr) == 1 ? Sheets() : "refused"; }
};

TEST_F(DescriptivesTest, ShowContinuousVariablesUnderAnyMethod) {
    Open({Numbers("g", {1, 1, 2}), Numbers("x", {1, 3, 8}), Numbers("y", {1, 2, NA})});
    Choose({"g"}, {"y", "x"});
    Record(Analysis().DrillDowns, "x").Method = 1;
    EXPECT_EQ(Descriptives(), Head("3, Selected: 3", "..****") +
                                  "y | 1.5 | 0.707107 | 1 | 2 | 2 | 1\n"
                                  "x | 4 | 3.60555 | 1 | 8 | 3 | 0\n");
    Drill("g", 0);
    Record(Analysis().DrillDowns, "y").ValidCount = 1;
    EXPECT_EQ(Descriptives(), Head("3, Selected: 1\\ng = 1", "..****") +
                                  "y | 1.5 | 0 | 1 | 2 | 2 | 0\n"
                                  "x | 2 | 1.41421 | 1 | 3 | 2 | 0\n");
}

TEST_F(DescriptivesTest, CategoricalVariablesAloneShowNothing) {
    Open({Numbers("g", {1, 1, 2})});
    Choose({"g"});
    EXPECT_EQ(Descriptives(), "");
    EXPECT_TRUE(Messages.empty());
}

TEST_F(DescriptivesTest, NoWeightMeansDashesAndNoWholeStatistics) {
    Open({Numbers("x", {NA, NA}), Numbers("y", {2, 4})});
    Choose({}, {"x", "y"});
    EXPECT_EQ(Descriptives(), Head("2, Selected: 0", "....**") +
                                  "x | '-' | '-' | '-' | '-' | 0 | 2\n"
                                  "y | 3 | 1.41421 | 2 | 4 | 2 | 0\n");
}

TEST_F(DescriptivesTest, WholeDisplayEndsBehindTenThousandMillions) {
    Open({Numbers("x", {1e10, 1e10}), Numbers("y", {1, 1})});
    Choose({}, {"x", "y"});
    EXPECT_EQ(Descriptives().substr(0, Head("2, Selected: 2", "******").size()), Head("2, Selected: 2", "******"));
    Record(Analysis().DrillDowns, "y").Max = -1e10 - 1;
    Record(Analysis().DrillDowns, "y").SumSquares = -1e-20;  // left by rounding: counts as 0
    EXPECT_EQ(Descriptives().substr(0, Head("2, Selected: 2", "***.**").size()), Head("2, Selected: 2", "***.**"));
}

TEST_F(DescriptivesTest, DeviationDividesByCasesAlsoWithWeights) {
    Open({Numbers("x", {1, 4}), Numbers("w", {2, 1})});
    Document->SetWeight(1);
    Choose({}, {"x"});
    EXPECT_EQ(Descriptives(), Head("2, Selected: 2", "*.****", "Weighted cases") + "x | 2 | 2.44949 | 1 | 4 | 3 | 0\n");
}

TEST_F(DescriptivesTest, ReviewsShowNeatIntervalsWhateverTheType) {
    Open({Numbers("a longer name", {1, 2}), Numbers("y", {2, 4}), Numbers("z", {1, 1})});
    Review({"y", "z"}, {"a longer name"});
    Record(Analysis().Reviews, "y").Method = 2;
    EXPECT_EQ(Reviewed(), Head("2, Selected: 2", "..****") +
                              "y | 3 | 1.41421 | 2 | 4 | 2 | 0\n"
                              "a longer name | 1.5 | 0.707107 | 1 | 2 | 2 | 0\n");
    Record(Analysis().Reviews, "y").Method = 0;
    Record(Analysis().Reviews, "a longer name").Method = 5;
    EXPECT_EQ(Reviewed(), "");
}

TEST_F(DescriptivesTest, RowNamesAreTrimmedOfDrillVariablesOnly) {
    Open({Numbers(" x", {1, 2})});
    Choose({}, {" x"});
    Review({}, {" x"});
    EXPECT_NE(Descriptives().find("\nx | 1.5"), std::string::npos);
    EXPECT_NE(Reviewed().find("\n x | 1.5"), std::string::npos);
}

TEST_F(DescriptivesTest, NoCasesIsARefusalExceptForReviewsWithoutDrillVariables) {
    Open({Numbers("x", {1, 2})});
    Review({}, {"x"});
    Analysis().ValidVar = 0;
    EXPECT_EQ(Descriptives(), "refused");
    EXPECT_NE(Reviewed(), "refused");
    EXPECT_EQ(Messages, std::vector<std::string>{"The number of cases is zero."});
    Analysis().NoContinuous = 1;
    EXPECT_EQ(Reviewed(), "refused");
}

}  // namespace
}  // namespace quillara
