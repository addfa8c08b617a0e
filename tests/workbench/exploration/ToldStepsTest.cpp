// What an exploration adds to the buttons of the analysis decides nothing: an analysis in a bare host, in which only
// the buttons are pressed, stays in the same state; and the bars that are picked are those that are seen.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "host/Brushing.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/documents/GraphDocument.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/exploration/Exploration.h"
#include "workbench/exploration/KeptSession.h"
#include "workbench/exploration/StartupClicks.h"
#include "workbench/formats/DataFile.h"
#include "workbench/hosting/AnalysisModule.h"
#include "workbench/hosting/AnalysisServices.h"
#include "workbench/hosting/StepHistory.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

using Pick = std::pair<int, int>;  // a bar and an option
using Answer = std::function<void(Window&)>;

constexpr Pick StepUp{-1, 1};

/// Answers a window or a cycle of brushing at a time; what isn't answered is left.
struct Hand : ExplorationListener {
    bool WorkIn(Window& dialog) override {
        if (Answering) {
            Answering(dialog);
        }
        return dialog.IsClosed();
    }
    bool Pick(BrushingRun& run) override {
        if (Look) {
            Look(run);
        }
        if (Picks.empty()) {
            return false;
        }
        run.Regions.setSelected(Picks.front().first);
        run.Choice = Picks.front().second;
        Picks.erase(Picks.begin());
        return true;
    }
    void ShowMessage(std::string_view /*text*/) override {}
    void DocumentAppeared(ResultDocument& /*document*/) override {}
    void DocumentChanged(ResultDocument& /*document*/) override {}
    void DocumentCameToFront(ResultDocument& /*document*/) override {}
    void DocumentWent(ResultDocument& /*document*/) override {}
    void TableMade(std::shared_ptr<const DataTable> /*table*/) override {}
    void RemarkMade(const Remark& /*remark*/) override {}
    void Changed() override {}
    void WorkBegan(std::string_view /*text*/, std::int32_t /*total*/) override {}
    void WorkAdvanced(std::int32_t /*done*/) override {}
    void WorkEnded() override {}

    Answer Answering;
    std::function<void(BrushingRun&)> Look;
    std::vector<quillara::Pick> Picks;
};

std::shared_ptr<const DataTable> Survey() {
    return std::make_shared<DataTable>(ReadDataFile(testing_locations::Sample("survey.sav")));
}

/// A host of the analysis that adds nothing.
class BareHost {
  public:
    BareHost() : Document(*Table) {
        Document.Services.WorkIn = [this](Window& dialog) { return Person.WorkIn(dialog); };
        Document.Services.Brush = [this](BrushingRun& run) { return Person.Pick(run); };
        Document.Services.TakeDocument = [](ResultDocument& document) { document.SetVisible(true); };
        Document.Adopt(Library.NewAnalysis());
        EXPECT_TRUE(Document.RunSequence());
    }
    void Use(const Answer& action) {
        action(*Document.StartupWindow());
        Document.RunMessages();
    }

    Hand Person;
    std::shared_ptr<const DataTable> Table = Survey();
    AnalysisModule Library{AnalysisModule::DrillDownPath()};
    AnalysisDocument Document;
};

struct ExploredHost {
    void Use(const Answer& action) { Explored.Use(Explored.Startup(), action); }

    Hand Person;
    Exploration Explored{Survey(), {testing_locations::Sample("survey.sav")}, Person, nullptr};
    AnalysisDocument& Document = Explored.Analysed();
};

/// All that steps go by and lead to.
std::string StateText(AnalysisDocument& document) {
    std::string text;
    for (const int list : {DrillDownListControl, DrillUpListControl}) {
        text += "[" + CurrentVariableOf(document, list) + "]";
        for (const std::string& row : document.StartupWindow()->At(list).Rows) {
            text += " " + row + ",";
        }
        text += "\n";
    }
    for (const StepTaken& step : StepsOf(&document).Taken()) {
        text += step.Condition() + (step.Left ? " " + std::to_string(step.Left->Cases) : "") + "\n";
    }
    for (const ResultDocument* made : document.Documents().OfAnalysis()) {
        text += made->Name() + "\n";
    }
    return text;
}

