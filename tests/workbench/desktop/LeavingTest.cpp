// The startup dialog is left: what goes, what stays, and what is remembered.

#include <gtest/gtest.h>

#include <QDockWidget>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QTemporaryDir>
#include <QTest>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/window/StartPage.h"
#include "workbench/desktop/window/Workspace.h"
#include "workbench/windows/Control.h"

namespace quillara {
namespace {

TEST(Leaving, ByItsButtonLeavesTheResultsThatDoNotStandAlone) {
    ShownSurvey survey;
    const auto windows = [&] { return survey.Main.Results().subWindowList().size(); };
    Click(survey.Dialog(), FrequenciesButton);
    Click(survey.Dialog(), AutoUpdateBox);
    Click(survey.Dialog(), HistogramsButton);
    EXPECT_EQ(windows(), 10);
    Click(survey.Dialog(), CancelCommand);
    EXPECT_EQ(windows(), 5);  // the tables
    EXPECT_FALSE(survey.Main.findChild<QDockWidget*>(QStringLiteral("startupDialog"))->isVisible());
    EXPECT_EQ(survey.Main.findChild<QListWidget*>(QStringLiteral("history"))->count(), 0);
    survey.Main.Results().CloseAll();
    QCoreApplication::processEvents();
    EXPECT_EQ(survey.Main.Model().Present(), nullptr);
    EXPECT_TRUE(survey.Main.findChild<StartPage*>()->isVisible());
    EXPECT_TRUE(survey.Said.empty());
}

TEST(Leaving, AutoUpdateIsRememberedHoweverTheDialogIsLeft) {
    const QTemporaryDir folder;
    SettingsStore settings(folder.filePath(QStringLiteral("settings.json")).toStdString());
    const QString file = QString::fromStdString(testing_locations::Sample("survey.sav"));
    bool isOn = false;
    const auto open = [&](MainWindow& window) {
        window.Model().SetAnswers({});
        window.show();
        ASSERT_TRUE(window.Open(file));
        EXPECT_EQ(window.Model().Present()->At(AutoUpdateBox).Checked, isOn);
        EXPECT_TRUE(window.Results().subWindowList().isEmpty());
        Click(*window.Dialog(), AutoUpdateBox);
        isOn = !isOn;
        window.Model().Do([](Exploration& exploration) {
            exploration.ChooseDrillVariables({{1}, {}});
            exploration.Press(HistogramsButton);
        });
    };
    for (int way = 0; way < 2; ++way) {
        MainWindow window(&settings);
        open(window);
        open(window);  // another file in its place
        open(window);
        way == 0 ? window.close() : window.Model().End();
    }
    MainWindow last(&settings);
    open(last);
}

}  // namespace
}  // namespace quillara
