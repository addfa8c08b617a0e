#include "workbench/desktop/scripts/ConsoleView.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace quillara {
namespace {

constexpr char AnswerMark = '\x01';
constexpr int MostLines = 20'000;

/// What all names begin with.
QString CommonBeginning(const QStringList& names) {
    QString common = names.front();
    for (const QString& name : names) {
        const auto end = std::ranges::mismatch(common, name).in1;
        common.truncate(end - common.begin());
    }
    return common;
}

}  // namespace

ConsoleView::ConsoleView(QWidget* parent)
    : QWidget(parent), Process(new PythonProcess(this)), Text(new QPlainTextEdit(this)) {
    setObjectName(QStringLiteral("consoleView"));
    Text->setObjectName(QStringLiteral("consoleText"));
    Text->setAccessibleName(tr("What the console has printed"));
    Text->setPlaceholderText(
        tr("Python, apart from the exploration in this window. To begin with:\n"
           "import quillara; table = quillara.open(\"FILE\")"));
    Text->setReadOnly(true);
    Text->setMaximumBlockCount(MostLines);
    Text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(Text);
    layout->addWidget(MakeInput());
    setFocusProxy(Line);
    connect(Process, &QProcess::readyReadStandardOutput, this, &ConsoleView::Read);
    connect(Process, &QProcess::readyReadStandardError, this, &ConsoleView::Read);
    connect(Process, &QProcess::finished, this, [this] {
        Ready = false;
        Print(tr("The console has ended; Start anew begins another one.") + QLatin1Char('\n'));
    });
    connect(Process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            Print(tr("The console can't be started: %1.").arg(Process->errorString()) + QLatin1Char('\n'));
        }
    });
}

QWidget* ConsoleView::MakeInput() {
    auto* bar = new QWidget(this);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(6, 4, 6, 4);
    Prompt = new QLabel(QStringLiteral(">>>"), bar);
    Prompt->setFont(Text->font());
    Line = new QLineEdit(bar);
    Line->setObjectName(QStringLiteral("consoleInput"));
    Line->setAccessibleName(tr("Line of Python"));
    Line->setToolTip(tr("Enter runs the line, Tab completes a name, Up and Down bring back earlier lines"));
    Line->setFont(Text->font());
    Line->installEventFilter(this);
    connect(Line, &QLineEdit::returnPressed, this, &ConsoleView::Enter);
    Stop = new QPushButton(tr("&Stop"), bar);
    Stop->setObjectName(QStringLiteral("stopConsole"));
    Stop->setToolTip(tr("Interrupt what runs"));
    connect(Stop, &QPushButton::clicked, this, [this] { Process->Interrupt(false); });
    auto* anew = new QPushButton(tr("Start a&new"), bar);
    anew->setObjectName(QStringLiteral("beginConsole"));
    anew->setToolTip(tr("End this console and begin another one, without its variables"));
    connect(anew, &QPushButton::clicked, this, &ConsoleView::BeginAnew);
    for (QWidget* part : std::initializer_list<QWidget*>{Prompt, Line, Stop, anew}) {
        row->addWidget(part);
    }
    return bar;
}

QString ConsoleView::Printed() const {
    return Text->toPlainText();
}

void ConsoleView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    Begin();
}

void ConsoleView::Begin() {
    if (!Process->IsRunning()) {
        Unread.clear();
        Process->BeginConsole();
    }
}

void ConsoleView::BeginAnew() {
    {
        const QSignalBlocker unheard(Process);
        Process->kill();
        Process->waitForFinished();
    }
    Ready = false;
    Text->clear();
    Begin();
}

void ConsoleView::Enter() {
    if (!Ready) {
        return;
    }
    const QString line = Line->text();
    Print(Prompt->text() + QLatin1Char(' ') + line + QLatin1Char('\n'));
    if (!line.isEmpty()) {
        Entered.append(line);
    }
    Recalled = Entered.size();
    Line->clear();
    Ready = false;
    Process->write(">" + line.toUtf8() + '\n');
}

bool ConsoleView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Line && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
            case Qt::Key_Tab:
                AskNames();
                return !Line->text().isEmpty();  // of an empty line it goes on to the next widget
            case Qt::Key_Up:
                Recall(-1);
                return true;
            case Qt::Key_Down:
                Recall(1);
                return true;
            default:
                break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void ConsoleView::Recall(int lines) {
    Recalled = std::clamp<qsizetype>(Recalled + lines, 0, Entered.size());
    Line->setText(Recalled < Entered.size() ? Entered[Recalled] : QString());
}

void ConsoleView::AskNames() {
    static const QRegularExpression name(QStringLiteral("[\\w.]+$"));
    Beginning = name.match(Line->text().left(Line->cursorPosition())).captured();
    if (Ready && !Beginning.isEmpty()) {
        Process->write("?" + Beginning.toUtf8() + '\n');
    }
}

/// Errors are printed before the answer that follows them.
void ConsoleView::Read() {
    Unread += Process->readAllStandardOutput();
    while (true) {
        const qsizetype mark = Unread.indexOf(AnswerMark);
        const qsizetype end = mark < 0 ? -1 : Unread.indexOf('\n', mark);
        Print(QString::fromUtf8(Unread.left(mark < 0 ? Unread.size() : mark)));
        Unread.remove(0, mark < 0 ? Unread.size() : mark);
        if (end < 0) {
            break;
        }
        Print(QString::fromUtf8(Process->readAllStandardError()));
        const qsizetype length = end - mark;
        TakeAnswer(QString::fromUtf8(Unread.mid(1, length - 1)));
        Unread.remove(0, length + 1);
    }
    Print(QString::fromUtf8(Process->readAllStandardError()));
}

void ConsoleView::TakeAnswer(const QString& answer) {
    const QString word = answer.section(QLatin1Char(' '), 0, 0);
    const QString text = answer.section(QLatin1Char(' '), 1);
    if (word == QLatin1String("prompt")) {
        Prompt->setText(text);
        Ready = true;
    } else if (word == QLatin1String("names")) {
        TakeNames(text.split(QLatin1Char('\t'), Qt::SkipEmptyParts));
    }
}

/// Completes as far as all names agree, and lists them when there are several. A line that has been edited meanwhile
/// stays.
void ConsoleView::TakeNames(const QStringList& names) {
    const QString before = Line->text().left(Line->cursorPosition());
    if (names.isEmpty() || !before.endsWith(Beginning)) {
        return;
    }
    const QString common = CommonBeginning(names);
    if (common.size() > Beginning.size()) {
        Line->setCursorPosition(static_cast<int>(before.size()));
        Line->insert(common.mid(Beginning.size()));
    } else if (names.size() > 1) {
        Print(names.join(QStringLiteral("  ")) + QLatin1Char('\n'));
    }
}

void ConsoleView::Print(const QString& text) {
    if (text.isEmpty()) {
        return;
    }
    QTextCursor end(Text->document());
    end.movePosition(QTextCursor::End);
    end.insertText(text);
    Text->verticalScrollBar()->setValue(Text->verticalScrollBar()->maximum());
}

}  // namespace quillara
