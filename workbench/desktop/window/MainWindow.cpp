#include "workbench/desktop/window/MainWindow.h"

#include <QAbstractButton>
#include <QDockWidget>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "resources/ControlIds.h"
#include "workbench/desktop/data/DataPanels.h"
#include "workbench/desktop/dialogs/DialogView.h"
#include "workbench/desktop/dialogs/ListMenus.h"
#include "workbench/desktop/dialogs/ModalView.h"
#include "workbench/desktop/results/ViewOptions.h"
#include "workbench/desktop/scripts/ScriptPanels.h"
#include "workbench/desktop/window/BusyPointer.h"
#include "workbench/desktop/window/ExploreMenu.h"
#include "workbench/desktop/window/GuideBar.h"
#include "workbench/desktop/window/HistoryPanel.h"
#include "workbench/desktop/window/LongWork.h"
#include "workbench/desktop/window/Preferences.h"
#include "workbench/desktop/window/RecentFiles.h"
#include "workbench/desktop/window/RemarkBar.h"
#include "workbench/desktop/window/StartPage.h"
#include "workbench/desktop/window/StepBar.h"
#include "workbench/desktop/window/StepTexts.h"
#include "workbench/desktop/window/TipTour.h"
#include "workbench/desktop/window/ViewArea.h"
#include "workbench/desktop/window/WorkPanel.h"
#include "workbench/desktop/window/Workspace.h"
#include "workbench/exploration/FirstLook.h"
#include "workbench/exploration/StartupClicks.h"
#include "workbench/hosting/WaitCursor.h"

