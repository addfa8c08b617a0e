// When graphs have stale counts read again, and what they take from before and behind that.

#include "tests/results/RecordedCalls.h"
#include "tests/results/graphs/GraphBench.h"

namespace drilltest {

class Recounts : public GraphBench {
  protected:
    void SetUp() override {
        Open({Numbers("x", {1, 2, 3}), Numbers("y", {1, 2, 3})});
        Choose({}, {"x", "y"});
        Analysis().ReadAfterDrill(0);  // leaves the counts of intervals stale
        Analysis().SetCurrentDown(Number("x"));
    }
    /// Passes that an operation runs when each is cancelled at its first case.
    int CancelledPasses(std::int16_t (CDrillDown::*operation)(HWND)) {
        int passes = 0;
        Host().Services.ProgressStarted = [&](auto, auto) { ++passes; };
        Host().Services.BreakRequested = [] { return true; };
        Run(operation);
        return passes;
    }
};

TEST_F(Recounts, AreAskedForOnceByTheBrushingGraphAndByEachStaleHistogram) {
    EXPECT_EQ(CancelledPasses(&CDrillDown::DDNGraphForBrushing), 1);
    EXPECT_EQ(CancelledPasses(&CDrillDown::DDNHistograms), 2);
}

TEST_F(Recounts, LeaveAStackedColumnItsMissingWeightFromBefore) {
    Host().Services.ProgressStarted = [this](auto, auto) {
        for (const char* name : {"x", "y"}) {
            Record(name).MissingWeight = Record(name).ValidWeight = 7;
        }
    };
    Record("x").MissingWeight = 1;
    Record("y").Isset = 1;
    Record("x").CategorySet = {{1, 3, 9, "all", 0}};
    Record("y").CategorySet.clear();
    TakeCalls();
    EXPECT_EQ(Run(&CDrillDown::DDNStackedplots), 1);
    EXPECT_EQ(TakeCalls().find("Chart 2 0 3 [1 2 100 100] [1 2 87.5 50] [1 0 50 0]"), 0U)
        << "1 of 1 + 7; y has no more categories";
}

}  // namespace drilltest
