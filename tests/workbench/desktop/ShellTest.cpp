// What stands around the results: opening files, the path of steps, history, remarks, long work.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <functional>
#include <map>
#include <set>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "workbench/desktop/dialogs/DialogView.h"
#include "workbench/desktop/window/Appearance.h"
#include "workbench/desktop/window/CommandSearch.h"
#include "workbench/desktop/window/GuideBar.h"
#include "workbench/desktop/window/LongWork.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/desktop/window/Preferences.h"
#include "workbench/desktop/window/PreferencesDialog.h"
#include "workbench/desktop/window/RecentFiles.h"
#include "workbench/desktop/window/RemarkBar.h"
#include "workbench/desktop/window/StepBar.h"
#include "workbench/desktop/window/TipTour.h"
#include "workbench/desktop/window/WorkPanel.h"
#include "workbench/desktop/window/Workspace.h"
#include "workbench/dialogs/CaseSelectionDialog.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

QString Sample(const std::string& name) {
    return QString::fromStdString(testing_locations::Sample(name));
}

/// A main window whose messages and questions are noted instead of shown.
class Shell : public testing::Test {
  protected:
    Shell() {
        RecentFiles::Clear();
        Main.Model().SetAnswers({[](Window&) { return false; }, [](BrushingRun&) { return false; },
                                 [this](const QString& text) { Messages.append(text); },
                                 [this](const QString&, const QString&) {
                                     ++Questions;
                                     return Consents;
                                 }});
        Main.show();
    }

    void OpenSurvey() { ASSERT_TRUE(Main.Open(Sample("survey.sav"))); }
    void Choose(const std::string& first, const std::string& second) {
        Main.Model().Do([&](Exploration& now) {
            const auto number = [&](const std::string& name) {
                return static_cast<short>(now.Table().IndexOf(name) + 1);
            };
            now.ChooseDrillVariables({{number(first), number(second)}, {number("age")}});
        });
    }
    void Down(const std::string& variable, const std::string& category) {
        ASSERT_TRUE(Main.Model().Do([&](Exploration& now) { now.Down(variable, category); }));
    }
    void Up(const std::string& variable) {
        ASSERT_TRUE(Main.Model().Do([&](Exploration& now) { now.Up(variable); }));
    }
    [[nodiscard]] QPushButton& Button(const char* name) {
        return *Main.findChild<QPushButton*>(QString::fromLatin1(name));
    }
    [[nodiscard]] QAction& Action(const char* name) { return *Main.findChild<QAction*>(QString::fromLatin1(name)); }
    /// The path as it stands in the bar.
    [[nodiscard]] QString Path() {
        QStringList crumbs;
        for (std::size_t place = 0; Main.Path().Crumb(place) != nullptr; ++place) {
            crumbs.append(Main.Path().Crumb(place)->text().simplified());
        }
        return crumbs.join(QStringLiteral(" > "));
    }
    /// For eyes: the window as it is now.
    void Picture(const char* name) {
        if (qEnvironmentVariableIsSet("QUILLARA_SCREENSHOTS")) {
            QApplication::processEvents();
            Main.grab().save(qEnvironmentVariable("QUILLARA_SCREENSHOTS") + '/' + QString::fromLatin1(name));
        }
    }
    static void Picture(QWidget& widget, const char* name) {
        if (qEnvironmentVariableIsSet("QUILLARA_SCREENSHOTS")) {
            widget.grab().save(qEnvironmentVariable("QUILLARA_SCREENSHOTS") + '/' + QString::fromLatin1(name));
        }
    }
    static void Click(QWidget* widget) { QTest::mouseClick(widget, Qt::LeftButton); }

    QStringList Messages;
    int Questions = 0;
    bool Consents = true;
    MainWindow Main{nullptr};
};

TEST_F(Shell, ANewUserHasChartsAfterTwoClicks) {
    QWidget* sample = Main.findChild<QWidget*>(QStringLiteral("openSample"));
    ASSERT_TRUE(sample->isVisible());
    Picture("shell12-start.png");
    Click(sample);
    ASSERT_NE(Main.Model().Present(), nullptr);
    EXPECT_FALSE(sample->isVisible());
    Picture("shell12-opened.png");
    Click(&Button("guideFirst"));
    EXPECT_GE(Main.Results().subWindowList().size(), 5);
    EXPECT_FALSE(Button("guideFirst").isVisible());
    Picture("shell12-all.png");
    EXPECT_EQ(RecentFiles::All().size(), 1);
    EXPECT_THAT(Messages, testing::IsEmpty());
}

