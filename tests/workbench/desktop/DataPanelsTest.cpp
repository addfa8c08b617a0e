// A person looks at the data: the grid of cases and the variables.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "workbench/desktop/data/CaseGridView.h"
#include "workbench/desktop/data/DataPanels.h"
#include "workbench/desktop/data/VariableView.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/formats/DataFile.h"

namespace quillara {
namespace {

class DataPanelsTest : public testing::Test {
  protected:
    DataPanelsTest() {
        Main.resize(1500, 900);
        Main.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Main));
        EXPECT_TRUE(Main.Open(QString::fromStdString(testing_locations::Sample("survey.sav"))));
        Panels->CasePanel().show();
        Panels->VariablePanel().show();
        Panels->CasePanel().raise();
    }
    void DrillOnSex() {
        Exploration& exploration = *Main.Model().Present();
        const auto sex = static_cast<short>(exploration.Table().IndexOf("sex") + 1);
        exploration.Press(DrillVariablesButton, [&](Window& dialog) { ChooseVariables(dialog, {sex}, {}); });
        exploration.Down("sex", "Female");
    }
    [[nodiscard]] QString TextAt(int row, const char* variable, int role = Qt::DisplayRole) {
        const auto column = static_cast<int>(Grid.Model().Table()->IndexOf(variable));
        return Grid.Model().index(row, column).data(role).toString();
    }
    template <class Widget>
    [[nodiscard]] Widget& In(const char* name) {
        return *Grid.findChild<Widget*>(QLatin1String(name));
    }
    void Picture(QWidget& widget, const char* name) {
        if (qEnvironmentVariableIsSet("QUILLARA_SCREENSHOTS")) {
            QApplication::processEvents();
            widget.grab().save(qEnvironmentVariable("QUILLARA_SCREENSHOTS") + QLatin1String(name));
        }
    }
    void Wait(BackgroundWork& work) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return !work.IsRunning(); }));
    }

    MainWindow Main{nullptr};
    DataPanels* Panels = Main.findChild<DataPanels*>();
    CaseGridView& Grid = Panels->Cases();
};

TEST_F(DataPanelsTest, KeysBringAPanelToTheFrontAndPutItAway) {
    QDockWidget& cases = Panels->CasePanel();
    QDockWidget& variables = Panels->VariablePanel();
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(&Main, key, Qt::ControlModifier);
        QApplication::processEvents();
    };
    const auto isInFront = [](const QDockWidget& panel) { return !panel.visibleRegion().isEmpty(); };
    QApplication::processEvents();
    press(Qt::Key_2);  // it stands behind the tab of the other
    EXPECT_TRUE(isInFront(variables));
    EXPECT_TRUE(Panels->Variables().hasFocus());
    press(Qt::Key_1);
    EXPECT_TRUE(isInFront(cases));
    EXPECT_TRUE(Grid.Grid().hasFocus());
    EXPECT_TRUE(Main.findChild<QAction*>(QStringLiteral("casesPanelShown"))->isChecked());
    Main.setFocus();
    press(Qt::Key_1);  // from elsewhere: into it
    EXPECT_TRUE(isInFront(cases));
    EXPECT_TRUE(Grid.Grid().hasFocus());
    press(Qt::Key_1);
    EXPECT_TRUE(cases.isHidden());
    EXPECT_FALSE(variables.isHidden());
    press(Qt::Key_1);
    EXPECT_TRUE(isInFront(cases));
}

TEST_F(DataPanelsTest, TheKeyOfTheDialogGoesIntoItAndItsEntryShowsAndHidesIt) {
    auto& dialog = *Main.findChild<QDockWidget*>(QStringLiteral("startupDialog"));
    const auto isIn = [&dialog] { return dialog.isAncestorOf(QApplication::focusWidget()); };
    const auto press = [this] {
        QTest::keyClick(&Main, Qt::Key_F4);
        QApplication::processEvents();
    };
    Grid.Grid().setFocus();
    QApplication::processEvents();
    ASSERT_FALSE(isIn());
    press();
    EXPECT_TRUE(isIn());
    EXPECT_TRUE(dialog.isVisible());
    press();
    EXPECT_FALSE(dialog.isVisible());
    press();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(isIn());
    Grid.Grid().setFocus();
    QAction* shown = nullptr;
    for (QAction* entry : Main.Menu(MainWindow::MenuName::View).actions()) {
        shown = entry->shortcut() == QKeySequence(Qt::Key_F4) ? entry : shown;
    }
    ASSERT_NE(shown, nullptr);
    for (const bool isShown : {false, true}) {  // by the menu, whatever has the focus
        shown->trigger();
        EXPECT_EQ(dialog.isVisible(), isShown);
        EXPECT_EQ(shown->isChecked(), isShown);
    }
}

