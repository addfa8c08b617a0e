#include "workbench/desktop/dialogs/CaseSelectionView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/WindowMessages.h"
#include "workbench/desktop/dialogs/FormulaCompleter.h"
#include "workbench/desktop/dialogs/ShownControls.h"
#include "workbench/dialogs/CaseSelectionDialog.h"

namespace quillara {
namespace {

using Dialog = CaseSelectionDialog;

constexpr int LinesOfOutcome = 3;
constexpr std::uint32_t FaultColour = 0x2020C0;  // blue-green-red

}  // namespace

CaseSelectionView::CaseSelectionView(Window& window, const CaseSelectionDialog& dialog, Act act, QWidget* parent)
    : DialogView(window, std::move(act), parent),
      Table(dialog.Data()),
      Formula(static_cast<QPlainTextEdit*>(Find(Dialog::Formula))),
      Outcome(new QLabel(this)),
      Completer(new FormulaCompleter(*Formula, Table)) {
    Arrange();
    Preview = std::make_unique<SelectionPreview>(
        Table, [this] { QMetaObject::invokeMethod(this, &CaseSelectionView::ShowOutcome, Qt::QueuedConnection); });
    connect(Formula, &QPlainTextEdit::textChanged, this, &CaseSelectionView::AskAgain);
    connect(Formula, &QPlainTextEdit::textChanged, Completer, &FormulaCompleter::OfferWhileTyping,
            Qt::QueuedConnection);
    AskAgain();
}

CaseSelectionView::~CaseSelectionView() = default;

void CaseSelectionView::Arrange() {
    Outcome->setTextFormat(Qt::PlainText);
    Outcome->setWordWrap(true);
    Outcome->setMinimumHeight(LinesOfOutcome * fontMetrics().lineSpacing());
    Outcome->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Outcome->setAccessibleName(tr("What the formula selects"));
    Formula->setMinimumSize(70 * fontMetrics().averageCharWidth(), 6 * fontMetrics().lineSpacing());
    auto* ends = new QHBoxLayout;
    ends->addStretch();
    ends->addWidget(Find(OkCommand));
    ends->addWidget(Find(CancelCommand));
    auto* examples = new QHBoxLayout;
    examples->addWidget(Find(NoControlId));
    examples->addWidget(Find(Dialog::Examples), 1);
    auto* all = new QVBoxLayout;
    all->addWidget(Find(Dialog::AllCases));
    all->addWidget(Find(Dialog::SelectedCases));
    all->addWidget(Formula, 1);
    all->addWidget(Outcome);
    all->addLayout(examples);
    all->addLayout(ends);
    LeaveToLayout(all);
}

void CaseSelectionView::Refresh() {
    const bool wasEnabled = Formula->isEnabled();
    DialogView::Refresh();
    if (wasEnabled != Formula->isEnabled()) {
        AskAgain();
        Formula->isEnabled() ? Formula->setFocus() : Formula->clearFocus();
    }
}

QString CaseSelectionView::Told() const {
    return Outcome->text();
}

void CaseSelectionView::AskAgain() {
    Formula->setExtraSelections({});
    if (Formula->isEnabled()) {
        Preview->Ask(Formula->toPlainText().toStdString());
    } else {
        Tell(tr("All %L1 cases are analysed").arg(Table.Cases), false);
    }
}

void CaseSelectionView::ShowOutcome() {
    const auto outcome = Preview->Take();
    if (outcome && Formula->isEnabled() && outcome->Formula == Formula->toPlainText().toStdString()) {
        Tell(QString::fromStdString(outcome->Text(Table.Cases)), !outcome->Fault.empty());
        MarkFault(*outcome);
    }
}

void CaseSelectionView::Tell(const QString& text, bool isFault) {
    QPalette palette;
    if (isFault) {
        palette.setColor(QPalette::WindowText, ReadableColour(FaultColour, palette.color(QPalette::Window)));
    }
    Outcome->setPalette(palette);
    Outcome->setText(text);
    const int lines = LinesOfOutcome * fontMetrics().lineSpacing();
    Outcome->setMinimumHeight(std::max(lines, Outcome->heightForWidth(Outcome->width())));
}

/// The word at the place, or the last sign where the formula ends too early.
void CaseSelectionView::MarkFault(const SelectionOutcome& outcome) {
    if (!outcome.Place) {
        return;
    }
    const QByteArray bytes = QByteArray::fromStdString(outcome.Formula);
    const auto place = QString::fromUtf8(bytes.left(static_cast<qsizetype>(*outcome.Place))).size();
    QTextEdit::ExtraSelection mark;
    mark.cursor = Formula->textCursor();
    mark.cursor.setPosition(static_cast<int>(place));
    const bool isAtEnd = mark.cursor.atEnd();
    mark.cursor.movePosition(isAtEnd ? QTextCursor::PreviousCharacter : QTextCursor::EndOfWord,
                             QTextCursor::KeepAnchor);
    if (!mark.cursor.hasSelection()) {
        mark.cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    }
    mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    mark.format.setUnderlineColor(ReadableColour(FaultColour, Formula->palette().color(QPalette::Base)));
    Formula->setExtraSelections({mark});
}

}  // namespace quillara