TEST_F(Shell, AFileThatCannotBeReadLeavesAllAsItWas) {
    OpenSurvey();
    Choose("sex", "region");
    Down("sex", "Female");
    QTemporaryDir folder;
    const QString damaged = folder.filePath(QStringLiteral("damaged.sav"));
    QFile file(damaged);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("$FL2 is all there is");
    file.close();
    for (const QString& path : {damaged, folder.filePath(QStringLiteral("none.csv")), folder.path()}) {
        EXPECT_FALSE(Main.Open(path));
    }
    EXPECT_EQ(Messages.size(), 3);
    EXPECT_EQ(Path(), QStringLiteral("All 2000 > sex = Female 1077"));
    EXPECT_EQ(RecentFiles::All().size(), 1);
    Consents = false;
    EXPECT_FALSE(Main.Open(Sample("orders.csv")));
    Consents = true;
    EXPECT_EQ(Path(), QStringLiteral("All 2000 > sex = Female 1077"));
    EXPECT_TRUE(Main.Open(Sample("orders.csv")));
    EXPECT_EQ(Path().left(3), QStringLiteral("All"));
    EXPECT_EQ(RecentFiles::All().front(), Sample("orders.csv"));
}

TEST_F(Shell, AFileThatIsDroppedIsOpened) {
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(Sample("orders.csv"))});
    QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Main, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Main, &drop);
    ASSERT_TRUE(QTest::qWaitFor([this] { return Main.Model().Present() != nullptr; }));
    EXPECT_EQ(Main.Model().Present()->Table().FileName, "orders.csv");
}

TEST_F(Shell, CrumbsGoBackAndCrossesDrillUp) {
    OpenSurvey();
    Choose("sex", "region");
    EXPECT_EQ(Path(), QStringLiteral("All 2000"));
    Down("sex", "Female");
    Down("age", "40<x<=50");
    Down("region", "Central Plain");
    const QString whole = Path();
    Picture("shell12-path.png");
    Click(Main.Path().Cross(2));
    // The counts are of the steps that stand, not of the way on which they were taken.
    Main.Model().Do([](Exploration& now) {
        EXPECT_EQ(TrailOf(now).back().Left->Cases, now.Remaining()->Cases);
        EXPECT_EQ(TrailOf(now).size(), 3U);
    });
    QTest::keyClick(Main.Path().Crumb(1), Qt::Key_Delete);
    EXPECT_EQ(Main.Model().Present()->Steps().size(), 1U);
    Action("undo").trigger();
    Action("undo").trigger();
    EXPECT_EQ(Main.Model().Present()->Steps().size(), 3U);
    Click(Main.Path().Crumb(0));
    EXPECT_EQ(Path(), QStringLiteral("All 2000"));
    Action("undo").trigger();
    EXPECT_EQ(Main.Model().Present()->Steps().size(), 3U);
    EXPECT_EQ(Path().split(QStringLiteral(" > ")).size(), whole.split(QStringLiteral(" > ")).size());
}

TEST_F(Shell, ALongPathKeepsItsEnds) {
    OpenSurvey();
    Choose("sex", "region");
    Down("sex", "Female");
    Down("region", "Central Plain");
    Down("age", "40<x<=50");
    struct Case {
        int Width;
        std::vector<bool> Visible;
    };
    for (const Case& each : {Case{2000, {true, true, true, true}}, {330, {true, false, false, true}}}) {
        Main.Path().setFixedWidth(each.Width);
        QApplication::processEvents();
        for (std::size_t place = 0; place < each.Visible.size(); ++place) {
            EXPECT_EQ(Main.Path().Crumb(place)->isVisible(), each.Visible[place]) << each.Width << ' ' << place;
        }
    }
}

