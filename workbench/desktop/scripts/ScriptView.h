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
    /// What to do with a script that isn't saved.
    enum class Unsaved { Save, Discard, Keep };
    /// How the user chooses files; empty: none. Tests choose themselves.
    struct Answers {
        std::function<QString(QWidget* parent, const QString& suggested)> ChooseToSave;
        std::function<QString(QWidget* parent)> ChooseToOpen;
        /// What becomes of a script that isn't saved and would be lost; none: the model's question.
        std::function<Unsaved(QWidget* parent)> AskUnsaved{};
    };
    [[nodiscard]] static Answers AnswersOfUser();

    /// The model outlives it.
    explicit ScriptView(ExplorationModel& model, QWidget* parent = nullptr);

    void SetAnswers(Answers answers) { Answering = std::move(answers); }
    [[nodiscard]] bool IsRecording() const { return Recording; }
    [[nodiscard]] QString Text() const;
    [[nodiscard]] QString Output() const;
    [[nodiscard]] PythonProcess& Process() { return *Runner; }

    /// Whether what has been recorded or typed stands in no file.
    [[nodiscard]] bool IsUnsaved() const;
    /// Asks about a script that isn't saved before it is lost; false: it is to stay.
    bool MayDrop();
    void Record();
    void StopRecording();
    /// What has been done from the start, or from where the last recording began.
    void ShowSoFar();
    bool Save();
    bool Open();
    /// As Open, of a file that is known: one that was dropped.
    bool OpenFile(const QString& path);
    void Run();

  private:
    QWidget* MakeBar();
    QPushButton* AddButton(QWidget& bar, const char* name, const QString& text, const QString& tip,
                           void (ScriptView::*action)());
    bool Show(const QString& path);
    void SaveByButton() { Save(); }
    void OpenByButton() { Open(); }
    void StopRun();
    void DoNext(void (ScriptView::*action)());
    void BeginRecording();
    void EndRecording();
    void TakeSoFar();
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
    QString Begin;  // of the recording, before anything was done; empty: nothing has been recorded
    QString RunFile;
    QTemporaryDir Temporary;
    bool Recording = false;
};

}  // namespace quillara
