#include "workbench/desktop/dialogs/FormulaCompleter.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStringListModel>
#include <QTextCursor>

namespace quillara {
namespace {

QString ShownOffer(const FormulaOffer& offer) {
    const QString text = QString::fromStdString(offer.Text);
    return offer.Hint.empty() ? text : text + QStringLiteral("   ") + QString::fromStdString(offer.Hint);
}

}  // namespace

FormulaCompleter::FormulaCompleter(QPlainTextEdit& edit, const DataTable& table)
    : QCompleter(&edit), Edit(edit), Table(table) {
    setModel(new QStringListModel(this));
    setCompletionMode(UnfilteredPopupCompletion);
    setWidget(&edit);
    popup()->setAccessibleName(tr("Names and labels"));
    edit.installEventFilter(this);
    connect(this, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            [this](const QModelIndex& index) { Take(index.row()); });
}

void FormulaCompleter::Offer() {
    const QTextCursor cursor = Edit.textCursor();
    const QString before = Edit.toPlainText().left(cursor.position());
    Offers = OffersAt(Table, Edit.toPlainText().toStdString(), static_cast<std::size_t>(before.toUtf8().size()));
    if (Offers.Offers.empty()) {
        popup()->hide();
        return;
    }
    QStringList texts;
    for (const FormulaOffer& offer : Offers.Offers) {
        texts.append(ShownOffer(offer));
    }
    static_cast<QStringListModel*>(model())->setStringList(texts);
    QRect place = Edit.cursorRect();
    place.setWidth(popup()->sizeHintForColumn(0) + popup()->verticalScrollBar()->sizeHint().width());
    complete(place);
    popup()->setCurrentIndex(popup()->model()->index(0, 0));
}

void FormulaCompleter::OfferWhileTyping() {
    const QString before = Edit.toPlainText().left(Edit.textCursor().position());
    const bool hasBegun = !before.isEmpty() && !before.back().isSpace() && !before.back().isDigit();
    if (IsTaking || !hasBegun) {
        popup()->hide();
        return;
    }
    Offer();
    const QString typed = QString::fromUtf8(before.toUtf8().mid(static_cast<qsizetype>(Offers.From)));
    const bool isWhole = Offers.Offers.size() == 1 && QString::fromStdString(Offers.Offers.front().Text) == typed;
    if (typed.isEmpty() || isWhole) {
        popup()->hide();
    }
}

void FormulaCompleter::Take(int offer) {
    const QString text = Edit.toPlainText();
    const QByteArray before = text.left(Edit.textCursor().position()).toUtf8();
    const auto begin = QString::fromUtf8(before.left(static_cast<qsizetype>(Offers.From))).size();
    IsTaking = true;
    QTextCursor cursor = Edit.textCursor();
    cursor.setPosition(static_cast<int>(begin), QTextCursor::KeepAnchor);
    cursor.insertText(QString::fromStdString(Offers.Offers[static_cast<std::size_t>(offer)].Text));
    Edit.setTextCursor(cursor);
    IsTaking = false;
}

bool FormulaCompleter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QCompleter::eventFilter(watched, event);
    }
    const auto* key = static_cast<QKeyEvent*>(event);
    if (watched == &Edit && key->key() == Qt::Key_Space && key->modifiers() == Qt::ControlModifier) {
        Offer();
        return true;
    }
    const bool takes = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter || key->key() == Qt::Key_Tab;
    if (watched == popup() && takes && popup()->currentIndex().isValid()) {  // not a new line of the formula
        const int offer = popup()->currentIndex().row();
        popup()->hide();
        Take(offer);
        return true;
    }
    return QCompleter::eventFilter(watched, event);
}

}  // namespace quillara
