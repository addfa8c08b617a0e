// Long random walks through the startup dialog, compared after every command with a plain model of the two lists and of
// the stand-alone documents.

#include <algorithm>
#include <map>
#include <optional>
#include <random>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/Shares.h"
#include "tests/automation/OutputsBench.h"
#include "tests/dialogs/DialogModel.h"
#include "tests/workbench/Files.h"
#include "workbench/dialogs/DialogIds.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/formats/DataFile.h"

namespace dialogtest {
namespace {

using quillara::Control;
using quillara::Window;

constexpr const char* People =
    "a,b,c,x,y\n"
    "p,k,1,10,0.5\np,l,2,20,1.5\nq,k,1,30,2.5\nq,l,3,40,NA\nr,k,2,50,0.25\nr,,1,60,8\np,k,3,70,9\nq,m,1,80,3\n"
    "p,m,2,90,3.5\nr,k,1,15,4\np,l,2,25,4.5\nq,k,,35,5\np,k,1,45,6\nr,l,2,NA,7\nq,k,3,55,2\np,m,1,65,1\n";

DocumentKey KeyOf(const ResultDocument& document) {
    return {document.Origin().Command, document.Origin().Sequence};
}

class RandomWalk : public testing::TestWithParam<unsigned>, public OutputsBench {
  protected:
    RandomWalk() : Random(GetParam()), Path(Folder.Put("walk.csv", People)) {
        Open(quillara::ReadDataFile(Path));
        Host().Services.WorkIn = [this](Window& window) { return WorkIn(window); };
    }

    int Below(std::size_t limit) { return std::uniform_int_distribution<int>(0, static_cast<int>(limit) - 1)(Random); }
    bool Chance(int percent) { return Below(100) < percent; }
    template <typename Value>
    Value AnyOf(const std::vector<Value>& values) {
        return values[static_cast<std::size_t>(Below(values.size()))];
    }
    const Control& At(int id) { return Startup().At(id); }
    List& ModelOf(int list) { return list == DrillDownListControl ? Expected.Downs : Expected.Ups; }

    /// What has been confirmed in the modal windows of the last command.
    struct Answers {
        std::optional<std::string> Category;
        std::optional<Names> Order;
        bool Boundaries = false;
        bool File = false;
    };

    // Modal windows; one that isn't confirmed is left to be cancelled

    bool Confirms(Window& window, int percent) {
        const bool confirms = Chance(percent);
        if (confirms) {
            window.Click(OkCommand);
        }
        return confirms;
    }

    bool WorkIn(Window& window) {
        switch (window.Resource().Id) {
            case CategoryDialog:
                return TakeCategory(window);
            case OrderDialog:
                return ChangeOrder(window);
            case BoundariesDialog:
                window.Type(BoundariesEdit, Chance(50) ? "30 60" : "2");
                return Given.Boundaries = Confirms(window, 70);
            case quillara::OpenDataDialogId:
                window.Type(quillara::OpenDataDialog::Path, Path);
                return Given.File = Confirms(window, 50);
            default:
                quillara::ChooseVariables(window, {1, 2, 3}, {4, 5});
                return true;
        }
    }

    bool TakeCategory(Window& window) {
        const auto& rows = window.At(CategoryListControl).ReportRows;
        if (rows.empty() || Chance(15)) {
            return false;
        }
        const int row = Below(rows.size());
        Given.Category = rows[static_cast<std::size_t>(row)].Cells.front();
        if (Chance(30)) {
            window.DoubleClickRow(CategoryListControl, row);
        } else {
            window.ClickRow(CategoryListControl, row);
            window.Click(OkCommand);
        }
        return true;
    }

    /// Places rows and takes them back, also with none selected.
    bool ChangeOrder(Window& window) {
        Names open = Expected.Downs.Rows;
        List placed;
        for (int moves = Below(16); moves > 0; --moves) {
            const bool places = Chance(65);
            const int row = Below((places ? open : placed.Rows).size() + 1) - 1;
            if (row >= 0) {
                window.ClickRow(places ? CurrentOrderList : NewOrderList, row);
                places ? placed.Rows.push_back(open[static_cast<std::size_t>(row)]) : void(placed.TakeOut(row));
                open = Expected.Downs.Rows;
                std::erase_if(open, [&](auto& name) { return std::ranges::count(placed.Rows, name) > 0; });
            }
            window.SendCommand(places ? PlaceButton : TakeBackButton);
            EXPECT_EQ(window.At(CurrentOrderList).Rows, open);
            EXPECT_EQ(window.At(NewOrderList).Rows, placed.Rows);
            EXPECT_EQ(window.At(CurrentOrderList).Enabled, !open.empty());
            EXPECT_EQ(window.At(PlaceButton).Enabled, !open.empty());
            EXPECT_EQ(window.At(TakeBackButton).Enabled, !placed.Rows.empty());
        }
        if (Confirms(window, 80)) {
            std::ranges::copy(open, std::back_inserter(placed.Rows));
            Given.Order = placed.Rows;
        }
        return Given.Order.has_value();
    }

