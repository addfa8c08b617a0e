#include "workbench/exploration/Exploration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "host/Brushing.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "tests/workbench/Tables.h"
#include "workbench/data/Errors.h"
#include "workbench/dialogs/CaseSelectionDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/exploration/ExplorationHistory.h"
#include "workbench/exploration/ExploredOutputs.h"
#include "workbench/exploration/FirstLook.h"
#include "workbench/exploration/KeptSession.h"
#include "workbench/exploration/StepTrail.h"
#include "workbench/exploration/TableReading.h"
#include "workbench/formats/DataFile.h"
#include "workbench/hosting/AnalysisServices.h"
#include "workbench/scripting/CategoryLookup.h"
#include "workbench/views/DocumentViews.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

using testing::ElementsAre;

/// A person who answers dialogs in the order given, and notes what there is to see.
struct Person : ExplorationListener {
    bool WorkIn(Window& dialog) override {
        if (Answers.empty()) {
            return false;
        }
        const auto answer = Answers.front();
        Answers.erase(Answers.begin());
        answer(dialog);
        return dialog.IsClosed();
    }
    bool Pick(BrushingRun& run) override {
        if (Bars.empty()) {
            return false;
        }
        run.Regions.setSelected(Bars.front());
        Bars.erase(Bars.begin());
        return true;
    }
    void ShowMessage(std::string_view text) override { Seen.emplace_back(text); }
    void DocumentAppeared(ResultDocument& document) override { Seen.push_back("new " + document.Name()); }
    void DocumentChanged(ResultDocument& document) override { Seen.push_back("changed " + document.Name()); }
    void DocumentCameToFront(ResultDocument& document) override { Seen.push_back("front " + document.Name()); }
    void DocumentWent(ResultDocument& document) override { Seen.push_back("gone " + document.Name()); }
    void TableMade(std::shared_ptr<const DataTable> table) override { Tables.push_back(std::move(table)); }
    void RemarkMade(const Remark& remark) override { Remarked.push_back(remark.Line()); }
    void Changed() override {}
    void WorkBegan(std::string_view /*text*/, std::int32_t /*total*/) override {}
    void WorkAdvanced(std::int32_t /*done*/) override {}
    void WorkEnded() override {}

    std::vector<std::function<void(Window&)>> Answers;
    std::vector<int> Bars;
    std::vector<std::string> Seen;
    std::vector<std::string> Remarked;
    std::vector<std::shared_ptr<const DataTable>> Tables;
};

class ExplorationTest : public testing::Test {
  protected:
    ExplorationTest() {
        Viewer.Answers.emplace_back([this](Window& dialog) {
            ChooseVariables(dialog, {NumberOf("sex"), NumberOf("region")}, {NumberOf("age")});
        });
        Explored.Press(DrillVariablesButton);
        Past.Follow(Explored);
    }

    [[nodiscard]] short NumberOf(const std::string& name) const {
        return static_cast<short>(Explored.Table().IndexOf(name) + 1);
    }
    void Down(const std::string& variable, const std::string& category) {
        Explored.Down(variable, category);
        Past.Follow(Explored);
    }
    [[nodiscard]] std::vector<std::string> Steps() {
        std::vector<std::string> steps;
        for (const StepTaken& step : Explored.Steps()) {
            steps.push_back(step.Condition());
        }
        return steps;
    }

    Person Viewer;
    Exploration Explored{std::make_shared<DataTable>(ReadDataFile(testing_locations::Sample("survey.sav"))),
                         {testing_locations::Sample("survey.sav")},
                         Viewer,
                         nullptr};
    ExplorationHistory Past;
};

TEST_F(ExplorationTest, StepsGoByNameAndDocumentsFollowThem) {
    Explored.Press(FrequenciesButton);
    Explored.Press(AutoUpdateBox);
    Explored.Press(HistogramsButton);
    Viewer.Seen.clear();
    Down("sex", "Female");
    EXPECT_THAT(Steps(), ElementsAre("sex = Female"));
    EXPECT_EQ(Explored.Remaining()->Cases, 1077);
    // The histogram of the variable that was drilled on has no place among the others.
    EXPECT_THAT(Viewer.Seen, testing::Contains(testing::StartsWith("changed Histogram")));
    EXPECT_THAT(Viewer.Seen, testing::Not(testing::Contains(testing::HasSubstr("requency"))));
    EXPECT_THROW(Explored.Down("sex", "Male"), ImpossibleStep);
    EXPECT_THROW(Explored.Down("region", "Nowhere"), ImpossibleStep);
    EXPECT_THROW(Explored.Up("age"), ImpossibleStep);
    EXPECT_THAT(Steps(), ElementsAre("sex = Female"));
    const auto closing = Explored.Documents().front();
    Explored.Close(*closing);
    EXPECT_EQ(Viewer.Seen.back(), "gone " + closing->Name());
}

