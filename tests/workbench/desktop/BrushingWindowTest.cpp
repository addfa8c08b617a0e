// Brushing in the main window: what else the user does there, where the graph stands, and which keys reach its bars.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "resources/ControlIds.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/brushing/BrushingBar.h"
#include "workbench/desktop/data/CaseGridModel.h"
#include "workbench/desktop/data/CaseGridView.h"
#include "workbench/desktop/dialogs/ElidedLabel.h"
#include "workbench/desktop/results/DrillMenu.h"
#include "workbench/desktop/scripts/ScriptPanels.h"
#include "workbench/desktop/scripts/ScriptView.h"
#include "workbench/desktop/window/StepBar.h"
#include "workbench/desktop/window/Workspace.h"
#include "workbench/exploration/DrillOffers.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

struct BrushingWindow : testing::Test {
    BrushingWindow() {
        Area().resize(1000, 700);
        Survey.Main.Model().SetAnswers({[](Window&) { return false; },
                                        [this](BrushingRun& run) { return Area().PickBar(run); },
                                        [this](const QString& text) { Survey.Said.push_back(text.toStdString()); }});
    }
    [[nodiscard]] Workspace& Area() { return Survey.Main.Results(); }
    [[nodiscard]] ExplorationModel& Model() { return Survey.Main.Model(); }
    [[nodiscard]] QAction& Command(MainWindow::MenuName menu, const QString& text) {
        for (QAction* action : Survey.Main.Menu(menu).actions()) {
            if (action->text().contains(text)) {
                return *action;
            }
        }
        throw std::runtime_error(text.toStdString());
    }
    /// Begins to brush, does something while bars are picked, and waits until that has been done too.
    void Brush(const std::function<void()>& work) {
        QTimer::singleShot(0, [&] {
            EXPECT_TRUE(Model().IsPicking());
            work();
        });
        Click(Survey.Dialog(), BrushButton);
        QCoreApplication::processEvents();
    }

    ShownSurvey Survey;
};

TEST_F(BrushingWindow, AnyOtherCommandEndsItAndIsDone) {
    using enum MainWindow::MenuName;
    const auto documents = [&] { return Model().Present()->Documents().size(); };
    Brush([&] { Command(Results, QStringLiteral("Review: f&requency")).trigger(); });
    EXPECT_EQ(documents(), 1U + 3U);  // the graph, and tables of three variables
    EXPECT_FALSE(Model().IsBusy());
    Model().Do([](Exploration& exploration) { exploration.Down("sex", "Female"); });
    Brush([&] { Command(Edit, QStringLiteral("Undo")).trigger(); });
    EXPECT_TRUE(Model().Present()->Steps().empty());
    Model().Do([](Exploration& exploration) { exploration.Down("sex", "Male"); });
    Brush([&] { emit Survey.Main.Path().undone(QStringLiteral("sex")); });
    EXPECT_TRUE(Model().Present()->Steps().empty());
    EXPECT_THAT(Survey.Said, testing::IsEmpty());
    Brush([&] { EXPECT_FALSE(Survey.Main.close()); });
    EXPECT_FALSE(Survey.Main.isVisible());
}

TEST_F(BrushingWindow, DrillUpUndoesTheStepThatTheAnalysisGoesBy) {
    const auto key = [&](Qt::Key pressed) { QTest::keyClick(QApplication::focusWidget(), pressed); };
    const auto tip = [&] { return Area().findChild<BrushingBar*>()->Button(1)->toolTip().toStdString(); };
    const auto steps = [&] {
        std::vector<std::string> variables;
        for (const StepTaken& step : Model().Present()->Steps()) {
            variables.push_back(step.Variable);
        }
        return variables;
    };
    Model().Do([](Exploration& exploration) { exploration.Down("sex", "Female"); });
    Brush([&] {
        QTimer::singleShot(0, [&] {
            EXPECT_EQ(tip(), "Undoes the step sex = Female (U)");
            EXPECT_EQ(steps().size(), 2U);
            QTimer::singleShot(0, [&] { key(Qt::Key_Escape); });
            key(Qt::Key_U);
        });
        key(Qt::Key_Return);
    });
    ASSERT_EQ(steps().size(), 1U);
    EXPECT_NE(steps().front(), "sex");
}

TEST_F(BrushingWindow, MenusOfPlacesScriptsAndCasesGoOnMeanwhile) {
    auto& scripts = Survey.Main.findChild<ScriptPanels*>()->Script();
    auto& grid = *Survey.Main.findChild<CaseGridView*>();
    Model().Do([](Exploration& exploration) { exploration.Down("sex", "Female"); });
    scripts.Record();
    Brush([&] {
        grid.show();
        for (QWidget* around = &grid; around != &Survey.Main; around = around->parentWidget()) {
            around->show();
        }
        EXPECT_TRUE(grid.Model().HasMarks());
        QTimer::singleShot(0, [&] { scripts.StopRecording(); });
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    });
    EXPECT_FALSE(scripts.IsRecording());
    EXPECT_TRUE(scripts.Text().contains(QStringLiteral("drill.window.click(%1)").arg(BrushButton)));
    Brush([&] {
        QMenu menu;
        AddDrillOffers(menu, Model(), OffersAtRow(*Model().Present(), DrillUpListControl, 0));
        ASSERT_TRUE(menu.actions().front()->isEnabled());
        menu.actions().front()->trigger();
    });
    EXPECT_EQ(Model().Present()->Steps().size(), 1U);
    EXPECT_THAT(Survey.Said, testing::IsEmpty());
}

TEST_F(BrushingWindow, TheGraphStandsInFrontOfTilesAndHasTheKeysOfTheWindow) {
    Click(Survey.Dialog(), AutoUpdateBox);
    Click(Survey.Dialog(), HistogramsButton);
    Area().Tile();
    const QRect tile = Area().subWindowList().front()->geometry();
    Brush([&] {
        const QMdiSubWindow* graph = Area().activeSubWindow();
        EXPECT_GT(graph->width(), 1.3 * tile.width());
        EXPECT_EQ(Area().subWindowList().front()->width(), tile.width());
        Picture(Survey.Main, QStringLiteral("brushed-tiles"));
        Area().setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        const auto* told = Area().findChild<BrushingBar*>()->findChild<ElidedLabel*>();
        EXPECT_THAT(told->text().toStdString(), testing::StartsWith("CATEGORY: Western Coast"));
        QTimer::singleShot(0, [&] { QTest::keyClick(&Area(), Qt::Key_Escape); });  // of the next bars
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    });
    ASSERT_EQ(Model().Present()->Steps().size(), 1U);
    EXPECT_EQ(Model().Present()->Steps().front().Category, "Western Coast");
    EXPECT_TRUE(Area().IsTiled());
    EXPECT_FALSE(Model().IsBusy());
}

TEST_F(BrushingWindow, AButtonPressedAgainBringsItsWindowsBack) {
    Click(Survey.Dialog(), AutoUpdateBox);
    Click(Survey.Dialog(), FrequenciesButton);
    Click(Survey.Dialog(), HistogramsButton);
    const QList<QMdiSubWindow*> windows = Area().subWindowList();
    windows[0]->showMinimized();
    Click(Survey.Dialog(), FrequenciesButton);
    EXPECT_FALSE(windows[0]->isMinimized());
    EXPECT_EQ(Area().activeSubWindow(), windows[4]);  // the last table
}

}  // namespace
}  // namespace quillara
