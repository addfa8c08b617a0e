#include <deque>
#include <limits>
#include <string>
#include <vector>

#include "host/Brushing.h"
#include "tests/dialogs/DialogBench.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/documents/ResultDocument.h"

namespace dialogtest {
namespace {

constexpr double NA = std::numeric_limits<double>::quiet_NaN();
constexpr int TakeDown = 0;
constexpr int TakeUp = 1;
constexpr int NoBar = -1;

/// What the user does in a cycle: picks a bar, from 0, or none, and takes an option.
struct BarPick {
    int Bar;
    int Option;
};

/// Brushing by picks, without a screen.
class BrushTest : public DialogTest {
  protected:
    void SetUp() override {
        // a: 1 twice, 2 twice, missing once; x in (-inf, 3], (3, 6], (6, inf): of a = 1 none in the last, of 2 none in
        // the first, of missing none but the last.
        Open({quillara::Numbers("a", {1, 1, 2, 2, NA}), quillara::Numbers("x", {1, 5, 5, 9, 8})});
        Choose({"a"}, {"x"});
        Pick("x");
        Click(UserIntervalsRadio);
        Click(BoundariesButton, {Boundaries("3 6")});
        Pick("a");
        Host().Services.Brush = [this](quillara::BrushingRun& run) { return Work(run); };
        TakeTrace();
    }

    /// Brushes with these picks, then leaves: "title 1:2 2:2 Missing:1; ... | lists", a cycle each, with the options
    /// when drilling up is one of them.
    std::string Brush(std::vector<BarPick> picks) {
        Picks.assign(picks.begin(), picks.end());
        Cycles.clear();
        Click(BrushButton);
        EXPECT_TRUE(Picks.empty()) << Picks.size() << " picks left";
        return Cycles + "| " + Lists();
    }
    /// "9111.1 9060.1": the documents in windows.
    std::string Windows() {
        std::string text;
        for (const quillara::ResultDocument* document : Host().Documents().InWindows()) {
            text += (text.empty() ? "" : " ") + std::to_string(document->Origin().Command) + "." +
                    std::to_string(document->Origin().Sequence) + " " + TitleOf(*document);
        }
        return text;
    }

  private:
    static std::string TitleOf(const quillara::ResultDocument& document) {
        const quillara::GraphDocument* graph = document.Graph();
        const std::string title = graph != nullptr ? graph->Title.front() : document.Spreadsheet()->Title.front();
        return title.substr(title.rfind(' ') + 1);
    }

    bool Work(quillara::BrushingRun& run) {
        Cycles += TitleOf(run.Document);
        for (const BrushRegion& region : run.Regions.Regions()) {
            const std::size_t name = region.Tip.find(' ') + 1;
            const std::size_t count = region.Tip.rfind(' ') + 1;
            Cycles += " " + region.Tip.substr(name, region.Tip.find('\n') - name) + ":" + region.Tip.substr(count);
        }
        Cycles += run.Options.size() > 1 ? " up; " : "; ";
        if (Picks.empty()) {
            return false;
        }
        run.Regions.setSelected(Picks.front().Bar);
        run.Choice = Picks.front().Option;
        Picks.pop_front();
        return true;
    }

    std::deque<BarPick> Picks;
    std::string Cycles;
};

TEST_F(BrushTest, DrillsByPicks) {
    struct Case {
        std::vector<BarPick> Picks;
        const char* Expected;
    };
    // clang-format off
    const Case cases[] = {
        // Picks                      Cycles, and the lists at the end
        {{},                          "a 1:2 2:2 Missing:1; | [a], x | "},
        {{{1, TakeDown}},             "a 1:2 2:2 Missing:1; x x<=3:0 3<x<=6:1 6<x:1 up; | x | a (2)"},
        {{{2, TakeDown}},             "a 1:2 2:2 Missing:1; x x<=3:0 3<x<=6:0 6<x:1 up; | x | a (Missing)"},
        {{{NoBar, TakeDown}},         "a 1:2 2:2 Missing:1; | [a], x | "},
        // An empty bar ends the brushing; the first option is taken when none is named
        {{{1, -1}, {0, TakeDown}},    "a 1:2 2:2 Missing:1; x x<=3:0 3<x<=6:1 6<x:1 up; | x | a (2)"},
        // A full one behind it, with which no variable is left
        {{{1, TakeDown}, {2, TakeDown}}, "a 1:2 2:2 Missing:1; x x<=3:0 3<x<=6:1 6<x:1 up; |  | x (6<x), a (2)"},
    };
    // clang-format on
    for (const bool standAlone : {false, true}) {
        for (const Case& each : cases) {
            SetUp();
            if (standAlone) {
                Click(AutoUpdateBox);
            }
            EXPECT_EQ(Brush(each.Picks), each.Expected) << (standAlone ? "stand-alone" : "");
            EXPECT_EQ(Windows(), "") << "the brushing graph goes with the brushing";
        }
    }
}

TEST_F(BrushTest, DrillsUpOnTheStepThatIsSelected) {
    Down("a", "2");
    EXPECT_EQ(Brush({{NoBar, TakeUp}}), "x x<=3:0 3<x<=6:1 6<x:1 up; x x<=3:0 3<x<=6:1 6<x:1 up; | x | a (2)")
        << "no step is selected";
    PickUp("a (2)");
    TakeTrace();
    EXPECT_EQ(Brush({{NoBar, TakeUp}}), "x x<=3:0 3<x<=6:1 6<x:1 up; x x<=3:1 3<x<=6:2 6<x:2; | a, x | ");
    EXPECT_EQ(TakeTrace(),
              "Route 9103.1; FinishRecordingDialog 101 3 9057; Fill 9053; Fill 9054; Selection 9053; Selection 9054; "
              "EnableStartupMenus 0; Pass; EnableStartupMenus 0; Post 9103; Pass; Route 9103.1; ReallyRestoreResults");
}

TEST_F(BrushTest, UpdatesStandAloneResultsAndKeepsItsOneGraph) {
    Click(AutoUpdateBox);
    Click(FrequenciesButton);
    EXPECT_EQ(Windows(), "9060.1 a 9060.2 x");
    Host().Services.Brush = [this, cycle = 0](quillara::BrushingRun& run) mutable {
        EXPECT_EQ(Windows(), cycle == 0 ? "9060.1 a 9060.2 x 9103.1 a" : "9060.1 x 9103.1 x");
        run.Regions.setSelected(0);
        return cycle++ == 0;
    };
    Click(BrushButton);
    EXPECT_EQ(Lists() + "; " + Windows(), "x | a (1); 9060.1 x");
}

TEST_F(BrushTest, RecordsAndPassesInItsOwnOrder) {
    Brush({{0, TakeDown}});
    EXPECT_EQ(TakeTrace(),
              "Pass; Pass; Route 9103.1; FinishRecordingDialog 101 3 9056; Fill 9053; Fill 9054; Selection 9054; "
              "EnableStartupMenus 1; Pass; Post 9103; Pass; Route 9103.1; ReallyRestoreResults")
        << "counts of intervals are stale before each graph";
}

TEST_F(BrushTest, AsksForBoundariesFirst) {
    Open({quillara::Numbers("x", {1, 2, 3})});
    Choose({}, {"x"});
    DialogBench::Pick("x");
    Click(UserIntervalsRadio);
    Click(BrushButton, {Boundaries("2")});
    EXPECT_EQ(Lists(), "[x] | ");
    EXPECT_EQ(Analysis().GetCurrentNU(), 1);
}

}  // namespace
}  // namespace dialogtest
