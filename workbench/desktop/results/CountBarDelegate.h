#pragma once

#include <QStyledItemDelegate>

namespace quillara {

/// Paints the cells of a result table: a bar behind each count, and a line above the missing data.
class CountBarDelegate : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void SetBars(bool hasBars) { HasBars = hasBars; }
    [[nodiscard]] bool ShowsBars() const { return HasBars; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    bool HasBars = true;
};

}  // namespace quillara