TEST_F(ExplorationTest, AnUpdateOpensNoWindowsAndAPressedButtonBringsItsOwnToTheFront) {
    Explored.Press(AutoUpdateBox);
    Explored.Press(HistogramsButton);
    Explored.Close(*Explored.Documents().front());  // of sex; those of region and age stay
    Viewer.Seen.clear();
    const auto told = [&](const std::function<void()>& act) {
        Viewer.Seen.clear();
        act();
        std::string kinds;
        for (const std::string& seen : Viewer.Seen) {
            kinds += seen.substr(0, seen.find(' ')) + ' ';
        }
        return kinds;
    };
    EXPECT_EQ(told([&] { Down("sex", "Female"); }), "changed gone ");
    EXPECT_EQ(told([&] { Explored.Up("sex"); }), "changed ");
    EXPECT_EQ(told([&] { Explored.Press(HistogramsButton); }), "new changed front new ");
    // Who leaves the analysis leaves what stands alone; other results are there until they are closed.
    Explored.Press(AutoUpdateBox);
    Explored.Press(FrequenciesButton);
    Explored.Press(CancelCommand);
    EXPECT_TRUE(Explored.HasEnded());
    EXPECT_EQ(Explored.Documents().size(), 3U);
    EXPECT_THAT(Explored.Documents().front()->Name(), testing::StartsWith("Frequency"));
}

/// The analysis updates by place: what falls out of the list lets the others move up.
TEST_F(ExplorationTest, AClosedResultComesBackByItsButtonOnly) {
    const auto shown = [this] {
        std::vector<std::string> names;
        for (const auto& document : Explored.Documents()) {
            names.push_back(document->Graph()->About.OnlyVariable()->Name);
        }
        return names;
    };
    Explored.Press(AutoUpdateBox);
    Explored.Press(HistogramsButton);
    Explored.Close(*Explored.Documents()[1]);
    EXPECT_THAT(shown(), ElementsAre("sex", "age"));
    Down("sex", "Female");  // region moves into the document of sex
    EXPECT_THAT(shown(), ElementsAre());
    Explored.Up("sex");
    EXPECT_THAT(shown(), ElementsAre("sex"));
    Explored.Press(HistogramsButton);
    EXPECT_THAT(shown(), testing::UnorderedElementsAre("sex", "region", "age"));
    Explored.Close(*Explored.Documents().front());
    Down("age", "#1");
    EXPECT_THAT(shown(), testing::UnorderedElementsAre("region"));
}

TEST(SubjectKeys, AWindowStaysWithItsSubject) {
    struct Case {
        std::vector<SubjectKey> Shown;
        std::vector<MovedSubject> Documents;
        std::vector<std::size_t> Windows;
    };
    const SubjectKey a{1, "a"}, b{1, "b"}, c{1, "c"}, d{2, "a"};
    const std::vector<Case> cases{
        {{a, b, c}, {{b, 0}, {c, 1}}, {1, 2}},  // the first has fallen out
        {{b, c}, {{a, 0}, {b, 1}}, {1, 0}},  // and has come back
        {{a, a}, {{a, 0}, {a, 1}}, {0, 1}},
        {{a, d}, {{b, 0}, {d, 1}}, {0, 1}},  // another subject in its own window
        {{d, a}, {{c, 1}}, {1}},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(WindowsOfSubjects(cases[i].Shown, cases[i].Documents), cases[i].Windows) << i;
    }
}

TEST_F(ExplorationTest, AnyEarlierStateIsComeBackTo) {
    Down("age", "40<x<=50");
    Down("sex", "Female");
    Down("region", "Central Plain");
    const std::int32_t cases = Explored.Remaining()->Cases;
    Explored.Up("sex");
    Past.Follow(Explored);
    ASSERT_EQ(Past.States().size(), 5U);
    EXPECT_FALSE(Past.CanRedo());
    Past.GoTo(Explored, 3);
    EXPECT_THAT(Steps(), ElementsAre("age = 40<x<=50", "sex = Female", "region = Central Plain"));
    EXPECT_EQ(Explored.Remaining()->Cases, cases);
    Past.GoTo(Explored, 0);
    EXPECT_THAT(Steps(), ElementsAre());
    Past.GoTo(Explored, 1);
    EXPECT_THAT(Steps(), ElementsAre("age = 40<x<=50"));
    EXPECT_TRUE(Past.CanRedo());
    Down("sex", "Male");
    EXPECT_FALSE(Past.CanRedo());
    EXPECT_EQ(Past.States().size(), 3U);
    EXPECT_EQ(Past.States().back().Text(), "age = 40<x<=50, sex = Male");
}

