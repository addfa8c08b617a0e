#include "tests/results/ResultsBench.h"

namespace quillara {
namespace {

class SummaryTest : public ResultsBench {
  protected:
    void SetUp() override {
        Variable group = Numbers("group", {1, 2, NA, 2});
        group.Labels[1] = {"a long label", ""};
        group.Labels[2] = {"two", "The second group"};
        Open({group, Numbers("a longer name", {5, 6, 7, 6})});
    }
    std::string Summary() { return Analysis().DDNSummary(nullptr) == 1 ? Sheets() : "refused"; }
};

TEST_F(SummaryTest, ListsStepsNewestFirst) {
    Choose({"a longer name", "group"});
    EXPECT_EQ(Summary(), "");
    Drill("a longer name", 1);
    EXPECT_EQ(Summary(), "Summary of drill-down analysis\nVariable | Category\na longer name | '6'\n");
    Drill("group", 0);
    EXPECT_EQ(Summary(),
              "Summary of drill-down analysis\nVariable | Category | Description\n"
              "group | 'two' | 'The second group'\na longer name | '6' | \n");
    Analysis().SetCurrentUp(Number("a longer name"));
    Analysis().MoveBackToDrillDowns();
    EXPECT_EQ(Summary(),
              "Summary of drill-down analysis\nVariable | Category | Description\n"
              "group | 'two' | 'The second group'\n");
}

TEST_F(SummaryTest, AnyDescribedValueGivesTheColumnAlsoToContinuousSteps) {
    Choose({}, {"group"});
    Record(Analysis().DrillDowns, "group").Method = 4;
    Analysis().ReadAfterDrill(0);
    const std::string head = "Summary of drill-down analysis\nVariable | Category | Description\n";
    Drill("group", 0);
    EXPECT_EQ(Summary(), head + "group | 'a long label' | \n");
    ::Drill& step = Record(Analysis().DrillUps, "group");
    step.ChosenCategory = 2;
    EXPECT_EQ(Summary(), head + "group | 'Missing' | \n");
    step.ChosenCategory = 3;
    EXPECT_EQ(Summary(), head + "group |  | \n");
}

TEST_F(SummaryTest, IsShownForAnEmptySubsetAndRunsNoPass) {
    Choose({"group"});
    Drill("group", 0);
    Analysis().ValidVar = 0;
    Analysis().DataChanged = 1;
    EXPECT_NE(Summary(), "refused");
    EXPECT_EQ(Analysis().DataChanged, 1);
    EXPECT_TRUE(Messages.empty());
}

}  // namespace
}  // namespace quillara
