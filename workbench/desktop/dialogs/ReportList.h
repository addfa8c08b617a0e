#pragma once

#include <QTreeWidget>
#include <vector>

#include "workbench/windows/Control.h"

namespace quillara {

/// A report list: rows of cells under columns, with or without lines between them.
class ReportList : public QTreeWidget {
    Q_OBJECT

  public:
    explicit ReportList(QWidget* parent = nullptr);

    /// Shows the rows of a control; what is the same already stays as it is, scrolled as it is.
    void Show(const Control& control);
    void SetGridLines(bool shown);
    [[nodiscard]] int CurrentRow() const { return indexOfTopLevelItem(currentItem()); }
    /// The selected rows, in their order.
    [[nodiscard]] std::vector<int> SelectedRows() const;

  protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    void ShowColumns(const std::vector<ReportColumn>& columns);
    void ShowRows(const std::vector<ReportRow>& rows);

    std::vector<std::string> Headings;
    bool HasGridLines = false;
};

}  // namespace quillara
