#pragma once

#include <QObject>

class QDockWidget;
class QMenu;

namespace quillara {

class ConsoleView;
class MainWindow;
class ScriptView;

/// The panels of the main window for scripts and for the console, and their menu.
class ScriptPanels : public QObject {
    Q_OBJECT

  public:
    /// Belongs to the window.
    explicit ScriptPanels(MainWindow& window);

    [[nodiscard]] ScriptView& Script() { return *Scripts; }
    [[nodiscard]] ConsoleView& Console() { return *Python; }
    [[nodiscard]] QDockWidget& ScriptPanel() { return *ScriptDock; }
    [[nodiscard]] QDockWidget& ConsolePanel() { return *ConsoleDock; }

  protected:
    /// Before the window closes, the user is asked about a recording that isn't saved. A script that is dropped on the
    /// window is shown.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void AddActions();
    void ShowScript(const QString& path);

    MainWindow& Window;
    QMenu* Menu;
    ScriptView* Scripts;
    ConsoleView* Python;
    QDockWidget* ScriptDock;
    QDockWidget* ConsoleDock;
};

}  // namespace quillara
