#pragma once

#include <QTableView>

#include "workbench/desktop/data/VariableModel.h"

namespace quillara {

class ExplorationModel;

/// The variables of a table, each with a small histogram. A double click edits labels.
class VariableView : public QTableView {
    Q_OBJECT

  public:
    explicit VariableView(QWidget* parent = nullptr);

    /// Shows the table of an exploration from now on; the model outlives the view.
    void Follow(ExplorationModel& model);
    void Show(std::shared_ptr<const DataTable> table);
    [[nodiscard]] VariableModel& Model() { return *Variables; }

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void Refresh(ExplorationModel& model);
    void FitColumns();
    void FitColumn(int column);
    void EditValues(const QModelIndex& field);

    VariableModel* Variables;
};

}  // namespace quillara
