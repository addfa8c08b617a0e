#include "workbench/desktop/dialogs/ReorderList.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

namespace quillara {

ReorderList::ReorderList(QWidget* parent) : QListWidget(parent) {
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // a tip shows what is cut
}

void ReorderList::mousePressEvent(QMouseEvent* event) {
    const QModelIndex under = indexAt(event->pos());
    const bool isAgain = event->button() == Qt::LeftButton && selectionModel()->isSelected(under);
    SelectedBefore = isAgain ? under.row() : -1;
    QListWidget::mousePressEvent(event);
    Pressed = event->pos();
    Dragged = Reorders && event->button() == Qt::LeftButton ? indexAt(event->pos()).row() : -1;
}

void ReorderList::mouseMoveEvent(QMouseEvent* event) {
    if (Dragged < 0) {
        QListWidget::mouseMoveEvent(event);
        return;
    }
    if (Drop >= 0 || (event->pos() - Pressed).manhattanLength() >= QApplication::startDragDistance()) {
        const int y = event->pos().y();
        const int beyond = y < 0 ? y : qMax(0, y - viewport()->height());
        verticalScrollBar()->setValue(verticalScrollBar()->value() + beyond);
        ShowDrop(RowBefore(y));
    }
}

void ReorderList::mouseReleaseEvent(QMouseEvent* event) {
    QListWidget::mouseReleaseEvent(event);
    const int target = Drop;
    ShowDrop(-1);
    Dragged = -1;
    if (target >= 0) {
        Move(target);
    } else if (SelectedBefore >= 0 && indexAt(event->pos()).row() == SelectedBefore) {
        emit rowChosenAgain(SelectedBefore);
    }
}

void ReorderList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && Drop >= 0) {
        ShowDrop(-1);
        Dragged = -1;
        SelectedBefore = -1;
    } else if (Reorders && event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Up) {
        Move(currentRow() - 1);
    } else if (Reorders && event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Down) {
        Move(currentRow() + 2);
    } else {
        QListWidget::keyPressEvent(event);
    }
}

void ReorderList::paintEvent(QPaintEvent* event) {
    QListWidget::paintEvent(event);
    if (Drop < 0 || count() == 0) {
        return;
    }
    const bool isLast = Drop == count();
    const QRect row = visualItemRect(item(isLast ? count() - 1 : Drop));
    const int y = qBound(1, isLast ? row.bottom() + 1 : row.top(), viewport()->height() - 2);
    QPainter painter(viewport());
    painter.setPen(QPen(palette().color(QPalette::Text), 2));
    painter.drawLine(row.left() + 1, y, row.right() - 1, y);
}

/// The row whose upper half, or that above it whose lower half, is at this height.
int ReorderList::RowBefore(int y) const {
    int row = 0;
    while (row < count() && visualItemRect(item(row)).center().y() < y) {
        ++row;
    }
    return row;
}

void ReorderList::ShowDrop(int row) {
    Drop = row;
    viewport()->setCursor(row >= 0 ? Qt::ClosedHandCursor : Qt::ArrowCursor);
    viewport()->update();
}

/// Before itself or behind itself a row stays where it is.
void ReorderList::Move(int target) {
    const int row = currentRow();
    if (row >= 0 && target >= 0 && target <= count() && target != row && target != row + 1) {
        emit rowMoved(target);
    }
}

}  // namespace quillara
