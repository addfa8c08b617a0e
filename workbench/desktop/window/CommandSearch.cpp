#include "workbench/desktop/window/CommandSearch.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

namespace quillara {
namespace {

constexpr int PlaceRole = Qt::UserRole;

/// The text of an action without the marks of its access key and of a dialog.
QString Plain(const QAction& action) {
    QString text = action.text();
    text.replace(QStringLiteral("&&"), QStringLiteral("\n")).remove('&').replace('\n', '&');
    return text.endsWith(QStringLiteral("...")) ? text.chopped(3) : text;
}

bool HasAll(const QString& text, const QStringList& words) {
    return std::ranges::all_of(words, [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

}  // namespace

CommandSearch::CommandSearch(const QMenuBar& menus, QWidget* parent)
    : QDialog(parent), Typed(new QLineEdit(this)), Found(new QListWidget(this)) {
    setObjectName(QStringLiteral("commandSearch"));
    setWindowTitle(tr("Search for a command"));
    Typed->setPlaceholderText(tr("What do you want to do?"));
    Typed->setAccessibleName(tr("Search for a command"));
    Typed->setClearButtonEnabled(true);
    Found->setAccessibleName(tr("Commands found"));
    Found->setFocusPolicy(Qt::NoFocus);
    Found->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Typed);
    layout->addWidget(Found);
    Typed->installEventFilter(this);
    connect(Typed, &QLineEdit::textChanged, this, &CommandSearch::Filter);
    connect(Typed, &QLineEdit::returnPressed, this, &CommandSearch::Run);
    connect(Found, &QListWidget::itemClicked, this, &CommandSearch::Run);
    Collect(menus.actions(), QString());
    Filter(QString());
    resize(fontMetrics().averageCharWidth() * 64, fontMetrics().height() * 22);
}

void CommandSearch::Collect(const QList<QAction*>& actions, const QString& path) {
    for (QAction* action : actions) {
        if (action->isSeparator() || !action->isVisible()) {
            continue;
        }
        const QString text = path.isEmpty() ? Plain(*action) : path + QStringLiteral(" › ") + Plain(*action);
        if (QMenu* menu = action->menu()) {
            emit menu->aboutToShow();  // some are filled then
            Collect(menu->actions(), text);
        } else {
            Entries.push_back({action, text});
        }
    }
}

/// What can be done now stands first.
void CommandSearch::Filter(const QString& typed) {
    const QStringList words = typed.split(' ', Qt::SkipEmptyParts);
    Found->clear();
    for (const bool enabled : {true, false}) {
        for (std::size_t place = 0; place < Entries.size(); ++place) {
            const Entry& entry = Entries[place];
            if (entry.Command == nullptr || entry.Command->isEnabled() != enabled ||
                !HasAll(entry.Text + ' ' + entry.Command->toolTip(), words)) {
                continue;
            }
            const QString keys = entry.Command->shortcut().toString(QKeySequence::NativeText);
            auto* item =
                new QListWidgetItem(keys.isEmpty() ? entry.Text : tr("%1    (%2)").arg(entry.Text, keys), Found);
            item->setToolTip(entry.Command->toolTip());
            item->setData(PlaceRole, static_cast<int>(place));
            item->setFlags(enabled ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags);
        }
    }
    Found->setCurrentRow(0);
}

void CommandSearch::Run() {
    const QListWidgetItem* item = Found->currentItem();
    if (item == nullptr || (item->flags() & Qt::ItemIsEnabled) == 0) {
        return;
    }
    const QPointer<QAction> command = Entries[static_cast<std::size_t>(item->data(PlaceRole).toInt())].Command;
    accept();
    QTimer::singleShot(0, parentWidget(), [command] {  // once this window has gone
        if (command != nullptr) {
            command->trigger();
        }
    });
}

bool CommandSearch::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Typed && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
            QCoreApplication::sendEvent(Found, event);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace quillara
