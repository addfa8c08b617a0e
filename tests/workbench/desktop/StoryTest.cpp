// A person's whole story in the main window, by mouse and keyboard; after each part of it the documents on the screen
// are those that the command line gives for the same steps.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <algorithm>
#include <functional>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/workbench/command/Program.h"
#include "tests/workbench/desktop/DialogTesting.h"
#include "workbench/charts/ChartPainter.h"
#include "workbench/desktop/data/DataPanels.h"
#include "workbench/desktop/dialogs/ReportList.h"
#include "workbench/desktop/dialogs/RowSearch.h"
#include "workbench/desktop/dialogs/VariableListsView.h"
#include "workbench/desktop/results/ChartCanvas.h"
#include "workbench/desktop/results/ChartResultView.h"
#include "workbench/desktop/scripts/ScriptPanels.h"
#include "workbench/desktop/scripts/ScriptView.h"
#include "workbench/desktop/window/StepBar.h"
#include "workbench/desktop/window/Workspace.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/exploration/ExploredOutputs.h"
#include "workbench/views/DocumentViews.h"

namespace quillara {
namespace {

using Lists = VariableListsDialog;
using Json = nlohmann::json;

/// What a story is about: a table with four variables of categories and two of numbers.
struct Plot {
    const char* File;
    std::vector<const char*> Categorical;
    std::vector<const char*> Continuous;
};

const Plot OfTheSurvey{"survey.sav", {"region", "sex", "genre", "satisfaction"}, {"age", "income"}};
const Plot OfTheCensus{"adult.sav", {"workclass", "sex", "relationship", "income"}, {"age", "hours_per_week"}};

std::string InShell(const std::string& text) {
    return " '" + text + "'";
}

/// The documents of a JSON view, each as its text, in the order of their titles. Numbers that tell how they came about
/// are left out: the command, which for some is an update, and the steps up to them.
std::vector<std::string> PartsOf(const std::string& view) {
    const Json json = Json::parse(view);
    std::vector<std::string> parts{json["data"].dump()};
    for (Json document : json["documents"]) {
        for (const char* member : {"command", "sequence", "result", "step"}) {
            document.erase(member);
        }
        parts.push_back(document["title"].dump() + document.dump());
    }
    std::ranges::sort(parts);
    return parts;
}

/// Where two JSON views differ first; empty: nowhere.
std::string Difference(const std::string& one, const std::string& other) {
    const std::vector<std::string> parts = PartsOf(one);
    const std::vector<std::string> others = PartsOf(other);
    const auto [left, right] = std::ranges::mismatch(parts, others);
    if (left == parts.end() && right == others.end()) {
        return "";
    }
    const std::string here = left == parts.end() ? "nothing" : *left;
    const std::string there = right == others.end() ? "nothing" : *right;
    const auto place = static_cast<std::size_t>(std::ranges::mismatch(here, there).in1 - here.begin());
    return here.substr(0, 90) + " ... " + here.substr(place, 200) + "\n" + there.substr(place, 200);
}

std::string DownOption(const StepTaken& step) {
    return " --down" + InShell(step.Variable + "=" + step.Category);
}

class Story : public testing::Test, public ShownDesktop {
  protected:
    void Tell(const Plot& plot, const std::string& path) {
        About = &plot;
        Path = path;
        OpenByName();
        ChooseVariables();
        CategorizeAge();
        ShowResults();
        TakeSteps();
        UndoTheMiddleAndRedo();
        BrushTwice();
        SaveWhatRemains();
        Replay();
        EXPECT_THAT(Said, testing::IsEmpty());
    }

  private:
    // The parts of the story

    void OpenByName() {
        InModalWindow([this] { Press(Qt::CTRL | Qt::Key_O); },
                      [this](QWidget& files) {
                          auto* name = files.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
                          ASSERT_NE(name, nullptr);
                          name->setText(QString::fromStdString(Path));  // as pasted
                          QTest::keyClick(name, Qt::Key_Return);
                      });
        ASSERT_NE(Main.Model().Present(), nullptr);
        EXPECT_EQ(Main.Model().Present()->Table().FileName, About->File);
    }

