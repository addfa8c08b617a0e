// Long random walks through the startup dialog, compared after every command with a plain model of the two lists and of
// the stand-alone documents.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "engine/DrillDown.h"
#include "resources/ControlIds.h"
#include "tests/workbench/Files.h"
#include "tests/workbench/Tables.h"
#include "workbench/dialogs/DialogIds.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/formats/DataFile.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/windows/Window.h"

using quillara::Control;
using quillara::ResultDocument;
using quillara::Window;

namespace {

using Rows = std::vector<std::string>;
using DocumentKey = std::pair<int, int>;

constexpr const char* Data =
    "a,b,c,x,y\n"
    "p,k,1,10,0.5\np,l,2,20,1.5\nq,k,1,30,2.5\nq,l,3,40,NA\nr,k,2,50,0.25\nr,,1,60,8\np,k,3,70,9\nq,m,1,80,3\n"
    "p,m,2,90,3.5\nr,k,1,15,4\np,l,2,25,4.5\nq,k,,35,5\np,k,1,45,6\nr,l,2,NA,7\nq,k,3,55,2\np,m,1,65,1\n";

/// What the dialog must show, kept as plainly as can be.
struct Model {
    Rows Downs;
    Rows Ups;  ///< with the marks of the categories
    int SelectedDown = -1;
    int SelectedUp = -1;
    std::string Current;  ///< the drill-down variable in focus; it may have left the list
    std::set<std::string> Bounded;  ///< variables with boundaries of the user
    bool StandAlone = false;
    bool Reviews = false;
    std::map<DocumentKey, const ResultDocument*> Documents;

    [[nodiscard]] bool HasCurrent() const { return std::ranges::find(Downs, Current) != Downs.end(); }
    void Unselect() { SelectedDown = SelectedUp = -1; }

    void Down(const std::string& category) {
        Downs.erase(std::ranges::find(Downs, Current));
        Ups.insert(Ups.begin(), Current + " (" + category + ")");
        Current = Downs.empty() ? "" : Downs.front();
        Unselect();
    }
    void Up() {
        const std::string row = Ups[static_cast<std::size_t>(SelectedUp)];
        Ups.erase(Ups.begin() + SelectedUp);
        Downs.insert(Downs.begin(), row.substr(0, row.find(' ')));
        Unselect();
    }
    static void Drag(Rows& rows, int& selected, int target) {
        if (selected < 0 || selected == target) {
            return;
        }
        const std::string moved = rows[static_cast<std::size_t>(selected)];
        rows.erase(rows.begin() + selected);
        selected = target < selected ? target : target - 1;
        rows.insert(rows.begin() + selected, moved);
    }

    /// How many documents a button makes now.
    [[nodiscard]] int OutputsOf(int button) const {
        switch (button) {
            case SummaryButton:
                return Ups.empty() ? 0 : 1;
            case FrequenciesButton:
                return static_cast<int>(Downs.size());
            default:
                return Reviews ? 5 : 0;
        }
    }
    /// What an update leaves of the documents.
    void Update() {
        if (StandAlone) {
            std::erase_if(Documents,
                          [this](const auto& entry) { return entry.first.second > OutputsOf(entry.first.first); });
        }
    }
};

class RandomWalk : public testing::TestWithParam<unsigned> {
  protected:
    RandomWalk() : Random(GetParam()), Path(Folder.Put("walk.csv", Data)), Table(quillara::ReadDataFile(Path)) {
        Document = std::make_unique<quillara::AnalysisDocument>(Table);
        Document->Services.WorkIn = [this](Window& window) { return WorkIn(window); };
        Document->Adopt(std::unique_ptr<CAnalysisSupport>(Orv6NewAnalysis()));
        EXPECT_TRUE(Document->RunSequence());
    }

    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(Random); }
    bool Chance(int percent) { return Below(100) < percent; }
    Window& Startup() { return *Document->StartupWindow(); }
    const Control& At(int id) { return Startup().At(id); }
    void Click(int id) {
        Startup().Click(id);
        Document->RunMessages();
    }

    // What a user does

    void Step();
    void Pick(int list, int& selected, const Rows& rows);
    void Categorize();
    void Boundaries(bool pressed);
    void Down();
    void Up();
    void Order();
    void Drag();
    void Show(int button);
    void OpenData();
    void ChooseVariables();
    void CloseDocument();

