#pragma once

#include <memory>

#include "workbench/desktop/dialogs/DialogView.h"
#include "workbench/dialogs/SelectionPreview.h"

class QLabel;
class QPlainTextEdit;

namespace quillara {

class CaseSelectionDialog;
class FormulaCompleter;

/// The dialog that selects cases: while the formula is typed it tells how many cases that selects, or what is wrong
/// with it, and marks where; names and labels are completed.
class CaseSelectionView : public DialogView {
    Q_OBJECT

  public:
    CaseSelectionView(Window& window, const CaseSelectionDialog& dialog, Act act, QWidget* parent);
    ~CaseSelectionView() override;

    void Refresh() override;
    /// What it tells at present.
    [[nodiscard]] QString Told() const;

  private:
    void Arrange();
    void AskAgain();
    void ShowOutcome();
    void Tell(const QString& text, bool isFault);
    void MarkFault(const SelectionOutcome& outcome);

    const DataTable& Table;
    QPlainTextEdit* Formula;
    QLabel* Outcome;
    FormulaCompleter* Completer;
    std::unique_ptr<SelectionPreview> Preview;
};

}  // namespace quillara