TEST_F(DataPanelsTest, CasesAreSortedByAClickAndFollowTheSteps) {
    const int all = Grid.Model().rowCount();
    EXPECT_EQ(all, Main.Model().Present()->Table().Cases);
    QHeaderView& header = *Grid.Grid().horizontalHeader();
    const int sex = static_cast<int>(Grid.Model().Table()->IndexOf("sex"));
    const auto click = [&] {
        const QPoint place(header.sectionViewportPosition(sex) + header.sectionSize(sex) / 2, header.height() / 2);
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, place);
    };
    const QString first = Grid.Model().headerData(0, Qt::Vertical, Qt::DisplayRole).toString();
    click();
    EXPECT_EQ(TextAt(0, "sex").toStdString(), "Female");
    click();
    EXPECT_EQ(TextAt(0, "sex").toStdString(), "Male");
    click();
    EXPECT_EQ(Grid.Model().headerData(0, Qt::Vertical, Qt::DisplayRole).toString(), first);

    DrillOnSex();
    EXPECT_TRUE(Grid.Model().HasMarks());
    Picture(Main, "/cases-marked.png");
    QTest::mouseClick(&In<QCheckBox>("showRemaining"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_EQ(Grid.Model().rowCount(), Main.Model().Present()->Remaining()->Cases);
    EXPECT_EQ(TextAt(Grid.Model().rowCount() - 1, "sex"), "Female");
    Picture(Main, "/cases-filtered.png");
    Main.Model().Present()->Up("sex");
    EXPECT_EQ(Grid.Model().rowCount(), all);
    EXPECT_FALSE(Grid.Model().HasMarks());
    Main.Model().End();
    EXPECT_EQ(Grid.Model().rowCount(), 0);
}

TEST_F(DataPanelsTest, FieldsAreFoundAndCopied) {
    QLineEdit& sought = In<QLineEdit>("findText");
    sought.setFocus();
    QTest::keyClicks(&sought, "female");
    QTest::keyClick(&sought, Qt::Key_Return);
    Wait(*Grid.findChild<BackgroundWork*>());
    ASSERT_TRUE(QTest::qWaitFor([&] { return Grid.Grid().currentIndex().data().toString() == "Female"; }));
    Grid.Grid().setFocus();
    QTest::keyClick(&Grid.Grid(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "sex\nFemale\n");
    QTest::mouseClick(&In<QCheckBox>("showLabels"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_NE(Grid.Grid().currentIndex().data().toString(), "Female");
    Picture(Main, "/cases-codes.png");
}

TEST_F(DataPanelsTest, VariablesHaveTheirDistribution) {
    VariableView& view = Panels->Variables();
    Panels->VariablePanel().raise();
    VariableModel& model = view.Model();
    const int sex = static_cast<int>(Main.Model().Present()->Table().IndexOf("sex"));
    const auto field = [&](VariableModel::ColumnName column, int role) { return model.index(sex, column).data(role); };
    const auto text = [&](VariableModel::ColumnName column) {
        return model.index(sex, column).data().toString().toStdString();
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return !model.Summarizing().IsRunning(); }));
    EXPECT_EQ(text(VariableModel::Name), "sex");
    EXPECT_EQ(text(VariableModel::Values), "F = Female, M = Male");
    EXPECT_EQ(field(VariableModel::Distribution, VariableModel::BarsRole).toList().size(), 2);
    Picture(Main, "/variables.png");
}

TEST_F(DataPanelsTest, EditedLabelsMakeAnotherTable) {
    VariableView& view = Panels->Variables();
    Panels->VariablePanel().raise();
    VariableModel& model = view.Model();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !model.Summarizing().IsRunning(); }));
    const DataTable& table = Main.Model().Present()->Table();
    const int region = static_cast<int>(table.IndexOf("region"));
    const std::string before = table.Variables[table.IndexOf("region")].LongName;
    const auto doubleClick = [&](int column) {
        const QPoint place = view.visualRect(model.index(region, column)).center();
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
    };
    doubleClick(VariableModel::Label);
    auto* field = view.findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    field->selectAll();
    QTest::keyClicks(field, "Where they live");
    QTest::keyClick(field, Qt::Key_Return);
    QTimer::singleShot(0, [] {
        auto* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        dialog->findChild<QTableWidget*>("valueLabels")->item(0, 1)->setText("Far north");
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    doubleClick(VariableModel::Values);
    EXPECT_TRUE(model.HasEdits());
    EXPECT_TRUE(model.index(region, VariableModel::Values).data().toString().startsWith("1 = Far north, 2 ="));
    Picture(Main, "/labels-edited.png");
    QTest::mouseClick(Panels->VariablePanel().findChild<QPushButton*>("keepEdits"), Qt::LeftButton);
    EXPECT_FALSE(model.HasEdits());
    EXPECT_EQ(model.index(region, VariableModel::Label).data().toString().toStdString(), before);
    EXPECT_EQ(table.Variables[table.IndexOf("region")].LongName, before);
    ASSERT_EQ(Panels->MadeTables().size(), 1U);
    const DataTable& made = *Panels->MadeTables().front()->findChild<CaseGridView*>()->Model().Table();
    EXPECT_EQ(made.Variables[made.IndexOf("region")].LongName, "Where they live");
    EXPECT_EQ(*made.Variables[made.IndexOf("region")].LabelOf(1), "Far north");
}

TEST_F(DataPanelsTest, TypesAreChosenWhereNothingIsLost) {
    VariableView& view = Panels->Variables();
    Panels->VariablePanel().raise();
    VariableModel& model = view.Model();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !model.Summarizing().IsRunning(); }));
    QStringList refused;
    QObject::connect(&model, &VariableModel::refused, &model, [&](const QString& why) { refused.append(why); });
    Main.Model().SetAnswers({});
    const DataTable& table = Main.Model().Present()->Table();
    const auto choose = [&](const char* name, ValueKind kind) {
        const QModelIndex field = model.index(static_cast<int>(table.IndexOf(name)), VariableModel::Type);
        view.scrollTo(field);
        view.edit(field);
        auto* types = view.findChild<QComboBox*>("variableType");
        types->setCurrentIndex(types->findData(static_cast<int>(kind)));
        emit types->activated(types->currentIndex());
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return field.data().toString();
    };
    EXPECT_EQ(choose("age", ValueKind::Text), "text");
    EXPECT_EQ(choose("sex", ValueKind::Number), "text");
    EXPECT_TRUE(refused.size() == 1 && refused.front().contains("\"F\" is no number, like 1 other"));
    Picture(Main, "/types-edited.png");
    QTest::mouseClick(Panels->VariablePanel().findChild<QPushButton*>("dropEdits"), Qt::LeftButton);
    EXPECT_FALSE(model.HasEdits());
    choose("age", ValueKind::Text);
    QTest::mouseClick(Panels->VariablePanel().findChild<QPushButton*>("keepEdits"), Qt::LeftButton);
    ASSERT_EQ(Panels->MadeTables().size(), 1U);
    const DataTable& made = *Panels->MadeTables().front()->findChild<CaseGridView*>()->Model().Table();
    EXPECT_EQ(made.Variables[made.IndexOf("age")].Kind, ValueKind::Text);
    EXPECT_EQ(table.Variables[table.IndexOf("age")].Kind, ValueKind::Number);
}

