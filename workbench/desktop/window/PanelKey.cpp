#include "workbench/desktop/window/PanelKey.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QEvent>

namespace quillara {
namespace {

bool TakesKeys(const QWidget* widget) {
    return widget != nullptr && (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isVisible() &&
           widget->isEnabled() && widget->focusProxy() == nullptr;
}

/// Where a person works in a panel: the part that stands for it, where the focus was last, or the first that takes it.
QWidget* PlaceOfWork(QWidget& content) {
    QWidget* main = &content;
    while (main->focusProxy() != nullptr) {
        main = main->focusProxy();
    }
    if (TakesKeys(main)) {
        return main;
    }
    if (TakesKeys(content.focusWidget())) {
        return content.focusWidget();
    }
    for (QWidget* next = content.nextInFocusChain(); next != &content; next = next->nextInFocusChain()) {
        if (content.isAncestorOf(next) && TakesKeys(next)) {
            return next;
        }
    }
    return &content;
}

}  // namespace

PanelKey::PanelKey(QDockWidget& panel, QAction& shown) : QObject(&panel), Panel(panel), Shown(shown) {
    shown.setCheckable(true);
    shown.installEventFilter(this);
    connect(&shown, &QAction::triggered, this, [this] { Show(!IsInFront()); });
    connect(&panel, &QDockWidget::visibilityChanged, &shown, [this] { Shown.setChecked(!Panel.isHidden()); });
}

/// Only a key comes as an event; who chooses the entry in a menu wants what its mark says.
bool PanelKey::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Shortcut && IsInFront() && !IsWorkedIn()) {
        Enter();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

/// Not when it stands behind the tab of another.
bool PanelKey::IsInFront() const {
    return Panel.isVisible() && !Panel.visibleRegion().isEmpty();
}

bool PanelKey::IsWorkedIn() const {
    return Panel.isAncestorOf(QApplication::focusWidget());
}

void PanelKey::Show(bool isShown) {
    Panel.setVisible(isShown);
    Shown.setChecked(isShown);
    if (isShown) {
        Panel.raise();
        Enter();
    }
}

void PanelKey::Enter() {
    if (Panel.widget() != nullptr) {
        PlaceOfWork(*Panel.widget())->setFocus(Qt::ShortcutFocusReason);
    }
}

}  // namespace quillara
