#pragma once

#include <QMainWindow>
#include <array>
#include <vector>

#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/desktop/window/SessionKeeper.h"
#include "workbench/hosting/SettingsStore.h"

class QDockWidget;
class QLabel;
class QMenu;
class QStackedWidget;

namespace quillara {

class DialogView;
class ExploreMenu;
class GuideBar;
class LongWork;
class RemarkBar;
class StartPage;
class StepBar;
class TipTour;
class Workspace;

/// The window of the program: the startup dialog at its side, result windows in its middle, above them the path of
/// steps and what there is to say. Without data it shows the start page.
class MainWindow : public QMainWindow {
    Q_OBJECT

  public:
    /// Its menus, from left to right.
    enum class MenuName { File, Edit, Data, Explore, Results, View, Window, Help };

    /// `settings` outlives it; null: none are kept.
    explicit MainWindow(SettingsStore* settings, QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Opens a data file in place of the exploration that is there, while the window lives; false when that fails,
    /// which the user is told and which leaves all as it was, or when it is cancelled.
    bool Open(const QString& path);
    /// What a program's first window does: takes the places that it had, shows tips to a new user, and keeps sessions
    /// in a folder, of which it offers those that were left. An empty folder: none are kept, and the user is asked
    /// before steps or results are lost.
    void Welcome(const QString& sessions);
    [[nodiscard]] ExplorationModel& Model() { return *Explored; }
    [[nodiscard]] Workspace& Results() { return *Area; }
    /// The startup dialog; null without an exploration.
    [[nodiscard]] DialogView* Dialog() { return Startup; }
    [[nodiscard]] StepBar& Path() { return *Steps; }
    [[nodiscard]] RemarkBar& Remarks() { return *Told; }
    /// What runs long shows itself here.
    [[nodiscard]] LongWork& Work() { return *Working; }
    [[nodiscard]] QMenu& Menu(MenuName name) { return *Menus[static_cast<std::size_t>(name)]; }

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void Compose();
    void AddMenus();
    void AddFileMenu();
    void AddEditMenu();
    void AddViewMenus();
    void AddToolBar();
    void AddHelpMenu();
    void Connect();
    void ConnectWork();
    void ExploreEverything();
    void SearchCommands();
    void ShowPreferences();
    void TakePreferences();
    void AskForFile();
    void ListRecent();
    [[nodiscard]] bool MayEnd();
    void CloseData();
    void OfferSessions();
    void ListSessions(QMenu& menu);
    void Restore(std::size_t row);
    void Forget(std::size_t row);
    void FollowTable();
    void ShowDialog();
    void ShowState();
    void ShowHistory();
    void ShowEnd();
    void Undo(int states);

    static constexpr QSize FirstSize{1280, 860};

    ExplorationModel* Explored;
    Workspace* Area;
    StartPage* Start;
    QStackedWidget* Pages;
    StepBar* Steps;
    RemarkBar* Told;
    GuideBar* Guide;
    LongWork* Working;
    QDockWidget* Side;
    QDockWidget* Past;
    QLabel* Status;
    TipTour* Tips;
    SessionKeeper* Keeper = nullptr;  // null: sessions aren't kept
    std::vector<LeftSession> Offered;  // to be gone on with, the newest first
    std::array<QMenu*, 8> Menus{};
    ExploreMenu* Exploring = nullptr;
    DialogView* Startup = nullptr;
    QAction* UndoStep = nullptr;
    QAction* RedoStep = nullptr;
    QString OpenFile;
    const DataTable* Remarked = nullptr;  // that the remarks are about
};

}  // namespace quillara