TEST_F(ExplorationTest, AStepUpFromTheMidstIsUndoneAsItWas) {
    const auto shown = [this] {
        Explored.Press(SummaryButton);
        Explored.Press(DescriptivesButton);
        const std::string text =
            TextView(OutputsOf(Explored, {Explored.Documents().end() - 2, Explored.Documents().end()}));
        return text.substr(text.find('\n'));  // the first line tells how many steps have been taken so far
    };
    const std::vector<std::array<const char*, 2>> taken = {
        {"age", "40<x<=50"}, {"sex", "Female"}, {"region", "Central Plain"}};
    Explored.ChooseDrillVariables({{NumberOf("sex"), NumberOf("region")}, {NumberOf("age"), NumberOf("income")}});
    Past.Follow(Explored);
    for (const char* up : {"age", "sex", "region"}) {
        Past.GoTo(Explored, 0);
        for (const auto& [variable, category] : taken) {
            Down(variable, category);
        }
        const std::vector<std::string> steps = Steps();
        const std::string before = shown();
        Explored.Up(up);
        Past.Follow(Explored);
        Past.GoTo(Explored, Past.Present() - 1);
        EXPECT_EQ(Steps(), steps) << up;
        EXPECT_EQ(shown(), before) << up;
        Past.GoTo(Explored, Past.Present() + 1);
        EXPECT_EQ(Steps().size(), 2U) << up;
    }
}

TEST_F(ExplorationTest, ResultsOfOtherCasesOrWeightsAreOld) {
    const auto select = [this](const char* formula) {
        Explored.Press(SelectCasesButton, [formula](Window& dialog) {
            dialog.Click(CaseSelectionDialog::SelectedCases);
            dialog.Type(CaseSelectionDialog::Formula, formula);
            dialog.Click(OkCommand);
        });
        return Explored.HasOldResults();
    };
    Explored.Press(FrequenciesButton);
    EXPECT_FALSE(select("age = 41"));  // they don't follow the steps
    select("age > 0");
    Explored.Press(AutoUpdateBox);
    Explored.Press(HistogramsButton);
    EXPECT_FALSE(select("age > 1"));
    EXPECT_TRUE(select("age = 41"));
    Explored.Press(DescriptivesButton);
    EXPECT_TRUE(Explored.HasOldResults());  // the histograms
    Explored.Press(HistogramsButton);
    EXPECT_FALSE(select("age > 40 and age < 42"));  // the same cases
    EXPECT_TRUE(select("age = 40"));  // as many others
    Down("sex", "Female");
    EXPECT_FALSE(Explored.HasOldResults());
    Explored.Up("sex");
    EXPECT_TRUE(select("age > 1"));
    Explored.Press(CancelCommand);
    EXPECT_FALSE(Explored.HasOldResults());
    EXPECT_THROW(Explored.Up("sex"), UsageError);
}

TEST_F(ExplorationTest, TheTrailCountsTheStepsThatStand) {
    Down("age", "40<x<=50");
    Down("sex", "Female");
    Down("region", "Central Plain");
    const auto counts = [this] {
        std::vector<std::int32_t> cases;
        for (const TrailPlace& place : TrailOf(Explored)) {
            cases.push_back(place.Left ? place.Left->Cases : -1);
        }
        return cases;
    };
    std::vector<std::int32_t> told{2000};
    for (const StepTaken& step : Explored.Steps()) {
        told.push_back(step.Left->Cases);
    }
    EXPECT_EQ(counts(), told);
    Explored.Up("age");
    Past.Follow(Explored);
    EXPECT_EQ(counts(), (std::vector<std::int32_t>{2000, 1077, Explored.Remaining()->Cases}));
    EXPECT_EQ(Past.States().back().Left->Cases, Explored.Remaining()->Cases);
    Past.BackTo(Explored, 1);
    EXPECT_THAT(Steps(), ElementsAre("sex = Female"));
    EXPECT_EQ(Past.States().size(), 6U);
    const auto change = Past.Between(4, 5);
    EXPECT_TRUE(change.Taken.empty());
    EXPECT_EQ(change.Undone.front().Condition(), "region = Central Plain");
}