/// The same person before both hosts.
class ToldSteps : public testing::Test {
  protected:
    ToldSteps() {
        Answered([](Window& dialog) { ChooseVariables(dialog, {1, 2, 3}, {4, 8}); });
        Press(DrillVariablesButton);
    }
    void Answered(const Answer& answer) { Bare.Person.Answering = Shown.Person.Answering = answer; }
    void Both(const Answer& action) {
        Bare.Use(action);
        Shown.Use(action);
        SelectWhereNoneIs();
    }
    /// Where the analysis goes by none, one has to be chosen by somebody.
    void SelectWhereNoneIs() {
        for (const int list : {DrillDownListControl, DrillUpListControl}) {
            if (!Rows(list).empty() && CurrentVariableOf(Bare.Document, list).empty()) {
                Bare.Use([&](Window& startup) { startup.ClickRow(list, 0); });
            }
        }
    }
    void Press(int id) {
        Both([id](Window& startup) { startup.Click(id); });
    }
    void Choose(int list, int row) {
        Both([=](Window& startup) { startup.ClickRow(list, row); });
    }
    /// The button goes by the row that is selected; in a bare host a person selects it.
    void UpOnCurrent() {
        const std::string current = CurrentVariableOf(Bare.Document, DrillUpListControl) + " (";
        Bare.Use([&](Window& startup) {
            const auto row = std::ranges::find_if(Rows(DrillUpListControl),
                                                  [&](const std::string& each) { return each.starts_with(current); });
            startup.ClickRow(DrillUpListControl, static_cast<int>(row - Rows(DrillUpListControl).begin()));
            startup.Click(UpButton);
        });
        Shown.Use([](Window& startup) { startup.Click(UpButton); });
        SelectWhereNoneIs();
    }
    void Down(int row) {
        Answered([row](Window& dialog) {
            const auto rows = static_cast<int>(dialog.At(CategoryListControl).ReportRows.size());
            dialog.ClickRow(CategoryListControl, row % rows);
            dialog.Click(OkCommand);
        });
        Press(DownButton);
    }
    void Brush(const std::vector<Pick>& picks) {
        Bare.Person.Picks = Shown.Person.Picks = picks;
        Bare.Use([&](Window&) { ClickInStartup(Bare.Document, BrushButton); });
        Shown.Explored.Press(BrushButton);
        SelectWhereNoneIs();
    }
    [[nodiscard]] const std::vector<std::string>& Rows(int list) {
        return Bare.Document.StartupWindow()->At(list).Rows;
    }
    [[nodiscard]] std::string Current(int list) { return CurrentVariableOf(Shown.Document, list); }
    [[nodiscard]] std::vector<std::string> Steps() {
        std::vector<std::string> steps;
        for (const StepTaken& step : Shown.Explored.Steps()) {
            steps.push_back(step.Variable);
        }
        return steps;
    }
    void DoAnything(std::mt19937& random);

    BareHost Bare;
    ExploredHost Shown;
};

void ToldSteps::DoAnything(std::mt19937& random) {
    const auto below = [&](std::size_t count) { return static_cast<int>(random() % count); };
    const std::size_t downs = Rows(DrillDownListControl).size();
    const std::size_t ups = Rows(DrillUpListControl).size();
    switch (random() % 9) {
        case 0:
        case 1:
            return downs > 0 ? Down(below(9)) : UpOnCurrent();
        case 2:
            return downs > 0 ? Choose(DrillDownListControl, below(downs)) : UpOnCurrent();
        case 3:
            return ups > 0 ? Choose(DrillUpListControl, below(ups)) : Down(below(9));
        case 4:
            return ups > 0 ? UpOnCurrent() : Down(below(9));
        case 5:
            Answered([](Window& dialog) { dialog.Click(OkCommand); });
            return downs > 1 ? Press(OrderButton) : Press(AutoUpdateBox);
        case 6:
            return downs > 0 ? Press(HistogramsButton) : Press(AutoUpdateBox);
        case 7:
            return Press(AutoUpdateBox);
        default:
            return downs > 0 ? Brush({{below(3), 0}, ups > 0 ? StepUp : Pick{below(3), 0}}) : UpOnCurrent();
    }
}

TEST_F(ToldSteps, AreTheSameInABareHost) {
    for (unsigned seed = 1; seed <= 4 && !HasFailure(); ++seed) {
        std::mt19937 random(seed);
        for (int done = 0; done < 40 && !HasFailure(); ++done) {
            DoAnything(random);
            EXPECT_EQ(StateText(Shown.Document), StateText(Bare.Document)) << "seed " << seed << ", " << done;
        }
    }
}

