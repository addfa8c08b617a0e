// Operations of the analysis that give one number of what it holds, and what a choice of variables asks and drops.

#include "tests/engine/DrillBench.h"
#include "workbench/dialogs/VariableListsDialog.h"

namespace drilltest {

class Members : public testing::Test, public DrillBench {
  protected:
    Members() : DrillBench(Road::Columns) {
        Open({Numbers("a", {1, 2}), Numbers("b", {1, 2}), Numbers("c", {1, 2})});
        Review({"b"}, {"c"});
    }
};

TEST_F(Members, GiveTheAnalysisItsNameAndNumber) {
    EXPECT_EQ(Analysis().GetAnalysisName() + ' ' + std::to_string(Analysis().GetAnalysisID()),
              "Drill-Down Analysis 4811");
}

TEST_F(Members, AskForVariablesUnderTheirTitles) {
    std::string asked;
    Host().Services.WorkIn = [&](quillara::Window& window) {
        using Dialog = quillara::VariableListsDialog;
        asked += window.Resource().Title + std::string(": ") + window.At(Dialog::FirstLabel).Text + ", " +
                 window.At(Dialog::SecondLabel).Text + "\n";
        return false;
    };
    Analysis().SetDDNVariable(nullptr, 1, 0, 3, 0, 3, 3);
    Analysis().SetRVVariable(nullptr, 1, 0, 3);
    Analysis().DataChanged = 1;
    Analysis().RV3DHistograms(0, nullptr);
    EXPECT_EQ(Analysis().DataChanged, 1) << "3D histograms leave that to their captions";
    EXPECT_EQ(asked,
              "Select drill variables: Categorical variables, Continuous variables\n"
              "Select variables for review: Categorical variables for review, Continuous variables for review\n"
              "Select two var. lists (horizontal and vertical vars in plots):: First (horizontal) variable list:, "
              "Second (vertical) variable list:\n");
}

TEST_F(Members, ListsOfReviewsAreZeroedByAChoiceOfDrillVariables) {
    CDrillDown& analysis = Analysis();
    analysis.FirstVarList[0] = analysis.SecondVarList[0] = 3;
    analysis.FirstVarCount = analysis.SecondVarCount = 1;
    Choose({"a"});
    EXPECT_EQ(analysis.NoRVCategorical + analysis.NoRVContinuous + analysis.FirstVarCount + analysis.SecondVarCount, 0);
    EXPECT_EQ(
        analysis.RVCategorical[0] + analysis.RVContinuous[0] + analysis.FirstVarList[0] + analysis.SecondVarList[0], 0);
}

TEST(Reading, ClearsTheTextLineBeforeEachCaseAndShowsItsProgress) {
    const struct {
        const char* Name;
        int (*Operate)(CDrillDown&);
    } cases[] = {
        {"ReadDDNV", [](CDrillDown& a) { return a.ReadDDNV(0); }},
        {"ReadRVV", [](CDrillDown& a) { return a.ReadRVV(0); }},
        {"ReadAfterDrill", [](CDrillDown& a) { return a.ReadAfterDrill(0); }},
        {"ReadBeforeDrill", [](CDrillDown& a) { return a.ReadBeforeDrill(0); }},
        {"FillNeatIntervals", [](CDrillDown& a) { return a.FillNeatIntervals(); }},
        {"FillContinuousIntervals", [](CDrillDown& a) { return a.FillContinuousIntervals(); }},
        {"DDNSaveData", [](CDrillDown& a) { return int{a.DDNSaveData(nullptr)}; }},
        {"DDNDatasheet", [](CDrillDown& a) { return int{a.DDNDatasheet(nullptr)}; }},
    };
    DrillBench bench(Road::CaseByCase);
    bench.Open({Numbers("a", {1, 2, 2}), Numbers("x", {1, 2, 3})});
    bench.Choose({"a"}, {"x"});
    bench.Review({"a"}, {"x"});
    b1_com& line = bench.Analysis().CaseLine;
    std::string progress;
    bench.Host().Services.ProgressStarted = [&](std::string_view text, std::int32_t total) {
        progress += std::string(text) + std::to_string(total);
    };
    bench.Host().Services.ProgressEnded = [&] { progress += " ended"; };
    bench.Host().Services.BreakRequested = [&] {  // once a case
        progress +=
            line.Line[0] == '\0' && line.Line[CaseLineWidth - 1] == '\0' && line.Column == 1 ? " clear" : " left";
        std::fill_n(line.Line, CaseLineWidth, 'x');
        line.Column = 50;
        return false;
    };
    for (const auto& each : cases) {
        progress.clear();
        EXPECT_EQ(each.Operate(bench.Analysis()), 1);
        EXPECT_EQ(progress, "Computing ... 3 clear clear clear ended") << each.Name;
    }
}

}  // namespace drilltest
