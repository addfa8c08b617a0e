// What can be done with result windows, as a menu.

#include <QAction>
#include <QActionGroup>
#include <QMdiSubWindow>
#include <QMenu>

#include "workbench/desktop/results/DocumentView.h"
#include "workbench/desktop/results/ResultTitles.h"
#include "workbench/desktop/window/Workspace.h"

namespace quillara {
namespace {

/// The same key in the menu of each window would be nobody's.
void LeaveKeysToMenus(const QMdiSubWindow* front) {
    if (front != nullptr && front->systemMenu() != nullptr) {
        for (QAction* action : front->systemMenu()->actions()) {
            action->setShortcuts(QList<QKeySequence>());
        }
    }
}

}  // namespace

void Workspace::FillMenu(QMenu& menu) {
    QAction* tile = menu.addAction(tr("&Tile"), QKeySequence(QStringLiteral("Ctrl+Shift+T")), this, &Workspace::Tile);
    tile->setToolTip(tr("All results side by side; they stay so"));
    menu.addAction(tr("&Cascade"), QKeySequence(QStringLiteral("Ctrl+Shift+C")), this, &Workspace::Cascade);
    QAction* tabs = menu.addAction(tr("Ta&bs"), this, [this](bool isOn) { SetTabbed(isOn); });
    tabs->setCheckable(true);
    menu.addSeparator();
    menu.addAction(tr("&Next result"), QKeySequence(Qt::CTRL | Qt::Key_Tab), this, &QMdiArea::activateNextSubWindow);
    menu.addAction(tr("&Previous result"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), this,
                   &QMdiArea::activatePreviousSubWindow);
    QAction* report = menu.addAction(tr("&Report of results..."), this, &Workspace::MakeReport);
    menu.addAction(tr("C&lose result"), QKeySequence(QStringLiteral("Ctrl+W")), this, &QMdiArea::closeActiveSubWindow);
    connect(this, &QMdiArea::subWindowActivated, this, &LeaveKeysToMenus);
    QAction* close = menu.addAction(tr("Close &all"), this, &Workspace::CloseAll);
    menu.addSeparator();
    connect(&menu, &QMenu::aboutToShow, this, [this, &menu, tabs, report, close] {
        tabs->setChecked(viewMode() == TabbedView);
        report->setEnabled(!Windows.empty());
        close->setEnabled(!Windows.empty());
        ListWindows(menu);
    });
}

/// The first nine have numbers as access keys.
void Workspace::ListWindows(QMenu& menu) {
    delete menu.findChild<QActionGroup*>();
    auto* group = new QActionGroup(&menu);
    int number = 0;
    for (const Shown& shown : Windows) {
        const QString name = ShortTitleOf(*shown.Document).replace(u'&', QStringLiteral("&&"));
        ++number;
        QAction* action = group->addAction(shown.Frame->windowIcon(),
                                           number < 10 ? QStringLiteral("&%1 %2").arg(number).arg(name) : name);
        action->setCheckable(true);
        action->setChecked(shown.Frame == activeSubWindow());
        QMdiSubWindow* frame = shown.Frame;
        connect(action, &QAction::triggered, frame, [this, frame] { BringToFront(*frame); });
    }
    menu.addActions(group->actions());
}

}  // namespace quillara
