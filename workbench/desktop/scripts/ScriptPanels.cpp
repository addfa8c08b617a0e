#include "workbench/desktop/scripts/ScriptPanels.h"

#include <QAction>
#include <QDockWidget>
#include <QDropEvent>
#include <QEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <functional>

#include "workbench/desktop/data/BottomPanel.h"
#include "workbench/desktop/scripts/ConsoleView.h"
#include "workbench/desktop/scripts/ScriptView.h"
#include "workbench/desktop/window/MainWindow.h"

namespace quillara {
namespace {

/// The script that is dropped; empty: it is none. It would make an odd table.
QString DroppedScript(const QEvent& event) {
    const QList<QUrl> urls = static_cast<const QDropEvent&>(event).mimeData()->urls();
    const QString path = urls.isEmpty() ? QString() : urls.front().toLocalFile();
    return path.endsWith(QStringLiteral(".py"), Qt::CaseInsensitive) ? path : QString();
}

}  // namespace

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
    if (const QString script = event->type() == QEvent::Drop ? DroppedScript(*event) : QString(); !script.isEmpty()) {
        static_cast<QDropEvent*>(event)->acceptProposedAction();
        QTimer::singleShot(0, this, [this, script] { ShowScript(script); });  // whoever drags needn't wait
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void ScriptPanels::ShowScript(const QString& path) {
    ScriptDock->show();
    ScriptDock->raise();
    if (Scripts->OpenFile(path)) {
        Scripts->setFocus();
    }
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