    bool WorkIn(Window& window);
    void AnswerCategories(Window& window);
    void AnswerOrder(Window& window);

    void Compare();
    void CompareDocuments();

    std::mt19937 Random;
    const TemporaryFolder Folder;
    const std::string Path;
    const quillara::DataTable Table;
    std::unique_ptr<quillara::AnalysisDocument> Document;
    Model Expected;
    Rows Log;

    std::optional<std::string> Category;  ///< taken in the category dialog; nothing: cancelled
    std::optional<Rows> NewOrder;  ///< confirmed in the order dialog; nothing: cancelled
    bool BoundariesGiven = false;
    bool Opened = false;
};

// Modal windows

bool RandomWalk::WorkIn(Window& window) {
    switch (window.Resource().Id) {
        case CategoryDialog:
            AnswerCategories(window);
            return true;
        case OrderDialog:
            AnswerOrder(window);
            return true;
        case BoundariesDialog:
            BoundariesGiven = Chance(70);
            window.Type(BoundariesEdit, Chance(50) ? "30 60" : "2");
            window.Click(BoundariesGiven ? 1 : 2);
            return true;
        case quillara::OpenDataDialogId:
            Opened = Chance(50);
            if (Opened) {
                window.Click(quillara::OpenDataDialog::FromFile);
                window.Type(quillara::OpenDataDialog::Path, Path);
                window.Click(1);
            }
            return Opened;
        case quillara::VariableListsDialogId:
            quillara::ChooseVariables(window, {1, 2, 3}, {4, 5});
            return true;
        default:
            return false;
    }
}

void RandomWalk::AnswerCategories(Window& window) {
    const auto& rows = window.At(CategoryListControl).ReportRows;
    Category.reset();
    if (rows.empty() || Chance(15)) {
        window.Click(2);
        return;
    }
    const int row = Below(static_cast<int>(rows.size()));
    Category = rows[static_cast<std::size_t>(row)].Cells.front();
    if (Chance(30)) {
        window.DoubleClickRow(CategoryListControl, row);
    } else {
        window.ClickRow(CategoryListControl, row);
        window.Click(1);
    }
}

void RandomWalk::AnswerOrder(Window& window) {
    Rows left = Expected.Downs;
    Rows right;
    for (int moves = Below(8); moves > 0; --moves) {
        const bool place = right.empty() || (!left.empty() && Chance(65));
        Rows& from = place ? left : right;
        const int row = Below(static_cast<int>(from.size()));
        const std::string moved = from[static_cast<std::size_t>(row)];
        window.ClickRow(place ? CurrentOrderList : NewOrderList, row);
        window.Click(place ? PlaceButton : TakeBackButton);
        if (place) {
            right.push_back(moved);
        } else {
            std::erase(right, moved);
        }
        left.clear();
        std::ranges::copy_if(Expected.Downs, std::back_inserter(left),
                             [&](const std::string& name) { return std::ranges::count(right, name) == 0; });
        ASSERT_EQ(window.At(CurrentOrderList).Rows, left);
        ASSERT_EQ(window.At(NewOrderList).Rows, right);
    }
    NewOrder.reset();
    if (Chance(80)) {
        NewOrder = right;
        NewOrder->insert(NewOrder->end(), left.begin(), left.end());
    }
    window.Click(NewOrder ? 1 : 2);
}

// Commands

void RandomWalk::Pick(int list, int& selected, const Rows& rows) {
    if (rows.empty()) {
        return;
    }
    selected = Below(static_cast<int>(rows.size()));
    Startup().ClickRow(list, selected);
    Document->RunMessages();
    if (list == DrillDownListControl) {
        Expected.Current = rows[static_cast<std::size_t>(selected)];
    }
}

void RandomWalk::Categorize() {
    const int radio = DistinctValuesRadio + Below(6);
    if (!At(radio).Enabled) {
        return;
    }
    Click(radio);
    constexpr double values[] = {2, 3, 7, 20, 0.5, 0, 15};
    for (const int field : {ExactCountField, NeatCountField, StepSizeField, StepStartField}) {
        if (At(field).Enabled && Chance(60)) {
            Startup().TypeNumber(field, values[Below(7)]);
        }
    }
    if (At(StartAtMinimumBox).Enabled && Chance(40)) {
        Click(StartAtMinimumBox);
    }
}

