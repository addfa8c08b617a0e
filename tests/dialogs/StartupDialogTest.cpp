// The startup dialog: its start and its end, and another file.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/WindowMessages.h"
#include "resources/Dialogs.h"
#include "tests/dialogs/DialogBench.h"
#include "tests/workbench/Files.h"
#include "workbench/data/Errors.h"
#include "workbench/dialogs/OpenDataDialog.h"

namespace dialogtest {
namespace {

using quillara::Window;

class StartupDialogTest : public DialogTest {
  protected:
    void SetUp() override {
        Open({quillara::Numbers("sex", {1, 2, 1, 2, 1}), quillara::Numbers("age", {1, 2, 3, 4, 5})});
    }
};

TEST_F(StartupDialogTest, CantBeUsedWhileAModalWindowStandsOpen) {
    Choose({"sex"});
    Pick("sex");
    Click(DownButton, {[this](quillara::Window& window) {
              EXPECT_THROW(Startup().Click(2), quillara::UsageError);
              EXPECT_THROW(Startup().Click(DownButton), quillara::UsageError);
              window.Click(2);
          }});
    EXPECT_EQ(Lists(), "[sex] | ");
    Click(2);
    EXPECT_EQ(Host().StartupWindow(), nullptr);
}

TEST_F(StartupDialogTest, AnotherFileStartsAnew) {
    const TemporaryFolder folder;
    const std::string path = folder.Put("other.csv", "a,b\n1,2\n3,4\n");
    Choose({"sex"}, {"age"});
    Click(AutoUpdateBox);
    TakeTrace();
    Click(OpenDataButton, {[&](Window& window) {
              window.Type(quillara::OpenDataDialog::Path, path);
              window.Click(OkCommand);
          }});
    EXPECT_EQ(TakeTrace(),
              "OpenOrvFile; RestoreResults; LockResults; Fill 9053; Fill 9054; Selection 9053; EnableStartupMenus 0; "
              "UnlockResults");
    EXPECT_EQ(Lists() + "; " + TextOf(9052) + "; " + TextOf(9085), " | ; none; none");
    EXPECT_EQ(Checked({9106}) + std::to_string(Analysis().StandAloneResults), "0");
    EXPECT_EQ(Analysis().Table.Variables, 2);
    Click(2);
    EXPECT_EQ(TakeTrace(), "EnableStartupMenus 1; PutInitKeyword StandAloneResults 0; ExitDialog 0");
}

TEST_F(StartupDialogTest, AutoUpdateIsKeptFromRunToRun) {
    EXPECT_EQ(Checked({9106}), "");
    Click(AutoUpdateBox);
    EXPECT_EQ(Analysis().StandAloneResults, 1);
    Click(2);
    Analysis().StandAloneResults = 0;
    ASSERT_TRUE(Host().RunSequence());
    EXPECT_EQ(Checked({9106}), "9106");
    EXPECT_EQ(Analysis().StandAloneResults, 1);
    EXPECT_EQ(Dialog().GetDialogDescription(), "Drill-Down analysis startup dialog");
}

TEST_F(StartupDialogTest, ListsAndCaptionsAloneHaveTheColourOfResults) {
    std::string coloured;
    for (const DialogResource& dialog : DialogTable) {
        for (const ControlResource& control : dialog.Controls) {
            const quillara::Control* found = Startup().Find(control.Id);
            coloured += found != nullptr && found->Colour ? std::to_string(control.Id) + " " : "";
        }
    }
    EXPECT_EQ(coloured, "9053 9054 9052 9085 9051 9113 ");
}

}  // namespace
}  // namespace dialogtest
