#include "resources/StringTable.h"
#include "tests/results/RecordedCalls.h"
#include "tests/results/ResultsBench.h"

namespace drilltest {

class SummaryTest : public ResultsBench {
  protected:
    static constexpr char Plain[] = "Summary of drill-down analysis\nVariable | Category\n";
    static constexpr char Described[] = "Summary of drill-down analysis\nVariable | Category | Description\n";

    void SetUp() override {
        Group.Labels = {{1, {"a long label", ""}}, {2, {"two", "The second group"}}};
        Open({Group, Numbers("a longer name", {5, 6, 7, 6})});
    }
    std::string Summary() { return Show(&CDrillDown::DDNSummary); }

    quillara::Variable Group = Numbers("group", {1, 2, NA, 2});
};

TEST_F(SummaryTest, ListsStepsNewestFirst) {
    Choose({"a longer name", "group"});
    EXPECT_EQ(Summary(), "");
    Down("a longer name", "6");
    EXPECT_EQ(Summary(), std::string(Plain) + "a longer name | '6'\n");
    Down("group", "two");
    EXPECT_EQ(Summary(), std::string(Described) + "group | 'two' | 'The second group'\na longer name | '6' | \n");
    Up("a longer name");
    EXPECT_EQ(Show(&CDrillDown::DDNFrequency).find("Variable"), std::string::npos) << "the corner is cleared again";
    EXPECT_EQ(Summary(), std::string(Described) + "group | 'two' | 'The second group'\n");
}

TEST_F(SummaryTest, AnyDescribedValueGivesTheColumnAlsoToContinuousSteps) {
    Choose({}, {"group"});
    Categorize("group", [](Drill& group) { group.Method = 4; });
    Down("group", "a long label");
    EXPECT_EQ(Summary(), std::string(Described) + "group | 'a long label' | \n");
    for (const auto& [chosen, row] : {std::pair{2, "group | 'Missing' | \n"}, {3, "group |  | \n"}}) {
        RecordIn(*Analysis().DrillUps, "group").ChosenCategory = chosen;
        EXPECT_EQ(Summary(), Described + std::string(row));
    }
}

TEST_F(SummaryTest, IsShownForAnEmptySubsetAndRunsNoPass) {
    Choose({"group"});
    Down("group", "two");
    Analysis().ValidVar = 0;
    Analysis().DataChanged = 1;
    EXPECT_EQ(Summary(), std::string(Described) + "group | 'two' | 'The second group'\n");
    EXPECT_EQ(Analysis().DataChanged, 1);
    EXPECT_TRUE(TakeMessages().empty());
}

TEST_F(SummaryTest, RowNamesStayWholeBesideShortCaseNames) {
    quillara::DataTable table = TableOf({Numbers("a longer name", {5, 6, 6}), Numbers("twelve bytes", {1, 1, 1})});
    table.CaseNames = {"c1", "c2", "c3"};
    Open(table);
    Choose({"a longer name", "twelve bytes"});
    Down("a longer name", "6");
    Down("twelve bytes", "1");
    EXPECT_EQ(Summary(), std::string(Plain) + "twelve bytes | '1'\na longer name | '6'\n");
}

TEST_F(SummaryTest, ATranslationReachesTheDescriptionsOfTheSummaryAlone) {
    Choose({"group", "a longer name"});
    Translate(DescriptionText, "Beschreibung");
    EXPECT_NE(Show(&CDrillDown::DDNFrequency).find("Description"), std::string::npos);
    Down("group", "two");
    EXPECT_NE(Summary().find("Beschreibung"), std::string::npos);
    Translate(0, nullptr);
}

}  // namespace drilltest