/// What the boundaries dialog has done, if it could open.
void RandomWalk::Boundaries(bool pressed) {
    if (pressed && Expected.SelectedDown >= 0 && BoundariesGiven) {
        Expected.Bounded.insert(Expected.Current);
    }
}

void RandomWalk::Down() {
    if (!At(DownButton).Enabled) {
        return;
    }
    const bool needsBoundaries = At(UserIntervalsRadio).Checked && !Expected.Bounded.contains(Expected.Current);
    Category.reset();
    BoundariesGiven = false;
    Click(DownButton);
    if (needsBoundaries) {
        EXPECT_FALSE(Category.has_value());
        Boundaries(true);
    } else if (Category && Expected.HasCurrent()) {
        Expected.Down(*Category);
        Expected.Update();
    } else {
        EXPECT_FALSE(Category.has_value());
    }
}

void RandomWalk::Up() {
    if (!At(UpButton).Enabled) {
        return;
    }
    Click(UpButton);
    if (Expected.SelectedUp >= 0) {
        Expected.Up();
        Expected.Update();
    }
}

void RandomWalk::Order() {
    if (!At(OrderButton).Enabled) {
        return;
    }
    Click(OrderButton);
    if (NewOrder) {
        Expected.Downs = *NewOrder;
        Expected.Unselect();
    }
}

void RandomWalk::Drag() {
    const bool downs = Chance(50);
    Rows& rows = downs ? Expected.Downs : Expected.Ups;
    if (!rows.empty()) {
        const int target = Below(static_cast<int>(rows.size()) + 1);
        Startup().Drag(downs ? DrillDownListControl : DrillUpListControl, target);
        Model::Drag(rows, downs ? Expected.SelectedDown : Expected.SelectedUp, target);
    }
}

void RandomWalk::Show(int button) {
    if (!At(button).Enabled) {
        return;
    }
    Click(button);
    for (int sequence = 1; Expected.StandAlone && sequence <= Expected.OutputsOf(button); ++sequence) {
        Expected.Documents.try_emplace({button, sequence}, nullptr);
    }
}

void RandomWalk::OpenData() {
    if (!At(OpenDataButton).Enabled) {
        return;
    }
    Opened = false;
    Click(OpenDataButton);
    if (Opened) {
        const auto documents = Expected.Documents;
        Expected = Model();
        Expected.Documents = documents;
    }
}

void RandomWalk::ChooseVariables() {
    const bool drills = Expected.Downs.empty() || Chance(60);
    Click(drills ? DrillVariablesButton : ReviewVariablesButton);
    if (drills) {
        Expected.Downs = {"a", "b", "c", "x", "y"};
        Expected.Ups.clear();
        Expected.Bounded.clear();
        Expected.Unselect();
        Expected.Reviews = false;
    } else {
        Expected.Reviews = true;
    }
}

void RandomWalk::CloseDocument() {
    if (!Expected.Documents.empty()) {
        const auto entry = std::next(Expected.Documents.begin(), Below(static_cast<int>(Expected.Documents.size())));
        for (ResultDocument* document : Document->Documents().InWindows()) {
            if (document == entry->second) {
                document->Close();
                break;
            }
        }
        Document->RunMessages();
        Expected.Documents.erase(entry);
    }
}

