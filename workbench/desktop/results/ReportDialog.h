#pragma once

#include <QDialog>
#include <vector>

#include "platform/CountedPointer.h"
#include "workbench/documents/ResultDocument.h"

class QListWidget;
class QPushButton;

namespace quillara {

class ExplorationModel;

/// Lets the user choose documents for a report and save or print it.
class ReportDialog : public QDialog {
    Q_OBJECT

  public:
    /// The model outlives it.
    ReportDialog(ExplorationModel& model, std::vector<CountedPointer<ResultDocument>> documents, QWidget* parent);

    [[nodiscard]] QListWidget& List() { return *Choices; }
    /// Saves the chosen documents. False when that fails, which the user is told.
    bool SaveTo(const QString& path);

  private:
    void AddButtons();
    void AskWhereToSave();
    [[nodiscard]] std::vector<CountedPointer<ResultDocument>> Chosen() const;
    void ShowState();

    ExplorationModel& Model;
    const std::vector<CountedPointer<ResultDocument>> Documents;
    QListWidget* Choices;
    std::vector<QPushButton*> Makers;
};

}  // namespace quillara
