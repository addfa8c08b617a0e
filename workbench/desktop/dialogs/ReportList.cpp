#include "workbench/desktop/dialogs/ReportList.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

namespace quillara {
namespace {

constexpr double UsualDotsPerInch = 96.0;  // that widths of columns are given for
constexpr double UsualPointSize = 8.0;
constexpr int LeastLetters = 24;
constexpr int LeastLines = 4;  // with the headings
constexpr int LettersOfColumn = 24;  // that a column shows at most, unless it is the last

QString CellOf(const ReportRow& row, int column) {
    const auto place = static_cast<std::size_t>(column);
    return place < row.Cells.size() ? QString::fromStdString(row.Cells[place]) : QString();
}

bool IsNumeric(const QString& text) {
    bool isNumber = false;
    text.toDouble(&isNumber);
    return isNumber;
}

}  // namespace

ReportList::ReportList(QWidget* parent) : QTreeWidget(parent) {
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setVerticalScrollMode(ScrollPerPixel);
    header()->setStretchLastSection(true);
    header()->setSectionsMovable(false);
}

void ReportList::Show(const Control& control) {
    ShowColumns(control.Columns);
    const int rowsBefore = topLevelItemCount();
    ShowRows(control.ReportRows);
    const bool isAsBefore =
        std::exchange(ShownSelected, control.Selected) == control.Selected && topLevelItemCount() == rowsBefore;
    if (isAsBefore && selectionMode() == ExtendedSelection) {
        return;  // the user may be about to select several
    }
    if (control.Selected != CurrentRow() || (control.Selected >= 0 && !currentItem()->isSelected())) {
        setCurrentItem(topLevelItem(control.Selected));  // none: null
    }
}

void ReportList::SetGridLines(bool shown) {
    HasGridLines = shown;
}

std::vector<int> ReportList::SelectedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows()) {
        if (!isRowHidden(index.row(), {})) {
            rows.push_back(index.row());
        }
    }
    std::ranges::sort(rows);
    return rows;
}

void ReportList::FitColumns(const ReportList& other) {
    for (int column = 0; column + 1 < columnCount(); ++column) {
        const int needed = std::max(other.sizeHintForColumn(column), header()->sectionSizeHint(column));
        setColumnWidth(column, std::min(needed + 8, fontMetrics().averageCharWidth() * LettersOfColumn));
    }
    setColumnWidth(columnCount() - 1, header()->sectionSizeHint(columnCount() - 1));
}

void ReportList::SetUsualRoom(int letters, int lines) {
    const QSize unit(fontMetrics().averageCharWidth(), fontMetrics().lineSpacing());
    UsualRoom = {unit.width() * letters, unit.height() * lines};
    setMinimumSize(unit.width() * LeastLetters, unit.height() * LeastLines);
    updateGeometry();
}

QSize ReportList::sizeHint() const {
    return UsualRoom.isEmpty() ? QTreeWidget::sizeHint() : UsualRoom;
}

void ReportList::SetDrags() {
    setSelectionMode(ExtendedSelection);
    setDragEnabled(true);
}

void ReportList::SetDropTarget(bool isTarget) {
    if (isTarget != IsDropTarget) {
        IsDropTarget = isTarget;
        viewport()->update();
    }
}

/// Rows go to lists of the same dialog only: the mouse stays here.
void ReportList::startDrag(Qt::DropActions /*actions*/) {
    IsDragging = true;
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void ReportList::mouseMoveEvent(QMouseEvent* event) {
    if (IsDragging) {
        emit rowsDragged(event->globalPosition().toPoint(), false);
    } else {
        QTreeWidget::mouseMoveEvent(event);
    }
}

void ReportList::mouseReleaseEvent(QMouseEvent* event) {
    if (IsDragging) {
        IsDragging = false;
        viewport()->unsetCursor();
        emit rowsDragged(event->globalPosition().toPoint(), true);
    } else {
        QTreeWidget::mouseReleaseEvent(event);
    }
}

void ReportList::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    if (IsDropTarget) {
        QPainter painter(viewport());
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
    }
}

void ReportList::ShowColumns(const std::vector<ReportColumn>& columns) {
    std::vector<std::string> headings;
    QStringList labels;
    for (const ReportColumn& column : columns) {
        headings.push_back(column.Heading);
        labels.append(QString::fromStdString(column.Heading));
    }
    if (headings == Headings) {
        return;
    }
    Headings = headings;
    ShownRows.clear();
    setColumnCount(static_cast<int>(labels.size()));
    setHeaderLabels(labels);
    const double scale = fontInfo().pointSizeF() / UsualPointSize * logicalDpiX() / UsualDotsPerInch;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int needed = header()->sectionSizeHint(static_cast<int>(i));
        setColumnWidth(static_cast<int>(i), std::max(needed, static_cast<int>(columns[i].Width * scale)));
    }
}

void ReportList::ShowRows(const std::vector<ReportRow>& rows) {
    if (std::ranges::equal(rows, ShownRows, {}, &ReportRow::Cells, &ReportRow::Cells)) {
        return;
    }
    ShownRows = rows;
    const int count = static_cast<int>(rows.size());
    while (topLevelItemCount() > count) {
        delete takeTopLevelItem(topLevelItemCount() - 1);
    }
    QList<QTreeWidgetItem*> added;
    for (int row = 0; row < count; ++row) {
        QTreeWidgetItem* item = row < topLevelItemCount() ? topLevelItem(row) : added.emplace_back(new QTreeWidgetItem);
        for (int column = 0; column < columnCount(); ++column) {
            const QString text = CellOf(rows[static_cast<std::size_t>(row)], column);
            if (item->text(column) != text) {
                item->setText(column, text);
                item->setToolTip(column, text);
                item->setTextAlignment(column, column > 0 && IsNumeric(text) ? Qt::AlignRight | Qt::AlignVCenter
                                                                             : Qt::AlignLeft | Qt::AlignVCenter);
            }
        }
    }
    addTopLevelItems(added);
}

void ReportList::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QTreeWidget::drawRow(painter, option, index);
    if (!HasGridLines) {
        return;
    }
    painter->save();
    painter->setPen(palette().color(QPalette::Midlight));
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    for (int column = 0; column < columnCount(); ++column) {
        const int x = columnViewportPosition(column) + columnWidth(column) - 1;
        painter->drawLine(x, option.rect.top(), x, option.rect.bottom());
    }
    painter->restore();
}

}  // namespace quillara