void RandomWalk::Step() {
    struct Command {
        const char* Name;
        int Share;
        void (*Run)(RandomWalk&);
    };
    // clang-format off
    static constexpr Command commands[] = {
        // Name       Share Run
        {"pick",        16, [](RandomWalk& walk) { walk.Pick(DrillDownListControl, walk.Expected.SelectedDown, walk.Expected.Downs); }},
        {"pick up",      8, [](RandomWalk& walk) { walk.Pick(DrillUpListControl, walk.Expected.SelectedUp, walk.Expected.Ups); }},
        {"categorize",  14, [](RandomWalk& walk) { walk.Categorize(); }},
        {"down",        18, [](RandomWalk& walk) { walk.Down(); }},
        {"up",          10, [](RandomWalk& walk) { walk.Up(); }},
        {"order",        5, [](RandomWalk& walk) { walk.Order(); }},
        {"drag",         8, [](RandomWalk& walk) { walk.Drag(); }},
        {"update",       2, [](RandomWalk& walk) { walk.Click(AutoUpdateBox); walk.Expected.StandAlone = !walk.Expected.StandAlone; }},
        {"boxes",        3, [](RandomWalk& walk) {
            for (const int box : {CasewiseBox, CountMissingBox, ReviewCasewiseBox, MeanSEAndSDBox}) {
                if (walk.At(box).Enabled && walk.Chance(40)) {
                    walk.Click(box);
                }
            }
        }},
        {"boundaries",   3, [](RandomWalk& walk) {
            if (walk.At(BoundariesButton).Enabled) {
                walk.BoundariesGiven = false;
                walk.Click(BoundariesButton);
                walk.Boundaries(true);
            }
        }},
        {"summary",      3, [](RandomWalk& walk) { walk.Show(SummaryButton); }},
        {"frequencies",  3, [](RandomWalk& walk) { walk.Show(FrequenciesButton); }},
        {"reviews",      2, [](RandomWalk& walk) { walk.Show(ReviewFrequenciesButton); }},
        {"open",         1, [](RandomWalk& walk) { walk.OpenData(); }},
        {"choose",       1, [](RandomWalk& walk) { walk.ChooseVariables(); }},
        {"close",        3, [](RandomWalk& walk) { walk.CloseDocument(); }},
    };
    // clang-format on
    static constexpr int all = 100;
    int drawn = Below(all);
    const auto* command = std::begin(commands);
    while (drawn >= command->Share) {
        drawn -= command++->Share;
    }
    Log.emplace_back(command->Name);
    command->Run(*this);
}

// What must be so afterwards

void RandomWalk::Compare() {
    EXPECT_EQ(At(DrillDownListControl).Rows, Expected.Downs);
    EXPECT_EQ(At(DrillUpListControl).Rows, Expected.Ups);
    EXPECT_EQ(At(DrillDownListControl).Selected, Expected.SelectedDown);
    EXPECT_EQ(At(DrillUpListControl).Selected, Expected.SelectedUp);
    EXPECT_EQ(At(DownButton).Enabled, !Expected.Downs.empty());
    EXPECT_EQ(At(UpButton).Enabled, !Expected.Ups.empty());
    EXPECT_EQ(At(OpenDataButton).Enabled, Expected.Ups.empty());
    EXPECT_EQ(At(AutoUpdateBox).Checked, Expected.StandAlone);
    const auto& analysis = static_cast<CDrillDown&>(Document->Analysis());
    EXPECT_EQ(analysis.GetCurrentVariableName(), Expected.HasCurrent() ? Expected.Current : "");
    CompareDocuments();
}

/// Every document stands for its key for as long as the model has it.
void RandomWalk::CompareDocuments() {
    std::map<DocumentKey, const ResultDocument*> shown;
    for (const ResultDocument* document : Document->Documents().InWindows()) {
        const auto [entry, isNew] =
            shown.try_emplace({document->Origin().Command, document->Origin().Sequence}, document);
        EXPECT_TRUE(isNew) << "doubled: " << entry->first.first << "." << entry->first.second;
    }
    for (auto& [key, document] : Expected.Documents) {
        if (document == nullptr && shown.contains(key)) {
            document = shown[key];
        }
    }
    EXPECT_EQ(shown, Expected.Documents);
}

TEST_P(RandomWalk, StaysWithThePlainModel) {
    constexpr int steps = 2500;
    ChooseVariables();
    for (int step = 0; step < steps && !HasFailure(); ++step) {
        if (Expected.Downs.empty() && Expected.Ups.empty()) {
            ChooseVariables();
        }
        Step();
        Compare();
    }
    if (HasFailure()) {
        std::string last;
        for (auto name = Log.size() > 12 ? Log.end() - 12 : Log.begin(); name != Log.end(); ++name) {
            last += *name + "; ";
        }
        FAIL() << "after " << Log.size() << " commands, the last: " << last;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomWalk, testing::Range(1U, 6U));

}  // namespace
