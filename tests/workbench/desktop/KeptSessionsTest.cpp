// Sessions that are left, in each way, and gone on with: the documents, the steps and the windows are as they were.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QCommandLinkButton>
#include <QDir>
#include <QFile>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <memory>
#include <string>
#include <tuple>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/desktop/data/MadeTableWindow.h"
#include "workbench/desktop/results/DocumentView.h"
#include "workbench/desktop/window/SessionKeeper.h"
#include "workbench/desktop/window/TipTour.h"
#include "workbench/desktop/window/Workspace.h"
#include "workbench/exploration/ExploredOutputs.h"
#include "workbench/views/DocumentViews.h"
#include "workbench/windows/Control.h"

namespace quillara {
namespace {

QString Sample(const char* name) {
    return QString::fromStdString(testing_locations::Sample(name));
}

/// A program that begins and ends, with a folder for its settings and its sessions.
class Sessions : public testing::Test {
  protected:
    void Begin() {
        Main = std::make_unique<MainWindow>(&Settings);
        Main->Model().SetAnswers({[](Window&) { return false; },
                                  [this](BrushingRun& run) { return Main->Results().PickBar(run); },
                                  [this](const QString& text) { Messages.append(text); },
                                  [this](const QString& question, const QString&) {
                                      Questions.append(question);
                                      return Consents;
                                  }});
        Main->Welcome(Folder.path());
        Main->findChild<TipTour*>()->hide();
        Main->resize(1100, 800);
        Main->show();
        QApplication::processEvents();
    }
    /// Results of some steps, in one of which documents are updated; a window is closed between.
    void Work() {
        ASSERT_TRUE(Main->Open(Sample("survey.sav")));
        Do([](Exploration& now) {
            const auto number = [&](const char* name) { return static_cast<short>(now.Table().IndexOf(name) + 1); };
            now.ChooseDrillVariables({{number("region"), number("sex"), number("genre")}, {number("age")}});
            now.Press(FrequenciesButton);
            now.Press(AutoUpdateBox);
            now.Press(HistogramsButton);
            now.Down("sex", "Female");
            now.Down("region", "Central Plain");
            now.Close(*now.Documents().front());
            now.Up("sex");
            now.Press(SummaryButton);
        });
        QApplication::processEvents();
    }
    void Do(const std::function<void(Exploration&)>& work) { ASSERT_TRUE(Main->Model().Do(work)); }
    [[nodiscard]] std::string Documents() {
        return JsonView(OutputsOf(*Main->Model().Present(), Main->Model().Present()->Documents()));
    }
    /// How each window stands, with its title, and which is in front.
    [[nodiscard]] std::string Places() {
        const Workspace& area = Main->Results();
        const bool areTabs = area.viewMode() == QMdiArea::TabbedView;
        std::string places = area.IsTiled() ? "tiles\n" : areTabs ? "tabs\n" : "\n";
        for (const QMdiSubWindow* window : area.subWindowList()) {
            const QRect place = areTabs ? QRect() : window->geometry();
            places += window->windowTitle().toStdString() +
                      testing::PrintToString(std::tuple(place.x(), place.y(), place.width(), place.height())) +
                      (window == area.activeSubWindow() ? " in front\n" : "\n");
        }
        return places;
    }
    [[nodiscard]] std::vector<QCommandLinkButton*> Offers() {
        std::vector<QCommandLinkButton*> offers;
        for (auto* offer : Main->findChildren<QCommandLinkButton*>(QStringLiteral("goOn"))) {
            if (offer->isVisible()) {
                offers.push_back(offer);
            }
        }
        return offers;
    }
    void GoOn() {
        QApplication::processEvents();
        ASSERT_FALSE(Offers().empty());
        QTest::mouseClick(Offers().front(), Qt::LeftButton);
        QApplication::processEvents();
    }
    [[nodiscard]] int Kept() const {
        return static_cast<int>(QDir(Folder.path()).entryList({QStringLiteral("session-*.json")}).size());
    }
    [[nodiscard]] QMenu& LeftMenu() {
        auto* menu = Main->findChild<QMenu*>(QStringLiteral("leftMenu"));
        emit menu->aboutToShow();
        return *menu;
    }

