// The dialogs of the host by hand: what a person does in them goes through the controls of their windows.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCompleter>
#include <QFile>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/dialogs/CaseSelectionView.h"
#include "workbench/desktop/dialogs/ReportList.h"
#include "workbench/desktop/dialogs/RowSearch.h"
#include "workbench/desktop/dialogs/SmallHostViews.h"
#include "workbench/desktop/dialogs/VariableListsView.h"
#include "workbench/desktop/window/RecentFiles.h"
#include "workbench/desktop/window/RemarkBar.h"
#include "workbench/dialogs/CaseSelectionDialog.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/dialogs/WeightDialog.h"

namespace quillara {
namespace {

using testing::ElementsAre;
using testing::StartsWith;
using Lists = VariableListsDialog;

std::string NamesIn(DialogView& view, int id) {
    auto* list = qobject_cast<ReportList*>(view.Find(id));
    std::string names;
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        names += list->isRowHidden(row, {}) ? "" : list->topLevelItem(row)->text(0).toStdString() + " ";
    }
    return names;
}

void Drag(ReportList& from, int row, const ReportList& to) {
    const QPoint begin = from.visualItemRect(from.topLevelItem(row)).center();
    const QPoint end = from.viewport()->mapFromGlobal(to.viewport()->mapToGlobal(to.viewport()->rect().center()));
    QTest::mousePress(from.viewport(), Qt::LeftButton, {}, begin);
    for (const QPoint& way : {begin + QPoint(30, 0), begin + QPoint(60, 0), end}) {
        QMouseEvent move(QEvent::MouseMove, way, from.viewport()->mapToGlobal(way), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(from.viewport(), &move);
    }
    QTest::mouseRelease(from.viewport(), Qt::LeftButton, {}, end);
}

TEST(HostDialogViews, VariablesAreFoundChosenInNumbersAndMoved) {
    ShownSurvey survey;
    survey.InModal(DrillVariablesButton, [&](DialogView& view) {
        auto& offered = *qobject_cast<ReportList*>(view.Find(Lists::AvailableList));
        auto& first = *qobject_cast<ReportList*>(view.Find(Lists::FirstList));
        auto& second = *qobject_cast<ReportList*>(view.Find(Lists::SecondList));
        auto& search = dynamic_cast<VariableListsView&>(view).Search();
        EXPECT_EQ(NamesIn(view, Lists::FirstList), "region sex genre ");
        QTest::keyClick(&second, Qt::Key_A, Qt::ControlModifier);  // none is current
        EXPECT_TRUE(view.Find(Lists::TakeFromSecond)->isEnabled());
        second.clearSelection();
        QTest::keyClicks(&search, QStringLiteral("household"));
        EXPECT_EQ(NamesIn(view, Lists::AvailableList), "household_size income ");
        Picture(*view.window(), QStringLiteral("variables-searched"));
        QTest::keyClick(&search, Qt::Key_Return);  // the first that is found
        EXPECT_EQ(NamesIn(view, Lists::FirstList), "region sex genre household_size ");
        QTest::keyClick(&search, Qt::Key_Escape);  // everything again, and the dialog stays
        view.activateWindow();
        offered.setFocus();
        view.Find(Lists::AddToFirst)->setFocus();  // as its letter does
        ClickRow(offered, 1);
        static_cast<QAbstractButton*>(view.Find(Lists::AddToFirst))->click();
        EXPECT_EQ(view.focusWidget(), &offered);  // the arrows go on there, though the button is disabled now
        ClickRow(first, 4);
        static_cast<QAbstractButton*>(view.Find(Lists::TakeFromFirst))->click();
        EXPECT_EQ(view.focusWidget(), &first);
        ClickRow(offered, 3);
        ClickRow(offered, 5, Qt::ShiftModifier);
        ClickRow(offered, 4, Qt::ControlModifier);  // taken out of the selection
        EXPECT_THAT(offered.SelectedRows(), ElementsAre(3, 5));
        Click(view, Lists::AddToSecond);
        EXPECT_EQ(NamesIn(view, Lists::SecondList), "age income employment ");
        ClickRow(second, 0);
        ClickRow(second, 1, Qt::ControlModifier);
        QTest::keyClick(&second, Qt::Key_Delete);
        EXPECT_EQ(NamesIn(view, Lists::SecondList), "employment ");
        Drag(offered, 3, second);
        EXPECT_EQ(NamesIn(view, Lists::SecondList), "employment age ");
        Drag(second, 0, first);
        Drag(first, 2, offered);
        EXPECT_EQ(NamesIn(view, Lists::FirstList), "region sex household_size employment ");
        EXPECT_EQ(NamesIn(view, Lists::SecondList), "age ");
        DoubleClickRow(first, 0);
        EXPECT_EQ(NamesIn(view, Lists::FirstList), "sex household_size employment ");
        Click(view, OkCommand);
    });
    EXPECT_THAT(survey.Startup().At(DrillDownListControl).Rows,
                ElementsAre("sex", "household_size", "employment", "age"));
    EXPECT_THAT(survey.Said, testing::IsEmpty());
}

TEST(HostDialogViews, AFormulaIsCompletedCountedAndMarkedWhereItIsWrong) {
    ShownSurvey survey;
    survey.InModal(SelectCasesButton, [&](DialogView& view) {
        auto& cases = dynamic_cast<CaseSelectionView&>(view);
        auto& formula = *qobject_cast<QPlainTextEdit*>(view.Find(CaseSelectionDialog::Formula));
        auto* popup = view.findChild<QCompleter*>()->popup();
        EXPECT_EQ(cases.Told(), "All 2000 cases are analysed");
        Click(view, CaseSelectionDialog::SelectedCases);
        const auto tells = [&](const char* text) {
            return QTest::qWaitFor([&] { return cases.Told().contains(QString::fromUtf8(text)); }, 5000);
        };
        QTest::keyClicks(&formula, QStringLiteral("sett"));
        QCoreApplication::processEvents();
        ASSERT_TRUE(popup->isVisible());
        QTest::keyClick(popup, Qt::Key_Return);
        EXPECT_EQ(formula.toPlainText(), "settlement");
        QTest::keyClicks(&formula, QStringLiteral(" = "));
        QTest::keyClick(&formula, Qt::Key_Space, Qt::ControlModifier);
        ASSERT_TRUE(popup->isVisible());
        Picture(*popup, QStringLiteral("offers"));
        QTest::keyClick(popup, Qt::Key_Return);
        EXPECT_THAT(formula.toPlainText().toStdString(), StartsWith("settlement = \""));
        EXPECT_TRUE(tells("of 2000 cases are selected"));
        formula.setPlainText(QStringLiteral("sex = \"Female\" and agee > 3"));
        EXPECT_TRUE(tells("agee"));
        ASSERT_EQ(formula.extraSelections().size(), 1);
        EXPECT_EQ(formula.extraSelections().front().cursor.selectedText(), "agee");
        Picture(*view.window(), QStringLiteral("formula-fault"));
        formula.setPlainText(QStringLiteral("age > 30"));
        EXPECT_TRUE(tells("are selected"));
        EXPECT_TRUE(formula.extraSelections().isEmpty());
        Picture(*view.window(), QStringLiteral("formula-count"));
        Click(view, OkCommand);
    });
    EXPECT_LT(survey.Main.Model().Present()->Remaining()->Cases, 2000);
}

TEST(HostDialogViews, WeightBoundariesAndDataAreChosen) {
    ShownSurvey survey;
    survey.InModal(WeightButton, [&](DialogView& view) {
        auto* search = view.findChild<RowSearch*>();
        EXPECT_FALSE(search->isEnabled());
        Click(view, WeightDialog::NoWeight);
        QTest::keyClicks(search, QStringLiteral("makes"));
        QTest::keyClick(search, Qt::Key_Return);
        Click(view, OkCommand);
    });
    EXPECT_TRUE(survey.Startup().At(WeightedMomentsBox).Enabled);

    qobject_cast<QListView*>(survey.Dialog().Find(DrillDownListControl))
        ->setCurrentIndex(qobject_cast<QListView*>(survey.Dialog().Find(DrillDownListControl))->model()->index(3, 0));
    Click(survey.Dialog(), UserIntervalsRadio);
    survey.InModal(BoundariesButton, [](DialogView& view) {
        QTest::keyClicks(view.Find(BoundariesEdit), QStringLiteral("20 30"));
        EXPECT_EQ(dynamic_cast<BoundariesView&>(view).Ranges(), "x<=20, 20<x<=30, 30<x");
        Picture(*view.window(), QStringLiteral("boundaries"));
    });

    RecentFiles::Add(QStringLiteral("/nowhere/else.csv"));
    survey.InModal(OpenDataButton, [](DialogView& view) {
        auto* recent = view.findChild<QListWidget*>();
        QTest::mouseClick(recent->viewport(), Qt::LeftButton, {}, recent->visualItemRect(recent->item(0)).center());
        EXPECT_EQ(qobject_cast<QLineEdit*>(view.Find(OpenDataDialog::Path))->text(), "/nowhere/else.csv");
        Picture(*view.window(), QStringLiteral("open-recent"));
        qobject_cast<QLineEdit*>(view.Find(OpenDataDialog::Path))->clear();
        const std::string path = testing_locations::Sample("orders.csv");
        QTest::keyClicks(view.Find(OpenDataDialog::Path), QString::fromStdString(path));
        QTest::keyClick(view.Find(OpenDataDialog::Path), Qt::Key_Return);
    });
    EXPECT_EQ(survey.Main.Model().Present()->Table().FileName, "orders.csv");
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("amounts.csv")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("amount\n\"1,234\"\n\"2,345\"\n") > 0);
    file.close();
    const std::size_t remarks = survey.Main.Remarks().All().size();
    survey.InModal(OpenDataButton, [&](DialogView& view) {
        auto* path = qobject_cast<QLineEdit*>(view.Find(OpenDataDialog::Path));
        for (const char* name : {"nowhere.csv", "amounts.csv"}) {  // the dialog stays open for another path
            path->setText(folder.filePath(QString::fromLatin1(name)));
            QTest::keyClick(path, Qt::Key_Return);
        }
    });
    ASSERT_EQ(survey.Said.size(), 1U);
    EXPECT_THAT(survey.Said.front(), testing::HasSubstr("nowhere.csv"));
    EXPECT_EQ(survey.Main.Model().Present()->Table().FileName, "amounts.csv");
    EXPECT_GT(survey.Main.Remarks().All().size(), remarks);  // of how its numbers were read
    EXPECT_TRUE(RecentFiles::All().front().endsWith(QStringLiteral("amounts.csv")));
}

}  // namespace
}  // namespace quillara
