#include "workbench/desktop/scripts/ScriptPanels.h"

#include <QAction>
#include <QDockWidget>
#include <QEvent>
#include <QMenu>
#include <QMenuBar>
#include <functional>

#include "workbench/desktop/data/BottomPanel.h"
#include "workbench/desktop/scripts/ConsoleView.h"
#include "workbench/desktop/scripts/ScriptView.h"
#include "workbench/desktop/window/MainWindow.h"

namespace quillara {

ScriptPanels::ScriptPanels(MainWindow& window)
    : QObject(&window),
      Window(window),
      Menu(new QMenu(tr("S&cripts"), &window)),
      Scripts(new ScriptView(window.Model())),
      Python(new ConsoleView),
      ScriptDock(AddBottomPanel(window, *Menu, QStringLiteral("scriptPanel"), tr("&Script"), tr("Ctrl+3"), Scripts)),
      ConsoleDock(AddBottomPanel(window, *Menu, QStringLiteral("consolePanel"), tr("&Console"), tr("Ctrl+4"), Python)) {
    window.menuBar()->insertMenu(window.Menu(MainWindow::MenuName::Window).menuAction(), Menu);
    AddActions();
    window.installEventFilter(this);
}

bool ScriptPanels::eventFilter(QObject* watched, QEvent* event) {
    const bool closes = watched == &Window && event->type() == QEvent::Close && !Window.Model().IsBusy();
    if (closes && !Scripts->MayDrop()) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void ScriptPanels::AddActions() {
    const auto add = [this](const QString& text, void (ScriptView::*action)()) {
        Menu->addAction(text, this, [this, action] {
            ScriptDock->show();
            ScriptDock->raise();
            std::invoke(action, *Scripts);
        });
    };
    Menu->addSeparator();
    add(tr("&Record"), &ScriptView::Record);
    add(tr("S&top recording"), &ScriptView::StopRecording);
    add(tr("Script so &far"), &ScriptView::ShowSoFar);
    add(tr("R&un"), &ScriptView::Run);
}

}  // namespace quillara
