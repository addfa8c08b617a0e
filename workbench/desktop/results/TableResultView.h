#pragma once

#include "workbench/desktop/results/DocumentView.h"

class QLabel;
class QTableView;

namespace quillara {

class CountBarDelegate;
class ResultTableModel;

/// A spreadsheet of results with its title and captions.
class TableResultView : public DocumentView {
    Q_OBJECT

  public:
    TableResultView(ResultDocument& document, ExplorationModel& model, QWidget* parent);
    void Refresh() override;
    void SetOptions(const ViewOptions& options) override;
    void Copy() override;
    [[nodiscard]] QString FileKinds() const override;
    void Print(QPrinter& printer) override;
    QSize sizeHint() const override;

    [[nodiscard]] QTableView& Cells() { return *Table; }

  protected:
    void resizeEvent(QResizeEvent* event) override;
    [[nodiscard]] DocumentPlace PlaceAt(QPoint point) const override;
    [[nodiscard]] DocumentPlace PlaceInFocus(QPoint& point) const override;

  private:
    void SetUpTable();
    void ShowTitle();
    [[nodiscard]] std::vector<std::string> CaptionLines() const;
    [[nodiscard]] int WidthOf(int column) const;
    void WidenColumns();

    ResultTableModel* Rows;
    CountBarDelegate* Painter;
    QLabel* Title;
    QLabel* Captions;
    QLabel* Corner;
    QTableView* Table;
    QAction* BarsSwitch;
};

}  // namespace quillara
