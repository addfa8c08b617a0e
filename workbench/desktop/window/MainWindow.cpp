#include "workbench/desktop/window/MainWindow.h"

#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QScrollArea>
#include <QStatusBar>
#include <exception>

#include "workbench/desktop/data/DataPanels.h"
#include "workbench/desktop/dialogs/DialogView.h"
#include "workbench/desktop/dialogs/ModalView.h"
#include "workbench/desktop/window/Workspace.h"
#include "workbench/formats/DataFile.h"

namespace quillara {

MainWindow::MainWindow(SettingsStore* settings, QWidget* parent)
    : QMainWindow(parent),
      Explored(new ExplorationModel(settings, this)),
      Area(new Workspace(*Explored, this)),
      Side(new QDockWidget(tr("Drill-Down"), this)),
      Status(new QLabel(this)) {
    setWindowTitle(tr("Quillara"));
    setCentralWidget(Area);
    Side->setObjectName(QStringLiteral("startupDialog"));
    addDockWidget(Qt::LeftDockWidgetArea, Side);
    statusBar()->addPermanentWidget(Status);
    AddMenus();
    new DataPanels(*this);
    Explored->SetAnswers({[this](Window& window) { return WorkInModal(window, this); },
                          [](BrushingRun&) { return false; },
                          [this](const QString& text) { QMessageBox::information(this, windowTitle(), text); }});
    connect(Explored, &ExplorationModel::replaced, this, &MainWindow::ShowDialog);
    connect(Explored, &ExplorationModel::changed, this, &MainWindow::ShowState);
    ShowState();
    resize(1280, 860);
}

MainWindow::~MainWindow() {
    Explored->End();
}

void MainWindow::AddMenus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open..."), QKeySequence::Open, this, [this] {
        const QString path = QFileDialog::getOpenFileName(this, tr("Open data"));
        if (!path.isEmpty()) {
            Open(path);
        }
    });
    file->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);
    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    UndoStep = edit->addAction(tr("&Undo step"), QKeySequence::Undo, this, [this] { Undo(-1); });
    RedoStep = edit->addAction(tr("&Redo step"), QKeySequence::Redo, this, [this] { Undo(1); });
    QMenu* window = menuBar()->addMenu(tr("&Window"));
    window->addAction(tr("&Tile"), Area, &QMdiArea::tileSubWindows);
    window->addAction(tr("&Cascade"), Area, &QMdiArea::cascadeSubWindows);
}

bool MainWindow::Open(const QString& path) {
    try {
        auto table = std::make_shared<DataTable>(ReadDataFile(path.toStdString()));
        ScriptOpening opening;
        opening.File = path.toStdString();
        Explored->Begin(std::move(table), std::move(opening));
    } catch (const std::exception& failure) {
        QMessageBox::warning(this, windowTitle(), QString::fromUtf8(failure.what()));
        return false;
    }
    return true;
}

void MainWindow::ShowDialog() {
    Startup = nullptr;
    delete Side->widget();
    if (Explored->Present() == nullptr || Explored->Present()->HasEnded()) {
        return;
    }
    const auto act = [this](const std::function<void(Window&)>& action) {
        Explored->Do([&](Exploration& exploration) { exploration.Use(exploration.Startup(), action); });
    };
    Startup = new DialogView(Explored->Present()->Startup(), act);
    auto* scroll = new QScrollArea;
    scroll->setWidget(Startup);
    Side->setWidget(scroll);
}

void MainWindow::ShowState() {
    Exploration* exploration = Explored->Present();
    const bool isOpen = exploration != nullptr && !exploration->HasEnded();
    UndoStep->setEnabled(isOpen && Explored->History().CanUndo());
    RedoStep->setEnabled(isOpen && Explored->History().CanRedo());
    if (!isOpen) {
        if (Startup != nullptr) {
            Startup->Detach();
            Startup->setEnabled(false);
        }
        Status->clear();
        return;
    }
    Startup->Refresh();
    const auto remaining = exploration->Remaining();
    const int all = exploration->Table().Cases;
    Status->setText(remaining ? tr("%1 of %2 cases").arg(remaining->Cases).arg(all) : tr("%1 cases").arg(all));
}

void MainWindow::Undo(int states) {
    Explored->GoTo(Explored->History().Present() + static_cast<std::size_t>(states));
}

}  // namespace quillara
