// Result windows as tabs.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QMdiSubWindow>
#include <QTabBar>
#include <QTest>
#include <algorithm>

#include "resources/ControlIds.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/window/Workspace.h"

namespace quillara {
namespace {

/// The windows in the order in which they were in front, which the toolkit keeps as places among all of them.
void ExpectAllHaveBeenInFront(const Workspace& area) {
    QList<QMdiSubWindow*> made = area.subWindowList();
    QList<QMdiSubWindow*> used = area.subWindowList(QMdiArea::ActivationHistoryOrder);
    std::ranges::sort(made);
    std::ranges::sort(used);
    EXPECT_EQ(made, used);
}

TEST(WorkspaceTabs, AreClosedByAButtonThatHasTheFocus) {
    ShownSurvey survey;
    survey.Main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&survey.Main));
    Workspace& area = survey.Main.Results();
    area.SetTabbed(true);
    Click(survey.Dialog(), FrequenciesButton);  // behind the button of each tab the focus goes on into the next window
    auto* tabs = area.findChild<QTabBar*>();
    ASSERT_NE(tabs, nullptr);
    ASSERT_EQ(tabs->count(), 5);
    while (tabs->count() > 1) {
        QWidget* cross = tabs->tabButton(0, QTabBar::RightSide);
        cross->setFocus();
        QTest::mouseClick(cross, Qt::LeftButton);
        ExpectAllHaveBeenInFront(area);
        EXPECT_EQ(area.activeSubWindow(), area.subWindowList().back());
        EXPECT_TRUE(tabs->hasFocus());
    }
    Click(survey.Dialog(), HistogramsButton);
    ExpectAllHaveBeenInFront(area);
    EXPECT_EQ(tabs->count(), area.subWindowList().size());
}

}  // namespace
}  // namespace quillara
