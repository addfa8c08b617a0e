// Choosing drill and review variables.

#include "tests/engine/DrillBench.h"

namespace drilltest {

class VariableSelection : public DrillTest {
  protected:
    void SetUp() override {
        Open({Numbers("a", {1, 1, 2}), Numbers("b", {1, 2, 3}), Numbers("c", {4, 5, 6}), Numbers("d", {7, 8, 9})});
    }
};
ON_EVERY_ROAD(VariableSelection);

TEST_P(VariableSelection, CancelledChangesNothing) {
    Choose({"a", "b"});
    Review({"c"});
    Down("a", "1");
    const std::string before = State() + Open("b") + Reviewed("c");
    Analysis().DataChanged = 1;
    EXPECT_EQ(ChooseLists(std::nullopt), 0);
    EXPECT_EQ(ReviewLists(std::nullopt), 0);
    EXPECT_EQ(State() + Open("b") + Reviewed("c"), before);
    EXPECT_EQ(Analysis().DataChanged, 1);
}

TEST_P(VariableSelection, OfDrillsStartsAgainAndDropsTheReviews) {
    Choose({"a", "b"});
    Review({"c"}, {"d"});
    Down("a", "1");
    Analysis().SetCurrentUp(Number("a"));
    Analysis().DataChanged = 1;
    EXPECT_EQ(Choose({"a", "b"}), 1);
    EXPECT_EQ(State(), "| 2 open, 3 cases");
    EXPECT_EQ(Analysis().GetDrillReviewsSize(), 0);
    EXPECT_EQ(Analysis().SelectedVariable(Number("c")), 0);
    EXPECT_EQ(Analysis().AllReviewVars[0], Number("c")) << "this list is left as it is";
    EXPECT_EQ(Analysis().GetCurrentUp(), Number("a"));
    EXPECT_EQ(Analysis().DataChanged, 1);
}

TEST_P(VariableSelection, CutsTheSecondHistogramListToTheLengthOfTheFirst) {
    using List = std::vector<std::int16_t>;
    struct Case {
        List First, Second;
        VariableLists Reviewed;
        List FirstKept, SecondKept;
    };
    const Case cases[] = {
        {{1, 2}, {3, 4}, {{1, 2}, {3, 4}}, {1, 2}, {3, 4}},
        {{1, 2}, {3, 4}, {{1, 3}, {4}}, {1}, {3}},
        {{1}, {2, 3, 4}, {{1, 2}, {3, 4}}, {1}, {2}},
        {{1}, {2, 3}, {{1, 3}, {}}, {1}, {}},
        {{1, 2, 3}, {4}, {{1, 2}, {3, 4}}, {1, 2, 3}, {4}},
        {{1}, {1}, {{1}, {1}}, {1, 1}, {1, 1}},  // as often as it stands among the review variables
    };
    CDrillDown& analysis = Analysis();
    for (const Case& each : cases) {
        analysis.FirstVarCount = static_cast<std::int16_t>(each.First.size());
        analysis.SecondVarCount = static_cast<std::int16_t>(each.Second.size());
        std::copy(each.First.begin(), each.First.end(), analysis.FirstVarList);
        std::copy(each.Second.begin(), each.Second.end(), analysis.SecondVarList);
        ReviewLists(each.Reviewed);
        EXPECT_EQ(List(analysis.FirstVarList, analysis.FirstVarList + analysis.FirstVarCount), each.FirstKept);
        EXPECT_EQ(List(analysis.SecondVarList, analysis.SecondVarList + analysis.SecondVarCount), each.SecondKept);
    }
}

}  // namespace drilltest
