// Ends of brushing that no user brings about, but a host may: the cycle that the dialog asks for is wrapped by the
// linker and answered here when a test says how.

#include <optional>
#include <tuple>
#include <utility>

#include "tests/dialogs/DialogBench.h"
#include "workbench/documents/OpenDocuments.h"

namespace dialogtest {
namespace {

std::optional<std::pair<int, int>> NextPick;  // bar and action

class BrushEnd : public DialogTest {
  protected:
    void SetUp() override {
        Open({quillara::Numbers("a", {1, 2})});
        Choose({"a"});
        Pick("a");
        Analysis().SetSelected(0);
        TakeTrace();
    }
};

TEST_F(BrushEnd, WithoutABarOrAKnownActionTakesNoStepAndRestoresNothing) {
    for (const auto& pick : {std::pair{-1, 0}, {0, 2}}) {
        SetUp();
        NextPick = pick;
        EXPECT_EQ(Command(BrushButton), 0);
        EXPECT_EQ(TakeTrace(), "Route 9103.1");
        EXPECT_EQ(Lists(), "[a] | ");
    }
}

TEST_F(BrushEnd, ByAStepUpWithNothingLeftKeepsTheGraph) {
    Click(AutoUpdateBox);
    NextPick = {0, 2};
    Command(BrushButton);
    Click(AutoUpdateBox);  // an update would drop the graph of a variable that is gone
    Down("a", "1");
    TakeTrace();
    NextPick = {-1, 1};
    EXPECT_EQ(Command(BrushButton), 1);
    EXPECT_EQ(TakeTrace(), "EnableStartupMenus 1; ReallyRestoreResults");
    EXPECT_EQ(Host().Documents().InWindows().size(), 1U);
}

TEST_F(BrushEnd, OfACycleLeavesItsFreshCountsToTheNext) {
    Open({quillara::Numbers("a", {1, 2}), quillara::Numbers("b", {1, 2})});
    Choose({"a", "b"});
    Pick("a");
    Analysis().SetSelected(0);
    NextPick = {0, 0};
    TakeTrace();
    Command(BrushButton);
    const std::string trace = TakeTrace();
    EXPECT_EQ(trace.substr(trace.find("Pass")), "Pass; Post 9103; Route 9103.1; ReallyRestoreResults") << trace;
}

}  // namespace
}  // namespace dialogtest

std::int16_t WrappedCycle(CDrillDown* analysis, int* item,
                          int* action) __asm__("__wrap__ZN10CDrillDown11DDNBrushingEPiS0_");
std::int16_t RealCycle(CDrillDown* analysis, int* item,
                       int* action) __asm__("__real__ZN10CDrillDown11DDNBrushingEPiS0_");

std::int16_t WrappedCycle(CDrillDown* analysis, int* item, int* action) {
    if (const auto pick = std::exchange(dialogtest::NextPick, std::nullopt)) {
        std::tie(*item, *action) = *pick;
        return 1;
    }
    return RealCycle(analysis, item, action);
}
