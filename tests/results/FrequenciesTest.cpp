#include "tests/results/ResultsBench.h"

namespace quillara {
namespace {

class FrequenciesTest : public ResultsBench {
  protected:
    static constexpr const char* Columns = " | Count* | Cumulative\\nCount* | Percent(%) | Cumulative\\nPercent(%)\n";
    static constexpr const char* Fractional = " | Count | Cumulative\\nCount | Percent(%) | Cumulative\\nPercent(%)\n";

    std::string Frequencies() { return Analysis().DDNFrequency(nullptr) == 1 ? Sheets() : "refused"; }
    std::string Reviewed() { return Analysis().RVFrequency(nullptr) == 1 ? Sheets() : "refused"; }
};

TEST_F(FrequenciesTest, PercentsAreOfAllCasesWhetherOrNotMissingIsARow) {
    Open({Numbers("x", {1, 1, 1, 2, 2, 2, 2, 2, NA, NA})});
    Choose({"x"});
    const std::string rows = "1 | 3 | 3 | 30 | 30\n2 | 5 | 8 | 50 | 80\n";
    const std::string head = std::string("Frequency table of x\nN Total: 10, Selected: 8\n") + Columns;
    EXPECT_EQ(Frequencies(), head + rows + "Missing | 2 | 10 | 20 | 100\n");
    Analysis().SetCountMD(0);
    EXPECT_EQ(Frequencies(), head + rows);
}

TEST_F(FrequenciesTest, TitlesOfTheTwinsDifferInTheSeparator) {
    Variable income = Numbers("household income", {1, 2});
    income.LongName = "Income of all members of the household before taxes and after transfers, per month";
    Open({income});
    Choose({"household income"});
    Review({"household income"});
    const auto title = [this] { return Shown.back().Title.front(); };
    Analysis().DDNFrequency(nullptr);
    EXPECT_EQ(title(), "Frequency table of household income: " + income.LongName);
    Analysis().RVFrequency(nullptr);
    EXPECT_EQ(title(), "Frequency table of household income : " + income.LongName);
}

TEST_F(FrequenciesTest, FractionalCountTakesWholeDisplayFromLaterTablesToo) {
    Open({Numbers("a", {1, 1, 1}), Numbers("b", {1, 2, 2}), Numbers("w", {0.5, 0.5, 1})});
    Document->SetWeight(2);
    const auto whole = [this] {
        std::string text;
        for (const SpreadsheetDocument& sheet : std::exchange(Shown, {})) {
            text += sheet.Title.front().back();
            text += sheet.Columns[0].Whole && sheet.Columns[1].Whole ? '*' : '.';
        }
        return text;
    };
    Choose({"a", "b", "w"});
    Analysis().SetWM(1);
    Analysis().DataChanged = 1;
    Analysis().DDNFrequency(nullptr);
    EXPECT_EQ(whole(), "a*b.w.");
}

TEST_F(FrequenciesTest, UnnamedCategoriesShowTheirBounds) {
    Open({Numbers("g", {3}), Numbers("x", {1})});
    Choose({"g"}, {"x"});
    for (const char* name : {"g", "x"}) {
        ::Drill& record = Record(Analysis().DrillDowns, name);
        record.Isset = 1;
        record.CategorySet = {Categories{0, 1, 3, "", 1}};
    }
    Analysis().DDNFrequency(nullptr);
    ASSERT_EQ(Shown.size(), 2U);
    EXPECT_EQ(Shown[0].Rows[0].Name, "3.000000");
    EXPECT_EQ(Shown[1].Rows[0].Name, "1.000000<x<=3.000000");
}

TEST_F(FrequenciesTest, DescriptionsAreAColumnOfCategoricalVariables) {
    Variable group = Numbers("g", {1, 2, NA});
    group.Labels[2] = {"treated", "Got the treatment for at least six weeks"};
    Open({group});
    Choose({"g"}, {"g"});
    EXPECT_EQ(Analysis().LongDescription(1, CategoricalVariable), 1);
    EXPECT_EQ(Analysis().LongDescription(1, ContinuousVariable), 0);
    Choose({}, {"g"});
    Review({"g"});
    EXPECT_EQ(Frequencies().find("Description"), std::string::npos);
    EXPECT_EQ(Reviewed(),
              "Frequency table of g\nN Total: 3, Selected: 2\n"
              " | Count* | Cumulative\\nCount* | Percent(%) | Cumulative\\nPercent(%) | Description\n"
              "1 | 1 | 1 | 33.3333 | 33.3333 | \n"
              "treated | 1 | 2 | 33.3333 | 66.6667 | 'Got the treatment for at least six weeks'\n"
              "Missing | 1 | 3 | 33.3333 | 100 | \n");
}

TEST_F(FrequenciesTest, EmptySubsetShowsTablesOfNoRowsAndNoPercents) {
    Open({Numbers("x", {NA, NA})});
    Choose({"x"});
    Analysis().SetCountMD(0);
    EXPECT_EQ(Frequencies(), std::string("Frequency table of x\nN Total: 2, Selected: 0\n") + Columns);
    ::Drill& record = Record(Analysis().DrillDowns, "x");
    record.MissingWeight = 0;
    record.CategorySet = {Categories{0, 0, 3, "three", 3}};
    EXPECT_EQ(Frequencies(),
              std::string("Frequency table of x\nN Total: 2, Selected: 0\n") + Columns + "three | 0 | 0 |  | \n");
    EXPECT_TRUE(Messages.empty());
}

TEST_F(FrequenciesTest, StaleIntervalsAreCountedFirst) {
    Open({Numbers("x", {1, 2, 3, 3})});
    Choose({}, {"x"});
    const std::string fresh = Frequencies();
    Analysis().ReadAfterDrill(0);  // cuts the intervals anew and leaves them uncounted
    EXPECT_EQ(Frequencies(), fresh);
    EXPECT_NE(fresh.find(" | 4 | "), std::string::npos) << fresh;
}

}  // namespace
}  // namespace quillara
