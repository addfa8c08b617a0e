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
    /// The selected rows that are shown, in their order.
    [[nodiscard]] std::vector<int> SelectedRows() const;
    /// Makes columns as wide as what stands in those of a list; the last takes what is left.
    void FitColumns(const ReportList& other);
    /// What the list would have, in letters and lines; on a small screen it gets along with less.
    void SetUsualRoom(int letters, int lines);
    [[nodiscard]] QSize sizeHint() const override;
    /// Lets the user select several rows and drag them to where a listener puts them.
    void SetDrags();
    /// Shows whether what is dragged would be put here.
    void SetDropTarget(bool isTarget);

  signals:
    /// The selected rows are held over a place of the screen, or have been dropped there.
    void rowsDragged(const QPoint& place, bool areDropped);

  protected:
    void startDrag(Qt::DropActions actions) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    void ShowColumns(const std::vector<ReportColumn>& columns);
    void ShowRows(const std::vector<ReportRow>& rows);

    std::vector<std::string> Headings;
    std::vector<ReportRow> ShownRows;
    QSize UsualRoom;
    int ShownSelected = -1;
    bool HasGridLines = false;
    bool IsDragging = false;
    bool IsDropTarget = false;
};

}  // namespace quillara
