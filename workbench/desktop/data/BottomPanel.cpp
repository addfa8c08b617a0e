#include "workbench/desktop/data/BottomPanel.h"

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>

#include "workbench/desktop/window/PanelKey.h"
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
    shown->setShortcut(QKeySequence(shortcut));
    new PanelKey(*panel, *shown);  // the panel owns it
    menu.addAction(shown);
    return panel;
}

}  // namespace quillara
