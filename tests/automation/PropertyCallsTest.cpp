// Scripts read, write and press the controls of the real startup dialog through its host.

#include <gtest/gtest.h>

#include "resources/ControlIds.h"
#include "tests/automation/FaceBench.h"
#include "tests/automation/ScriptBench.h"
#include "tests/workbench/Tables.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/documents/NamedCall.h"
#include "workbench/hosting/ScriptDesk.h"
#include "workbench/hosting/ScriptPress.h"

namespace dialogtest {
namespace {

using quillara::Texts;
using quillara::TheScriptDesk;

class PropertyCalls : public testing::Test, public ScriptBench {
  protected:
    PropertyCalls() {
        Open(quillara::TableOf({Texts("sex", {"f", "f", "m", "m"}), Texts("home town", {"x", "y", "y", "x"}),
                                quillara::Numbers("age", {1, 2, 3, 4}), quillara::Numbers("2", {5, 6, 8, 7})}));
    }
    ~PropertyCalls() override {
        TheScriptDesk().ForgetAnswers();
        TheScriptDesk().ForgetMessages();
    }
    void Choose() {
        EXPECT_EQ(Write(DrillVariablesButton, u"sex \"home town\" | age"), "ok");
        EXPECT_EQ(Write(ReviewVariablesButton, u"sex \"home town\" | 3 \"2\""), "ok");
    }
    /// A step down on the first category of a variable.
    void StepDown(std::u16string_view variable) {
        EXPECT_EQ(Write(DrillDownListControl, variable), "ok");
        Analysis().SetSelected(0);
        EXPECT_EQ(Press(DownButton), "ok");
    }
};

TEST_F(PropertyCalls, EveryClassOfControlIsWrittenAndRead) {
    const auto list = [](const char16_t* first, int second) {
        std::vector<OwnedVariant> items;
        items.push_back(OwnedVariant::OfText(first));
        items.push_back(OwnedVariant::OfInteger(second));
        return quillara::ListOf(std::move(items));
    };
    const auto text = [](std::u16string_view value) { return OwnedVariant::OfText(value); };
    const auto whole = [](int value) { return OwnedVariant::OfInteger(value); };
    const auto real = [](double value) { return OwnedVariant::OfReal(value); };
    // clang-format off
    const struct {
        int Control; OwnedVariant Value; std::string Outcome; std::string Shown;
    } writes[] = {
        {DrillVariablesButton,  text(u""),                       "80070057 Name at least one variable.",       ""},
        {DrillVariablesButton,  list(u"home town", 1),           "ok",                                         "\"home town\" sex"},
        {DrillVariablesButton,  text(u"SEX, \"home town\" | 3"), "ok",                                         "sex \"home town\" | age"},
        {DrillVariablesButton,  text(u"nobody"),                 "80070057 There is no variable \"nobody\".",  "sex \"home town\" | age"},
        {DrillVariablesButton,  text(u"0"),                      "80070057 There is no variable 0.",           "sex \"home town\" | age"},
        {DrillVariablesButton,  text(u"1 | 2 | 3"),              "80070057 There are two lists of variables, with one bar between them.", "sex \"home town\" | age"},
        {DrillVariablesButton,  text(u"1 1"),                    "80070057 The variable 1 is named twice for one list.", "sex \"home town\" | age"},
        {MeanSEAndSDBox,        whole(0),                        "80070005 This control is disabled now.",     "1"},
        {ReviewVariablesButton, text(u"| 3-4"),                  "ok",                                         "| age \"2\""},
        {MeanSEAndSDBox,        whole(0),                        "ok",                                         "0"},
        {DrillVariablesButton,  text(u"sex | age"),              "ok",                                         "sex | age"},
        {ReviewVariablesButton, text(u""),                       "80070057 Name at least one variable.",       ""},  // gone with the drill variables
        {CasewiseBox,           whole(1),                        "ok",                                         "1"},
        {CasewiseBox,           real(0),                         "ok",                                         "0"},
        {AutoUpdateBox,         whole(-1),                       "ok",                                         "1"},
        {DrillDownListControl,  text(u"nobody"),                 "80070057 The list 9053 of the window \"Drill-Down\" has no row \"nobody\".",         ""},
        {DrillDownListControl,  whole(1),                        "ok",                                         "age"},
        {DistinctValuesRadio,   whole(0),                        "80070057 A radio button is switched off by another one.", "0"},
        {ExactIntervalsRadio,   whole(1),                        "ok",                                         "1"},
        {ExactIntervalsRadio,   whole(1),                        "ok",                                         "1"},
        {ExactCountField,       whole(4),                        "ok",                                         "4"},
        {ExactCountField,       text(u"5"),                      "ok",                                         "5"},
        {ExactCountField,       whole(1),                        "80070057 This field takes whole numbers from 2 to 999.", "5"},
        {ExactCountField,       real(2.5),                       "80070057 This field takes whole numbers from 2 to 999.", "5"},
        {ExactCountField,       text(u"many"),                   "80020005",                                   "5"},
        {NeatCountField,        whole(5),                        "80070005 This control is disabled now.",     "10"},
        {StepIntervalsRadio,    whole(1),                        "ok",                                         "1"},
        {ExactIntervalsRadio,   whole(0),                        "80070057 A radio button is switched off by another one.", "0"},
        {StepSizeField,         real(0.25),                      "ok",                                         "0.25"},
        {DrillCategoricalCaption, text(u"x"),                    "80020005",                                   "sex"},
        {9999,                  whole(1),                        "80020003",                                   "?"},
    };
    // clang-format on
    for (const auto& write : writes) {
        EXPECT_EQ(Write(write.Control, write.Value), write.Outcome) << &write - writes;
        EXPECT_EQ(Shown(write.Control), write.Shown) << &write - writes;
    }
    EXPECT_EQ(Analysis().PlotMeanSEAndSD, 0);
    EXPECT_EQ(Analysis().StandAloneResults, 1);
    EXPECT_EQ(Analysis().CasewiseDeletionOfMD, 0);
}

TEST_F(PropertyCalls, APressGivesWhatItMade) {
    EXPECT_EQ(Result(FrequenciesButton), "80070005 This control is disabled now.");
    Choose();
    EXPECT_EQ(Result(FrequenciesButton), "3 documents");
    EXPECT_EQ(Result(StackedPlotsButton), "stacked plot: Stacked bar plot for drill-down variables");  // though hidden
    EXPECT_EQ(Result(DrillVariablesButton),
              "80004005 The dialog \"Select drill variables\" has opened and had no answer.");
    Write(AutoUpdateBox, 1);
    Result(FrequenciesButton);
    const auto kept = QueryFor<IDispatch>(Made.Get());
    StepDown(u"sex");  // the documents that are updated on the way aren't its own
    EXPECT_EQ(Lists(), "home town, age | sex (f)");
    EXPECT_EQ(Result(FrequenciesButton), "2 documents");
    EXPECT_EQ(Result(SummaryButton).substr(0, 6), "table:");
    const auto summary = Made;
    EXPECT_EQ(Result(SummaryButton).substr(0, 6), "table:");
    EXPECT_EQ(Made.Get(), summary.Get());  // replaced in place
    EXPECT_EQ(Result(SaveDataButton), "?: subset");
    EXPECT_EQ(Read(Made.Get(), "Cases") + " of " + Read(Made.Get(), "Variables"), "2 of 4");
}

TEST_F(PropertyCalls, APressWithoutAResultSaysWhatWasShown) {
    Choose();
    Host().SetSelection(std::vector(4, CaseResult::Skip));
    Analysis().DataChanged = 1;
    EXPECT_EQ(Result(SaveDataButton), "80004005 The number of cases is zero.");
}

TEST_F(PropertyCalls, ChosenVariablesGoWithTheirTable) {
    using Dialog = quillara::OpenDataDialog;
    Choose();
    EXPECT_EQ(Result(SaveDataButton), "?: subset");
    TheScriptDesk().Expect([](quillara::Window& window) {
        window.Click(Dialog::FromRun);
        window.ClickRow(Dialog::TableList, 0);
        window.Click(1);
    });
    EXPECT_EQ(Press(OpenDataButton), "ok");
    EXPECT_EQ(Shown(DrillVariablesButton) + Shown(ReviewVariablesButton), "");
    EXPECT_EQ(Write(DrillVariablesButton, u"| \"2\""), "ok");
    EXPECT_EQ(Shown(DrillVariablesButton), "| \"2\"");
}

TEST_F(PropertyCalls, AnswersOfTheScriptWorkInDialogs) {
    Choose();
    const auto choose = [](std::vector<short> first, std::vector<short> second) {
        return [=](quillara::Window& window) { quillara::ChooseVariables(window, first, second); };
    };
    EXPECT_NE(Result(Review3DHistogramsButton).find("has opened and had no answer."), std::string::npos);
    TheScriptDesk().Expect([](quillara::Window& window) { window.Click(1); });
    EXPECT_NE(Result(Review3DHistogramsButton).find("at least 1"), std::string::npos);
    EXPECT_EQ(TheScriptDesk().Messages().size(), 1U);
    EXPECT_TRUE(TakeMessages().empty());
    TheScriptDesk().Expect(choose({1}, {2, 3}));
    EXPECT_EQ(Result(Review3DHistogramsButton), "2 documents");
    EXPECT_EQ(Result(Review3DHistogramsButton), "2 documents");  // the lists of the last answer stand
    Dialog().AutomationInteractive = 1;
    Expect([](quillara::Window& window) { window.Click(2); });
    EXPECT_EQ(Result(Review3DHistogramsButton).substr(0, 8), "80004005");
}

TEST_F(PropertyCalls, WhatAPressPostsRunsWithinIt) {
    Choose();
    EXPECT_EQ(Write(DrillDownListControl, u"age"), "ok");
    EXPECT_EQ(Write(UserIntervalsRadio, 1), "ok");
    TheScriptDesk().Expect([](quillara::Window& window) {
        window.Type(BoundariesEdit, "2 3");
        window.Click(1);
    });
    EXPECT_EQ(Press(DownButton), "ok");  // asks for boundaries in place of the step
    EXPECT_EQ(TheScriptDesk().AnswersLeft(), 0U);
    EXPECT_EQ(Record("age").NU, 2);
    EXPECT_EQ(Lists(), "sex, home town, [age] | ");
}

TEST_F(PropertyCalls, AScriptThatRaisesInTheMidstOfACommandLeavesTheAnalysisWhole) {
    Choose();
    Click(AutoUpdateBox);
    Command(FrequenciesButton);
    const std::string lists = Lists();
    for (const int button : {DownButton, OrderButton, SelectCasesButton, WeightButton, OpenDataButton,
                             DrillVariablesButton, ReviewVariablesButton}) {
        SCOPED_TRACE(button);
        TheScriptDesk().Expect([](quillara::Window&) { throw std::runtime_error("stop"); });
        EXPECT_THROW(
            quillara::ActAsPerson(Dialog(), [button](quillara::Window& window) { return window.Click(button), 0; }),
            std::runtime_error);
        EXPECT_TRUE(Startup().Enabled);
        EXPECT_EQ(Lists(), lists);
        EXPECT_EQ(Host().UpdateCounter, 0);
    }
    EXPECT_EQ(PutByName(Dialog(), "DrillDownVariable", "'sex'"), "ok");
    EXPECT_EQ(PutByName(Dialog(), "DrillDownCategory", "0"), "ok");
    EXPECT_EQ(Press(DownButton), "ok");
    EXPECT_NE(Lists(), lists);
}

TEST_F(PropertyCalls, MemoryThatFailsInAPressIsAnException) {
    Choose();
    Host().FailAllocation(1);
    EXPECT_EQ(Result(FrequenciesButton),
              "exception: There is not enough memory for this command; close other programs and try again.");
    EXPECT_TRUE(TakeMessages().empty());
    EXPECT_EQ(Result(FrequenciesButton), "3 documents");
}

TEST_F(PropertyCalls, APressFromInsideAPressIsRefused) {
    Choose();
    Names inside;
    Host().Services.TakeDocument = [&](quillara::ResultDocument&) {
        inside = {Shown(DrillVariablesButton), Press(FrequenciesButton), Write(CasewiseBox, 1),
                  PutByName(Dialog(), "DrillDownVariable", "3")};
    };
    EXPECT_EQ(Result(FrequenciesButton), "3 documents");
    ASSERT_EQ(inside.size(), 4U);
    EXPECT_EQ(inside[0], "sex \"home town\" | age");
    EXPECT_EQ(inside[1].substr(0, 8) + inside[2].substr(0, 8), "8001010a8001010a");
    EXPECT_NE(inside[3], "ok");
    Click(FrequenciesButton);  // a person's
    EXPECT_EQ(inside[1].substr(0, 8), "8001010a");
}

TEST_F(PropertyCalls, AScriptDrivesUntilAPersonActs) {
    EXPECT_FALSE(Dialog().IsOleAutomation());
    Choose();
    EXPECT_TRUE(Dialog().IsOleAutomation());
    EXPECT_EQ(Shown(DrillVariablesButton), "sex \"home town\" | age");
    EXPECT_TRUE(Dialog().IsOleAutomation());
    Startup().ClickRow(DrillDownListControl, 0);
    EXPECT_FALSE(Dialog().IsOleAutomation());
    EXPECT_EQ(PutByName(Dialog(), "DrillDownVariable", "3"), "ok");
    EXPECT_TRUE(Dialog().IsOleAutomation());
    Startup().ClickRow(DrillDownListControl, 0);
    EXPECT_EQ(Write(CasewiseBox, 0), "ok");  // changes nothing: no message, and still a write
    EXPECT_TRUE(Dialog().IsOleAutomation());
}

}  // namespace
}  // namespace dialogtest
