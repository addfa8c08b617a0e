#include "workbench/desktop/data/BottomPanel.h"

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>

#include "workbench/desktop/window/ViewArea.h"

namespace quillara {
namespace {

/// A panel that stands there already; null for none.
QDockWidget* AnyBelow(QMainWindow& window) {
    for (auto* panel : window.findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (window.dockWidgetArea(panel) == Qt::BottomDockWidgetArea) {
            return panel;
        }
    }
    return nullptr;
}

/// Not when it stands behind the tab of another.
bool IsInFront(const QDockWidget& panel) {
    return panel.isVisible() && !panel.visibleRegion().isEmpty();
}

/// Who opens a panel goes on in it.
void ShowInFront(QDockWidget& panel, bool isShown) {
    panel.setVisible(isShown);
    if (isShown) {
        panel.raise();
        panel.widget()->setFocus(Qt::ShortcutFocusReason);
    }
}

}  // namespace

QDockWidget* AddBottomPanel(QMainWindow& window, QMenu& menu, const QString& name, const QString& title,
                            const QString& shortcut, QWidget* content) {
    QDockWidget* neighbour = AnyBelow(window);
    auto* panel = new QDockWidget(QString(title).remove(QLatin1Char('&')), &window);
    panel->setObjectName(name);
    panel->setWidget(new ViewArea(content, panel));
    window.setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);  // the dialog keeps its height
    window.addDockWidget(Qt::BottomDockWidgetArea, panel);
    if (neighbour != nullptr) {
        window.tabifyDockWidget(neighbour, panel);
    }
    panel->hide();
    auto* shown = new QAction(title, panel);
    shown->setObjectName(name + QStringLiteral("Shown"));
    shown->setCheckable(true);
    shown->setShortcut(QKeySequence(shortcut));
    QObject::connect(shown, &QAction::triggered, panel, [panel, shown] {
        ShowInFront(*panel, !IsInFront(*panel));
        shown->setChecked(!panel->isHidden());
    });
    QObject::connect(panel, &QDockWidget::visibilityChanged, shown,
                     [panel, shown] { shown->setChecked(!panel->isHidden()); });
    menu.addAction(shown);
    return panel;
}

}  // namespace quillara
