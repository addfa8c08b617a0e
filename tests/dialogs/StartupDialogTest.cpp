// The startup dialog: what is enabled when, what its options and its host's dialogs change, its start and its end.

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

using quillara::Missing;
using quillara::Window;

class StartupDialogTest : public DialogTest {
  protected:
    void SetUp() override {
        Open({quillara::Numbers("sex", {1, 2, 1, 2, Missing}), quillara::Numbers("area", {1, 1, 2, 2, 3}),
              quillara::Numbers("age", {1, 2, 3, 4, 5}), quillara::Numbers("pay", {9, 8, 7, 6, 5}),
              quillara::Numbers("w", {1, 1, 2, 2, 2})});
    }
};

/// Controls that are enabled together.
struct Group {
    const char* Name;
    std::vector<int> Ids;
};

const std::vector<Group> Groups{
    {"down", {9053, 9103, 9056, 9060, 9112, 9119, 9061}},
    {"up", {9054, 9057, 9058}},
    {"order", {9055}},
    {"descriptives", {9059}},
    {"save", {9086}},
    {"reviews", {9082, 9083, 9122, 9123}},
    {"continuous", {9118, 9114, 9115, 9116, 9117, 9081, 9084}},
    {"scatter", {9100}},
    {"settings", {203, 201, 202, 9128}},
    {"weights", {204}},
    {"missing", {9127}},
    {"always", {9080, 9109, 9051, 9110, 9113, 9107, 9106, 2, 10710, 9050}},
};

/// "down order": the groups that are enabled; "down(9053)": only some controls of one are.
std::string EnabledGroups(DialogBench& bench) {
    std::string text;
    for (const Group& group : Groups) {
        const std::string enabled = bench.Enabled(group.Ids);
        const bool all = std::ranges::all_of(group.Ids, [&](int id) { return bench.Startup().At(id).Enabled; });
        if (!enabled.empty()) {
            text += (text.empty() ? "" : " ") + std::string(group.Name) + (all ? "" : "(" + enabled + ")");
        }
    }
    return text;
}

TEST_F(StartupDialogTest, ControlsAreEnabledByWhatThereIs) {
    using Step = std::pair<const char*, const char*>;
    const struct {
        Names Categorical;
        Names Continuous;
        Names ReviewCategorical;
        Names ReviewContinuous;
        std::vector<Step> Steps;
        const char* Enabled;
    } cases[] = {
        // clang-format off
        {{},              {},             {},      {},             {},                        "settings always"},
        {{"sex"},         {},             {},      {},             {},                        "down save settings missing always"},
        {{},              {"age"},        {},      {},             {},                        "down descriptives save settings missing always"},
        {{"sex"},         {"age"},        {},      {},             {},                        "down order descriptives save settings missing always"},
        {{},              {},             {"sex"}, {},             {},                        "reviews settings always"},
        {{},              {},             {},      {"age"},        {},                        "reviews continuous settings always"},
        {{},              {},             {},      {"age", "pay"}, {},                        "reviews continuous scatter settings always"},
        {{"sex", "area"}, {"age", "pay"}, {},      {},             {{"sex", "1"}},            "down up order descriptives save always"},
        {{"sex"},         {"age"},        {},      {},             {{"sex", "1"}},            "down up descriptives save always"},
        {{"sex"},         {"age"},        {},      {},             {{"sex", "Missing"}},      "down up save always"},
        {{"sex"},         {},             {},      {"age"},        {{"sex", "2"}},            "up save reviews continuous always"},
        // clang-format on
    };
    for (const auto& row : cases) {
        SetUp();
        if (!row.Categorical.empty() || !row.Continuous.empty()) {
            Choose(row.Categorical, row.Continuous);
        }
        if (!row.ReviewCategorical.empty() || !row.ReviewContinuous.empty()) {
            Review(row.ReviewCategorical, row.ReviewContinuous);
        }
        for (const auto& [variable, category] : row.Steps) {
            Down(variable, category);
        }
        EXPECT_EQ(EnabledGroups(*this), row.Enabled) << Lists();
        EXPECT_FALSE(Startup().At(StackedPlotsButton).Visible || Startup().At(ReviewStackedPlotsButton).Visible);
    }
}

TEST_F(StartupDialogTest, WeightsCountWhenTheyChangeAndAllowWeightedMomentsBeforeAStep) {
    Choose({"sex"}, {"age"});
    for (const int changed : {1, 0}) {
        Analysis().DataChanged = 0;
        Weigh("w");
        EXPECT_EQ(Analysis().DataChanged, changed);
    }
    Analysis().CaseWeight.Active = 0;  // switched off, it stays defined
    Command(CasewiseBox);
    EXPECT_EQ(Enabled({204}), "204");
    Down("sex", "1");
    EXPECT_EQ(Enabled({204}), "");
}