namespace quillara {
namespace {

bool Ask(QWidget* parent, const QString& question, const QString& action) {
    QMessageBox box(QMessageBox::Question, parent->windowTitle(), question, QMessageBox::Cancel, parent);
    const QPushButton* yes = box.addButton(action, QMessageBox::AcceptRole);
    box.exec();
    return box.clickedButton() == yes;
}

/// "1077 of 2000 cases", with what is selected where that isn't all, and the weight.
QString StatusText(Exploration& exploration) {
    const QLocale locale;
    const auto selected = exploration.Selected();
    const auto remaining = exploration.Remaining();
    const int all = exploration.Table().Cases;
    QString text = remaining
                       ? QObject::tr("%1 of %2 cases").arg(locale.toString(remaining->Cases), locale.toString(all))
                       : QObject::tr("%1 cases").arg(locale.toString(all));
    if (selected && selected->Cases != all) {
        text += QObject::tr("   %1 selected").arg(locale.toString(selected->Cases));
    }
    if (const auto weight = exploration.WeightName()) {
        const QString sum = remaining && remaining->Weight ? locale.toString(*remaining->Weight, 'f', 1) : QString();
        text += QObject::tr("   weight: %1 (%2)").arg(QString::fromStdString(*weight), sum);
    }
    return text;
}

}  // namespace

MainWindow::MainWindow(SettingsStore* settings, QWidget* parent)
    : QMainWindow(parent),
      Explored(new ExplorationModel(settings, this)),
      Area(new Workspace(*Explored, this)),
      Start(new StartPage(this)),
      Pages(new QStackedWidget(this)),
      Steps(new StepBar(this)),
      Told(new RemarkBar(this)),
      Guide(new GuideBar(*Explored, this)),
      Working(new LongWork(*new WorkPanel(this), this)),
      Side(new QDockWidget(tr("Drill-Down"), this)),
      Past(new QDockWidget(tr("History"), this)),
      Status(new QLabel(this)),
      Tips(new TipTour(this)) {
    setWindowTitle(tr("Quillara"));
    setAcceptDrops(true);
    Compose();
    AddMenus();
    AddToolBar();
    new DataPanels(*this);
    new ScriptPanels(*this);
    Explored->SetAnswers(
        {[this](Window& window) { return WorkInModal(window, this); },
         [this](BrushingRun& run) { return Area->PickBar(run); },
         [this](const QString& text) { QMessageBox::information(FrontWindow(this), windowTitle(), text); },
         [this](const QString& question, const QString& action) { return Ask(this, question, action); }});
    connect(Area, &Workspace::pickingChanged, Side, &QWidget::setDisabled);
    connect(&Preferences::Shared(), &Preferences::changed, this, &MainWindow::TakePreferences);
    TakePreferences();
    Connect();
    ConnectWork();
    ShowDialog();
    ShowState();
    resize(FirstSize);
}

void MainWindow::TakePreferences() {
    const Preferences& shared = Preferences::Shared();
    Area->SetOptions({shared.HasFrequencyBars(), shared.HasMotion()});
}

MainWindow::~MainWindow() {
    Explored->End();
}

void MainWindow::Compose() {
    auto* middle = new QWidget(this);
    auto* column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    Pages->addWidget(Start);
    Pages->addWidget(Area);
    column->addWidget(Told);
    column->addWidget(Steps);
    column->addWidget(Guide);
    column->addWidget(Pages, 1);
    column->addWidget(Tips);
    setCentralWidget(middle);
    Side->setObjectName(QStringLiteral("startupDialog"));
    addDockWidget(Qt::LeftDockWidgetArea, Side);
    Past->setObjectName(QStringLiteral("historyPanel"));
    Past->setWidget(new HistoryPanel(*Explored, this));
    addDockWidget(Qt::RightDockWidgetArea, Past);
    Past->hide();
    Status->setAccessibleName(tr("Cases"));
    statusBar()->addPermanentWidget(Status);
    Start->ShowRecent(RecentFiles::All());
}

void MainWindow::Connect() {
    connect(Explored, &ExplorationModel::replaced, this, [this] {
        Remarked = Explored->Present() == nullptr ? nullptr : &Explored->Present()->Table();
        ShowDialog();
    });
    connect(Explored, &ExplorationModel::changed, this, &MainWindow::ShowState);
    connect(Explored, &ExplorationModel::remarkMade, this, [this](const Remark& remark) {
        FollowTable();
        Told->Add(remark);
    });
    connect(Start, &StartPage::openAsked, this, &MainWindow::AskForFile);
    connect(Start, &StartPage::fileChosen, this, &MainWindow::Open);
    connect(Start, &StartPage::restoreAsked, this, &MainWindow::Restore);
    connect(Start, &StartPage::forgetAsked, this, &MainWindow::Forget);
    connect(Guide, &GuideBar::allAsked, this, &MainWindow::ExploreEverything);
    connect(Exploring, &ExploreMenu::allAsked, this, &MainWindow::ExploreEverything);
    connect(Steps, &StepBar::wentBack, this,
            [this](std::size_t steps) { Explored->DoNext([this, steps] { Explored->BackTo(steps); }); });
    connect(Steps, &StepBar::undone, this, [this](const QString& variable) {
        Explored->DoNext([this, name = variable.toStdString()] {
            Explored->Do([&](Exploration& exploration) { exploration.Up(name); });
        });
    });
}

void MainWindow::ConnectWork() {
    connect(Explored, &ExplorationModel::workBegan, this, [this](const QString& text, int total) {
        Working->Begin(text, total, [this] {
            if (Explored->Present() != nullptr) {
                Explored->Present()->Cancel();
            }
        });
    });
    connect(Explored, &ExplorationModel::workAdvanced, Working, &LongWork::Advance);
    connect(Explored, &ExplorationModel::workEnded, Working, &LongWork::End);
    connect(Explored, &ExplorationModel::turnCame, Working, &LongWork::Settle);
    HearWaitCursor(ShowBusyPointer);
    connect(Explored, &ExplorationModel::turnCame, this, [] { ShowBusyPointer(false); });
}

/// What it shows is seen at one glance.
void MainWindow::ExploreEverything() {
    Explored->DoNext([this] {
        Explored->Do([](Exploration& exploration) { ExploreAll(exploration); });
        Area->Tile();
    });
}

void MainWindow::ShowDialog() {
    Startup = nullptr;
    delete Side->widget();
    Exploration* exploration = Explored->Present();
    const bool isOpen = exploration != nullptr && !exploration->HasEnded();
    Pages->setCurrentWidget(isOpen ? static_cast<QWidget*>(Area) : Start);
    Side->setVisible(isOpen);
    if (!isOpen) {
        return;
    }
    const auto act = [this](const std::function<void(Window&)>& action) {
        Explored->Do([&](Exploration& now) { now.Use(now.Startup(), action); });
    };
    Startup = new DialogView(exploration->Startup(), act);
    Startup->SetClick([this](Window&, int id) { ClickInStartup(Explored->Present()->Analysed(), id); });
    AddListMenus(*Startup, *Explored);
    if (auto* options = qobject_cast<QAbstractButton*>(Startup->Find(OptionsButton))) {
        // Once the click has gone through the dialog, for which this button does nothing.
        connect(options, &QAbstractButton::clicked, this, &MainWindow::ShowPreferences, Qt::QueuedConnection);
    }
    auto* scroll = new ViewArea(Startup, Side);
    const int whole = Startup->minimumSizeHint().width() + scroll->verticalScrollBar()->sizeHint().width();
    scroll->setMinimumWidth(std::min(whole, screen()->availableSize().width() / 4));
    Side->setWidget(scroll);
}

/// The startup dialog opens other tables, which have other remarks.
void MainWindow::FollowTable() {
    const DataTable* table = Explored->Present() == nullptr ? Remarked : &Explored->Present()->Table();
    if (std::exchange(Remarked, table) != table) {
        Told->Clear();
    }
}

void MainWindow::ShowState() {
    FollowTable();
    Exploration* exploration = Explored->Present();
    const bool isOpen = exploration != nullptr && !exploration->HasEnded();
    const QString file = exploration == nullptr ? QString() : QString::fromStdString(exploration->Table().FileName);
    setWindowTitle(file.isEmpty() ? tr("Quillara") : tr("%1 - Quillara").arg(file));
    ShowHistory();
    if (!isOpen) {
        ShowEnd();
        return;
    }
    Startup->Refresh();
    Steps->Show(TrailOf(*exploration));
    Status->setText(StatusText(*exploration));
    Tips->GoOnAfter(*exploration);
}

void MainWindow::ShowHistory() {
    const ExplorationHistory& past = Explored->History();
    const bool isOpen = Explored->Present() != nullptr && !Explored->Present()->HasEnded();
    UndoStep->setEnabled(isOpen && past.CanUndo());
    RedoStep->setEnabled(isOpen && past.CanRedo());
    const std::size_t now = past.Present();
    const QString undone = UndoStep->isEnabled() ? ChangeText(past.Between(now - 1, now)) : QString();
    const QString redone = RedoStep->isEnabled() ? ChangeText(past.Between(now, now + 1)) : QString();
    UndoStep->setText(undone.isEmpty() ? tr("&Undo") : tr("&Undo: %1").arg(undone));
    RedoStep->setText(redone.isEmpty() ? tr("&Redo") : tr("&Redo: %1").arg(redone));
    UndoStep->setIconText(tr("Undo"));
    RedoStep->setIconText(tr("Redo"));
    UndoStep->setToolTip(UndoStep->isEnabled() ? tr("Undo: %1 (Ctrl+Z)").arg(undone) : tr("Undo (Ctrl+Z)"));
    RedoStep->setToolTip(RedoStep->isEnabled() ? tr("Redo: %1 (Ctrl+Y)").arg(redone) : tr("Redo (Ctrl+Y)"));
}

/// The startup dialog has been left, or there are no data.
void MainWindow::ShowEnd() {
    if (Startup != nullptr) {
        Startup->Detach();
        Startup->setEnabled(false);
        Side->hide();
    }
    Steps->Show({});
    Status->clear();
    Exploration* exploration = Explored->Present();
    if (exploration != nullptr && exploration->Documents().empty()) {
        QTimer::singleShot(0, Explored, [this] { Explored->End(); });  // once its last command has returned
    }
}

void MainWindow::Undo(int states) {
    Explored->DoNext(
        [this, states] { Explored->GoTo(Explored->History().Present() + static_cast<std::size_t>(states)); });
}

}  // namespace quillara
