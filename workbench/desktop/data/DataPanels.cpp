#include "workbench/desktop/data/DataPanels.h"

#include <QAction>
#include <QDockWidget>
#include <QEvent>
#include <QMenu>
#include <utility>

#include "workbench/desktop/data/CaseGridView.h"
#include "workbench/desktop/data/VariableView.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/desktop/window/Workspace.h"

namespace quillara {

DataPanels::DataPanels(MainWindow& window)
    : QObject(&window),
      Window(window),
      Menu(&window.Menu(MainWindow::MenuName::Data)),
      Grid(new CaseGridView),
      Dictionary(new VariableView),
      CaseDock(AddPanel(QStringLiteral("casesPanel"), tr("&Cases"), QKeySequence(tr("Ctrl+1")), Grid)),
      VariableDock(
          AddPanel(QStringLiteral("variablesPanel"), tr("&Variables"), QKeySequence(tr("Ctrl+2")), Dictionary)) {
    window.tabifyDockWidget(CaseDock, VariableDock);
    Grid->Follow(window.Model());
    Dictionary->Follow(window.Model());
    window.installEventFilter(this);
    connect(&window.Model(), &ExplorationModel::tableMade, this, [this](const std::shared_ptr<const DataTable>& table) {
        // The command that has made it still runs.
        QMetaObject::invokeMethod(
            this, [this, table] { ShowMade(table); }, Qt::QueuedConnection);
    });
}

std::vector<MadeTableWindow*> DataPanels::MadeTables() const {
    const QList<MadeTableWindow*> open = Window.Results().findChildren<MadeTableWindow*>();
    return {open.begin(), open.end()};
}

void DataPanels::ShowMade(std::shared_ptr<const DataTable> table) {
    auto* shown = new MadeTableWindow(std::move(table), tr("Cases that remain %1").arg(++Made), Answering);
    Window.Results().addSubWindow(shown);
    shown->show();
}

bool DataPanels::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &Window && event->type() == QEvent::Close) {
        for (MadeTableWindow* table : MadeTables()) {
            Window.Results().setActiveSubWindow(table);
            if (!table->MayClose()) {
                event->ignore();
                return true;
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

/// A panel below the results that is closed at first; the entry of the menu shows and hides it.
QDockWidget* DataPanels::AddPanel(const QString& name, const QString& title, const QKeySequence& shortcut,
                                  QWidget* content) {
    auto* panel = new QDockWidget(QString(title).remove(QLatin1Char('&')), &Window);
    panel->setObjectName(name);
    panel->setWidget(content);
    Window.addDockWidget(Qt::BottomDockWidgetArea, panel);
    panel->hide();
    auto* shown = new QAction(title, panel);
    shown->setObjectName(name + QStringLiteral("Shown"));
    shown->setCheckable(true);
    shown->setShortcut(shortcut);
    connect(shown, &QAction::triggered, panel, [panel](bool isOn) {
        panel->setVisible(isOn);
        panel->raise();
    });
    connect(panel, &QDockWidget::visibilityChanged, shown, [panel, shown] { shown->setChecked(!panel->isHidden()); });
    Menu->addAction(shown);
    return panel;
}

}  // namespace quillara
