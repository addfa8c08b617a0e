// The menus and the tool bar of the main window.

#include <QCoreApplication>
#include <QDockWidget>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QShortcut>
#include <QToolBar>

#include "resources/ControlIds.h"
#include "workbench/desktop/results/DocumentView.h"
#include "workbench/desktop/window/CommandSearch.h"
#include "workbench/desktop/window/ExploreMenu.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/desktop/window/PanelKey.h"
#include "workbench/desktop/window/PreferencesDialog.h"
#include "workbench/desktop/window/RecentFiles.h"
#include "workbench/desktop/window/RemarkBar.h"
#include "workbench/desktop/window/TipTour.h"
#include "workbench/desktop/window/Workspace.h"

namespace quillara {

void MainWindow::AddMenus() {
    const std::array<QString, 8> titles = {tr("&File"),    tr("&Edit"), tr("&Data"),   tr("E&xplore"),
                                           tr("&Results"), tr("&View"), tr("&Window"), tr("&Help")};
    for (std::size_t menu = 0; menu < titles.size(); ++menu) {
        Menus[menu] = menuBar()->addMenu(titles[menu]);
    }
    AddFileMenu();
    AddEditMenu();
    Exploring = new ExploreMenu(*Explored, Menu(MenuName::Explore), Menu(MenuName::Results), this);
    AddViewMenus();
    AddHelpMenu();
    connect(new QShortcut(Qt::Key_F10, this), &QShortcut::activated, this,
            [this] { menuBar()->setActiveAction(menuBar()->actions().front()); });
}

void MainWindow::AddFileMenu() {
    QMenu& file = Menu(MenuName::File);
    file.addAction(tr("&Open..."), QKeySequence::Open, this, &MainWindow::AskForFile)
        ->setObjectName(QStringLiteral("open"));
    QMenu* recent = file.addMenu(tr("Open &recent"));
    recent->setObjectName(QStringLiteral("recentMenu"));
    connect(recent, &QMenu::aboutToShow, this, [this, recent] {
        recent->clear();
        for (const QString& path : RecentFiles::All()) {
            recent->addAction(QString(path).replace('&', QStringLiteral("&&")), this, [this, path] { Open(path); });
        }
        recent->addSeparator();
        recent->addAction(tr("&Forget these"), this, [this] {
            RecentFiles::Clear();
            ListRecent();
        });
    });
    QMenu* left = file.addMenu(tr("&Go on with"));
    left->setObjectName(QStringLiteral("leftMenu"));
    connect(left, &QMenu::aboutToShow, this, [this, left] { ListSessions(*left); });
    file.addAction(tr("&Close the data"), QKeySequence(tr("Ctrl+Shift+Q")), this,
                   [this] { Explored->DoNext([this] { CloseData(); }); })
        ->setObjectName(QStringLiteral("closeData"));
    file.addSeparator();
    QMenu* result = file.addMenu(tr("Result in &front"));
    result->setObjectName(QStringLiteral("resultMenu"));
    result->setEnabled(false);
    connect(Area, &QMdiArea::subWindowActivated, result, [result](const QMdiSubWindow* front) {
        const auto* view = front == nullptr ? nullptr : qobject_cast<DocumentView*>(front->widget());
        result->clear();
        result->setEnabled(view != nullptr);
        if (view != nullptr) {
            result->addActions(view->actions());
        }
    });
    file.addSeparator();
    file.addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);
}

void MainWindow::AddEditMenu() {
    QMenu& edit = Menu(MenuName::Edit);
    UndoStep = edit.addAction(tr("&Undo"), QKeySequence::Undo, this, [this] { Undo(-1); });
    RedoStep = edit.addAction(tr("&Redo"), this, [this] { Undo(1); });
    RedoStep->setShortcuts({QKeySequence(QStringLiteral("Ctrl+Y")), QKeySequence(QStringLiteral("Ctrl+Shift+Z"))});
    edit.addSeparator();
    edit.addAction(tr("&Search for a command..."), QKeySequence(QStringLiteral("Ctrl+Shift+P")), this,
                   &MainWindow::SearchCommands)
        ->setObjectName(QStringLiteral("searchCommands"));
    edit.addAction(tr("&Preferences..."), QKeySequence(QStringLiteral("Ctrl+,")), this, &MainWindow::ShowPreferences)
        ->setMenuRole(QAction::PreferencesRole);
    UndoStep->setObjectName(QStringLiteral("undo"));
    RedoStep->setObjectName(QStringLiteral("redo"));
}

void MainWindow::AddViewMenus() {
    QMenu& view = Menu(MenuName::View);
    const auto addPanel = [&view](QDockWidget& panel, const QString& title, int key) {
        QAction* shown = view.addAction(title);
        shown->setShortcut(QKeySequence(key));
        new PanelKey(panel, *shown);  // the panel owns it
    };
    addPanel(*Side, tr("&Drill-Down"), Qt::Key_F4);
    addPanel(*Past, tr("H&istory"), Qt::Key_F6);
    view.addAction(tr("&Remarks"), QKeySequence(QStringLiteral("F7")), this, [this] { Told->ShowAgain(); });
    Area->FillMenu(Menu(MenuName::Window));
}

void MainWindow::AddToolBar() {
    QToolBar* bar = addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("tools"));
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    bar->addAction(Menu(MenuName::File).actions().front());
    bar->addActions({UndoStep, RedoStep});
    bar->addSeparator();
    for (const int button : {DrillVariablesButton, DownButton, UpButton, BrushButton}) {
        bar->addAction(Exploring->Of(button));
    }
    bar->addSeparator();
    for (const int button : {SummaryButton, FrequenciesButton, HistogramsButton}) {
        bar->addAction(Exploring->Of(button));
    }
    bar->toggleViewAction()->setText(tr("&Tool bar"));
    Menu(MenuName::View).addAction(bar->toggleViewAction());
}

void MainWindow::AddHelpMenu() {
    QMenu& help = Menu(MenuName::Help);
    help.addAction(tr("&Tips for the start"), QKeySequence(QStringLiteral("F1")), Tips, &TipTour::Begin);
    help.addAction(tr("&About Quillara"), this, [this] {
        QMessageBox::about(
            this, tr("About Quillara"),
            tr("<b>Quillara</b> %1<br>Drill-down exploration of data files: narrow a table step by step, "
               "and see what remains.")
                .arg(QCoreApplication::applicationVersion()));
    });
}

void MainWindow::SearchCommands() {
    auto* search = new CommandSearch(*menuBar(), this);
    search->setAttribute(Qt::WA_DeleteOnClose);
    search->open();
}

void MainWindow::ShowPreferences() {
    auto* preferences = new PreferencesDialog(this);
    preferences->setAttribute(Qt::WA_DeleteOnClose);
    preferences->open();
}

}  // namespace quillara
