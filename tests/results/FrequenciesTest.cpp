#include "tests/results/ResultsBench.h"

namespace drilltest {

class FrequenciesTest : public ResultsBench {
  protected:
    static constexpr char Columns[] = " | Count* | Cumulative\nCount* | Percent(%) | Cumulative\nPercent(%)";

    /// A table of whole counts of the variable x.
    static std::string Table(const std::string& counts, const std::string& rows) {
        return "Frequency table of x\nN Total: " + counts + "\n" + Columns + "\n" + rows;
    }
    std::string Frequencies() { return Show(&CDrillDown::DDNFrequency); }
    std::string Reviewed() { return Show(&CDrillDown::RVFrequency); }
};

TEST_F(FrequenciesTest, PercentsAreOfAllCasesWhetherOrNotMissingIsARow) {
    Open({Numbers("x", {1, 1, 1, 2, 2, 2, 2, 2, NA, NA})});
    Choose({"x"});
    const std::string rows = "1 | 3 | 3 | 30 | 30\n2 | 5 | 8 | 50 | 80\n";
    EXPECT_EQ(Frequencies(), Table("10, Selected: 8", rows + "Missing | 2 | 10 | 20 | 100\n"));
    Analysis().SetCountMD(0);
    EXPECT_EQ(Frequencies(), Table("10, Selected: 8", rows));
}

TEST_F(FrequenciesTest, FractionalCountTakesWholeDisplayFromLaterTablesToo) {
    Open({Numbers("a", {1, 1, 1}), Numbers("b", {1, 2, 2}), Numbers("w", {0.5, 0.5, 1})});
    Weigh("w");
    Choose({"a", "b", "w"});
    Analysis().SetWM(1);
    Analysis().DataChanged = 1;
    const auto whole = [this] {
        std::string columns;
        Analysis().DDNFrequency(nullptr);
        for (const auto& sheet : std::exchange(Shown, {})) {
            columns += sheet.Columns[0].Whole && sheet.Columns[1].Whole ? '*' : '.';
        }
        return columns;
    };
    EXPECT_EQ(whole(), "*..");
    Record("a").MissingWeight = 0.5;
    EXPECT_EQ(whole(), "...");
}

TEST_F(FrequenciesTest, TitlesDifferInTheSeparatorAndOnlyCategoricalVariablesHaveDescriptions) {
    quillara::Variable group = Numbers("treatment group", {1, 2, NA});
    group.LongName = "Group that the patient was put into, by lot, at the beginning of the second part of the study";
    group.Labels[2] = {"treated", "Got the treatment for at least six weeks"};
    Open({group});
    Choose({"treatment group"});
    EXPECT_EQ(Analysis().LongDescription(1, CategoricalVariable), 1);
    EXPECT_EQ(Analysis().LongDescription(1, ContinuousVariable), 0);
    Choose({}, {"treatment group"});
    Review({"treatment group"});
    const std::string shown = Frequencies();
    EXPECT_EQ(shown.find("Frequency table of treatment group: " + group.LongName + "\nN "), 0U) << shown;
    EXPECT_EQ(shown.find("Description"), std::string::npos) << shown;
    EXPECT_EQ(Reviewed(), "Frequency table of treatment group : " + group.LongName + "\nN Total: 3, Selected: 2\n" +
                              Columns +
                              " | Description\n1 | 1 | 1 | 33.3333 | 33.3333 | \n"
                              "treated | 1 | 2 | 33.3333 | 66.6667 | 'Got the treatment for at least six weeks'\n"
                              "Missing | 1 | 3 | 33.3333 | 100 | \n");
}

TEST_F(FrequenciesTest, EmptySubsetHasNoPercentsAndUnnamedCategoriesShowTheirBounds) {
    Open({Numbers("x", {NA, NA})});
    Choose({"x"});
    Analysis().SetCountMD(0);
    EXPECT_EQ(Frequencies(), Table("2, Selected: 0", ""));
    Record("x").MissingWeight = 0;
    Record("x").CategorySet = {Categories{0, 0, 3, "three", 3},
                               Categories{0, 2e10, 4, "", 3}};  // whole whatever the size
    EXPECT_EQ(Frequencies(), Table("2, Selected: 0", "three | 0 | 0 |  | \n4.000000 | 2e+10 | 2e+10 |  | \n"));
    Record("x").VarType = ContinuousVariable;
    EXPECT_EQ(Frequencies(),
              Table("2, Selected: 0", "three | 0 | 0 |  | \n3.000000<x<=4.000000 | 2e+10 | 2e+10 |  | \n"));
    EXPECT_TRUE(TakeMessages().empty());
}

TEST_F(FrequenciesTest, StaleIntervalsAreCountedFirst) {
    Open({Numbers("x", {1, 2, 3, 3})});
    Choose({}, {"x"});
    const std::string fresh = Frequencies();
    Analysis().ReadAfterDrill(0);  // cuts the intervals anew and leaves them uncounted
    EXPECT_EQ(Frequencies(), fresh);
    EXPECT_NE(fresh.find(" | 4 | "), std::string::npos) << fresh;
}

}  // namespace drilltest
