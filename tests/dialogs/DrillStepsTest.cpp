// Drill steps: the order of what happens in them, and what they leave.

#include <gtest/gtest.h>

#include <string>

#include "platform/WindowMessages.h"
#include "tests/dialogs/DialogBench.h"

namespace dialogtest {
namespace {

class DrillStepsTest : public DialogTest {
  protected:
    void SetUp() override {
        Open({quillara::Numbers("sex", {1, 2, 1, 2, 1}), quillara::Numbers("area", {1, 1, 2, 2, 3}),
              quillara::Numbers("age", {1, 2, 3, 4, 5})});
        Choose({"sex", "area"}, {"age"});
        TakeTrace();
    }
    /// The calls of a click, from the answers on.
    std::string CallsOf(int id, std::vector<Answer> answers = {}) {
        TakeTrace();
        Click(id, std::move(answers));
        return TakeTrace();
    }
    std::string Issets() {
        std::string text;
        for (const Drill& record : *Analysis().DrillDowns) {
            text += record.Name + std::to_string(record.Isset) + " ";
        }
        return text;
    }
};

constexpr char Asking[] = "Selection 9053; LockResults; DoModal 4818; InitOpeningDialog; ";
constexpr char Showing[] =
    "Fill 9053; Fill 9054; Pass; EnableStartupMenus 1; Selection 9053; Selection 9054; EnableStartupMenus 1; "
    "UnlockResults";

TEST_F(DrillStepsTest, DownAsksMovesReadsAndShows) {
    Pick("sex");
    EXPECT_EQ(
        CallsOf(DownButton, {Category("2")}),
        std::string(Asking) + "ExitDialog 1; EarlyRecordState 9108; FinishRecordingDialog 101 3 9056; " + Showing);
    EXPECT_EQ(Lists(), "area, age | sex (2)");
    EXPECT_EQ(Issets(), "area0 age0 ");  // stale, whatever the pass has counted
}

TEST_F(DrillStepsTest, DownCancelledTakesNoStep) {
    Pick("age");
    Click(ExactIntervalsRadio);
    EXPECT_EQ(CallsOf(DownButton, {Cancel()}),
              "Selection 9053; LockResults; Pass; Pass; Pass; DoModal 4818; InitOpeningDialog; ExitDialog 0; "
              "EarlyRecordState 9108; UnlockResults");
    EXPECT_EQ(Lists(), "sex, area, [age] | ");
    EXPECT_EQ(Record("age").Method, ExactIntervals);  // what comes before the question has happened
    EXPECT_EQ(Issets(), "sex1 area1 age1 ");
}

TEST_F(DrillStepsTest, DownReadsOnlyWhatIsStale) {
    const struct {
        const char* Variable;
        int DataChanged;
        int Isset;
        int Passes;
    } cases[] = {
        // a change of settings makes the counts of distinct values fresh, and those of intervals stale
        {"sex", 0, 1, 0}, {"sex", 0, 0, 1}, {"sex", 1, 1, 1}, {"age", 0, 1, 0}, {"age", 0, 0, 1}, {"age", 1, 1, 3},
    };
    for (const auto& row : cases) {
        Pick(row.Variable);
        Analysis().DataChanged = static_cast<std::int16_t>(row.DataChanged);
        Analysis().SetAllIsset(row.Isset);
        const std::string calls = CallsOf(DownButton);
        int passes = 0;
        for (auto at = calls.find("Pass"); at != std::string::npos; at = calls.find("Pass", at + 1)) {
            ++passes;
        }
        EXPECT_EQ(passes, row.Passes) << row.Variable << row.DataChanged << row.Isset;
    }
}

TEST_F(DrillStepsTest, DownWithoutBoundariesAsksForThemAndTakesNoStep) {
    Pick("age");
    Click(UserIntervalsRadio);
    const std::string asking =
        "Selection 9053; LockResults; Post 9077; LockResults; Selection 9053; DoModal 4820; InitOpeningDialog; ";
    EXPECT_EQ(CallsOf(DownButton, {Cancel()}), asking + "ExitDialog 0; EnableStartupMenus 0; UnlockResults");
    EXPECT_EQ(Page(), "neat of 6 | 10 [10] 1 0 | -");
    Click(UserIntervalsRadio);
    EXPECT_EQ(CallsOf(DownButton, {Boundaries("2 4")}), asking + "ExitDialog 1; UnlockResults");
    EXPECT_EQ(Lists(), "sex, area, [age] | ");
    EXPECT_EQ(Record("age").Method, UserIntervals);
    Click(DownButton, {Category("2<x<=4")});
    EXPECT_EQ(Lists(), "sex, area | age (2<x<=4)");
}

TEST_F(DrillStepsTest, AScriptsCategoryIsTakenWithoutAsking) {
    Host().SetAutomated(true);
    Pick("sex");
    Analysis().SetSelected(1);
    EXPECT_EQ(CallsOf(DownButton),
              std::string("Selection 9053; LockResults; EarlyRecordState 9126; EarlyRecordState 9112; "
                          "EarlyRecordState 9108; FinishRecordingDialog 101 3 9056; ") +
                  Showing);
    EXPECT_EQ(Lists(), "area, age | sex (2)");
    Dialog().AutomationInteractive = 1;
    Pick("area");
    EXPECT_EQ(CallsOf(DownButton, {Cancel()}).substr(0, 42), "Selection 9053; LockResults; Pass; DoModal");
}

TEST_F(DrillStepsTest, UpUndoesTheSelectedStepOnly) {
    Down("sex", "1");
    Down("area", "2");
    EXPECT_EQ(CallsOf(UpButton), "Selection 9054");
    PickUp("sex (1)");
    EXPECT_EQ(CallsOf(UpButton),
              std::string("Selection 9054; LockResults; FinishRecordingDialog 101 3 9057; ") + Showing);
    EXPECT_EQ(Lists(), "sex, age | area (2)");
    EXPECT_EQ(Issets(), "sex1 age0 ");  // as the pass has counted
    PickUp("area (2)");
    Host().FailAllocation(1);  // a step doesn't wait for its lists
    EXPECT_EQ(CallsOf(UpButton),
              "Selection 9054; LockResults; FinishRecordingDialog 101 3 9057; Pass; Fill 9053; Fill 9054; "
              "EnableStartupMenus 0; Selection 9053; Selection 9054; EnableStartupMenus 0; UnlockResults");
}

TEST_F(DrillStepsTest, UpForgetsWhatIsNotStoredOfThePage) {
    Down("sex", "1");
    Pick("age");
    PickUp("sex (1)");
    Click(IntegerCategoriesRadio);
    Click(UpButton);
    EXPECT_EQ(Record("age").Method, NeatIntervals);
}

}  // namespace
}  // namespace dialogtest
