#include "workbench/desktop/data/DataPanels.h"

#include <QDockWidget>
#include <QEvent>
#include <QFileInfo>
#include <QMenu>
#include <QVBoxLayout>
#include <utility>

#include "workbench/desktop/data/BottomPanel.h"
#include "workbench/desktop/data/CaseGridView.h"
#include "workbench/desktop/data/LabelEditBar.h"
#include "workbench/desktop/data/VariableView.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/desktop/window/Workspace.h"

namespace quillara {
namespace {

/// A table that is made says what of: its file may be open no longer.
QString BaseName(const DataTable& table) {
    return QFileInfo(QString::fromStdString(table.FileName)).completeBaseName();
}

}  // namespace

DataPanels::DataPanels(MainWindow& window)
    : QObject(&window),
      Window(window),
      Menu(&window.Menu(MainWindow::MenuName::Data)),
      Grid(new CaseGridView),
      Dictionary(new VariableView),
      CaseDock(AddBottomPanel(window, *Menu, QStringLiteral("casesPanel"), tr("&Cases"), tr("Ctrl+1"), Grid)),
      VariableDock(AddBottomPanel(window, *Menu, QStringLiteral("variablesPanel"), tr("&Variables"), tr("Ctrl+2"),
                                  MakeVariablePage())) {
    Grid->Follow(window.Model());
    Dictionary->Follow(window.Model());
    window.installEventFilter(this);
    connect(&Dictionary->Model(), &VariableModel::tableEdited, this,
            [this](const std::shared_ptr<const DataTable>& table) {
                ShowMade(table, tr("Edited table %1 of %2").arg(++Edited).arg(BaseName(*table)));
            });
    connect(&window.Model(), &ExplorationModel::tableMade, this, [this](const std::shared_ptr<const DataTable>& table) {
        const QString source = BaseName(Window.Model().Present()->Table());
        const auto show = [this, table, source] {
            ShowMade(table, tr("Cases that remain %1 of %2").arg(++Made).arg(source));
        };
        QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);  // the command that has made it still runs
    });
}

std::vector<MadeTableWindow*> DataPanels::MadeTables() const {
    const QList<MadeTableWindow*> open = Window.Results().findChildren<MadeTableWindow*>();
    return {open.begin(), open.end()};
}

QWidget* DataPanels::MakeVariablePage() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new LabelEditBar(Dictionary->Model(), page));
    layout->addWidget(Dictionary);
    page->setFocusProxy(Dictionary);
    return page;
}

void DataPanels::ShowMade(std::shared_ptr<const DataTable> table, const QString& name) {
    auto* shown = new MadeTableWindow(std::move(table), name, Answering);
    Window.Results().addSubWindow(shown);
    shown->show();
}

bool DataPanels::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &Window && event->type() == QEvent::Close) {
        Dictionary->Model().KeepEdits();
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

}  // namespace quillara
