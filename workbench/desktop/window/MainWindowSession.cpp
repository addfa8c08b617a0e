// How explorations begin and end in the main window: files that are opened, and sessions that are left and gone on
// with.

#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <algorithm>
#include <exception>
#include <utility>

#include "workbench/desktop/window/FileReading.h"
#include "workbench/desktop/window/LongWork.h"
#include "workbench/desktop/window/MainWindow.h"
#include "workbench/desktop/window/Preferences.h"
#include "workbench/desktop/window/RecentFiles.h"
#include "workbench/desktop/window/RemarkBar.h"
#include "workbench/desktop/window/ScreenFit.h"
#include "workbench/desktop/window/SessionKeeper.h"
#include "workbench/desktop/window/StartPage.h"
#include "workbench/desktop/window/TipTour.h"
#include "workbench/desktop/window/Workspace.h"

namespace quillara {
namespace {

constexpr const char* GeometryName = "geometry";
constexpr const char* PlacesName = "places";
constexpr int PlacesVersion = 1;  // of docks and tool bars; another when they are others
constexpr std::size_t MostOffered = 3;
constexpr int NewsShownFor = 8000;  // milliseconds

/// "2 steps and 18 results"; empty: neither.
QString WorkIn(Exploration& exploration) {
    const auto steps = exploration.HasEnded() ? 0 : exploration.Steps().size();
    const auto results = exploration.Documents().size();
    QStringList parts;
    if (steps > 0) {
        parts.append(steps == 1 ? MainWindow::tr("1 step") : MainWindow::tr("%1 steps").arg(steps));
    }
    if (results > 0) {
        parts.append(results == 1 ? MainWindow::tr("1 result") : MainWindow::tr("%1 results").arg(results));
    }
    return parts.join(MainWindow::tr(" and "));
}

}  // namespace

void MainWindow::Welcome(const QString& sessions) {
    Preferences& shared = Preferences::Shared();
    resize(FirstSize.boundedTo(screen()->availableSize()));
    restoreGeometry(shared.Value(QString::fromLatin1(GeometryName)).toByteArray());
    restoreState(shared.Value(QString::fromLatin1(PlacesName)).toByteArray(), PlacesVersion);
    KeepOnScreen(*this);
    Side->setVisible(Startup != nullptr);
    if (!sessions.isEmpty()) {
        Keeper = new SessionKeeper(*Explored, sessions, this);
        Keeper->SetArrangement([this] { return Area->Arrangement(); });
        connect(Area, &Workspace::arranged, Keeper, &SessionKeeper::NoteChange);
        // The user's session ends, and with it this program, perhaps without another word.
        connect(qApp, &QGuiApplication::commitDataRequest, Keeper, &SessionKeeper::Keep);
        OfferSessions();
    }
    Tips->Greet();
}

// Files

void MainWindow::AskForFile() {
    const QString folder = OpenFile.isEmpty() ? QString() : QFileInfo(OpenFile).path();
    const QString path = QFileDialog::getOpenFileName(this, tr("Open data"), folder);
    if (!path.isEmpty()) {
        Open(path);
    }
}

void MainWindow::ListRecent() {
    Start->ShowRecent(RecentFiles::All());
}

bool MainWindow::Open(const QString& path) {
    if (Explored->IsPicking()) {
        Explored->DoNext([this, path] { Open(path); });
        return false;
    }
    if (Explored->IsBusy() || Working->IsUnderWay()) {
        return false;
    }
    TableReading::Outcome read = ReadWhileAlive(path, *Working);
    if (read.Table != nullptr && !MayEnd()) {
        return false;
    }
    bool isOpen = false;
    try {
        if (read.Table != nullptr) {
            Told->Clear();
            ScriptOpening opening;
            opening.File = path.toStdString();
            Explored->Begin(std::move(read.Table), std::move(opening));
            OpenFile = path;
            isOpen = true;
            if (Keeper != nullptr) {
                Keeper->SetFile(QFileInfo(path).absoluteFilePath());
            }
            RecentFiles::Add(path);
        }
    } catch (const std::exception& failure) {
        read.Failure = failure.what();
    }
    if (!read.Failure.empty()) {
        if (!QFileInfo::exists(path)) {
            RecentFiles::Remove(path);
        }
        Explored->ShowMessage(read.Failure);
    }
    for (const Remark& remark : read.Remarks) {
        Told->Add(remark);
    }
    ListRecent();
    return isOpen;
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && urls.front().isLocalFile()) {
        event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    event->acceptProposedAction();
    // Whoever the file is dragged from needn't wait until it is open.
    QTimer::singleShot(0, this, [this, path = urls.front().toLocalFile()] { Open(path); });
    if (urls.size() > 1) {
        statusBar()->showMessage(tr("One file at a time: the first of %1 is opened.").arg(urls.size()), NewsShownFor);
    }
}

// Sessions

/// Steps and results go with the exploration: they are kept to be gone on with, or the user is asked.
bool MainWindow::MayEnd() {
    Exploration* exploration = Explored->Present();
    const QString work = exploration == nullptr ? QString() : WorkIn(*exploration);
    const bool isKept = Keeper != nullptr && Keeper->Leave();
    if (work.isEmpty()) {
        return true;
    }
    const QString file = QString::fromStdString(exploration->Table().FileName);
    if (isKept) {
        statusBar()->showMessage(tr("Your work on %1 is kept: File > Go on with.").arg(file), NewsShownFor);
        return true;
    }
    return Explored->Confirm(
        tr("Your work on %1 ends here, and it can't be kept for later: %2 would be lost. The data file stays as it "
           "is.\n\nTo save something first, cancel: Scripts > Script so far shows the steps as a script, Explore > "
           "Save "
           "the cases that remain makes a file of them, and File > Result in front saves a result.")
            .arg(file, work),
        tr("&End it"));
}

void MainWindow::CloseData() {
    if (MayEnd()) {
        Explored->End();
        Told->Clear();
        OfferSessions();
    }
}

void MainWindow::OfferSessions() {
    std::vector<StartPage::LeftRow> rows;
    Offered = Keeper == nullptr ? std::vector<LeftSession>() : Keeper->Left();
    for (const LeftSession& left : Offered) {
        if (rows.size() < MostOffered) {
            rows.push_back({left.FileName(), left.State()});
        }
    }
    Start->ShowLeft(rows);
}

void MainWindow::ListSessions(QMenu& menu) {
    constexpr int widest = 60;  // in mean widths of a letter
    menu.clear();
    OfferSessions();
    const int width = menu.fontMetrics().averageCharWidth() * widest;
    for (std::size_t row = 0; row < Offered.size(); ++row) {
        const QString state = menu.fontMetrics().elidedText(Offered[row].State(), Qt::ElideRight, width);
        const QString text = QStringLiteral("%1: %2").arg(Offered[row].FileName(), state);
        menu.addAction(QString(text).replace('&', QStringLiteral("&&")), this, [this, row] { Restore(row); });
    }
    menu.addSeparator();
    QAction* forget = menu.addAction(tr("&Forget these"), this, [this] {
        std::ranges::for_each(Offered, &SessionKeeper::Forget);
        OfferSessions();
    });
    forget->setEnabled(!Offered.empty());
}

void MainWindow::Restore(std::size_t row) {
    if (row >= Offered.size()) {
        return;
    }
    const LeftSession left = Offered[row];
    if (Open(QString::fromStdString(left.Session.File)) && Explored->Restore(left.Session)) {
        Area->Arrange(left.Session.Windows);
        Keeper->Keep();
        SessionKeeper::Forget(left);
        statusBar()->clearMessage();
    }
    OfferSessions();
}

void MainWindow::Forget(std::size_t row) {
    if (row < Offered.size()) {
        SessionKeeper::Forget(Offered[row]);
    }
    OfferSessions();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (Explored->IsBusy()) {
        event->ignore();
        if (Explored->IsPicking()) {
            Explored->DoNext([this] { close(); });
        }
        return;
    }
    QMainWindow::closeEvent(event);
    if (!event->isAccepted() || !MayEnd()) {
        event->ignore();
        return;
    }
    Preferences::Shared().Remember(QString::fromLatin1(GeometryName), saveGeometry());
    Preferences::Shared().Remember(QString::fromLatin1(PlacesName), saveState(PlacesVersion));
    if (Keeper != nullptr) {
        Keeper->Remove();
    }
    Explored->End();
}

}  // namespace quillara
