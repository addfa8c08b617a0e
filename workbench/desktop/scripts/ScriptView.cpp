#include "workbench/desktop/scripts/ScriptView.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBlock>
#include <QVBoxLayout>
#include <utility>

#include "workbench/desktop/scripts/PythonHighlighter.h"
#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/exploration/ScriptFaults.h"

namespace quillara {
namespace {

constexpr int MostLines = 50'000;  // of output

/// What can't be edited can be copied yet.
void LetEdit(QPlainTextEdit& text, bool isEdited) {
    text.setReadOnly(!isEdited);
    if (!isEdited) {
        text.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
}

QPlainTextEdit* MakeText(const QString& name, const QString& title, const QString& hint, QWidget* parent) {
    auto* text = new QPlainTextEdit(parent);
    text->setObjectName(name);
    text->setAccessibleName(title);
    text->setPlaceholderText(hint);
    text->setTabChangesFocus(true);
    LetEdit(*text, false);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    return text;
}

QString TextOfScript(Exploration& exploration) {
    return QString::fromStdString(exploration.Recording().Text());
}

bool WriteText(const QString& path, const QString& text) {
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0 && file.commit();
}

}  // namespace

ScriptView::Answers ScriptView::AnswersOfUser() {
    const QString filter = tr("Python scripts (*.py)");
    return {[filter](QWidget* parent, const QString& suggested) {
                return QFileDialog::getSaveFileName(parent, tr("Save script"), suggested, filter);
            },
            [filter](QWidget* parent) {
                return QFileDialog::getOpenFileName(parent, tr("Open script"), QString(), filter);
            },
            [](QWidget* parent) {
                const auto answer = QMessageBox::question(
                    parent, tr("Unsaved script"), tr("The script isn't saved. Save it?"),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
                return answer == QMessageBox::Save      ? Unsaved::Save
                       : answer == QMessageBox::Discard ? Unsaved::Discard
                                                        : Unsaved::Keep;
            }};
}

ScriptView::ScriptView(ExplorationModel& model, QWidget* parent)
    : QWidget(parent),
      Model(model),
      Answering(AnswersOfUser()),
      Runner(new PythonProcess(this)),
      Script(MakeText(QStringLiteral("scriptText"), tr("Script"),
                      tr("Record, and what you do stands here as a Python script. Or write one."), this)),
      Printed(MakeText(QStringLiteral("scriptOutput"), tr("Output"), tr("What the script prints"), this)) {
    setObjectName(QStringLiteral("scriptView"));
    setFocusProxy(Script);
    new PythonHighlighter(Script->document());
    Printed->setMaximumBlockCount(MostLines);
    auto* parts = new QSplitter(Qt::Horizontal, this);
    parts->addWidget(Script);
    parts->addWidget(Printed);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(MakeBar());
    layout->addWidget(parts);
    connect(Script, &QPlainTextEdit::textChanged, this, &ScriptView::ShowState);
    connect(&model, &ExplorationModel::replaced, this, [this] {
        Recording = false;  // of the exploration that has gone
        ShowState();
    });
    connect(&model, &ExplorationModel::changed, this, &ScriptView::Follow);
    connect(Runner, &QProcess::readyReadStandardOutput, this,
            [this] { Print(Runner->readAllStandardOutput(), false); });
    connect(Runner, &QProcess::readyReadStandardError, this, [this] { Print(Runner->readAllStandardError(), true); });
    connect(Runner, &QProcess::finished, this, &ScriptView::ShowEnd);
    connect(Runner, &QProcess::stateChanged, this, &ScriptView::ShowState);
    connect(Runner, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            Model.ShowMessage(tr("The script can't be run: %1.").arg(Runner->errorString()).toStdString());
        }
    });
    ShowState();
}

QWidget* ScriptView::MakeBar() {
    auto* bar = new QWidget(this);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(6, 4, 6, 4);
    RecordButton = AddButton(*bar, "recordScript", tr("&Record"), tr("Record what you do from here on as a script"),
                             &ScriptView::Record);
    StopButton = AddButton(*bar, "stopRecording", tr("S&top"), tr("End the recording"), &ScriptView::StopRecording);
    SoFarButton = AddButton(*bar, "scriptSoFar", tr("Script so &far"),
                            tr("Show the script of all that has been done since the exploration or the last recording "
                               "began"),
                            &ScriptView::ShowSoFar);
    AddButton(*bar, "openScript", tr("&Open..."), tr("Open a script to run it"), &ScriptView::OpenByButton);
    SaveButton =
        AddButton(*bar, "saveScript", tr("Sa&ve as..."), tr("Save the script as a file"), &ScriptView::SaveByButton);
    RunButton = AddButton(*bar, "runScript", tr("R&un"), tr("Run the script; it doesn't touch this exploration"),
                          &ScriptView::Run);
    StopRunButton =
        AddButton(*bar, "stopScript", tr("Sto&p the run"), tr("Stop the script that runs"), &ScriptView::StopRun);
    State = new QLabel(bar);
    State->setObjectName(QStringLiteral("scriptState"));
    row->addSpacing(8);
    row->addWidget(State);
    row->addStretch();
    return bar;
}

QPushButton* ScriptView::AddButton(QWidget& bar, const char* name, const QString& text, const QString& tip,
                                   void (ScriptView::*action)()) {
    auto* button = new QPushButton(text, &bar);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    connect(button, &QPushButton::clicked, this, action);
    bar.layout()->addWidget(button);
    return button;
}

QString ScriptView::Text() const {
    return Script->toPlainText();
}

QString ScriptView::Output() const {
    return Printed->toPlainText();
}

/// While bars are picked the user is taken to want to leave that, as with the menus; any other command that runs has
/// to end first.
void ScriptView::DoNext(void (ScriptView::*action)()) {
    Model.DoNext([this, action] {
        if (Model.IsBusy()) {
            Model.ShowMessage(tr("A command still runs; wait for its end, or cancel it.").toStdString());
        } else {
            (this->*action)();
        }
    });
}

void ScriptView::Record() {
    DoNext(&ScriptView::BeginRecording);
}

void ScriptView::BeginRecording() {
    if (!MayDrop()) {
        return;
    }
    Recording = Model.Do([this](Exploration& exploration) {
        exploration.Recording().BeginHere();
        SetText(TextOfScript(exploration));
        Begin = Text();
    });
    ShowState();
}

bool ScriptView::IsUnsaved() const {
    const bool isRecorded = File.isEmpty() && !Begin.isEmpty() && Text() != Begin;
    return isRecorded || Script->document()->isModified();
}

bool ScriptView::MayDrop() {
    if (!IsUnsaved()) {
        return true;
    }
    if (!Answering.AskUnsaved) {
        return Model.Confirm(tr("The script isn't saved."), tr("&Drop it"));
    }
    const Unsaved answer = Answering.AskUnsaved(this);
    return answer == Unsaved::Discard || (answer == Unsaved::Save && Save());
}

void ScriptView::StopRecording() {
    DoNext(&ScriptView::EndRecording);
}

/// With what has been done up to here.
void ScriptView::EndRecording() {
    Follow();
    Recording = false;
    ShowState();
}

void ScriptView::ShowSoFar() {
    DoNext(&ScriptView::TakeSoFar);
}

/// What has been recorded of this exploration is part of it, that of another one isn't.
void ScriptView::TakeSoFar() {
    QString soFar;
    const bool isThere =
        !Model.IsBusy() && Model.Do([&](Exploration& exploration) { soFar = TextOfScript(exploration); });
    const bool isLonger = soFar.startsWith(Text()) && !Script->document()->isModified();
    if (isThere && (isLonger || MayDrop())) {
        SetText(soFar);
    }
    ShowState();
}

/// A command may run yet: its lines come when it is done.
void ScriptView::Follow() {
    if (Recording && !Model.IsBusy()) {
        Model.Do([this](Exploration& exploration) {
            const QString text = TextOfScript(exploration);
            if (text != Text()) {
                SetText(text);
                Script->verticalScrollBar()->setValue(Script->verticalScrollBar()->maximum());
            }
        });
    }
    ShowState();
}

void ScriptView::SetText(const QString& text) {
    File.clear();
    Script->setExtraSelections({});
    Script->setPlainText(text);
}

bool ScriptView::Save() {
    QString path = Answering.ChooseToSave(this, QStringLiteral("exploration.py"));
    if (path.isEmpty()) {
        return false;
    }
    if (QFileInfo(path).suffix().isEmpty()) {
        path += QStringLiteral(".py");
    }
    if (!WriteText(path, Text())) {
        Model.ShowMessage(tr("The script can't be written to \"%1\".").arg(path).toStdString());
        return false;
    }
    File = path;
    Script->document()->setModified(false);
    ShowState();
    return true;
}

bool ScriptView::Open() {
    const QString path = MayDrop() ? Answering.ChooseToOpen(this) : QString();
    return !path.isEmpty() && Show(path);
}

bool ScriptView::OpenFile(const QString& path) {
    return MayDrop() && Show(path);
}

bool ScriptView::Show(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        Model.ShowMessage(tr("The script \"%1\" can't be read: %2.").arg(path, file.errorString()).toStdString());
        return false;
    }
    Recording = false;
    Begin.clear();
    SetText(QString::fromUtf8(file.readAll()));
    File = path;
    ShowState();
    return true;
}

