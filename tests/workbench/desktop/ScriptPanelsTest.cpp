// A person records, saves and runs scripts, and works in the console.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDockWidget>
#include <QDropEvent>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <filesystem>

#include "resources/ControlIds.h"
#include "tests/Locations.h"
#include "workbench/desktop/scripts/ConsoleView.h"
#include "workbench/desktop/scripts/ScriptPanels.h"
#include "workbench/desktop/scripts/ScriptView.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/views/DocumentViews.h"

namespace quillara {
namespace {

constexpr int Patience = 60'000;

class ScriptPanelsTest : public testing::Test {
  protected:
    ScriptPanelsTest() {
        Main.resize(1500, 900);
        Main.show();
        EXPECT_TRUE(Main.Open(QString::fromStdString(testing_locations::Sample("survey.sav"))));
        Panels->ScriptPanel().show();
        Panels->ScriptPanel().raise();
        Scripts.SetAnswers({[this](QWidget*, const QString& suggested) { return Folder.filePath(suggested); },
                            [this](QWidget*) { return Folder.filePath("other.py"); }});
        Main.Model().SetAnswers({{}, {}, {}, [this](const QString&, const QString&) {
                                     ++Asked;
                                     return Drops;
                                 }});
    }
    void SetUp() override {
        if (!std::filesystem::exists(testing_locations::Library("python/quillara"))) {
            GTEST_SKIP() << "this build has no Python package";
        }
    }
    void Click(const char* name) {
        auto* button = Scripts.findChild<QPushButton*>(QLatin1String(name));
        ASSERT_TRUE(button->isEnabled()) << name;
        QTest::mouseClick(button, Qt::LeftButton);
    }
    void RunToEnd() {
        Click("runScript");
        ASSERT_TRUE(QTest::qWaitFor([&] { return !Scripts.Process().IsRunning(); }, Patience));
    }
    void OpenScript(const char* text) {
        QFile file(Folder.filePath("other.py"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
        file.close();
        Click("openScript");
    }
    [[nodiscard]] short NumberOf(const char* name) {
        return static_cast<short>(Main.Model().Present()->Table().IndexOf(name) + 1);
    }
    void Picture(const char* name) {
        if (qEnvironmentVariableIsSet("QUILLARA_SCREENSHOTS")) {
            QApplication::processEvents();
            Main.grab().save(qEnvironmentVariable("QUILLARA_SCREENSHOTS") + QLatin1String(name));
        }
    }

    QTemporaryDir Folder;
    int Asked = 0;
    bool Drops = true;
    MainWindow Main{nullptr};
    ScriptPanels* Panels = Main.findChild<ScriptPanels*>();
    ScriptView& Scripts = Panels->Script();
};

TEST_F(ScriptPanelsTest, ARecordingIsSavedBeforeItIsLost) {
    using Unsaved = ScriptView::Unsaved;
    std::vector<Unsaved> answers{Unsaved::Keep, Unsaved::Keep, Unsaved::Discard, Unsaved::Save};
    const auto ask = [&](QWidget*) {
        const Unsaved answer = answers.front();
        answers.erase(answers.begin());
        return answer;
    };
    Scripts.SetAnswers({[this](QWidget*, const QString& suggested) { return Folder.filePath(suggested); },
                        [this](QWidget*) { return Folder.filePath("other.py"); }, ask});
    const auto record = [&] {
        Scripts.Record();
        Main.Model().Present()->Press(AutoUpdateBox);
        EXPECT_TRUE(Scripts.IsUnsaved());
    };
    record();
    const QString recorded = Scripts.Text();
    OpenScript("print(1)\n");
    EXPECT_FALSE(Main.close());
    EXPECT_EQ(Scripts.Text(), recorded);
    OpenScript("print(1)\n");
    EXPECT_EQ(Scripts.Text(), "print(1)\n");
    record();
    EXPECT_TRUE(Main.close());
    EXPECT_TRUE(QFile::exists(Folder.filePath("exploration.py")));
    EXPECT_TRUE(answers.empty());
}

TEST_F(ScriptPanelsTest, AScriptThatIsDroppedIsShownAndTheDataStay) {
    Panels->ScriptPanel().hide();
    QFile file(Folder.filePath("dropped.PY"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("print('dropped')\n");
    file.close();
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(file.fileName())});
    QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Main, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Main, &drop);
    EXPECT_TRUE(drop.isAccepted());
    ASSERT_TRUE(QTest::qWaitFor([this] { return Scripts.Text() == QStringLiteral("print('dropped')\n"); }));
    EXPECT_TRUE(Panels->ScriptPanel().isVisible());
    EXPECT_EQ(Main.Model().Present()->Table().FileName, "survey.sav");
}

TEST_F(ScriptPanelsTest, WhatIsTypedOrRecordedOutlivesTheDataAndIsAskedAboutBeforeItIsLost) {
    auto& script = *Scripts.findChild<QPlainTextEdit*>("scriptText");
    Drops = false;
    Scripts.Record();
    Main.Model().Present()->Press(AutoUpdateBox);
    const QString recorded = Scripts.Text();
    Scripts.ShowSoFar();
    EXPECT_EQ(Asked, 0);  // it goes on
    EXPECT_TRUE(Main.Open(QString::fromStdString(testing_locations::Sample("orders.csv"))));
    EXPECT_FALSE(Scripts.IsRecording());
    EXPECT_EQ(Scripts.Text(), recorded);
    Scripts.ShowSoFar();
    EXPECT_EQ(Asked, 1);
    EXPECT_EQ(Scripts.Text(), recorded);
    Click("saveScript");
    QTest::keyClicks(&script, "# more ");
    EXPECT_TRUE(Main.Open(QString::fromStdString(testing_locations::Sample("survey.sav"))));
    EXPECT_TRUE(Scripts.Text().startsWith("# more"));
    EXPECT_FALSE(Main.close());
    EXPECT_EQ(Asked, 2);
    Click("saveScript");
    EXPECT_TRUE(Main.close());
    EXPECT_EQ(Asked, 2);
}

TEST_F(ScriptPanelsTest, ARecordedScriptGivesTheSameDocuments) {
    Exploration& exploration = *Main.Model().Present();
    exploration.Press(DrillVariablesButton, [&](Window& dialog) {
        ChooseVariables(dialog, {NumberOf("sex"), NumberOf("region")}, {NumberOf("age"), NumberOf("income")});
    });
    exploration.Press(FrequenciesButton);
    while (!exploration.Documents().empty()) {
        exploration.Close(*exploration.Documents().front());
    }
    Click("recordScript");
    exploration.Down("sex", "Female");
    exploration.Press(FrequenciesButton);
    exploration.Down("age", "40<x<=50");
    exploration.Press(DescriptivesButton);
    EXPECT_TRUE(Scripts.Text().contains("\"Female\"")) << Scripts.Text().toStdString();
    EXPECT_FALSE(Scripts.findChild<QPushButton*>("runScript")->isEnabled());
    Click("stopRecording");
    const QString script = Scripts.Text();
    exploration.Up("sex");
    EXPECT_EQ(Scripts.Text(), script);
    Click("saveScript");
    RunToEnd();
    Picture("/script-run.png");
    const std::string output = Scripts.Output().toStdString();
    EXPECT_EQ(exploration.Documents().size(), 4U);
    for (const auto& document : exploration.Documents()) {
        OutputCollection one;
        one.Add(document->Content(), document->Origin());
        const std::string text = TextView(one);
        EXPECT_NE(output.find(text.substr(text.find("\n\n") + 2)), std::string::npos) << text;
    }
}

TEST_F(ScriptPanelsTest, AFaultIsShownAtItsLineAndARunCanBeStopped) {
    OpenScript("import quillara\n\nprint('begun')\nquillara.open('nowhere.sav')\n");
    RunToEnd();
    EXPECT_TRUE(Scripts.Output().contains("begun"));
    EXPECT_TRUE(Scripts.Output().contains("other.py\", line 4"));
    EXPECT_EQ(Scripts.findChild<QLabel*>("scriptState")->text(), "The script has failed at line 4.");
    Picture("/script-fault.png");
    auto& text = *Scripts.findChild<QPlainTextEdit*>("scriptText");
    text.moveCursor(QTextCursor::End);
    QTest::keyClicks(&text, "print('mended')");
    text.find("nowhere", QTextDocument::FindBackward);
    text.textCursor().insertText("survey");
    EXPECT_FALSE(text.isReadOnly());
    RunToEnd();  // what stands there, not the file that it came from
    EXPECT_TRUE(Scripts.Output().contains("survey.sav"));
    Drops = false;
    Click("openScript");
    EXPECT_TRUE(Scripts.Text().endsWith("print('mended')"));
    Click("saveScript");
    Click("openScript");  // nothing would be lost: nobody is asked
    EXPECT_EQ(Asked, 1);
    Drops = true;
    OpenScript("import time\nprint('waits', flush=True)\ntime.sleep(1000)\n");
    Click("runScript");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Scripts.Output().contains("waits"); }, Patience));
    Click("stopScript");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Scripts.Process().IsRunning(); }, Patience));
}