TEST_F(Shell, UndoAndRedoSayWhatTheyDoAndTheHistoryGoesAnywhere) {
    OpenSurvey();
    Choose("sex", "region");
    EXPECT_FALSE(Action("undo").isEnabled());
    Down("sex", "Female");
    Down("region", "Central Plain");
    EXPECT_THAT(Action("undo").text().toStdString(), testing::EndsWith("Drill down: region = Central Plain"));
    Action("undo").trigger();
    EXPECT_THAT(Action("redo").text().toStdString(), testing::EndsWith("Drill down: region = Central Plain"));
    auto& history = *Main.findChild<QListWidget*>(QStringLiteral("history"));
    ASSERT_EQ(history.count(), 3);
    EXPECT_EQ(history.currentRow(), 1);
    EXPECT_EQ(history.item(0)->text().simplified(), QStringLiteral("All cases 2000"));
    emit history.itemActivated(history.item(2));
    EXPECT_EQ(Main.Model().Present()->Steps().size(), 2U);
    Up("sex");
    EXPECT_THAT(Action("undo").text().toStdString(), testing::EndsWith("Drill up: sex = Female"));
    EXPECT_FALSE(Action("redo").isEnabled());
}

TEST_F(Shell, RemarksAreSaidOnceAndPutAway) {
    RemarkBar& bar = Main.Remarks();
    EXPECT_FALSE(bar.isVisible());
    bar.Add({"a", "First.", ""});
    bar.Add({"a", "First.", ""});
    bar.Add({"b", "Second.", ""});
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.All().size(), 2U);
    Click(bar.findChild<QToolButton*>(QStringLiteral("putAway")));
    EXPECT_FALSE(bar.isVisible());
    bar.Add({"b", "Second.", ""});
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(Shell, AdviceOfRemarksCanBeFollowedHere) {
    const struct {
        const char* Advice;
        const char* Shown;
    } rows[] = {
        {"Look again.", "It is odd. Look again."},
        {"Leave them out with --select 'x <> 9'.",
         "It is odd. Leave them out with Explore > Select cases...: 'x <> 9'."},
        {"Say which with --dates day-first.",
         "It is odd. On the command line (quillara convert): Say which with --dates day-first."},
        {"Name it in --continuous.", "It is odd."},
    };
    int code = 0;
    for (const auto& [advice, shown] : rows) {
        RemarkBar bar;
        bar.Add({"code-" + std::to_string(++code), "It is odd.", advice});
        EXPECT_EQ(bar.findChildren<QLabel*>().front()->text().toStdString(), shown);
    }
}

TEST_F(Shell, RemarksGoWithTheirFile) {
    const auto codes = [this] {
        QStringList codes;
        for (const Remark& remark : Main.Remarks().All()) {
            codes.append(QString::fromStdString(remark.Code));
        }
        return codes;
    };
    const auto exchange = [this](const char* name) {
        Main.Model().Do([&](Exploration& now) {
            now.Press(OpenDataButton, [&](Window& dialog) {
                dialog.Type(OpenDataDialog::Path, testing_locations::Sample(name));
                dialog.Click(OkCommand);
            });
        });
    };
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("twice.csv")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a,a\n1,2\n");
    file.close();
    ASSERT_TRUE(Main.Open(file.fileName()));
    const QStringList ofTheFile = codes();
    ASSERT_FALSE(ofTheFile.isEmpty());
    exchange("survey.sav");
    const QStringList ofTheSurvey = codes();
    for (const QString& code : ofTheFile) {
        EXPECT_FALSE(ofTheSurvey.contains(code)) << code.toStdString();
    }
    exchange("orders.csv");
    exchange("survey.sav");
    EXPECT_EQ(codes(), ofTheSurvey);
    Action("closeData").trigger();
    EXPECT_TRUE(codes().isEmpty());
    EXPECT_FALSE(Main.Remarks().isVisible());
}

