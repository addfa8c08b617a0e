// What the hands of a walk do with a widget.

#include <QAbstractItemView>
#include <QApplication>
#include <QPointer>
#include <QTest>

#include "tests/workbench/desktop/UserWalk.h"
#include "tests/workbench/desktop/UserWalkSight.h"

namespace quillara {

QPoint UserWalk::AnyPoint(const QWidget& widget) {
    const QRect seen = widget.visibleRegion().boundingRect();
    if (seen.isEmpty()) {
        return widget.rect().center();
    }
    return seen.topLeft() +
           QPoint(Below(static_cast<std::size_t>(seen.width())), Below(static_cast<std::size_t>(seen.height())));
}

void UserWalk::Click(QWidget* widget, QPoint point) {
    Note("click " + NameOf(*widget));
    const QPointer<QWidget> target(widget);
    widget->setFocus(Qt::MouseFocusReason);
    QTest::mousePress(widget, Qt::LeftButton, {}, point);
    if (target) {
        QTest::mouseRelease(widget, Qt::LeftButton, {}, point);
    }
}

void UserWalk::DoubleClick(QWidget* widget, QPoint point) {
    const QPointer<QWidget> target(widget);
    Click(widget, point);
    if (target && target->isVisible() && target->isEnabled()) {
        Note("double click");
        QMouseEvent press(QEvent::MouseButtonDblClick, point, widget->mapToGlobal(point), Qt::LeftButton,
                          Qt::LeftButton, {});
        QApplication::sendEvent(widget, &press);
        if (target) {
            QTest::mouseRelease(widget, Qt::LeftButton, {}, point);
        }
    }
}

void UserWalk::Press(QWidget* widget, QKeyCombination keys) {
    Note("press " + QKeySequence(keys).toString().toStdString() + " in " + NameOf(*widget));
    const QPointer<QWidget> target(widget);
    QTest::keyPress(widget, keys.key(), keys.keyboardModifiers());
    if (target) {
        QTest::keyRelease(widget, keys.key(), keys.keyboardModifiers());
    }
}

void UserWalk::Type(QWidget* widget) {
    static constexpr std::array texts = {
        "7", "3",   "12",     "2.5", "-1e3", "30 60", "20 20", "inc", "age > 40", "sex = \"Female\"", "missing(income)",
        "?", "age", "region", "x"};
    const char* text = AnyOf(texts);
    Note("type " + std::string(text) + " in " + NameOf(*widget));
    const QPointer<QWidget> target(widget);
    widget->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    for (const char* letter = text; *letter != '\0' && target && target->isVisible(); ++letter) {
        QTest::keyPress(target, *letter);
    }
}

void UserWalk::ClickAnyRow(QAbstractItemView& view) {
    const int rows = view.model() == nullptr ? 0 : view.model()->rowCount(view.rootIndex());
    if (rows == 0) {
        return;
    }
    const QModelIndex row = view.model()->index(Below(static_cast<std::size_t>(rows)), 0, view.rootIndex());
    view.scrollTo(row);
    const QPoint place = view.visualRect(row).center();
    Chance(85) ? Click(view.viewport(), place) : DoubleClick(view.viewport(), place);
}

}  // namespace quillara