TEST_F(ToldSteps, TheVariableThatIsWorkedOnStaysSo) {
    Choose(DrillDownListControl, 3);
    const std::string chosen = Current(DrillDownListControl);
    Answered([](Window& dialog) { dialog.Click(OkCommand); });
    Press(OrderButton);
    EXPECT_EQ(Current(DrillDownListControl), chosen);
    Choose(DrillDownListControl, 0);
    const std::string first = Current(DrillDownListControl);
    Down(0);
    Brush({{0, 0}});
    ASSERT_EQ(Steps().size(), 2U);
    const std::string worked = Current(DrillDownListControl);
    // Picking undoes the step that the analysis goes by, not the newest one.
    EXPECT_EQ(Current(DrillUpListControl), first);
    Brush({StepUp});
    EXPECT_THAT(Steps(), testing::Not(testing::Contains(first)));
    EXPECT_EQ(Current(DrillDownListControl), worked);
    UpOnCurrent();
    EXPECT_EQ(Current(DrillDownListControl), worked);
    EXPECT_EQ(StateText(Shown.Document), StateText(Bare.Document));
}

/// What the graph shows and what is picked, each bar with its number.
std::pair<std::vector<std::string>, std::vector<std::string>> BarsOf(const BrushingRun& run) {
    std::vector<std::string> seen;
    for (const GraphSeries& series : SeriesOf(*run.Document.Graph())->Series) {
        for (const GraphPoint& bar : series.Points) {
            seen.push_back("CATEGORY: " + bar.Name + "\nCOUNT: " + std::to_string(static_cast<int>(bar.Y)));
        }
    }
    std::vector<std::string> picked;
    for (const BrushRegion& region : run.Regions.Regions()) {
        picked.push_back(region.Tip);
    }
    return {seen, picked};
}

TEST_F(ToldSteps, TheBarsThatArePickedAreThoseThatAreSeen) {
    std::vector<std::string> seen;
    std::vector<std::string> picked;
    const auto look = [&](const BrushingRun& run) { std::tie(seen, picked) = BarsOf(run); };
    Bare.Person.Look = Shown.Person.Look = look;
    Choose(DrillDownListControl, 3);  // age
    Press(ExactIntervalsRadio);
    Both([](Window& startup) { startup.TypeNumber(ExactCountField, 3); });
    // The analysis itself draws the graph before it stores the page.
    Bare.Use([](Window& startup) { startup.Click(BrushButton); });
    EXPECT_EQ(picked.size(), 3U);
    EXPECT_NE(seen, picked);
    Shown.Explored.Press(BrushButton);
    EXPECT_EQ(picked.size(), 3U);
    EXPECT_EQ(seen, picked);
    for (const int turn : {1, 2}) {  // alone in its window the graph is kept from cycle to cycle
        Shown.Explored.Press(UserIntervalsRadio);
        seen.clear();
        Answered([](Window& dialog) { dialog.Click(CancelCommand); });
        Shown.Explored.Press(BrushButton);
        EXPECT_TRUE(seen.empty());
        EXPECT_TRUE(Shown.Explored.At(ExactIntervalsRadio).Checked) << turn;
        Shown.Explored.Press(AutoUpdateBox);
    }
    Shown.Explored.Press(UserIntervalsRadio);
    Answered([](Window& dialog) {
        dialog.Type(BoundariesEdit, "30 60");
        dialog.Click(OkCommand);
    });
    Shown.Explored.Press(AutoUpdateBox);
    Shown.Explored.Press(BrushButton);
    EXPECT_EQ(picked.size(), 3U);
    EXPECT_EQ(seen, picked);
    Hand other;
    Exploration again{Survey(), {testing_locations::Sample("survey.sav")}, other, nullptr};
    again.Replay(Shown.Explored.Recording().Entries());
    EXPECT_EQ(StateText(again.Analysed()), StateText(Shown.Document));
    EXPECT_EQ(again.Recording().Text(), Shown.Explored.Recording().Text());
}

TEST_F(ToldSteps, AreKeptWhileBarsArePicked) {
    KeptSession kept;
    Shown.Person.Look = [&](const BrushingRun&) { kept = SessionOf(Shown.Explored, "survey.sav"); };
    Shown.Person.Picks = {{0, 0}, {1, 0}};
    Shown.Explored.Press(BrushButton);
    Hand other;
    Exploration again{Survey(), {testing_locations::Sample("survey.sav")}, other, nullptr};
    again.Replay(SessionFrom(SessionText(kept)).Entries);
    EXPECT_EQ(StateText(again.Analysed()), StateText(Shown.Document));
    const auto isLeft = [](const JournalEntry& entry) { return entry.Call.Name == "leave"; };
    EXPECT_EQ(std::ranges::count_if(again.Recording().Entries(), isLeft), 1);
}

}  // namespace
}  // namespace quillara
