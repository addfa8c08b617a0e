// Choosing drill and review variables.

#include "tests/engine/DrillBench.h"

namespace drilltest {

class VariableSelection : public DrillTest {
  protected:
    void SetUp() override {
        Open({Numbers("a", {1, 1, 2}), Numbers("b", {1, 2, 3}), Numbers("c", {4, 5, 6}), Numbers("d", {7, 8, 9})});
    }

    /// Chooses review variables with lists of the 3D histograms standing. Gives what they become: "1 2 | 3".
    std::string Filtered(std::vector<std::int16_t> first, std::vector<std::int16_t> second,
                         const quillara::VariableLists& answer) {
        CDrillDown& analysis = Analysis();
        std::copy(first.begin(), first.end(), analysis.FirstVarList);
        std::copy(second.begin(), second.end(), analysis.SecondVarList);
        analysis.FirstVarCount = static_cast<std::int16_t>(first.size());
        analysis.SecondVarCount = static_cast<std::int16_t>(second.size());
        ReviewLists(answer);
        return List(analysis.FirstVarList, analysis.FirstVarCount) + "|" +
               List(analysis.SecondVarList, analysis.SecondVarCount);
    }

    static std::string List(const std::int16_t* list, std::int16_t count) {
        std::string text;
        for (std::int16_t i = 0; i < count; ++i) {
            (text += ' ') += std::to_string(list[i]);
        }
        return text + " ";
    }

    /// "a0 b1": names and types in the order of a set.
    static std::string Records(const CDrillDown::DrillSet& set) {
        std::string text;
        for (const Drill& record : set) {
            EXPECT_EQ(record.ChosenCategory, -1);
            text += record.Name + std::to_string(record.VarType) + std::to_string(record.Order) + ' ';
        }
        return text;
    }
};
ON_EVERY_ROAD(VariableSelection);

TEST_P(VariableSelection, MakesRecordsInTheOrderOfTheLists) {
    EXPECT_EQ(Choose({"c", "a"}, {"d", "b"}), 1);
    EXPECT_EQ(Records(*Analysis().DrillDowns), "c00 a01 d12 b13 ");
    EXPECT_EQ(Review({"b"}, {"a"}), 1);
    EXPECT_EQ(Records(*Analysis().Reviews), "b00 a11 ");
    EXPECT_EQ(List(Analysis().AllReviewVars, 3), " 2 1 0 ");
}

TEST_P(VariableSelection, AnswersWhetherAVariableIsSelected) {
    Choose({"a"}, {"b"});
    Review({"c"}, {"a"});
    const int selected[] = {1, 1, 1, 0};
    const int categorical[] = {1, 0, 1, 0};
    for (int var = 1; var <= 4; ++var) {
        EXPECT_EQ(Analysis().SelectedVariable(var), selected[var - 1]) << var;
        EXPECT_EQ(Analysis().IsCategoricalVariable(var), categorical[var - 1]) << var;
    }
}

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
    EXPECT_EQ(Choose({"a", "b"}), 1);
    EXPECT_EQ(State(), "| 2 open, 3 cases");
    EXPECT_EQ(Analysis().GetDrillReviewsSize(), 0);
    EXPECT_EQ(Analysis().SelectedVariable(Number("c")), 0);
    EXPECT_EQ(Analysis().AllReviewVars[0], Number("c")) << "this list is left as it is";
    EXPECT_EQ(Analysis().GetCurrentUp(), Number("a"));
    EXPECT_EQ(Choose({}), 1);
    EXPECT_EQ(State(), "| 0 open, 3 cases");
}

TEST_P(VariableSelection, OfReviewsReadsTheRemainingCasesAndKeepsTheSteps) {
    Choose({"a", "b"});
    Down("a", "1");
    Analysis().DataChanged = 1;
    EXPECT_EQ(Review({"c"}), 1);
    EXPECT_EQ(Reviewed("c"), "c: n=2 mean=4.5 [4:1 5:1] missing 0");
    EXPECT_EQ(State(), "a | 1 open, 2 cases");
    EXPECT_EQ(Analysis().DataChanged, 0);
}

TEST_P(VariableSelection, CutsTheSecondHistogramListToTheLengthOfTheFirst) {
    EXPECT_EQ(Filtered({1, 2}, {3, 4}, {{1, 2}, {3, 4}}), " 1 2 | 3 4 ");
    EXPECT_EQ(Filtered({1, 2}, {3, 4}, {{1, 3}, {4}}), " 1 | 3 ");
    EXPECT_EQ(Filtered({1}, {2, 3, 4}, {{1, 2}, {3, 4}}), " 1 | 2 ");
    EXPECT_EQ(Filtered({1}, {2, 3}, {{1, 3}, {}}), " 1 | ");
    EXPECT_EQ(Filtered({1, 2, 3}, {4}, {{1, 2}, {3, 4}}), " 1 2 3 | 4 ");
    EXPECT_EQ(Filtered({1}, {2}, {{3}, {4}}), " | ");
    EXPECT_EQ(Filtered({1}, {1}, {{1}, {1}}), " 1 1 | 1 1 ") << "as often as it stands among the review variables";
}

}  // namespace drilltest
