#include "host/Brushing.h"
#include "tests/results/graphs/GraphBench.h"

namespace drilltest {

class Brushing : public GraphBench {
  protected:
    static constexpr int Untouched = 77;
    static constexpr int NoBar = -1;
    static constexpr int Leaves = -2;

    void SetUp() override {
        Open({Numbers("x", {1, 2, 2, 3, 3, 3, NA}), Numbers("y", {1, 1, 2, 1, 1, 1, 1})});
        Choose({"x", "y"});
        Analysis().SetCurrentDown(Number("x"));
    }
    /// Gives the bar at a place of x another height.
    void SetHeight(int place, double height) {
        Editable(*std::next(Record("x").CategorySet.begin(), place)).Count = height;
    }
    /// What the user does in the next cycles: picks a bar, or none, with an option; or leaves. Keeps what was offered.
    void UserPicks(int bar, int choice) {
        Host().Services.Brush = [=, this](quillara::BrushingRun& run) {
            Offered = OfferOf(run.Regions, run.Options);
            run.Regions.setSelected(bar);
            run.Choice = choice;
            return bar != Leaves;
        };
    }
    /// One cycle: "result item action, row Selected".
    std::string Cycle() {
        int item = Untouched;
        int action = Untouched;
        Analysis().SetSelected(Untouched);
        const int result = Analysis().DDNBrushing(&item, &action);
        std::ostringstream text;
        text << result << ' ' << item << ' ' << action;
        if (Analysis().GetSelected() != Untouched) {
            text << ", row " << Analysis().GetSelected();
        }
        return text.str();
    }

    std::string Offered;

  private:
    static std::string OfferOf(const CGraphBrushRgnGraph& regions, const Names& options) {
        std::ostringstream text;
        for (const BrushRegion& region : regions.Regions()) {
            text << region.Left << ".." << region.Right << " x " << region.Bottom << ".." << region.Top << ' '
                 << region.Tip << " kind " << region.Kind << '\n';
        }
        int selected = NoBar;
        text << (regions.getSelected(selected) ? "bar " + std::to_string(selected) : "no bar");
        for (const std::string& option : options) {
            text << ' ' << option;
        }
        return text.str();
    }
};

TEST_F(Brushing, GraphIsAHistogramWithTheShortNameThatCanBeFound) {
    COutDocument* document = nullptr;
    EXPECT_FALSE(Analysis().GetActiveChartInfo(&document));
    EXPECT_EQ(Cycle(), "0 77 77");  // no graph: nothing is said
    EXPECT_EQ(Run(&CDrillDown::DDNCloseBrushing), 1);
    Run(&CDrillDown::DDNGraphForBrushing);
    EXPECT_EQ(SeriesOf(Shown.at(0))->Flags, 138);
    EXPECT_EQ(SeriesOf(Shown.at(0))->X.Caption, "x");
    EXPECT_EQ(Bars(&CDrillDown::DDNGraphForBrushing),
              "Histogram for brushing: x [1:1 2:2 3:3 Missing:1] Histogram for brushing: x [1:1 2:2 3:3 Missing:1] ");
    EXPECT_EQ(Run(&CDrillDown::DDNGraphForBrushing), 1);
    EXPECT_TRUE(Analysis().GetActiveChartInfo(&document));
    EXPECT_EQ(Run(&CDrillDown::DDNCloseBrushing), 1);
    EXPECT_TRUE(Analysis().GetActiveChartInfo(&document));  // nothing was closed
    Analysis().SetCurrentDown(-1);
    EXPECT_EQ(Run(&CDrillDown::DDNGraphForBrushing), 1);
    EXPECT_EQ(TakeMessages(), Names{"Nothing to plot...."});
}

TEST_F(Brushing, BarsAreOfferedAsRegionsWithTips) {
    Analysis().SetCurrentDown(Number("y"));
    Take(0);
    Analysis().SetCurrentDown(Number("x"));
    Analysis().SetAllIsset(1);
    Run(&CDrillDown::DDNGraphForBrushing);
    UserPicks(Leaves, 0);
    SetHeight(0, 0);
    SetHeight(1, 12.5);
    SetHeight(2, 100);
    EXPECT_EQ(Cycle(), "0 -1 -1");
    EXPECT_EQ(Offered,
              "0.55..1.45 x 0..0 CATEGORY: 1\nCOUNT: 0 kind 4\n"
              "1.55..2.45 x 0..12.5 CATEGORY: 2\nCOUNT: 12.5 kind 4\n"
              "2.55..3.45 x 0..100 CATEGORY: 3\nCOUNT: 100 kind 4\n"
              "3.55..4.45 x 0..1 CATEGORY: Missing\nCOUNT: 1 kind 4\n"
              "bar 1 !372&Drill down !373Drill &up");
}

TEST_F(Brushing, APickBecomesABarARowAndAnAction) {
    struct Case {
        int Bar, Choice;
        std::string Outcome;
    };
    // clang-format off
    const Case cases[] = {
        // Bar   Choice
        {0,      0,  "-1 -1 -1"},          // empty, whatever the option
        {0,      1,  "-1 -1 -1"},
        {1,      0,  "1 1 0, row 0"},
        {1,     -1,  "1 1 0, row 0"},      // no option is the first
        {2,      0,  "1 2 0, row 1"},      // rows count the filled bars alone
        {2,      1,  "1 2 1, row 1"},
        {3,      0,  "1 3 0, row 2"},      // Missing, behind the last
        {NoBar,  1,  "1 -1 1"},
        {NoBar,  0,  "-1 -1 -1"},
        {NoBar, -1,  "-1 -1 -1"},
        {Leaves, 1,  "0 -1 -1"},
    };
    // clang-format on
    Run(&CDrillDown::DDNGraphForBrushing);
    SetHeight(0, 0);
    for (const Case& each : cases) {
        UserPicks(each.Bar, each.Choice);
        EXPECT_EQ(Cycle(), each.Outcome) << each.Bar << ' ' << each.Choice;
    }
}

}  // namespace drilltest
