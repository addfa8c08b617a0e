#include "workbench/desktop/results/CountBarDelegate.h"

#include <QPainter>

#include "workbench/desktop/results/ResultTableModel.h"

namespace quillara {
namespace {

constexpr int BarRim = 3;  // pixels above, below and beside a bar
constexpr float BarOpacity = 0.28F;

/// From the left, so that bars of a column begin together; the numbers stand at their right.
void DrawBar(QPainter& painter, const QStyleOptionViewItem& option, double share) {
    QColor color = option.palette.color(QPalette::Highlight);
    color.setAlphaF(BarOpacity);
    QRectF bar = QRectF(option.rect).adjusted(BarRim, BarRim, -BarRim, -BarRim);
    bar.setWidth(bar.width() * share);
    painter.fillRect(bar, color);
}

bool BeginsMissing(const QModelIndex& index) {
    const QModelIndex above = index.siblingAtRow(index.row() - 1);
    return index.data(ResultTableModel::IsMissingRole).toBool() && above.isValid() &&
           !above.data(ResultTableModel::IsMissingRole).toBool();
}

}  // namespace

void CountBarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QVariant share = index.data(ResultTableModel::CountShareRole);
    if (HasBars && share.isValid() && !option.state.testFlag(QStyle::State_Selected)) {
        DrawBar(*painter, option, share.toDouble());
    }
    QStyledItemDelegate::paint(painter, option, index);
    if (BeginsMissing(index)) {
        painter->setPen(option.palette.color(QPalette::Mid));
        painter->drawLine(option.rect.topLeft(), option.rect.topRight());
    }
}

}  // namespace quillara
