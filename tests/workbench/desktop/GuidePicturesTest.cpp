// The pictures of docs/guide.md: a person's first minutes, saved where QUILLARA_GUIDE_PICTURES names a folder.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDockWidget>
#include <QTest>
#include <QTimer>

#include "host/Brushing.h"
#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "workbench/desktop/data/BackgroundWork.h"
#include "workbench/desktop/data/DataPanels.h"
#include "workbench/desktop/data/VariableView.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/desktop/window/RecentFiles.h"
#include "workbench/desktop/window/Workspace.h"
#include "workbench/hosting/AnalysisServices.h"

namespace quillara {
namespace {

class GuidePictures : public testing::Test {
  protected:
    GuidePictures() {
        RecentFiles::Clear();
        Main.resize(1280, 800);
        Main.show();
    }

    void Save(const char* name) {
        QApplication::processEvents();
        if (qEnvironmentVariableIsSet("QUILLARA_GUIDE_PICTURES")) {
            const QString path = qEnvironmentVariable("QUILLARA_GUIDE_PICTURES") + '/' + QString::fromLatin1(name);
            EXPECT_TRUE(Main.grab().save(path)) << name;
        }
    }
    void Explore() {
        ASSERT_TRUE(Main.Open(QString::fromStdString(testing_locations::Sample("survey.sav"))));
        Save("opened.png");
        Main.Model().Do([](Exploration& now) {
            const auto number = [&](const char* name) { return static_cast<short>(now.Table().IndexOf(name) + 1); };
            now.ChooseDrillVariables({{number("region"), number("sex"), number("commute"), number("genre")},
                                      {number("age"), number("income")}});
        });
    }
    void Press(int button) {
        Main.Model().Do([button](Exploration& now) { now.Press(button); });
    }

    MainWindow Main{nullptr};
};

TEST_F(GuidePictures, OfTheFirstMinutes) {
    Save("start.png");
    Explore();
    Press(AutoUpdateBox);
    Press(HistogramsButton);
    Press(DescriptivesButton);
    Main.Model().Do([](Exploration& now) { now.Down("sex", "Female"); });
    Main.Model().Do([](Exploration& now) { now.Down("region", "Central Plain"); });
    Main.Results().tileSubWindows();
    QTest::qWait(400);  // bars slide to their places
    Save("steps.png");
    auto* panels = Main.findChild<DataPanels*>();
    ASSERT_NE(panels, nullptr);
    panels->VariablePanel().show();
    panels->VariablePanel().raise();
    BackgroundWork& summarizing = panels->Variables().Model().Summarizing();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !summarizing.IsRunning(); }, 60'000));
    QTest::qWait(100);  // the columns have the width of what has come
    Save("data.png");
}

TEST_F(GuidePictures, OfBrushing) {
    Explore();
    QTimer::singleShot(500, &Main, [this] {
        Save("brushing.png");
        QTest::keyClick(QApplication::focusWidget() == nullptr ? &Main : QApplication::focusWidget(), Qt::Key_Escape);
    });
    Press(BrushButton);
    EXPECT_FALSE(Main.Model().IsBusy());
}

}  // namespace
}  // namespace quillara
