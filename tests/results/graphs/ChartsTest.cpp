#include "tests/results/graphs/GraphBench.h"

namespace drilltest {

class Charts : public GraphBench {
  protected:
    /// Replaces the categories of a record, whose counts count as fresh.
    static void SetBars(Drill& record, std::set<Categories> categories) {
        record.CategorySet = std::move(categories);
        record.Isset = 1;
    }
    static Categories Bar(double upper, const std::string& name, double count) {
        return {0, count, upper, name, upper};
    }
    /// The heights of the first column of a stacked plot, from the top down.
    static std::string Percents(const quillara::GraphDocument& graph) {
        std::ostringstream text;
        for (const quillara::GraphSeries& series : SeriesOf(graph)->Series) {
            text << (text.view().empty() ? "" : " ") << series.Points.at(0).Y;
        }
        return text.str();
    }
};

TEST_F(Charts, TwinsDifferInTheirSetAndTitle) {
    quillara::Variable group = Numbers("g", {2, 2});
    group.LongName = "The group";
    Open({Numbers("x", {1, 2}), group});
    Choose({"x"});
    Review({"g"});
    EXPECT_EQ(Bars(&CDrillDown::DDNHistograms), "Histogram of drill-down variable: x [1:1 2:1] ");
    EXPECT_EQ(Bars(&CDrillDown::RVHistograms), "Histogram of review variable: g: The group [2:2] ");
    EXPECT_EQ(Bars(&CDrillDown::DDNPiecharts), "Pie chart for drill-down variable: x [1:1 2:1 :0] ");
    EXPECT_EQ(Bars(&CDrillDown::RVPiecharts), "Pie chart for review variable: g: The group [2:2 :0] ");
    EXPECT_EQ(Bars(&CDrillDown::RVStackedplots), "Stacked bar plot for review variables [g:100] ");
}

TEST_F(Charts, MissingIsShownByTheDrillOptionButAlwaysInStackedPlots) {
    Open({Numbers("x", {1, 2, 3, 3, NA, NA, NA, NA}), Numbers("g", {1, 1, 1, 1, 1, 1, 1, NA})});
    Choose({"x"});
    Review({"g"});
    EXPECT_EQ(Bars(&CDrillDown::RVHistograms), "Histogram of review variable: g [1:7 Missing:1] ");
    Analysis().SetCountMD(0);
    Analysis().SetRVMD(1);
    EXPECT_EQ(Bars(&CDrillDown::RVHistograms), "Histogram of review variable: g [1:7] ");
    EXPECT_EQ(Bars(&CDrillDown::RVPiecharts), "Pie chart for review variable: g [1:7 :0] ");
    Run(&CDrillDown::DDNStackedplots);
    EXPECT_EQ(Percents(std::exchange(Shown, {}).at(0)), "100 50 25 12.5 0");
    Analysis().SetCountMD(1);
    Record("x").MissingWeight = Moved(0, 15);
    EXPECT_EQ(Bars(&CDrillDown::DDNPiecharts), "Pie chart for drill-down variable: x [1:1 2:1 3:2 :0] ");
}

TEST_F(Charts, AVariableWithoutCasesOrBarsTakesTheWholeStackedPlotButNotTheOthers) {
    Open({Numbers("x", {1, 2}), Numbers("y", {1, 2}), Numbers("z", {1, 2})});
    Choose({"x", "y", "z"});
    Record("x").ValidWeight = 0;
    SetBars(Record("x"), {});
    SetBars(Record("y"), {Bar(1, "1", 0), Bar(2, "2", 0)});
    EXPECT_EQ(Bars(&CDrillDown::DDNStackedplots), "gave 0");
    const std::string title = "Histogram of drill-down variable: ";
    EXPECT_EQ(Bars(&CDrillDown::DDNHistograms), title + "y [1:0 2:0] " + title + "z [1:1 2:1] Nothing to plot.... ");
    EXPECT_EQ(Bars(&CDrillDown::RVHistograms) + Bars(&CDrillDown::RVPiecharts), "");  // no variables at all
    EXPECT_EQ(Run(&CDrillDown::RVStackedplots), 1);  // asks for a chart of no series
}

TEST_F(Charts, WeightsChangeTheCaptionAndFractionsTheAxis) {
    Open({Numbers("x", {1, 1, 2}), Numbers("w", {0.1, 0.1, 0.25})});
    Weigh("w");
    Choose({"x"});
    Analysis().SetWM(1);
    Analysis().DataChanged = 1;
    Run(&CDrillDown::DDNHistograms);
    EXPECT_EQ(SeriesOf(Shown.at(0))->Y.Caption, "Weighted number of counts");
    EXPECT_EQ(SeriesOf(Shown.at(0))->Y.Max, 0.0);
    EXPECT_EQ(SeriesOf(Shown.at(0))->Y.Labels.back().Text, "2");
}

TEST_F(Charts, SlicesAreNamedIn12BytesBarsIn20) {
    Open({Numbers("x", {1})});
    Choose({"x"});
    const std::string name = "A name of 25 characters..";
    SetBars(Record("x"), {Bar(1, name.substr(0, 12), 1), Bar(2, name.substr(0, 13), 1), Bar(3, name, 1)});
    EXPECT_EQ(Bars(&CDrillDown::DDNPiecharts), "Pie chart for drill-down variable: x [A name of 25:1 A name of 25 :1 " +
                                                   name + ":1 :0] ");  // longer ones as their key
    EXPECT_EQ(Bars(&CDrillDown::DDNHistograms),
              "Histogram of drill-down variable: x [A name of 25:1 A name of 25 :1 A name of 25 charact:1] ");
}

TEST_F(Charts, StaleIntervalsAreCountedFirst) {
    Open({Numbers("x", {1, 2, 3, 3}), Numbers("y", {1, 2, 3, 4})});
    Choose({}, {"x"});
    Review({}, {"y"});
    for (const auto command : {&CDrillDown::DDNHistograms, &CDrillDown::RVHistograms}) {
        Analysis().ReadBeforeDrill(0);
        const std::string fresh = Bars(command);
        Analysis().ReadAfterDrill(0);  // cuts the intervals anew and leaves them uncounted
        EXPECT_EQ(Bars(command), fresh);
    }
    Analysis().ReadAfterDrill(0);
    Run(&CDrillDown::DDNStackedplots);
    EXPECT_EQ(SeriesOf(Shown.at(0))->Series.back().Points.at(0).Y, 0.0);
}

TEST_F(Charts, MemoryThatRunsOutEndsTheWalkSilentlyAndLeavesNothingBehind) {
    struct Case {
        int (*Operate)(CDrillDown&);
        std::string Results;  ///< with the first, second, ... call for memory failing
    };
    // A chart whose buffers are there is shown, with no labels if need be.
    const Case cases[] = {
        {[](CDrillDown& a) { return int{a.DDNHistograms(nullptr)}; }, "00001111"},
        {[](CDrillDown& a) { return a.DDNPiecharts(0, nullptr); }, "0000"},
        {[](CDrillDown& a) { return a.DDNStackedplots(0, nullptr); }, "00000011"},
        {[](CDrillDown& a) { return int{a.RVBoxWhiker(nullptr)}; }, "0"},
        {[](CDrillDown& a) { return int{a.RVScatterPlot(nullptr)}; }, "0"},
    };
    Open({Numbers("x", {1, 2})});
    Choose({"x"});
    const std::size_t before = Host().LiveAllocations();
    for (const Case& each : cases) {
        std::string results;
        for (int call = 1; call <= static_cast<int>(each.Results.size()); ++call) {
            Host().FailAllocation(call);
            results += std::to_string(each.Operate(Analysis()));
            EXPECT_EQ(Host().LiveAllocations(), before);
        }
        Host().FailAllocation(0);
        each.Operate(Analysis());
        EXPECT_GE(Host().AllocationCalls(), static_cast<int>(each.Results.size()));
        EXPECT_EQ(results, each.Results);
    }
    EXPECT_TRUE(TakeMessages().empty());
}

}  // namespace drilltest