    /// Categories with the mouse, numbers from the keyboard.
    void ChooseVariables() {
        InDialog(DrillVariablesButton, [this](DialogView& view) {
            auto& offered = At<ReportList>(view, Lists::AvailableList);
            for (const char* name : About->Categorical) {
                ClickRow(offered, IndexOf(name));
                Click(view, Lists::AddToFirst);
            }
            RowSearch& search = dynamic_cast<VariableListsView&>(view).Search();
            for (const char* name : About->Continuous) {
                search.setFocus();
                QTest::keyClicks(&search, QLatin1String(name));
                QTest::keyClick(&search, Qt::Key_Down);
                ASSERT_TRUE(offered.hasFocus());
                view.Find(Lists::AddToSecond)->setFocus(Qt::TabFocusReason);
                QTest::keyClick(view.Find(Lists::AddToSecond), Qt::Key_Space);
                search.setFocus();
                QTest::keyClick(&search, Qt::Key_Escape);  // what was sought goes, the dialog stays
            }
            QTest::keyClick(&search, Qt::Key_Return);
        });
        Categories = static_cast<int>(About->Categorical.size());
        ASSERT_EQ(Downs().count(), Categories + static_cast<int>(About->Continuous.size()));
    }

    void CategorizeAge() {
        auto* tabs = &At<QTabWidget>(*Main.Dialog(), PageTabs);
        tabs->tabBar()->setFocus();
        QTest::keyClick(tabs->tabBar(), Qt::Key_Right);
        ClickRow(Downs(), Categories);
        Click(*Main.Dialog(), ExactIntervalsRadio);
        auto& count = At<QSpinBox>(*Main.Dialog(), ExactCountField);
        count.setFocus();
        count.selectAll();
        QTest::keyClicks(&count, QStringLiteral("4"));
        Categorization = " --categorize " + std::string(About->Continuous.front()) + "=exact:4";
        Options = Categorization;
    }

    void ShowResults() {
        Click(*Main.Dialog(), AutoUpdateBox);
        At<QTabWidget>(*Main.Dialog(), PageTabs).setCurrentIndex(0);
        Click(*Main.Dialog(), HistogramsButton);
        Press(Qt::ALT | Qt::Key_2);  // frequency tables
        ExpectSame(12);
    }

    /// By a double click, by the keyboard and by a click with OK.
    void TakeSteps() {
        ClickRow(Downs(), 0);
        Down([](DialogView&, ReportList& rows) { DoubleClickRow(rows, 1); });
        Downs().setFocus();
        QTest::keyClick(&Downs(), Qt::Key_End);
        QTest::keyClick(&Downs(), Qt::Key_Up);  // the age
        Down([](DialogView&, ReportList& rows) {
            QTest::keyClick(&rows, Qt::Key_Down);
            QTest::keyClick(&rows, Qt::Key_Return);
        });
        ClickRow(Downs(), 0);
        Down([](DialogView& view, ReportList& rows) {
            ClickRow(rows, 0);
            Click(view, OkCommand);
        });
        Press(Qt::CTRL | Qt::SHIFT | Qt::Key_T);
        EXPECT_TRUE(Main.Results().IsTiled());
        Picture(Main, QStringLiteral("story-tiled"));
        ExpectSame(6);
    }