TEST_F(StartupDialogTest, OptionsToggleAndSomeHaveTheCountsReadAgain) {
    const std::vector<int> options{204, 9107, 9127, 9128, 9114, 9115, 9116, 9117};
    Choose({"sex"}, {"age"});
    Review({}, {"age"});
    EXPECT_EQ(Checked(options), "9127 9115");
    std::string changing;
    for (const int id : options) {
        Analysis().DataChanged = 0;
        EXPECT_EQ(Command(id), 0);
        changing += Analysis().DataChanged == 1 ? std::to_string(id) + " " : "";
    }
    EXPECT_EQ(changing, "204 9107 9127 9128 ");
    const auto check = [&] {
        Dialog().UpdateControls();
        return Checked(options);
    };
    EXPECT_EQ(check(), "204 9107 9128 9114 9116 9117");
    std::ranges::for_each(options, [&](int id) { Command(id); });
    EXPECT_EQ(check(), "9127 9115");
}

TEST_F(StartupDialogTest, CommandsCallTheHostInTheirOrder) {
    const struct {
        int Id;
        std::int64_t Result;
        int DataChanged;
        const char* Calls;
    } commands[] = {
        {9050, 0, 0, "LockResults; UnlockResults"},
        {9080, 0, 0, "LockResults; UnlockResults"},
        {9053, 0, 0, "Selection 9053; EnableStartupMenus 0"},
        {9054, 0, 0, "Selection 9054; EnableStartupMenus 0"},
        {9106, 0, 0, ""},
        {201, 0, 1, "LockResults; DefineSelCond 1; UnlockResults"},
        {202, 0, 0, "LockResults; DefineWeight 1; EnableStartupMenus 0; UnlockResults"},
        {203, 0, 0, "OpenOrvFile; RestoreResults"},
        {9055, 1, 0, "LockResults; DoModal 4819; InitOpeningDialog; Fill 9089; Fill 9090; ExitDialog 0; UnlockResults"},
        {9077, 1, 0, "LockResults; Selection 9053; UnlockResults"},
        {9057, 0, 0, "Selection 9054"},
        {9058, 0, 0, ""},
        {10710, 0, 0, ""},
        {9062, 0, 0, ""},
        {2, 1, 0, "EnableStartupMenus 1; PutInitKeyword StandAloneResults 1; ExitDialog 0"},
    };
    Choose({"sex"}, {"age"});
    for (const auto& command : commands) {
        TakeTrace();
        Analysis().DataChanged = 0;
        EXPECT_EQ(Startup().SendCommand(command.Id), command.Result) << command.Id;
        EXPECT_EQ(TakeTrace(), command.Calls) << command.Id;
        EXPECT_EQ(Analysis().DataChanged, command.DataChanged) << command.Id;
    }
}

TEST_F(StartupDialogTest, AChoiceOfNoVariableIsRefusedAndHasItsEffect) {
    Choose({"sex"}, {"age", "pay"});
    Review({"area"});
    EXPECT_EQ(TextOf(9052) + "; " + TextOf(9085) + "; " + TextOf(9051) + "; " + TextOf(9113),
              "sex; age, pay; area; none");
    Pick("age");
    Analysis().SetSelected(1);
    Click(ReviewVariablesButton, {Variables({}), Variables({}, {"pay"})});
    EXPECT_EQ(TakeMessages(),
              Names{"No review variables are selected. \nYou must select at least one review variable."});
    EXPECT_EQ(TextOf(9051) + "; " + TextOf(9113), "none; pay");
    EXPECT_EQ(Lists() + " " + std::to_string(Analysis().GetSelected()), "sex, [age], pay |  1");
    Click(DrillVariablesButton, {Variables({}), Cancel()});
    EXPECT_EQ(TakeMessages(),
              Names{"No drill-down variables are selected. \nYou must select at least one drill-down variable."});
    EXPECT_EQ(Lists() + TextOf(9052) + Enabled({DownButton, OrderButton, FrequenciesButton}), " | none");
    Click(DrillVariablesButton, {Variables({"area"})});
    EXPECT_EQ(Lists() + "; " + TextOf(9052) + "; " + TextOf(9085) + "; " + TextOf(9113), "area | ; area; none; none");
    EXPECT_EQ(Analysis().GetSelected(), -1);
}

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

TEST_F(StartupDialogTest, OnlyTheDrillDownListForgetsTheChosenCategory) {
    Choose({"sex", "area"}, {"age"});
    Down("sex", "1");
    Down("area", "2");
    Analysis().SetSelected(1);
    PickUp("sex (1)");
    EXPECT_EQ(std::pair(Analysis().GetCurrentUp(), Analysis().GetSelected()), std::pair(Number("sex"), 1));
    Pick("age");
    EXPECT_EQ(std::pair(Analysis().GetCurrentDown(), Analysis().GetSelected()), std::pair(Number("age"), -1));
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
