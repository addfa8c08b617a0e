// What a walk does with result windows: makes, moves, arranges and closes them.

#include <QApplication>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <algorithm>
#include <array>

#include "resources/ControlIds.h"
#include "tests/workbench/desktop/UserWalk.h"
#include "tests/workbench/desktop/UserWalkSight.h"
#include "workbench/desktop/dialogs/DialogView.h"
#include "workbench/desktop/window/Workspace.h"

namespace quillara {

void UserWalk::MakeResult() {
    static constexpr std::array buttons = {FrequenciesButton, HistogramsButton, DescriptivesButton,
                                           SummaryButton,     PieChartsButton,  AutoUpdateBox};
    QWidget* button = Main.Dialog() == nullptr ? nullptr : Main.Dialog()->Find(AnyOf(buttons));
    if (button != nullptr && button->isEnabled() && button->isVisible()) {
        Click(button, QPoint(6, button->height() / 2));
    }
}

/// By the menu of windows.
void UserWalk::Arrange() {
    for (const QAction* action : Main.menuBar()->actions()) {
        const QList<QAction*> inside = action->menu() == nullptr ? QList<QAction*>() : action->menu()->actions();
        if (std::ranges::any_of(inside, [](const QAction* each) { return each->text() == QStringLiteral("&Tile"); })) {
            RunActionOf(*action->menu());
            return;
        }
    }
}

void UserWalk::UseTab() {
    auto* tabs = Main.Results().findChild<QTabBar*>(QString(), Qt::FindDirectChildrenOnly);
    if (tabs == nullptr || tabs->count() == 0) {
        Arrange();
        return;
    }
    const int tab = Below(static_cast<std::size_t>(tabs->count()));
    QWidget* cross = tabs->tabButton(tab, QTabBar::RightSide);
    const int kind = Below(100);
    if (kind < 35 && cross != nullptr) {
        Click(cross, cross->rect().center());
    } else if (kind < 65) {
        Click(tabs, tabs->tabRect(tab).center());
    } else if (kind < 80) {
        Note("middle click on a tab");
        QTest::mouseClick(tabs, Qt::MiddleButton, {}, tabs->tabRect(tab).center());
    } else {
        DragIn(*tabs, tabs->tabRect(tab).center());
    }
}

/// Mostly its title and the buttons in it.
void UserWalk::UseFrame() {
    const QList<QMdiSubWindow*> frames = Main.Results().subWindowList();
    if (frames.empty()) {
        MakeResult();
        return;
    }
    constexpr int titleHeight = 24;
    QMdiSubWindow* frame = AnyOf(frames);
    const int middle = titleHeight / 2;
    const int kind = Below(100);
    if (kind < 50) {
        Click(frame, QPoint(frame->width() - Below(100), middle));
    } else if (kind < 65) {
        DoubleClick(frame, QPoint(frame->width() / 2, middle));
    } else if (kind < 80) {
        Press(frame, AnyOf(std::array<QKeyCombination, 4>{Qt::CTRL | Qt::Key_Tab, Qt::CTRL | Qt::SHIFT | Qt::Key_Tab,
                                                          Qt::CTRL | Qt::Key_W, Qt::CTRL | Qt::Key_F4}));
    } else {
        DragIn(*frame, QPoint(frame->width() / 2, middle));
    }
}

void UserWalk::Drag() {
    const auto all = Reachable([](QWidget& widget) {
        return widget.parentWidget()->inherits("QAbstractItemView") || widget.inherits("QCustomPlot") ||
               widget.inherits("QMdiSubWindow");
    });
    if (all.empty()) {
        return;
    }
    QWidget* widget = AnyOf(all);
    DragIn(*widget, AnyPoint(*widget));
}

void UserWalk::DragIn(QWidget& begun, QPoint point) {
    const QPointer<QWidget> widget(&begun);
    Note("drag in " + NameOf(begun));
    QTest::mousePress(widget, Qt::LeftButton, {}, point);
    for (int moves = 1 + Below(4); moves > 0 && widget; --moves) {
        point = AnyPoint(*widget);
        QMouseEvent move(QEvent::MouseMove, point, widget->mapToGlobal(point), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(widget, &move);
    }
    if (widget && Chance(10)) {
        QTest::keyClick(widget, Qt::Key_Escape);
    }
    if (widget) {
        QTest::mouseRelease(widget, Qt::LeftButton, {}, point);
    }
}

void UserWalk::CloseResult() {
    const QList<QMdiSubWindow*> frames = Main.Results().subWindowList();
    if (!frames.empty()) {
        QMdiSubWindow* frame = AnyOf(frames);
        Note("close " + frame->windowTitle().toStdString());
        frame->close();
    }
}

void UserWalk::Resize() {
    Note("resize");
    Main.resize(600 + Below(500), 480 + Below(300));
}

}  // namespace quillara