/// A text that stands in no file as it is, is run from one that goes with this program.
void ScriptView::Run() {
    if (Runner->IsRunning() || Text().isEmpty()) {
        return;
    }
    RunFile = Script->document()->isModified() ? QString() : File;
    if (RunFile.isEmpty()) {
        RunFile = Temporary.filePath(QStringLiteral("recorded.py"));
        if (!Temporary.isValid() || !WriteText(RunFile, Text())) {
            Model.ShowMessage(tr("The script can't be written to \"%1\".").arg(RunFile).toStdString());
            return;
        }
    }
    Printed->clear();
    Script->setExtraSelections({});
    Runner->RunScript(RunFile, File.isEmpty() ? QDir::currentPath() : QFileInfo(File).absolutePath());
}

void ScriptView::StopRun() {
    Runner->Interrupt(true);
}

void ScriptView::Print(const QByteArray& bytes, bool isError) {
    QTextCursor end(Printed->document());
    end.movePosition(QTextCursor::End);
    QTextCharFormat format;
    if (isError) {
        const bool isDark = palette().color(QPalette::Base).lightness() < 128;
        format.setForeground(isDark ? QColor(0xE3, 0xB3, 0x41) : QColor(0x8A, 0x5A, 0x00));
    }
    end.insertText(QString::fromUtf8(bytes), format);
}

