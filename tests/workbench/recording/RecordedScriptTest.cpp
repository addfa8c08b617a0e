// The lines that sessions become, and the texts in them.

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/StartupInterface.h"
#include "host/AnalysisDialog.h"
#include "platform/OwnedVariant.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/workbench/Tables.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisModule.h"
#include "workbench/recording/PythonText.h"
#include "workbench/recording/SessionRecorder.h"
#include "workbench/recording/StepTokens.h"

namespace recordingtest {
namespace {

using namespace quillara;

TEST(PythonText, IsALiteralOfAnyText) {
    const std::pair<std::string, std::string> cases[] = {
        {"", R"("")"},
        {"Größe 年齢", R"("Größe 年齢")"},
        {R"(say "no")", R"('say "no"')"},
        {R"(it's "no")", R"("it's \"no\"")"},
        {"C:\\data\n\t\x01", R"("C:\\data\n\t\x01")"},
        {"a\u00A0b\u202Ec", R"("a\xa0b\u202ec")"},
        {"caf\xE9", R"("caf\udce9")"},
        {"\xED\xA0\x80", R"("\udced\udca0\udc80")"},
    };
    for (const auto& [text, literal] : cases) {
        EXPECT_EQ(PythonText(text), literal);
    }
}

TEST(StepTokens, StayTheTextsThatTheyAre) {
    const std::pair<std::string, std::string> cases[] = {
        {"Never married", "Never married"},
        {"18-25", "18-25"},
        {"2", R"("2")"},
        {"a: b", R"("a: b")"},
        {"-.5e3", R"("-.5e3")"},
        {R"(q"|x)", R"("q""|x")"},
        {"12 a", R"("12 a")"},
    };
    for (const auto& [text, token] : cases) {
        EXPECT_EQ(AsToken(text), token);
    }
}

TEST(StepTokens, ANameThatMeansAnotherIsNone) {
    const std::vector<std::string> rows{"age group", "Age", "sex", "a"};
    EXPECT_EQ(VariableToken(rows, 0, "age group"), "age group");
    EXPECT_EQ(VariableToken(rows, 1, "Age"), std::nullopt);
    EXPECT_EQ(VariableToken(rows, 2, "sex"), "sex");
    EXPECT_EQ(VariableToken(rows, 3, "a"), std::nullopt);

    struct Case {
        ChosenCategory Chosen;
        std::optional<std::string> Token;
    };
    const Case cases[] = {
        {{1, "m", false, "m", "0 f | 1 m"}, "m"},
        {{1, "2", false, "2", "0 1 | 1 2"}, R"("2")"},
        {{1, "m", false, "Missing", "0 f | 2 m"}, std::nullopt},  // an empty category before it
        {{1, "Yes", false, "Yes", "0 yes | 1 Yes"}, std::nullopt},
        {{2, "Missing", true, "Missing", "0 f | 1 m | 2 Missing"}, "Missing"},
        {{1, "missing", false, "missing", "0 f | 1 missing"}, std::nullopt},  // means the missing data
        {{1, "m |", false, "m |", "0 f | 1 m"}, std::nullopt},
        {{3, "", false, "3", "0 a | 1 b"}, std::nullopt},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(CategoryToken(each.Chosen), each.Token) << each.Chosen.Selections;
    }
}

/// A session whose lines are looked at.
class Recording : public testing::Test {
  protected:
    Recording()
        : Table(TableOf(
              {Texts("sex", {"f", "m", "m", "f"}), Numbers("age", {20, 30, 40, 50}), Numbers("age 2", {1, 2, 3, 4})})),
          Library(AnalysisModule::DrillDownPath()),
          Recorder({.File = "people.csv", .Formula = "age > 1", .Weight = "age 2"}),
          Analysis(Table) {
        Analysis.Services.Recorder = &Recorder;
        Analysis.Services.WorkIn = [this](Window& window) {
            const bool isAnswered = !Answers.empty();
            if (isAnswered) {
                std::exchange(Answers.front(), {})(window);
                Answers.pop_front();
            }
            return isAnswered;
        };
        Analysis.Adopt(Library.NewAnalysis());
        EXPECT_TRUE(Analysis.RunSequence());
        Expect([](Window& window) { ChooseVariables(window, {1}, {2, 3}); });
        Click(DrillVariablesButton);
    }
    void Expect(std::function<void(Window&)> answer) { Answers.push_back(std::move(answer)); }
    void Click(int id) {
        Analysis.StartupWindow()->Click(id);
        Analysis.RunMessages();
    }
    void Pick(const char* variable) { Analysis.StartupWindow()->ClickText(DrillDownListControl, variable); }
    void Down(int row) {
        Expect([row](Window& window) { window.DoubleClickRow(CategoryListControl, row); });
        Click(DownButton);
    }
    void GiveBoundaries(const char* text) {
        Expect([text](Window& window) {
            window.Type(BoundariesEdit, text);
            window.Click(OkCommand);
        });
        Click(BoundariesButton);
    }
    /// The lines since the last time.
    std::string Lines() {
        const std::string text = Recorder.Text();
        return text.substr(std::exchange(Read, text.size()));
    }

    const DataTable Table;
    AnalysisModule Library;
    SessionRecorder Recorder;
    AnalysisDocument Analysis;
    std::deque<std::function<void(Window&)>> Answers;
    std::vector<CountedPointer<ResultDocument>> Taken;
    std::size_t Read = 0;
};

TEST_F(Recording, BeginsWithTheDataAndTheVariables) {
    EXPECT_EQ(Lines(),
              "# Paths are relative: run it in the folder in which it was recorded.\n"
              "import quillara\n\ntable = quillara.open(\"people.csv\")\ntable.select(\"age > 1\")\n"
              "table.weight = \"age 2\"\ndrill = table.drill(\"sex\", [\"age\", \"age 2\"])\n");
    Expect([](Window& window) { ChooseVariables(window, {}, {3}); });
    Click(DrillVariablesButton);
    EXPECT_EQ(Lines(), "drill.Variables = '| \"age 2\"'\n");
}

TEST_F(Recording, WritesAStepInItsOrder) {
    Lines();
    Pick("age");
    Click(ExactIntervalsRadio);
    Analysis.StartupWindow()->TypeNumber(ExactCountField, 3);
    Down(1);
    EXPECT_EQ(Lines(),
              "drill.DrillDownVariable = \"age\"\ndrill.NoOfExactIntervals = 1\ndrill.ValueNoOfExactIntervals = 3\n"
              "drill.DrillDownCategory = 1  # 27.5<x<=42.5\ndrill.DrillDown()\n");
    Down(0);
    EXPECT_EQ(Lines(), "drill.DrillDownVariable = \"sex\"\ndrill.DrillDownCategory = \"m\"\ndrill.DrillDown()\n");
    Analysis.StartupWindow()->ClickRow(DrillUpListControl, 1);
    Click(UpButton);
    EXPECT_EQ(Lines(), "drill.DrillUpVariable = \"age\"\ndrill.DrillUp()\n");
}

TEST_F(Recording, LeavesOutWhatWasCancelledAndWritesWhatItHasStored) {
    Lines();
    Pick("age 2");
    Click(DownButton);
    Click(DownButton);
    EXPECT_EQ(Lines(), "");
    Click(IntegerCategoriesRadio);
    Click(DownButton);
    EXPECT_EQ(Lines(), "");
    Click(CountMissingBox);
    EXPECT_EQ(Lines(),
              "drill.DrillDownVariable = \"age 2\"\ndrill.IntegerCategories = 1\ndrill.window.select(9053, \"age 2\")\n"
              "drill.CountMD = 0\n");
    Click(ExactIntervalsRadio);
    Click(CountMissingBox);
    Pick("sex");
    EXPECT_EQ(Lines(), "drill.CountMD = 1\n");
}

TEST_F(Recording, WritesWhatAClickHasStoredWithTheStepWhenItsVariableIsDrilledNext) {
    const auto categorize = [this] {
        Pick("age 2");
        Click(IntegerCategoriesRadio);
        Pick("age 2");
        Pick("age");
        Click(UserIntervalsRadio);
        GiveBoundaries("25 45");
        Pick("age");
    };
    const std::string clicks =
        "drill.DrillDownVariable = \"age 2\"\ndrill.IntegerCategories = 1\ndrill.window.select(9053, \"age 2\")\n";
    Lines();
    categorize();
    Down(1);
    EXPECT_EQ(Lines(), clicks +
                           "drill.DrillDownVariable = \"age\"\ndrill.UserSpecifiedCategories = 1\n"
                           "drill.UserDefinedBoundaries = \"25 45\"\n"
                           "drill.DrillDownCategory = 1  # 25<x<=45\ndrill.DrillDown()\n");
    Expect([](Window& window) { ChooseVariables(window, {1}, {2, 3}); });
    Click(DrillVariablesButton);
    Lines();
    categorize();
    Click(DownButton);  // and cancelled
    Pick("sex");
    Down(0);
    EXPECT_EQ(Lines(), clicks +
                           "drill.window.select(9053, \"age\")\ndrill.UserSpecifiedCategories = 1\n"
                           "drill.Application.Answer([(\"text\", 9093, \"25 45\"), (\"click\", 1)])\n"
                           "drill.window.click(9077)\ndrill.DrillDownVariable = \"sex\"\n"
                           "drill.DrillDownCategory = \"f\"\ndrill.DrillDown()\n");
}

TEST_F(Recording, WritesTheCategoryOfAScriptAsItsMemberTakesIt) {
    Lines();
    const auto startup = QueryFor<DDNStartup>(Analysis.Analysis().GetStartupDialog()->GetUnknown());
    const auto step = [&startup](const char16_t* variable) {
        EXPECT_EQ(startup->put_DrillDownVariable(OwnedVariant::OfText(variable).Get()), S_OK);
        EXPECT_EQ(startup->put_DrillDownCategory(OwnedVariant::OfInteger(1).Get()), S_OK);
        EXPECT_EQ(startup->DrillDown(), S_OK);
    };
    step(u"sex");
    Pick("age");
    Click(ExactIntervalsRadio);
    Pick("age");
    step(u"age");
    EXPECT_EQ(Lines(),
              "drill.DrillDownVariable = \"sex\"\ndrill.DrillDownCategory = \"m\"\ndrill.DrillDown()\n"
              "drill.DrillDownVariable = \"age\"\ndrill.NoOfExactIntervals = 1\ndrill.ValueNoOfExactIntervals = 10\n"
              "drill.DrillDownCategory = 1\ndrill.DrillDown()\n");
}

TEST_F(Recording, WritesBoundariesAsTheMemberReadsThemOrAsTheyWereTyped) {
    Lines();
    Pick("age");
    Click(UserIntervalsRadio);
    GiveBoundaries("25  40,50");
    Down(0);
    EXPECT_EQ(Lines(),
              "drill.DrillDownVariable = \"age\"\ndrill.UserSpecifiedCategories = 1\n"
              "drill.UserDefinedBoundaries = \"25 40.5\"\ndrill.DrillDownCategory = 0  # x<=25\ndrill.DrillDown()\n");
    Pick("age 2");
    Click(UserIntervalsRadio);
    GiveBoundaries("0.12345678");
    Pick("sex");
    EXPECT_EQ(
        Lines(),
        "drill.window.select(9053, \"age 2\")\ndrill.UserSpecifiedCategories = 1\n"
        "drill.Application.Answer([(\"text\", 9093, \"0.12345678\"), (\"click\", 1)])\ndrill.window.click(9077)\n");
}

TEST_F(Recording, NamesResultsAndFindsThemAgain) {
    Lines();
    Click(FrequenciesButton);
    Click(AutoUpdateBox);
    Click(FrequenciesButton);
    Analysis.Documents().InWindows()[1]->Close();
    Pick("sex");
    Down(0);
    EXPECT_EQ(Lines(),
              "frequencies = drill.Frequencies\ndrill.StandAloneResults = 1\nfrequencies_2 = drill.Frequencies\n"
              "frequencies_2[1].Close()\ndrill.DrillDownVariable = \"sex\"\ndrill.DrillDownCategory = \"f\"\n"
              "drill.DrillDown()\n");
    Click(CancelCommand);
    EXPECT_EQ(Lines(), "drill.close()\n");
}

TEST_F(Recording, ClosesWhatThePersonCloses) {
    std::shared_ptr<const DataTable> saved;
    const auto take = [this](ResultDocument& document) {
        Taken.push_back(CountedPointer<ResultDocument>::Share(&document));
    };
    Analysis.Services.TakeDocument = take;
    Analysis.Services.HearStandAlone = take;
    Analysis.Services.TakeData = [&saved](std::shared_ptr<const DataTable> table) { saved = std::move(table); };
    Analysis.Services.Brush = [this](BrushingRun& run) {
        if (Taken.size() > 1) {
            run.Document.Close();
        }
        return false;
    };
    Lines();
    Pick("sex");
    Click(BrushButton);
    Click(BrushButton);
    ASSERT_EQ(Taken.size(), 2U);
    Taken[0]->Close();
    Click(SaveDataButton);
    Analysis.CloseData(*saved);
    Analysis.StartupWindow()->At(PieChartsButton).Enabled = false;
    Analysis.StartupWindow()->SendCommand(PieChartsButton);
    Analysis.RunMessages();
    Taken.back()->Close();
    EXPECT_EQ(Lines(),
              "drill.DrillDownVariable = \"sex\"\nbrushing_graph_2 = drill.window.click(9103)\nbrushing_graph = "
              "drill.window.click(9103)\n"
              "brushing_graph.Close()\nbrushing_graph_2.Close()\ncases = drill.Save\ncases.Close()\n"
              "pie_charts = drill.window.command(9119)\npie_charts[2].Close()\n");
}

TEST_F(Recording, MayBeginInTheMidst) {
    Lines();
    Click(PieChartsButton);
    Click(AutoUpdateBox);
    Click(FrequenciesButton);
    Pick("age");
    Click(IntegerCategoriesRadio);
    Pick("sex");
    Recorder.BeginHere();
    Down(0);
    EXPECT_EQ(Lines(),
              "pie_charts = drill.PieCharts\ndrill.StandAloneResults = 1\nfrequencies = drill.Frequencies\n"
              "drill.DrillDownVariable = \"age\"\ndrill.IntegerCategories = 1\ndrill.window.select(9053, \"sex\")\n"
              "pie_charts[0].Close()\npie_charts[1].Close()\npie_charts[2].Close()\n# The recording begins here.\n"
              "drill.DrillDownVariable = \"sex\"\ndrill.DrillDownCategory = \"f\"\ndrill.DrillDown()\n");
}

TEST_F(Recording, PressesForAMessageAlone) {
    Lines();
    Analysis.SetSelection({CaseResult::Skip, CaseResult::Skip, CaseResult::Skip, CaseResult::Skip});
    Click(CountMissingBox);
    Click(DescriptivesButton);
    EXPECT_EQ(Lines(), "drill.CountMD = 0\ndrill.window.click(9059)\n");
}

TEST_F(Recording, IsWordForWordWhereAVariableIsTwoRecords) {
    Expect([](Window& window) { ChooseVariables(window, {1, 2}, {2}); });
    Click(DrillVariablesButton);
    Lines();
    Analysis.StartupWindow()->ClickRow(DrillDownListControl, 2);
    Down(1);
    Click(SummaryButton);
    EXPECT_EQ(Lines(),
              "drill.window.select(9053, 2)\ndrill.Application.Answer([(\"double_click\", 9102, 1)])\n"
              "drill.window.click(9056)\nsummary = drill.Summary\n");
    for (int i = 0; i < 2; ++i) {
        Analysis.StartupWindow()->SendCommand(CasewiseBox);
    }
    EXPECT_EQ(Lines(), "drill.window.command(9128)\ndrill.window.command(9128)\n");
}

}  // namespace
}  // namespace recordingtest
