// A person who does anything at random, with real widgets; an exploration without a screen in which the same is done
// again, call by call, stays in the same state, and so does what the widgets show.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QDockWidget>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QTableView>
#include <QTest>
#include <cstdlib>
#include <memory>

#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "tests/workbench/desktop/UserWalk.h"
#include "workbench/desktop/data/DataPanels.h"
#include "workbench/desktop/dialogs/ModalView.h"
#include "workbench/desktop/results/ChartResultView.h"
#include "workbench/desktop/results/TableResultView.h"
#include "workbench/desktop/window/Preferences.h"
#include "workbench/desktop/window/StepBar.h"
#include "workbench/desktop/window/Workspace.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/exploration/ExploredOutputs.h"
#include "workbench/views/DocumentViews.h"
#include "workbench/views/ShownTable.h"

namespace quillara {
namespace {

unsigned NumberIn(const char* variable, unsigned otherwise) {
    const char* number = std::getenv(variable);
    return number == nullptr ? otherwise : static_cast<unsigned>(std::strtoull(number, nullptr, 10));
}

/// Hears nothing and answers nothing.
class NoListener : public ExplorationListener {
  public:
    bool WorkIn(Window&) override { return false; }
    bool Pick(BrushingRun&) override { return false; }
    void ShowMessage(std::string_view) override {}
    void DocumentAppeared(ResultDocument&) override {}
    void DocumentChanged(ResultDocument&) override {}
    void DocumentCameToFront(ResultDocument&) override {}
    void DocumentWent(ResultDocument&) override {}
    void TableMade(std::shared_ptr<const DataTable>) override {}
    void RemarkMade(const Remark&) override {}
    void Changed() override {}
    void WorkBegan(std::string_view, std::int32_t) override {}
    void WorkAdvanced(std::int32_t) override {}
    void WorkEnded() override {}
};

/// An exploration without a screen that does again what is done in another one from its beginning on.
class Twin {
  public:
    explicit Twin(Exploration& other) : Other(other), Own(other.SharedTable(), {}, Silent, nullptr) {}

    Exploration& Follow() {
        const std::vector<JournalEntry>& entries = Other.Recording().Entries();
        Own.Replay({entries.begin() + static_cast<std::ptrdiff_t>(Done), entries.end()});
        Done = entries.size();
        return Own;
    }

  private:
    Exploration& Other;
    NoListener Silent;
    Exploration Own;
    std::size_t Done = 0;
};

/// All that an exploration is, as a text.
std::string StateText(Exploration& exploration) {
    std::string text;
    if (!exploration.HasEnded()) {
        text += StateOf(exploration.Startup());
        for (const StepTaken& step : exploration.Steps()) {
            text += step.Condition() + "\n";
        }
        const auto left = exploration.Remaining();
        text += left ? std::to_string(left->Cases) + " cases" : "not counted";
        text += left && left->Weight ? " " + std::to_string(*left->Weight) : "";
        text += " " + exploration.WeightName().value_or("no weight") + "\n";
    }
    return text + JsonView(OutputsOf(exploration, exploration.Documents()));
}

/// From where on two texts differ, some of both.
std::string Difference(const std::string& one, const std::string& other) {
    if (one == other) {
        return "";
    }
    const auto place =
        static_cast<std::size_t>(std::mismatch(one.begin(), one.end(), other.begin(), other.end()).first - one.begin());
    const std::size_t begin = place < 120 ? 0 : place - 120;
    return "shown:\n" + one.substr(begin, 400) + "\nwithout a screen:\n" + other.substr(begin, 400);
}

/// What a table's view shows otherwise than its document.
std::string FaultsOfTable(TableResultView& view) {
    const ShownTable words = ShowTable(*view.Shown().Spreadsheet());
    const QAbstractItemModel& model = *view.Cells().model();
    if (model.rowCount() != static_cast<int>(words.Rows.size()) ||
        model.columnCount() != static_cast<int>(words.Columns.size())) {
        return view.Shown().Name() + ": another table\n";
    }
    std::string faults;
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column) {
            const auto& cells = words.Rows[static_cast<std::size_t>(row)].Cells;
            if (model.index(row, column).data().toString().toStdString() !=
                cells[static_cast<std::size_t>(column)].Text) {
                faults += view.Shown().Name() + ": another cell\n";
            }
        }
    }
    return faults;
}

std::string FaultsOfResults(MainWindow& window) {
    Exploration& exploration = *window.Model().Present();
    std::string faults;
    std::size_t views = 0;
    for (const QMdiSubWindow* frame : window.Results().subWindowList()) {
        views += qobject_cast<DocumentView*>(frame->widget()) == nullptr ? 0 : 1;
    }
    if (views != exploration.Documents().size()) {
        faults += std::to_string(views) + " windows\n";
    }
    for (const auto& document : exploration.Documents()) {
        DocumentView* view = window.Results().Find(*document);
        if (view == nullptr) {
            faults += document->Name() + " has no window\n";
        } else if (auto* table = qobject_cast<TableResultView*>(view)) {
            faults += FaultsOfTable(*table);
        }
    }
    return faults;
}