    /// Undoing takes the steps anew, since without the middle one the age is cut otherwise. Updates open no windows:
    /// the buttons do.
    void UndoTheMiddleAndRedo() {
        const std::string middle = Steps().at(1).Variable;
        QTest::mouseClick(Main.Path().Cross(2), Qt::LeftButton);
        Options += " --up" + InShell(middle);
        EXPECT_EQ(Main.Results().subWindowList().size(), 6);
        Click(*Main.Dialog(), FrequenciesButton);
        Click(*Main.Dialog(), HistogramsButton);
        ExpectSame(8);
        Press(Qt::CTRL | Qt::Key_Z);
        ASSERT_EQ(Steps().size(), 3U);
        Options = Categorization;
        for (const StepTaken& step : Steps()) {
            Options += DownOption(step);
        }
        ExpectSame(6);
        Press(Qt::CTRL | Qt::Key_Y);
        Options += " --up" + InShell(middle);
        Click(*Main.Dialog(), FrequenciesButton);
        Click(*Main.Dialog(), HistogramsButton);
        ExpectSame(8);
    }

    /// The first bar by a click, the second from the keyboard; then the person has had enough.
    void BrushTwice() {
        std::vector<std::function<void(ChartCanvas&)>> cycles{
            [](ChartCanvas& canvas) {
                for (const ChartSpot& spot : ChartSpots(canvas)) {
                    if (spot.Point == 1) {
                        QTest::mouseClick(&canvas, Qt::LeftButton, {}, spot.Outline.boundingRect().center().toPoint());
                    }
                }
            },
            [](ChartCanvas& canvas) { QTest::keyClick(&canvas, Qt::Key_Return); },
            [](ChartCanvas& canvas) {
                Picture(*canvas.window(), QStringLiteral("story-brushing"));
                QTest::keyClick(&canvas, Qt::Key_Escape);
            },
        };
        ClickRow(Downs(), 0);
        InCycles(std::move(cycles));
        Click(*Main.Dialog(), BrushButton);
        ASSERT_EQ(Steps().size(), 4U);
        for (const std::size_t step : {2, 3}) {
            Options += DownOption(Steps()[step]);
        }
        ExpectSame(4);
    }

    void SaveWhatRemains() {
        auto* panels = Main.findChild<DataPanels*>();
        QString path = QString::fromStdString(Folder.Path("remaining.qtable"));
        panels->SetAnswers({{[&path](QWidget*, const QString&) { return path; },
                             [this](QWidget*, const QString& text) { Said.push_back(text.toStdString()); }},
                            {},
                            {}});
        Click(*Main.Dialog(), SaveDataButton);
        QApplication::processEvents();
        ASSERT_EQ(panels->MadeTables().size(), 1U);
        QTest::mouseClick(panels->MadeTables().front()->findChild<QPushButton*>(QStringLiteral("saveTable")),
                          Qt::LeftButton);
        Run("drill " + Arguments() + " --save saved.qtable --show summary");
        EXPECT_TRUE(ContentOf(Folder.Path("remaining.qtable")) == ContentOf(Folder.Path("saved.qtable")));
        panels->MadeTables().front()->close();
    }

