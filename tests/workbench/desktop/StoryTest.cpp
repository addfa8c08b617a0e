// A person explores a table in the main window, by mouse and keyboard.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QListWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "workbench/desktop/dialogs/DialogView.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/desktop/window/Workspace.h"
#include "workbench/dialogs/VariableListsDialog.h"

namespace quillara {
namespace {

/// Works in the modal window that the action opens, as soon as it is open.
void Answer(const std::function<void(DialogView&)>& work) {
    QTimer::singleShot(0, [work] {
        auto* view = QApplication::activeModalWidget()->findChild<DialogView*>();
        ASSERT_NE(view, nullptr);
        work(*view);
    });
}

void Click(DialogView& view, int id) {
    auto* button = qobject_cast<QAbstractButton*>(view.Find(id));
    ASSERT_NE(button, nullptr);
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
}

TEST(Desktop, AStepIsTakenWithTheMouse) {
    MainWindow window(nullptr);
    window.show();
    ASSERT_TRUE(window.Open(QString::fromStdString(testing_locations::Sample("survey.sav"))));
    DialogView& dialog = *window.Dialog();
    const auto choose = [&](DialogView& lists) {
        auto* available = qobject_cast<QTreeWidget*>(lists.Find(VariableListsDialog::AvailableList));
        available->setCurrentItem(available->topLevelItem(0));
        Click(lists, VariableListsDialog::AddToFirst);  // the first variable into the first list
        Click(lists, OkCommand);
    };
    Answer(choose);
    Click(dialog, DrillVariablesButton);
    auto* downs = qobject_cast<QListWidget*>(dialog.Find(DrillDownListControl));
    ASSERT_EQ(downs->count(), 1);
    Click(dialog, HistogramsButton);
    EXPECT_EQ(window.Results().subWindowList().size(), 1);
    Answer([](DialogView& categories) { Click(categories, OkCommand); });
    Click(dialog, DownButton);
    EXPECT_EQ(window.Model().Present()->Steps().size(), 1U);
    if (qEnvironmentVariableIsSet("QUILLARA_SCREENSHOTS")) {
        window.grab().save(qEnvironmentVariable("QUILLARA_SCREENSHOTS") + QStringLiteral("/step.png"));
    }
}

}  // namespace
}  // namespace quillara
