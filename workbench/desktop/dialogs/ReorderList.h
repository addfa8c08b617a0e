#pragma once

#include <QListWidget>

namespace quillara {

/// A list whose rows can be dragged to another place, where that is allowed: with the mouse, which shows a line where
/// the row would come to stand, or with Alt and the arrow keys. It moves nothing by itself.
class ReorderList : public QListWidget {
    Q_OBJECT

  public:
    explicit ReorderList(QWidget* parent = nullptr);

    void SetReorders(bool reorders) { Reorders = reorders; }
    /// The row before which a dropped row would stand, while one is dragged; else -1.
    [[nodiscard]] int DropRow() const { return Drop; }

  signals:
    /// The current row is to stand before this one; the number of rows: at the end.
    void rowMoved(int target);
    /// The row that was selected before has been clicked, and not dragged.
    void rowChosenAgain(int row);

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] int RowBefore(int y) const;
    void ShowDrop(int row);
    void Move(int target);

    bool Reorders = false;
    QPoint Pressed;
    int SelectedBefore = -1;  // of the row under the pressed button; -1: it wasn't selected
    int Dragged = -1;  // the row under the pressed button
    int Drop = -1;
};

}  // namespace quillara