bool Shows(QWidget& widget, const Control& control) {
    if (auto* list = qobject_cast<QListWidget*>(&widget)) {
        QStringList rows;
        for (int row = 0; row < list->count(); ++row) {
            rows.append(list->item(row)->text());
        }
        QStringList own;
        for (const std::string& row : control.Rows) {
            own.append(QString::fromStdString(row));
        }
        return rows == own && list->currentRow() == control.Selected;
    }
    auto* button = qobject_cast<QAbstractButton*>(&widget);
    return button == nullptr || !control.IsCheck() || button->isChecked() == control.Checked;
}

/// What the window shows otherwise than its exploration is.
std::string FaultsOf(MainWindow& window) {
    Exploration& exploration = *window.Model().Present();
    std::string faults = FaultsOfResults(window);
    if (exploration.HasEnded()) {
        return faults;
    }
    for (const PlacedWidget& placed : window.Dialog()->All()) {
        const Control* control = exploration.Startup().Find(placed.Control->Id);
        if (control != nullptr &&
            (placed.Widget->isEnabledTo(window.Dialog()) != control->Enabled || !Shows(*placed.Widget, *control))) {
            faults += "control " + std::to_string(control->Id) + "\n";
        }
    }
    if (window.Path().Crumb(exploration.Steps().size()) == nullptr ||
        window.Path().Crumb(exploration.Steps().size() + 1) != nullptr) {
        faults += "path of steps\n";
    }
    const ExplorationHistory& past = window.Model().History();
    if (window.findChild<QAction*>(QStringLiteral("undo"))->isEnabled() != past.CanUndo() ||
        window.findChild<QAction*>(QStringLiteral("redo"))->isEnabled() != past.CanRedo()) {
        faults += "undo or redo\n";
    }
    return faults;
}

class UserWalkTest : public testing::Test {
  protected:
    UserWalkTest() {
        Main.Model().SetAnswers(
            {[this](Window& window) { return WorkInModal(window, &Main); },
             [this](BrushingRun& run) { return Main.Results().PickBar(run); },
             [this](const QString& text) { QMessageBox::information(FrontWindow(&Main), {}, text); }});
        auto answers = MadeTableWindow::AnswersOfUser();
        answers.OpenAnew = [](const QString&) {};
        Main.findChild<DataPanels*>()->SetAnswers(std::move(answers));
        QObject::connect(&Main.Model(), &ExplorationModel::replaced, &Main, [this] {
            Exploration* present = Main.Model().Present();
            Second = present == nullptr ? nullptr : std::make_unique<Twin>(*present);
        });
        Preferences::Shared().SetMotion(false);
        Main.resize(1000, 720);
        Main.show();
        Main.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Main));
    }

    ~UserWalkTest() override { Preferences::Shared().SetMotion(true); }

    /// There is something to explore, the dialog at its side, and not too much on the screen.
    void Prepare() {
        if (!Main.isVisible()) {
            Main.show();
        }
        Exploration* present = Main.Model().Present();
        if (present == nullptr || present->HasEnded() || present->Table().Variables.size() < 9) {
            ASSERT_TRUE(Main.Model().End());
            ASSERT_TRUE(Main.Open(QString::fromStdString(testing_locations::Sample("survey.sav"))));
        }
        for (MadeTableWindow* table : Main.findChild<DataPanels*>()->MadeTables()) {
            delete table;
        }
        Exploration& now = *Main.Model().Present();
        if (now.Documents().size() > 8) {
            Main.Results().CloseAll();
        }
        Main.findChild<QDockWidget*>(QStringLiteral("startupDialog"))->show();
        if (now.At(DrillDownListControl).Rows.empty() && now.Steps().empty() && now.Table().FileName == "survey.sav") {
            now.Press(DrillVariablesButton, [](Window& window) { ChooseVariables(window, {1, 3, 13}, {4, 8, 9}); });
            now.Press(ReviewVariablesButton, [](Window& window) { ChooseVariables(window, {1, 6}, {8, 9}); });
        }
    }

    std::unique_ptr<Twin> Second;  // goes with what it follows
    MainWindow Main{nullptr};
};

TEST_F(UserWalkTest, StaysTheSameWithoutAScreen) {
    constexpr int burst = 20;
    const unsigned seed = NumberIn("QUILLARA_WALK_SEED", 1);
    UserWalk walk(Main, seed);
    int bursts = 0;
    for (int events = static_cast<int>(NumberIn("QUILLARA_WALK_EVENTS", 1500)); events > 0 && !HasFailure();
         events -= burst) {
        Prepare();
        walk.Do(burst, ++bursts % 4 == 0 ? UserWalk::Liking::Windows : UserWalk::Liking::Anything);
        if (Exploration* shown = Main.Model().Present()) {
            // What is closed behind the end of an exploration isn't done again.
            const bool hasEnded = shown->HasEnded();
            const std::string difference = hasEnded ? "" : Difference(StateText(*shown), StateText(Second->Follow()));
            const std::string faults = FaultsOf(Main);
            EXPECT_TRUE(difference.empty() && faults.empty()) << "seed " << seed << "\n"
                                                              << walk.LastDone() << difference << "\n"
                                                              << faults;
        }
    }
}

}  // namespace
}  // namespace quillara