    // Commands

    /// Clicks a button, if it can be pressed.
    void Press(int button) {
        Given = {};
        if (At(button).Enabled) {
            Click(button);
        }
    }

    void Pick(int list) {
        List& rows = ModelOf(list);
        if (!rows.Rows.empty()) {
            rows.Selected = Below(rows.Rows.size());
            Startup().ClickRow(list, rows.Selected);
            Host().RunMessages();
            if (list == DrillDownListControl) {
                Expected.Current = rows.Rows[static_cast<std::size_t>(rows.Selected)];
            }
        }
    }

    void Drag(int list) {
        List& rows = ModelOf(list);
        if (!rows.Rows.empty()) {
            const int target = Below(rows.Rows.size() + 1);
            Startup().Drag(list, target);
            rows.Drag(target);
        }
    }

    void Categorize(int firstMethod) {
        Press(firstMethod + Below(6));
        for (const int field : {ExactCountField, NeatCountField, StepSizeField, StepStartField}) {
            if (At(field).Enabled && Chance(60)) {
                Startup().TypeNumber(field, AnyOf(std::vector{2.0, 3.0, 7.0, 20.0, 0.5, 0.0, 15.0}));
            }
        }
        Toggle(StartAtMinimumBox);
    }

    void Toggle(int box) {
        if (Chance(40)) {
            Press(box);
        }
    }

    void ToggleUpdate(int box) {
        Click(box);
        Expected.StandAlone = !Expected.StandAlone;
    }

    void Down(int button) {
        const bool needsBoundaries = At(UserIntervalsRadio).Checked && !Expected.Bounded.contains(Expected.Current);
        Press(button);
        EXPECT_FALSE(needsBoundaries ? Given.Category.has_value() : Given.Boundaries);
        TakeBoundaries();
        if (Given.Category) {
            Expected.Down(*Given.Category);
            Update();
        }
    }

    void Up(int button) {
        Press(button);
        if (Expected.Ups.Selected >= 0) {
            Expected.Up();
            Update();
        }
    }

    void Order(int button) {
        Press(button);
        if (Given.Order) {
            Expected.Downs.Rows = *Given.Order;
            Expected.Unselect();
        }
    }

    void Boundaries(int button) {
        Press(button);
        TakeBoundaries();
    }

    void TakeBoundaries() {
        if (Given.Boundaries && Expected.Downs.Selected >= 0) {
            Expected.Bounded.insert(Expected.Current);
        }
    }

    void Show(int button) {
        Press(button);
        for (int sequence = 1; Expected.StandAlone && sequence <= Expected.OutputsOf(button); ++sequence) {
            Expected.Documents.try_emplace({button, sequence}, nullptr);
        }
    }

    void OpenData(int button) {
        Press(button);
        if (Given.File) {
            DialogModel fresh;
            fresh.Documents = Expected.Documents;
            Expected = fresh;
        }
    }

    void ChooseVariables(int /*button*/) {
        const bool drills = Expected.Downs.Rows.empty() || Chance(60);
        Click(drills ? DrillVariablesButton : ReviewVariablesButton);
        Expected.Reviews = !drills;
        if (drills) {
            Expected.Downs = {{"a", "b", "c", "x", "y"}};
            Expected.Ups = {};
            Expected.Bounded.clear();
        }
    }

    void CloseDocument(int /*button*/) {
        const auto windows = Host().Documents().InWindows();
        if (!windows.empty()) {
            ResultDocument* document = AnyOf(windows);
            Expected.Documents.erase(KeyOf(*document));
            document->Close();
            Host().RunMessages();
        }
    }