void ScriptView::ShowEnd(int status, QProcess::ExitStatus how) {
    ShowState();
    const bool isFine = status == 0 && how == QProcess::NormalExit;
    const auto line = isFine ? std::nullopt : LineOfFault(Output().toStdString(), RunFile.toStdString());
    if (line) {
        MarkLine(*line);
    }
    if (!isFine) {  // its last line says why
        Printed->verticalScrollBar()->setValue(Printed->verticalScrollBar()->maximum());
    }
    State->setText(isFine ? tr("The script has ended.")
                   : line ? tr("The script has failed at line %1.").arg(*line)
                          : tr("The script has been stopped or has failed."));
}

void ScriptView::MarkLine(int line) {
    const QTextBlock block = Script->document()->findBlockByNumber(line - 1);
    if (!block.isValid()) {
        return;
    }
    QTextEdit::ExtraSelection mark;
    mark.cursor = QTextCursor(block);
    mark.format.setBackground(QColor(0xE0, 0x40, 0x40, 0x60));
    mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    Script->setExtraSelections({mark});
    Script->setTextCursor(mark.cursor);
    Script->ensureCursorVisible();
}

void ScriptView::ShowState() {
    const bool isOpen = Model.Present() != nullptr && !Model.Present()->HasEnded();
    const bool hasText = !Script->document()->isEmpty();
    RecordButton->setEnabled(isOpen && !Recording);
    StopButton->setEnabled(Recording);
    SoFarButton->setEnabled(isOpen && !Recording);
    SaveButton->setEnabled(hasText);
    RunButton->setEnabled(hasText && !Recording && !Runner->IsRunning());
    StopRunButton->setEnabled(Runner->IsRunning());
    LetEdit(*Script, !Recording && !Runner->IsRunning());
    const bool isEdited = Script->document()->isModified();
    State->setText(Recording             ? tr("Recording...")
                   : Runner->IsRunning() ? tr("Running...")
                   : isEdited            ? tr("%1 (edited)").arg(QFileInfo(File).fileName()).trimmed()
                                         : QFileInfo(File).fileName());
}

}  // namespace quillara