TEST_F(DataPanelsTest, ATableThatIsMadeIsSavedBeforeItIsLost) {
    using Unsaved = MadeTableWindow::Unsaved;
    const QTemporaryDir folder;
    const QString path = folder.filePath("subset");
    QStringList told;
    QStringList opened;
    std::vector<Unsaved> answers{Unsaved::Keep, Unsaved::Save};
    QString chosen = folder.filePath("nowhere/subset.csv");
    Main.Model().SetAnswers({});
    Panels->SetAnswers(
        {{[&](QWidget*, const QString&) { return chosen; }, [&](QWidget*, const QString& text) { told.append(text); }},
         [&](MadeTableWindow&) {
             const Unsaved answer = answers.front();
             answers.erase(answers.begin());
             return answer;
         },
         [&](const QString& file) { opened.append(file); }});
    DrillOnSex();
    Main.Model().Present()->Press(SaveDataButton);
    QApplication::processEvents();
    ASSERT_EQ(Panels->MadeTables().size(), 1U);
    MadeTableWindow& made = *Panels->MadeTables().front();
    EXPECT_EQ(made.windowTitle(), "Cases that remain 1 of survey (not saved)");
    Picture(Main, "/made-table.png");
    EXPECT_FALSE(Main.close());  // kept
    EXPECT_FALSE(Main.close());  // can't be written there
    ASSERT_EQ(told.size(), 1);
    chosen = path;
    QTest::mouseClick(made.findChild<QPushButton*>("exploreTable"), Qt::LeftButton);
    EXPECT_EQ(opened, QStringList{path + ".sav"});
    EXPECT_EQ(ReadDataFile((path + ".sav").toStdString()).Cases, Main.Model().Present()->Remaining()->Cases);
    EXPECT_EQ(made.windowTitle(), "subset.sav");
    EXPECT_TRUE(Main.close());
}

/// Large tables are put in order beside the thread of the windows, and may be left as they are.
TEST(CaseGridModel, ALargeTableIsSortedBesideTheWindows) {
    auto table = std::make_shared<DataTable>();
    table->Cases = 10'000'000;
    table->Variables.resize(1);
    std::vector<std::int32_t> values(10'000'000);
    for (std::size_t row = 0; row < values.size(); ++row) {
        values[row] = static_cast<std::int32_t>(row * 7919 % 1'000'003);
    }
    table->Variables[0].Values = Column::OfIntegers(std::move(values));
    CaseGridView view;
    view.resize(600, 400);
    view.Show(table);
    view.show();
    CaseGridModel& model = view.Model();
    model.sort(0, Qt::DescendingOrder);
    EXPECT_TRUE(model.Arranging().IsRunning());
    EXPECT_EQ(model.index(0, 0).data(), "0");
    view.Grid().scrollToBottom();
    EXPECT_GE(view.Grid().rowAt(20), 9'000'000);
    model.Arranging().Cancel();
    EXPECT_EQ(model.PresentOrder(), CaseOrder{});
    model.sort(0, Qt::DescendingOrder);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !model.Arranging().IsRunning(); }, 60'000));
    EXPECT_EQ(model.index(0, 0).data(), "1000002");
    EXPECT_EQ(view.Grid().horizontalHeader()->sortIndicatorSection(), 0);
}

}  // namespace
}  // namespace quillara