    void Step() {
        struct Command {
            const char* Name;
            int Share;  ///< of 100
            int Control;
            void (RandomWalk::*Run)(int control);
        };
        // clang-format off
        static constexpr std::array commands{
            //      Name         Share Control                  Run
            Command{"pick",        15, DrillDownListControl,    &RandomWalk::Pick},
            Command{"pick up",      8, DrillUpListControl,      &RandomWalk::Pick},
            Command{"categorize",  14, DistinctValuesRadio,     &RandomWalk::Categorize},
            Command{"down",        18, DownButton,              &RandomWalk::Down},
            Command{"up",          10, UpButton,                &RandomWalk::Up},
            Command{"order",        5, OrderButton,             &RandomWalk::Order},
            Command{"drag",         4, DrillDownListControl,    &RandomWalk::Drag},
            Command{"drag up",      4, DrillUpListControl,      &RandomWalk::Drag},
            Command{"update",       2, AutoUpdateBox,           &RandomWalk::ToggleUpdate},
            Command{"casewise",     1, CasewiseBox,             &RandomWalk::Toggle},
            Command{"missing",      1, CountMissingBox,         &RandomWalk::Toggle},
            Command{"reviewed",     1, ReviewCasewiseBox,       &RandomWalk::Toggle},
            Command{"box type",     1, MeanSEAndSDBox,          &RandomWalk::Toggle},
            Command{"boundaries",   3, BoundariesButton,        &RandomWalk::Boundaries},
            Command{"summary",      3, SummaryButton,           &RandomWalk::Show},
            Command{"frequencies",  3, FrequenciesButton,       &RandomWalk::Show},
            Command{"reviews",      2, ReviewFrequenciesButton, &RandomWalk::Show},
            Command{"open",         1, OpenDataButton,          &RandomWalk::OpenData},
            Command{"choose",       1, 0,                       &RandomWalk::ChooseVariables},
            Command{"close",        3, 0,                       &RandomWalk::CloseDocument},
        };
        // clang-format on
        const Command& command = RowByShare(commands, Below(100));
        Log.emplace_back(command.Name);
        (this->*command.Run)(command.Control);
    }

    // What must be so afterwards

    /// What an update leaves of the documents shows what the buttons would.
    void Update() {
        Expected.Update();
        if (!Expected.StandAlone || Chance(50)) {
            return;
        }
        CompareDocuments();
        Click(AutoUpdateBox);
        for (const auto& [key, document] : Expected.Documents) {
            Routed.clear();
            Click(key.first);
            ASSERT_LE(key.second, std::ssize(Routed));
            EXPECT_EQ(TextOf(*document), Routed[static_cast<std::size_t>(key.second - 1)]);
        }
        Click(AutoUpdateBox);
    }

    void CompareList(int id, const CDrillDown::DrillSet& records) {
        const List& expected = ModelOf(id);
        EXPECT_EQ(At(id).Rows, expected.Rows);
        EXPECT_EQ(At(id).Selected, expected.Selected);
        EXPECT_TRUE(std::ranges::equal(records, expected.Rows, {}, &Drill::Name, NameIn));
    }

    /// Every document stands for its key for as long as the model has it.
    void CompareDocuments() {
        std::map<DocumentKey, const ResultDocument*> shown;
        for (const ResultDocument* document : Host().Documents().InWindows()) {
            EXPECT_TRUE(shown.try_emplace(KeyOf(*document), document).second) << "doubled";
        }
        for (auto& [key, document] : Expected.Documents) {
            if (document == nullptr && shown.contains(key)) {
                document = shown[key];
            }
        }
        EXPECT_EQ(shown, Expected.Documents);
    }

    void Compare() {
        CompareList(DrillDownListControl, *Analysis().DrillDowns);
        CompareList(DrillUpListControl, *Analysis().DrillUps);
        EXPECT_EQ(At(DownButton).Enabled, !Expected.Downs.Rows.empty());
        EXPECT_EQ(At(UpButton).Enabled, !Expected.Ups.Rows.empty());
        EXPECT_EQ(At(OpenDataButton).Enabled, Expected.Ups.Rows.empty());
        EXPECT_EQ(At(AutoUpdateBox).Checked, Expected.StandAlone);
        EXPECT_EQ(Analysis().GetCurrentVariableName(), Expected.HasCurrent() ? Expected.Current : "");
        CompareDocuments();
    }

    std::mt19937 Random;
    const TemporaryFolder Folder;
    const std::string Path;
    DialogModel Expected;
    Answers Given;
    Names Log;
};

TEST_P(RandomWalk, StaysWithThePlainModel) {
    constexpr int steps = 2500;
    ChooseVariables(0);
    for (int step = 0; step < steps && !HasFailure(); ++step) {
        if (Expected.Downs.Rows.empty() && Expected.Ups.Rows.empty()) {
            ChooseVariables(0);
        }
        Step();
        Compare();
    }
    if (HasFailure()) {
        Log.erase(Log.begin(), Log.end() - std::min<std::ptrdiff_t>(std::ssize(Log), 12));
        ADD_FAILURE() << "the last commands: " << testing_scripts::Joined(Log, "; ");
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomWalk, testing::Range(1U, 11U));

}  // namespace
}  // namespace dialogtest