TEST_F(ExplorationTest, AFirstLookTakesAllVariablesAndKeepsTheirChartsUpToDate) {
    const std::size_t variables = ExploreAll(Explored);
    EXPECT_GT(variables, 8U);
    EXPECT_EQ(Explored.At(DrillDownListControl).Rows.size(), variables);
    EXPECT_TRUE(Explored.At(AutoUpdateBox).Checked);
    const std::size_t charts = Explored.Documents().size();
    EXPECT_TRUE(charts == variables || (charts == 0 && variables > 24)) << charts << ' ' << variables;
}

TEST(FirstLook, TellsWhichTextsItLeavesOut) {
    std::vector<std::optional<std::string>> names;
    for (int i = 0; i < 150; ++i) {
        names.emplace_back("Person " + std::to_string(i));
    }
    Variable name;
    name.Name = "full name";
    EncodeTexts(name, names);
    DataTable table = TableOf({name, Numbers("height", std::vector<double>(150, 1.5))});
    Person viewer;
    Exploration explored(std::make_shared<DataTable>(table), {}, viewer, nullptr);
    EXPECT_EQ(ExploreAll(explored), 1U);
    EXPECT_THAT(viewer.Remarked, ElementsAre(testing::AllOf(testing::HasSubstr("\"full name\" is left out"),
                                                            testing::HasSubstr("Drill variables"))));
}

TEST_F(ExplorationTest, WhatWasDoneCanBeDoneAgain) {
    Explored.Press(FrequenciesButton);
    Explored.Press(AutoUpdateBox);
    Explored.ClickRow(DrillDownListControl, 2);
    Explored.Press(NeatIntervalsRadio);
    Explored.TypeNumber(NeatCountField, 4);
    Explored.Press(HistogramsButton);
    Down("sex", "Female");
    Explored.Press(DownButton);  // nobody answers: cancelled
    Viewer.Bars = {1};
    Explored.ClickRow(DrillDownListControl, 0);
    Explored.Press(BrushButton);
    Explored.Close(*Explored.Documents().front());
    Down("age", "#1");
    Explored.Up("sex");

    const KeptSession kept = SessionFrom(SessionText(SessionOf(Explored, "survey.sav")));
    EXPECT_EQ(kept.File, "survey.sav");
    EXPECT_EQ(kept.Entries.size(), Explored.Recording().Entries().size());
    Person other;
    Exploration again{std::make_shared<DataTable>(ReadDataFile(testing_locations::Sample("survey.sav"))),
                      {testing_locations::Sample("survey.sav")},
                      other,
                      nullptr};
    again.Replay(kept.Entries);
    const KeptSession now = SessionOf(again, "survey.sav");
    EXPECT_EQ(now.State, kept.State);
    EXPECT_EQ(now.Documents, kept.Documents);
    EXPECT_EQ(now.Script, kept.Script);
    EXPECT_EQ(again.Remaining()->Cases, Explored.Remaining()->Cases);
    EXPECT_EQ(again.Steps().size(), 2U);
    EXPECT_THROW(static_cast<void>(SessionFrom("{\"version\": 1}")), DataError);
    EXPECT_THROW(static_cast<void>(SessionFrom("not a session")), DataError);
}

TEST(TableReading, EndsWithATableOrSaysWhyNot) {
    const auto read = [](const std::string& name) { return TableReading(testing_locations::Sample(name)).Finish(); };
    EXPECT_EQ(read("survey.sav").Table->Cases, 2000);
    const auto none = read("nothing.csv");
    EXPECT_EQ(none.Table, nullptr);
    EXPECT_THAT(none.Failure, testing::HasSubstr("nothing.csv"));
    TableReading cancelled(testing_locations::Sample("survey.csv"));
    cancelled.Cancel();
    const auto left = cancelled.Finish();
    EXPECT_TRUE(left.Failure.empty());
}

TEST_F(ExplorationTest, BrushingDrillsUntilItsUserLeaves) {
    Viewer.Bars = {0, 1};
    Explored.ClickRow(DrillDownListControl, 0);
    Explored.Press(BrushButton);
    EXPECT_EQ(Explored.Steps().size(), 2U);
    EXPECT_FALSE(Explored.IsBusy());
}

TEST_F(ExplorationTest, NoCommandBeginsWithinAnother) {
    Viewer.Answers.emplace_back([this](Window& dialog) {
        EXPECT_TRUE(Explored.IsBusy());
        EXPECT_THROW(Explored.Press(FrequenciesButton), UsageError);
        Explored.Use(dialog, [](Window& window) { window.Click(2); });
    });
    Explored.Press(DownButton);
    EXPECT_FALSE(Explored.IsBusy());
    EXPECT_THAT(Steps(), ElementsAre());
    Explored.Press(2);  // leaves
    EXPECT_TRUE(Explored.HasEnded());
}

}  // namespace
}  // namespace quillara
