#include "workbench/desktop/window/LongWork.h"

#include <QApplication>
#include <QKeyEvent>
#include <QShortcutEvent>
#include <QWidget>
#include <utility>

#include "workbench/desktop/window/WorkPanel.h"

namespace quillara {
namespace {

constexpr int ShownAfter = 200;  // milliseconds
constexpr int DrawnEvery = 30;

/// Whether something comes from the user's hand.
bool IsInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletMove:
        case QEvent::TabletRelease:
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
            return true;
        default:
            return false;
    }
}

/// A tip or a menu goes by itself; it is no answer to the work.
bool IsClosing(const QObject& watched, const QEvent& event) {
    const auto* widget = qobject_cast<const QWidget*>(&watched);
    return event.type() == QEvent::Close && widget != nullptr && widget->windowType() != Qt::ToolTip &&
           widget->windowType() != Qt::Popup;
}

bool IsEscape(const QEvent& event) {
    if (event.type() == QEvent::Shortcut) {
        return static_cast<const QShortcutEvent&>(event).key() == QKeySequence(Qt::Key_Escape);
    }
    return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

}  // namespace

LongWork::LongWork(WorkPanel& panel, QObject* parent) : QObject(parent), Panel(panel) {
    Settling.setSingleShot(true);
    connect(&Settling, &QTimer::timeout, this, &LongWork::Settle);
    connect(&Panel, &WorkPanel::cancelled, this, &LongWork::Cancel);
}

LongWork::~LongWork() {
    qApp->removeEventFilter(this);
}

void LongWork::Begin(const QString& text, int total, std::function<void()> cancel) {
    Settling.stop();
    OnCancel = std::move(cancel);
    Runs = true;
    if (!Clock.isValid()) {
        Clock.start();
        SinceDrawn.start();
        qApp->installEventFilter(this);
    }
    Panel.Show(text, total);
}

/// Most work is done before anybody misses the window, and nothing comes in between.
void LongWork::Advance(int done) {
    if (!Runs || IsDrawing || Clock.elapsed() < ShownAfter || SinceDrawn.elapsed() < DrawnEvery) {
        return;
    }
    Panel.ShowDone(done);
    Panel.Rise();
    IsDrawing = true;
    QCoreApplication::processEvents();
    IsDrawing = false;
    SinceDrawn.restart();
}

void LongWork::End() {
    if (std::exchange(Runs, false)) {
        OnCancel = {};
        Settling.start(0);
    }
}

void LongWork::Cancel() {
    if (const auto cancel = std::exchange(OnCancel, {})) {
        Panel.ShowCancelled();
        cancel();
    }
}

void LongWork::Settle() {
    if (Runs || !Clock.isValid()) {
        return;
    }
    Settling.stop();
    qApp->removeEventFilter(this);
    Clock.invalidate();
    Panel.hide();
}

bool LongWork::eventFilter(QObject* watched, QEvent* event) {
    const bool isClosing = IsClosing(*watched, *event);
    if (!IsDrawing || !(IsInput(event->type()) || isClosing) ||
        !(watched->isWidgetType() || event->type() == QEvent::Shortcut)) {
        return false;
    }
    if (IsEscape(*event) || isClosing) {
        Cancel();
        event->ignore();
        return true;
    }
    const auto* widget = qobject_cast<QWidget*>(watched);
    return widget == nullptr || (widget != &Panel && !Panel.isAncestorOf(widget));
}

}  // namespace quillara