TEST_F(Shell, LongWorkShowsItselfAndOnlyItsCancelActs) {
    int cancelled = 0;
    int pressed = 0;
    QPushButton other(QStringLiteral("other"), &Main);
    other.show();
    QObject::connect(&other, &QPushButton::clicked, [&] { ++pressed; });
    auto* panel = Main.findChild<WorkPanel*>();
    QElapsedTimer begun;
    begun.start();
    Main.Work().Begin(QStringLiteral("Counting"), 100, [&] { ++cancelled; });
    QTimer::singleShot(0, [&] {  // while the work draws
        EXPECT_TRUE(panel->isVisible());
        Click(&other);
        QTest::keyClick(&other, Qt::Key_Space);
    });
    QWidget tip(&Main, Qt::ToolTip);
    tip.show();
    Main.Work().Advance(1);
    EXPECT_TRUE(!panel->isVisible() || begun.elapsed() >= 200);  // most work is over by then
    QTimer::singleShot(230, [&] {
        EXPECT_TRUE(tip.close());  // by itself
        EXPECT_EQ(cancelled, 0);
        QTest::keyClick(&other, Qt::Key_Escape);
        Click(panel->findChild<QPushButton*>());
    });
    QElapsedTimer clock;
    for (clock.start(); cancelled == 0 && clock.elapsed() < 60'000;) {
        Main.Work().Advance(static_cast<int>(clock.elapsed() / 5));
        QTest::qSleep(1);
    }
    EXPECT_TRUE(panel->isVisible());
    EXPECT_GT(panel->findChild<QProgressBar*>()->value(), 20);
    EXPECT_EQ(pressed, 0);
    EXPECT_EQ(cancelled, 1);  // once is enough
    Main.Work().End();
    EXPECT_TRUE(QTest::qWaitFor([panel] { return !panel->isVisible(); }));
    Click(&other);
    EXPECT_EQ(pressed, 1);
}

TEST_F(Shell, TheSearchFindsCommandsByTheirWords) {
    OpenSurvey();
    Choose("sex", "region");
    Action("searchCommands").trigger();
    auto* search = Main.findChild<CommandSearch*>();
    ASSERT_NE(search, nullptr);
    Picture(*search, "shell12-search.png");
    auto& typed = *search->findChild<QLineEdit*>();
    auto& found = *search->findChild<QListWidget*>();
    const int all = found.count();
    QTest::keyClicks(&typed, QStringLiteral("his pie"));
    EXPECT_EQ(found.count(), 0);
    typed.clear();
    QTest::keyClicks(&typed, QStringLiteral("freq tab"));
    EXPECT_LT(found.count(), all);
    EXPECT_THAT(found.item(0)->text().toStdString(), testing::StartsWith("Results \u203a Frequency tables"));
    QTest::keyClick(&typed, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Main.Model().Present()->Documents().empty(); }));
}

TEST_F(Shell, EveryActionHasAKeyAndSaysWhatItDoes) {
    std::map<QString, QString> byKeys;
    std::function<void(const QList<QAction*>&)> walk = [&](const QList<QAction*>& actions) {
        std::set<QChar> letters;
        for (const QAction* action : actions) {
            if (action->isSeparator()) {
                continue;
            }
            const auto letter = action->text().indexOf('&');
            EXPECT_TRUE(letter >= 0 || !action->shortcut().isEmpty()) << action->text().toStdString();
            EXPECT_TRUE(letter < 0 || letters.insert(action->text()[letter + 1].toLower()).second)
                << action->text().toStdString();
            const QString keys = action->shortcut().toString();
            EXPECT_TRUE(keys.isEmpty() || byKeys.emplace(keys, action->text()).second) << keys.toStdString();
            if (action->menu() != nullptr) {
                walk(action->menu()->actions());
            }
        }
    };
    walk(Main.menuBar()->actions());
    EXPECT_GT(byKeys.size(), 25U);
}

TEST_F(Shell, TheOptionsButtonOpensPreferencesWhichHaveTheirEffectAtOnce) {
    const Appearance appearance;
    OpenSurvey();
    Click(Main.Dialog()->Find(OptionsButton));
    ASSERT_TRUE(QTest::qWaitFor([this] { return Main.findChild<PreferencesDialog*>() != nullptr; }));
    auto& dialog = *Main.findChild<PreferencesDialog*>();
    Picture(dialog, "shell12-preferences.png");
    const QPalette before = QApplication::palette();
    auto& theme = *dialog.findChild<QComboBox*>(QStringLiteral("theme"));
    theme.setCurrentIndex(static_cast<int>(Preferences::Look::Dark));
    EXPECT_LT(QApplication::palette().color(QPalette::Window).lightness(), 128);
    Click(Main.findChild<QPushButton*>(QStringLiteral("guideFirst")));
    Picture("shell12-dark.png");
    theme.setCurrentIndex(static_cast<int>(Preferences::Look::AsSystem));
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), before.color(QPalette::Window));
    dialog.findChild<QComboBox*>(QStringLiteral("decimals"))
        ->setCurrentIndex(static_cast<int>(Preferences::Decimals::Comma));
    EXPECT_EQ(Main.locale().toString(1.5), QStringLiteral("1,5"));
    Preferences::Shared().SetDecimalStyle(Preferences::Decimals::AsSystem);
    Click(dialog.findChild<QCheckBox*>(QStringLiteral("motion")));
    EXPECT_FALSE(Preferences::Shared().HasMotion());
    Preferences::Shared().SetMotion(true);
}

