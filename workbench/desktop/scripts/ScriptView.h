#pragma once

#include <QTemporaryDir>
#include <QWidget>
#include <functional>

#include "workbench/desktop/scripts/PythonProcess.h"

class QPlainTextEdit;
class QPushButton;
class QLabel;

namespace quillara {

class ExplorationModel;

/// The script of an exploration: records what is done, shows it, saves it, runs it or another one and shows what that
/// prints. While it records, the text grows with each command.
class ScriptView : public QWidget {
    Q_OBJECT

  public:
    /// How the user chooses files; empty: none. Tests choose themselves.
    struct Answers {
        std::function<QString(QWidget* parent, const QString& suggested)> ChooseToSave;
        std::function<QString(QWidget* parent)> ChooseToOpen;
    };
    [[nodiscard]] static Answers AnswersOfUser();

    /// The model outlives it.
    explicit ScriptView(ExplorationModel& model, QWidget* parent = nullptr);

    void SetAnswers(Answers answers) { Answering = std::move(answers); }
    [[nodiscard]] bool IsRecording() const { return Recording; }
    [[nodiscard]] QString Text() const;
    [[nodiscard]] QString Output() const;
    [[nodiscard]] PythonProcess& Process() { return *Runner; }

    void Record();
    void StopRecording();
    /// What has been done from the start, or from where the last recording began.
    void ShowSoFar();
    bool Save();
    bool Open();
    void Run();

  private:
    QWidget* MakeBar();
    QPushButton* AddButton(QWidget& bar, const char* name, const QString& text, const QString& tip,
                           void (ScriptView::*action)());
    void SaveByButton() { Save(); }
    void OpenByButton() { Open(); }
    void StopRun();
    [[nodiscard]] bool MayReplace() const;
    void ShowState();
    void Follow();
    void SetText(const QString& text);
    void Print(const QByteArray& bytes, bool isError);
    void ShowEnd(int status, QProcess::ExitStatus how);
    void MarkLine(int line);

    ExplorationModel& Model;
    Answers Answering;
    PythonProcess* Runner;
    QPlainTextEdit* Script;
    QPlainTextEdit* Printed;
    QLabel* State = nullptr;
    QPushButton* RecordButton = nullptr;
    QPushButton* StopButton = nullptr;
    QPushButton* SoFarButton = nullptr;
    QPushButton* SaveButton = nullptr;
    QPushButton* RunButton = nullptr;
    QPushButton* StopRunButton = nullptr;
    QString File;  // that holds the text; empty: none does
    QString RunFile;
    QTemporaryDir Temporary;
    bool Recording = false;
};

}  // namespace quillara
