// Labels of a variable that has more values than a person would write texts for.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDockWidget>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/data/CaseGridView.h"
#include "workbench/desktop/data/DataPanels.h"
#include "workbench/desktop/data/MadeTableWindow.h"
#include "workbench/desktop/data/VariableView.h"

namespace quillara {
namespace {

constexpr int Towns = 1200;

QString TownAt(int number) {
    return QStringLiteral("town %1").arg(number, 4, 10, QLatin1Char('0'));
}

/// A file with a case in each town.
QString FileOfTowns(const QTemporaryDir& folder) {
    QFile file(folder.filePath(QStringLiteral("towns.csv")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("town,people\n");
    for (int i = 0; i < Towns; ++i) {
        file.write((TownAt(i) + QStringLiteral(",%1\n").arg(i * 10)).toUtf8());
    }
    return file.fileName();
}

TEST(ManyValues, TheFirstThousandAreEditedAndTheOthersKeepTheirTexts) {
    const QTemporaryDir folder;
    ShownDesktop desktop;
    ASSERT_TRUE(desktop.Main.Open(FileOfTowns(folder)));
    auto& panels = *desktop.Main.findChild<DataPanels*>();
    panels.VariablePanel().show();
    panels.VariablePanel().raise();
    VariableView& view = panels.Variables();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !view.Model().Summarizing().IsRunning(); }));
    const QString before = view.Model().index(0, VariableModel::Values).data().toString();
    QTimer::singleShot(0, [] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        auto* values = dialog->findChild<QTableWidget*>(QStringLiteral("valueLabels"));
        EXPECT_EQ(values->rowCount(), 1000);
        EXPECT_EQ(dialog->findChild<QLabel*>()->text(), "The first 1000 of 1200 values; the others keep their texts.");
        values->item(999, 1)->setText(QStringLiteral("The last"));
        values->item(999, 2)->setText(QStringLiteral("of those that can be edited"));
        Picture(*dialog, QStringLiteral("many-values"));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    const QPoint place = view.visualRect(view.model()->index(0, VariableModel::Values)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
    EXPECT_TRUE(view.Model().HasEdits());
    EXPECT_EQ(view.Model().index(0, VariableModel::Values).data().toString(),
              before);  // the first few, and how many more
    QTest::mouseClick(panels.VariablePanel().findChild<QPushButton*>(QStringLiteral("keepEdits")), Qt::LeftButton);
    ASSERT_EQ(panels.MadeTables().size(), 1U);
    const DataTable& made = *panels.MadeTables().front()->findChild<CaseGridView*>()->Model().Table();
    const Variable& towns = made.Variables.front();
    const auto labelAt = [&](std::size_t row) { return *towns.LabelOf(towns.Values[row]); };
    EXPECT_EQ(labelAt(999), "The last");
    EXPECT_EQ(towns.Labels.at(towns.Values[999]).Description, "of those that can be edited");
    EXPECT_EQ(labelAt(998), TownAt(998).toStdString());
    EXPECT_EQ(labelAt(1199), TownAt(1199).toStdString());
}

}  // namespace
}  // namespace quillara
