#include "workbench/desktop/data/DistributionDelegate.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "workbench/desktop/data/VariableModel.h"

namespace quillara {
namespace {

constexpr int Margin = 3;
constexpr int WidestBar = 12;
constexpr int WidthInCharacters = 18;

}  // namespace

void DistributionDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    const QVariantList bars = index.data(VariableModel::BarsRole).toList();
    qulonglong highest = 0;
    for (const QVariant& bar : bars) {
        highest = std::max(highest, bar.toULongLong());
    }
    if (highest == 0) {
        return;
    }
    const QRect room = option.rect.adjusted(Margin, Margin, -Margin, -Margin);
    const int width = std::clamp(room.width() / static_cast<int>(bars.size()), 2, WidestBar);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const QColor color = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Highlight);
    int left = room.left();
    for (const QVariant& bar : bars) {
        const double share = static_cast<double>(bar.toULongLong()) / static_cast<double>(highest);
        const int height =
            bar.toULongLong() == 0 ? 0 : std::max(1, static_cast<int>(std::lround(share * room.height())));
        painter->fillRect(QRect(left, room.bottom() - height + 1, width - 1, height), color);
        left += width;
    }
}

QSize DistributionDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QSize plain = QStyledItemDelegate::sizeHint(option, index);
    return {std::max(plain.width(), option.fontMetrics.averageCharWidth() * WidthInCharacters), plain.height()};
}

}  // namespace quillara
