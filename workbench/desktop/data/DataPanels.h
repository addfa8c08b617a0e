#pragma once

#include <QObject>
#include <memory>
#include <vector>

#include "workbench/desktop/data/MadeTableWindow.h"

class QDockWidget;
class QMenu;

namespace quillara {

class CaseGridView;
class MainWindow;
class VariableView;

/// What the main window shows of the data: panels for the cases and the variables, the menu that opens them, and a
/// window for each table that the analysis makes. Before the main window closes, the user is asked about those not
/// saved.
class DataPanels : public QObject {
    Q_OBJECT

  public:
    /// Belongs to the window.
    explicit DataPanels(MainWindow& window);

    [[nodiscard]] CaseGridView& Cases() { return *Grid; }
    [[nodiscard]] VariableView& Variables() { return *Dictionary; }
    [[nodiscard]] QDockWidget& CasePanel() { return *CaseDock; }
    [[nodiscard]] QDockWidget& VariablePanel() { return *VariableDock; }

    /// Those that are open, the oldest first.
    [[nodiscard]] std::vector<MadeTableWindow*> MadeTables() const;
    void SetAnswers(MadeTableWindow::Answers answers) { Answering = std::move(answers); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* MakeVariablePage();
    void ShowMade(std::shared_ptr<const DataTable> table, const QString& name);

    MainWindow& Window;
    QMenu* Menu;
    CaseGridView* Grid;
    VariableView* Dictionary;
    QDockWidget* CaseDock;
    QDockWidget* VariableDock;
    MadeTableWindow::Answers Answering = MadeTableWindow::AnswersOfUser();
    int Made = 0;
    int Edited = 0;
};

}  // namespace quillara
