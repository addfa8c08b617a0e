#pragma once

#include <QWidget>
#include <memory>

#include "workbench/desktop/data/CaseGridModel.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace quillara {

class ExplorationModel;

/// The cases of a table: a grid, above it how they are shown and what is looked for. Of an exploration it shows the
/// cases that its steps leave.
class CaseGridView : public QWidget {
    Q_OBJECT

  public:
    explicit CaseGridView(QWidget* parent = nullptr);

    /// Shows the table of an exploration from now on, as it changes; the model outlives the view.
    void Follow(ExplorationModel& model);
    /// Shows one table; null: none.
    void Show(std::shared_ptr<const DataTable> table);

    [[nodiscard]] CaseGridModel& Model() { return *Cases; }
    [[nodiscard]] QTableView& Grid() { return *Fields; }

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QWidget* MakeBar();
    void AddSearch(QWidget& bar);
    void Refresh();
    void ShowArranging();
    void ShowCount();
    void Find(bool isBackwards);
    void ShowFound(const FoundField& found);
    void Copy();

    ExplorationModel* Explored = nullptr;
    CaseGridModel* Cases;
    QTableView* Fields;
    QCheckBox* Labels = nullptr;
    QCheckBox* Filter = nullptr;
    QLineEdit* Sought = nullptr;
    QPushButton* Stop = nullptr;
    QLabel* Count = nullptr;
    BackgroundWork* Search;
    bool HasFailed = false;  // the last search
};

}  // namespace quillara