    void Replay() {
        auto* panels = Main.findChild<ScriptPanels*>();
        panels->ScriptPanel().show();
        ScriptView& scripts = panels->Script();
        scripts.SetAnswers(
            {[this](QWidget*, const QString&) { return QString::fromStdString(Folder.Path("recorded.py")); }, {}});
        const auto click = [&](const char* name) {
            QTest::mouseClick(scripts.findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
        };
        if (!std::filesystem::exists(testing_locations::Library("python/quillara"))) {
            return;  // this build runs no scripts
        }
        click("scriptSoFar");  // the whole story
        click("saveScript");
        ExpectReplayed();
        click("recordScript");  // the rest of it
        click("stopRecording");
        click("saveScript");
        ExpectReplayed();
    }

    // What it is told with

    template <typename Widget>
    static Widget& At(DialogView& view, int id) {
        return *qobject_cast<Widget*>(view.Find(id));
    }
    QListWidget& Downs() { return At<QListWidget>(*Main.Dialog(), DrillDownListControl); }
    [[nodiscard]] std::vector<StepTaken> Steps() { return Main.Model().Present()->Steps(); }
    [[nodiscard]] int IndexOf(const char* name) {
        return static_cast<int>(Main.Model().Present()->Table().IndexOf(name));
    }

    /// Keys of the main window, once it has got back what a modal window took from it.
    void Press(QKeyCombination keys) {
        Main.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Main));
        QTest::keyClick(&Main, keys.key(), keys.keyboardModifiers());
    }
    void InDialog(int button, const std::function<void(DialogView&)>& work) {
        InModalWindow([&] { Click(*Main.Dialog(), button); },
                      [work](QWidget& modal) { work(*modal.findChild<DialogView*>()); });
    }
    void Down(const std::function<void(DialogView&, ReportList&)>& choose) {
        const std::size_t before = Steps().size();
        InDialog(DownButton, [&](DialogView& view) { choose(view, At<ReportList>(view, CategoryListControl)); });
        ASSERT_EQ(Steps().size(), before + 1);
        Options += DownOption(Steps().back());
    }
    /// Works in the picking of bars, one cycle after the other.
    void InCycles(std::vector<std::function<void(ChartCanvas&)>> cycles) {
        QTimer::singleShot(0, &Main, [this, cycles = std::move(cycles)]() mutable {
            if (Main.Model().IsBusy()) {
                const auto work = cycles.front();
                cycles.erase(cycles.begin());
                ResultDocument& last = *Main.Model().Present()->Documents().back();
                work(dynamic_cast<ChartResultView&>(*Main.Results().Find(last)).Canvas());
            }
            if (!cycles.empty()) {
                InCycles(std::move(cycles));
            }
        });
    }

    std::string Run(const std::string& arguments) {
        const Outcome outcome = Quillara(Folder, arguments, "QT_QPA_PLATFORM=offscreen");
        EXPECT_EQ(outcome.Status, 0) << arguments << "\n" << outcome.Errors;
        return outcome.Out;
    }
    [[nodiscard]] std::string Arguments() const {
        std::string arguments = InShell(Path);
        for (const auto& [option, names] :
             {std::pair(" --categorical ", &About->Categorical), std::pair(" --continuous ", &About->Continuous)}) {
            arguments += option;
            for (const char* name : *names) {
                arguments += (name == names->front() ? "" : ",") + std::string(name);
            }
        }
        return arguments + Options;
    }
    [[nodiscard]] std::string Shown() {
        return JsonView(OutputsOf(*Main.Model().Present(), Main.Model().Present()->Documents()));
    }
    /// As many windows as that show what the command line gives.
    void ExpectSame(int windows) {
        QApplication::processEvents();
        EXPECT_EQ(Main.Results().subWindowList().size(), windows);
        const std::string difference =
            Difference(Shown(), Run("drill " + Arguments() + " --show frequencies,histograms --format json"));
        EXPECT_TRUE(difference.empty()) << Options << "\n" << difference;
    }

    void ExpectReplayed() {
        const std::string difference = Difference(Shown(), Run("run --format json recorded.py"));
        EXPECT_TRUE(difference.empty()) << ContentOf(Folder.Path("recorded.py")) << difference;
    }

    const Plot* About = nullptr;
    std::string Path;
    std::string Categorization;
    std::string Options;  // of the command line, for what has been done
    int Categories = 0;
    TemporaryFolder Folder;
};

TEST_F(Story, OfTheSurveyIsToldAlikeByTheCommandLine) {
    Tell(OfTheSurvey, testing_locations::Sample(OfTheSurvey.File));
}

TEST_F(Story, OfTheCensusIsToldAlikeByTheCommandLine) {
    const char* folder = std::getenv("QUILLARA_TEST_DATA");
    if (folder == nullptr) {
        GTEST_SKIP() << "QUILLARA_TEST_DATA names no folder of real data";
    }
    Tell(OfTheCensus, std::string(folder) + "/" + OfTheCensus.File);
}

}  // namespace
}  // namespace quillara
