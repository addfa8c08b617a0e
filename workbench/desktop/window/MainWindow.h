#pragma once

#include <QMainWindow>
#include <memory>

#include "workbench/desktop/window/ExplorationModel.h"
#include "workbench/hosting/SettingsStore.h"

class QDockWidget;
class QLabel;

namespace quillara {

class DialogView;
class Workspace;

/// The window of the program: the startup dialog at its side, result windows in its middle.
class MainWindow : public QMainWindow {
    Q_OBJECT

  public:
    /// `settings` outlives it; null: none are kept.
    explicit MainWindow(SettingsStore* settings, QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Opens a data file; false when that fails, which the user is told.
    bool Open(const QString& path);
    [[nodiscard]] ExplorationModel& Model() { return *Explored; }
    [[nodiscard]] Workspace& Results() { return *Area; }
    /// The startup dialog; null without an exploration.
    [[nodiscard]] DialogView* Dialog() { return Startup; }

  private:
    void AddMenus();
    void ShowDialog();
    void ShowState();
    void Undo(int states);

    ExplorationModel* Explored;
    Workspace* Area;
    QDockWidget* Side;
    QLabel* Status;
    DialogView* Startup = nullptr;
    QAction* UndoStep = nullptr;
    QAction* RedoStep = nullptr;
};

}  // namespace quillara