TEST_F(ScriptPanelsTest, TheConsoleAnswersAndCompletesNames) {
    Panels->ConsolePanel().show();
    Panels->ConsolePanel().raise();
    ConsoleView& console = Panels->Console();
    QLineEdit& line = console.Input();
    const auto enter = [&](const char* text) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return console.IsReady(); }, Patience)) << console.Printed().toStdString();
        QTest::keyClicks(&line, QLatin1String(text));
        QTest::keyClick(&line, Qt::Key_Return);
    };
    enter("total = 0");
    enter("for i in range(4): total += i");
    enter("");
    enter("print('sum', total)");
    enter("1/0");
    ASSERT_TRUE(QTest::qWaitFor([&] { return console.Printed().contains("ZeroDivisionError"); }, Patience));
    EXPECT_TRUE(console.Printed().contains("\nsum 6\n"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return console.IsReady(); }, Patience));
    QTest::keyClicks(&line, "quillara.op");
    QTest::keyClick(&line, Qt::Key_Tab);
    ASSERT_TRUE(QTest::qWaitFor([&] { return line.text().startsWith("quillara.open"); }, Patience));
    line.clear();
    QTest::keyClick(&line, Qt::Key_Up);
    EXPECT_EQ(line.text(), "1/0");
    line.clear();
    enter("import time; time.sleep(1000)");
    QTest::qWait(200);
    QTest::mouseClick(console.findChild<QPushButton*>("stopConsole"), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return console.IsReady(); }, Patience));
    EXPECT_TRUE(console.Printed().contains("KeyboardInterrupt"));
    Picture("/console.png");
}

}  // namespace
}  // namespace quillara