TEST_F(Shell, TheTourHasSixTipsAndIsPutAwayForGood) {
    Main.Welcome(QString());
    auto& tour = *Main.findChild<TipTour*>();
    ASSERT_TRUE(tour.isVisible());
    Picture("shell12-tour.png");
    auto* on = qobject_cast<QPushButton*>(tour.focusWidget());
    for (int tip = 0; tip < 6; ++tip) {
        EXPECT_TRUE(tour.isVisible());
        Click(on);
    }
    EXPECT_FALSE(tour.isVisible());
    Main.Welcome(QString());
    EXPECT_FALSE(tour.isVisible());  // all have been read
    tour.Begin();
    tour.findChild<QCheckBox*>()->setChecked(false);
    QTest::keyClick(on, Qt::Key_Escape);
    Main.Welcome(QString());
    EXPECT_TRUE(tour.isVisible());
    QStringList titles;
    const auto note = [&] { titles.append(tour.findChild<QLabel*>()->text()); };
    note();
    OpenSurvey();
    note();
    Click(&Button("guideFirst"));
    note();
    Down("sex", "Female");
    note();
    EXPECT_THAT(titles, testing::ElementsAre("Open your data", "Look at everything first", "Drill down",
                                             "Go back from anywhere"));
}

TEST_F(Shell, ResultsThatASelectionLeavesBehindAreTold) {
    const auto select = [&](const char* formula) {
        Main.Model().Present()->Press(SelectCasesButton, [formula](Window& dialog) {
            dialog.Click(CaseSelectionDialog::SelectedCases);
            dialog.Type(CaseSelectionDialog::Formula, formula);
            dialog.Click(OkCommand);
        });
    };
    auto& guide = *Main.findChild<GuideBar*>();
    OpenSurvey();
    Click(&Button("guideFirst"));
    EXPECT_FALSE(guide.isVisible());
    select("age > 60");
    EXPECT_TRUE(guide.isVisible());
    EXPECT_FALSE(Button("guideFirst").isVisible());
    Picture("user12-old-results.png");
    Down("sex", "Female");
    EXPECT_FALSE(guide.isVisible());
    Up("sex");
    EXPECT_FALSE(guide.isVisible());  // they have followed
    select("age > 70");
    EXPECT_TRUE(guide.isVisible());
    Main.Results().CloseAll();
    QApplication::processEvents();
    EXPECT_TRUE(Button("guideFirst").isVisible());  // again what comes next
}

TEST_F(Shell, TheResultInFrontIsInTheFileMenu) {
    auto* menu = Main.findChild<QMenu*>(QStringLiteral("resultMenu"));
    OpenSurvey();
    EXPECT_FALSE(menu->isEnabled());
    Click(&Button("guideFirst"));
    const auto all = Main.Model().Present()->Documents().size();
    QStringList texts;
    for (const QAction* action : menu->actions()) {
        texts.append(action->text().remove('&'));
    }
    EXPECT_THAT(texts, testing::IsSupersetOf({"Copy", "Save as...", "Print..."}));
    QApplication::clipboard()->clear();
    menu->actions().front()->trigger();
    EXPECT_TRUE(QApplication::clipboard()->mimeData()->hasImage());
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Main));
    QTest::keyClick(&Main, Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(Main.Model().Present()->Documents().size(), all - 1);
    EXPECT_TRUE(menu->isEnabled());
    Main.Results().CloseAll();
    EXPECT_FALSE(menu->isEnabled());
}

TEST_F(Shell, TheWindowFitsItsScreen) {
    const QSize screen = Main.screen()->availableSize();
    Main.resize(screen * 2);
    Main.Welcome(QString());
    EXPECT_TRUE(QRect(QPoint(), screen).contains(QRect(QPoint(), Main.size())));
    EXPECT_LT(Main.height(), screen.height());  // beside its title
}

}  // namespace
}  // namespace quillara