    QTemporaryDir Folder;
    SettingsStore Settings{Folder.filePath(QStringLiteral("settings.json")).toStdString()};
    QStringList Messages;
    QStringList Questions;
    bool Consents = true;
    std::unique_ptr<MainWindow> Main;
};

TEST_F(Sessions, AreGoneOnWithHoweverTheyWereLeft) {
    const QString other = Folder.filePath(QStringLiteral("other.csv"));
    QFile file(other);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a,b\n1,x\n2,y\n");
    file.close();
    struct Way {
        const char* Name;
        std::function<void()> Leave;
        bool Stays = true;
    };
    const std::vector<Way> ways = {
        {"quit", [&] { Main->close(); }},
        {"another file", [&] { ASSERT_TRUE(Main->Open(other)); }},
        {"the data are closed", [&] { Main->findChild<QAction*>(QStringLiteral("closeData"))->trigger(); }},
        {"startup dialog left, then quit",
         [&] {
             Do([](Exploration& now) { now.Press(CancelCommand); });
             Main->close();
         },
         false},
    };
    bool wasUpdating = false;
    for (const Way& way : ways) {
        SCOPED_TRACE(way.Name);
        Settings.Put("StandAloneResults", wasUpdating ? 1 : 0);
        wasUpdating = !wasUpdating;
        Begin();
        Work();
        const std::size_t steps = Main->Model().Present()->Steps().size();
        const bool isUpdating = Main->Model().Present()->At(AutoUpdateBox).Checked;
        const std::string documents = Documents();
        const std::string places = Places();
        way.Leave();
        Main.reset();
        EXPECT_EQ(Kept(), 1);
        Begin();
        ASSERT_EQ(Offers().size(), 1U);
        EXPECT_THAT(Offers().front()->description().toStdString(), testing::HasSubstr("results"));
        GoOn();
        ASSERT_NE(Main->Model().Present(), nullptr);
        EXPECT_EQ(Kept(), 1);  // as that of the program that runs
        if (way.Stays) {
            EXPECT_EQ(Main->Model().Present()->Steps().size(), steps);
            EXPECT_EQ(Main->Model().Present()->At(AutoUpdateBox).Checked, isUpdating);
            EXPECT_EQ(Documents(), documents);
            EXPECT_EQ(Places(), places);
        } else {
            EXPECT_TRUE(Main->Model().Present()->HasEnded());
            EXPECT_GT(Main->Results().subWindowList().size(), 2);
        }
        Main.reset();
        for (const QString& name : QDir(Folder.path()).entryList({QStringLiteral("session-*.json")})) {
            QFile::remove(Folder.filePath(name));
        }
    }
    EXPECT_THAT(Questions, testing::IsEmpty());
    EXPECT_THAT(Messages, testing::IsEmpty());
}

TEST_F(Sessions, OfAKilledProgramAreOfferedAsSuch) {
    Begin();
    Work();
    const std::string documents = Documents();
    Main->findChild<SessionKeeper*>()->Keep();
    const QStringList files = QDir(Folder.path()).entryList({QStringLiteral("session-*.json")});
    ASSERT_EQ(files.size(), 1);
    const QString killed = Folder.filePath(QStringLiteral("session-0.json"));
    ASSERT_TRUE(QFile::copy(Folder.filePath(files.front()), killed));
    Main.reset();
    Begin();
    EXPECT_THAT(Offers().front()->description().toStdString(), testing::StartsWith("The program ended before"));
    GoOn();
    EXPECT_EQ(Documents(), documents);
    EXPECT_FALSE(QFile::exists(killed));
}

TEST_F(Sessions, HaveTheirWindowsWhereTheyStood) {
    const std::vector<std::pair<const char*, std::function<void(Workspace&)>>> ways = {
        {"tiles", [](Workspace& area) { area.Tile(); }},
        {"tabs", [](Workspace& area) { area.SetTabbed(true); }},
        {"cascade", [](Workspace& area) { area.Cascade(); }},
        {"moved",
         [](Workspace& area) {
             area.subWindowList()[1]->setGeometry(17, 23, 310, 205);
             area.subWindowList()[3]->move(140, 90);
         }},
        {"one of the tiles in front",
         [](Workspace& area) {
             area.Tile();
             area.setActiveSubWindow(area.subWindowList()[2]);
         }},
    };
    for (const auto& [name, arrange] : ways) {
        SCOPED_TRACE(name);
        Begin();
        Work();
        arrange(Main->Results());
        QApplication::processEvents();
        const std::string places = Places();
        Main->close();
        Main.reset();
        Begin();
        GoOn();
        EXPECT_EQ(Places(), places);
        // A step, and it goes on as it would have.
        Do([](Exploration& now) { now.Down("sex", "Male"); });
        EXPECT_EQ(Main->Results().IsTiled(), places.starts_with("tiles"));
        Main.reset();
    }
}

TEST_F(Sessions, ThatAreOfNoUseArentKept) {
    Begin();
    ASSERT_TRUE(Main->Open(Sample("survey.sav")));
    Main->close();
    EXPECT_EQ(Kept(), 0);
    Main.reset();
    Begin();
    EXPECT_TRUE(Offers().empty());
    EXPECT_EQ(LeftMenu().actions().size(), 2);  // a line, and to forget them
}

TEST_F(Sessions, AreListedTheNewestFirstUntilTheyAreForgotten) {
    Begin();
    for (int time = 0; time < SessionKeeper::MostLeft + 2; ++time) {
        ASSERT_TRUE(Main->Open(Sample("survey.sav")));
        Do([](Exploration& now) { now.ChooseDrillVariables({{1, 2}, {}}); });
    }
    Main->close();
    Main.reset();
    EXPECT_EQ(Kept(), SessionKeeper::MostLeft);
    Begin();
    EXPECT_EQ(Offers().size(), 3U);
    Picture(*Main, QStringLiteral("desk12-left"));
    for (auto* forget : Main->findChildren<QPushButton*>(QStringLiteral("forgetLeft"))) {
        if (forget->isVisible()) {
            QTest::mouseClick(forget, Qt::LeftButton);
            break;
        }
    }
    EXPECT_EQ(Kept(), SessionKeeper::MostLeft - 1);
    LeftMenu().actions().front()->trigger();
    EXPECT_EQ(Main->Model().Present()->At(DrillDownListControl).Rows.size(), 2U);
    EXPECT_EQ(Kept(), SessionKeeper::MostLeft - 1);
    LeftMenu().actions().back()->trigger();
    EXPECT_EQ(Kept(), 1);
}

TEST_F(Sessions, AskBeforeWorkIsLostWhenTheyCannotBeKept) {
    Begin();
    Work();
    QDir(Folder.path()).removeRecursively();
    Consents = false;
    Main->close();
    EXPECT_TRUE(Main->isVisible());
    EXPECT_FALSE(Main->Open(Sample("orders.csv")));
    ASSERT_EQ(Questions.size(), 2);
    EXPECT_THAT(Questions.front().toStdString(), testing::HasSubstr("survey.sav ends here"));
    EXPECT_THAT(Questions.front().toStdString(), testing::HasSubstr("1 step and 6 results would be lost"));
    Consents = true;
    Main->close();
    EXPECT_FALSE(Main->isVisible());
    EXPECT_EQ(Questions.size(), 3);
}

TEST_F(Sessions, DoNotShowTablesAgainThatTheUserWasAskedAbout) {
    Begin();
    Work();
    Do([](Exploration& now) { now.Press(SaveDataButton); });
    const auto tables = [&] { return Main->Results().findChildren<MadeTableWindow*>().size(); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return tables() == 1; }));
    Main->findChild<QAction*>(QStringLiteral("closeData"))->trigger();
    EXPECT_EQ(tables(), 1);  // it is the user's
    GoOn();
    QApplication::processEvents();
    EXPECT_EQ(Main->Model().Present()->Steps().size(), 1U);
    EXPECT_EQ(tables(), 1);
}

TEST_F(Sessions, OfAFileThatHasGoneStay) {
    const QString path = Folder.filePath(QStringLiteral("gone.sav"));
    ASSERT_TRUE(QFile::copy(Sample("survey.sav"), path));
    Begin();
    ASSERT_TRUE(Main->Open(path));
    Do([](Exploration& now) { now.ChooseDrillVariables({{1}, {}}); });
    Main->close();
    Main.reset();
    ASSERT_TRUE(QFile::remove(path));
    Begin();
    GoOn();
    EXPECT_EQ(Main->Model().Present(), nullptr);
    EXPECT_EQ(Messages.size(), 1);
    EXPECT_EQ(Offers().size(), 1U);
}

}  // namespace
}  // namespace quillara
