// What a walk does in the main window and its dialog.

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>
#include <array>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/workbench/desktop/UserWalk.h"
#include "tests/workbench/desktop/UserWalkSight.h"
#include "workbench/charts/ChartPainter.h"
#include "workbench/desktop/dialogs/DialogView.h"
#include "workbench/desktop/results/ChartCanvas.h"
#include "workbench/desktop/results/ChartResultView.h"
#include "workbench/desktop/window/StepBar.h"

namespace quillara {

/// One of the startup dialog.
void UserWalk::UseControl() {
    if (Main.Dialog() == nullptr) {
        return;
    }
    std::vector<PlacedWidget> usable;
    for (const PlacedWidget& placed : Main.Dialog()->All()) {
        if (placed.Widget->isVisible() && placed.Widget->isEnabled() && placed.Widget->focusPolicy() != Qt::NoFocus &&
            (placed.Control->Id != CancelCommand || Chance(4))) {
            usable.push_back(placed);
        }
    }
    if (usable.empty()) {
        return;
    }
    QWidget* widget = AnyOf(usable).Widget;
    if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
        Click(tabs->tabBar(), tabs->tabBar()->tabRect(Below(static_cast<std::size_t>(tabs->count()))).center());
    } else if (auto* list = qobject_cast<QAbstractItemView*>(widget)) {
        ClickAnyRow(*list);
    } else if (TakesText(*widget)) {
        Type(widget);
    } else {
        Click(widget, QPoint(6, widget->height() / 2));
    }
}

void UserWalk::UseRow() {
    const auto views = Reachable([](QWidget& widget) { return widget.inherits("QAbstractItemView"); });
    if (!views.empty()) {
        ClickAnyRow(*qobject_cast<QAbstractItemView*>(AnyOf(views)));
    }
}

void UserWalk::UseAnything() {
    const auto all = Reachable([](QWidget& widget) {
        return widget.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).size() < 3;
    });
    if (all.empty()) {
        return;
    }
    QWidget* widget = AnyOf(all);
    const QPoint point = AnyPoint(*widget);
    const int kind = Below(100);
    if (TakesText(*widget) && kind < 60) {
        Type(widget);
    } else if (kind < 80) {
        Click(widget, point);
    } else if (kind < 90) {
        DoubleClick(widget, point);
    } else {
        Note("context menu of " + NameOf(*widget));
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, widget->mapToGlobal(point));
        QApplication::sendEvent(widget, &event);
    }
}

void UserWalk::PressAnyKey() {
    using namespace Qt;
    static constexpr std::array<QKeyCombination, 34> keys = {
        Key_Tab,     Key_Backtab,  Key_Up,       Key_Down,     Key_Left,       Key_Right,       Key_Home,
        Key_End,     Key_Space,    Key_Space,    Key_Return,   Key_F4,         Key_F6,          Key_F7,
        Key_F1,      Key_Delete,   Key_Insert,   Key_PageDown, Key_A,          Key_S,           Key_U,
        Key_2,       CTRL | Key_A, CTRL | Key_C, CTRL | Key_0, CTRL | Key_Tab, ALT | Key_Up,    ALT | Key_Down,
        ALT | Key_N, ALT | Key_D,  ALT | Key_R,  ALT | Key_3,  ALT | Key_2,    CTRL | Key_Space};
    QWidget* focused = QApplication::focusWidget();
    const bool isInFront = focused != nullptr && focused->window() == Front().window() && !IsLeftAlone(*focused);
    Press(isInFront ? focused : &Front(), AnyOf(keys));
}

void UserWalk::GoBack() {
    std::vector<QToolButton*> crumbs;
    for (std::size_t place = 0; Main.Path().Crumb(place) != nullptr; ++place) {
        crumbs.push_back(Main.Path().Crumb(place));
        if (place > 0) {
            crumbs.push_back(Main.Path().Cross(place));
        }
    }
    const int kind = Below(100);
    auto* history = Main.findChild<QListWidget*>(QStringLiteral("history"));
    if (kind < 40) {
        Press(&Main, Qt::CTRL | Qt::Key_Z);
    } else if (kind < 65) {
        Press(&Main, Qt::CTRL | Qt::Key_Y);
    } else if (kind < 75 && history->isVisible()) {
        ClickAnyRow(*history);
    } else if (!crumbs.empty()) {
        QToolButton* crumb = AnyOf(crumbs);
        if (crumb->isVisible()) {
            Chance(80) ? Click(crumb, crumb->rect().center()) : Press(crumb, Qt::Key_Delete);
        }
    }
}

void UserWalk::OpenMenuOfResult() {
    const auto views = Reachable([](QWidget& widget) { return qobject_cast<DocumentView*>(&widget) != nullptr; });
    if (views.empty()) {
        return;
    }
    auto* view = AnyOf(views);
    QPoint point = AnyPoint(*view);
    auto* chart = qobject_cast<ChartResultView*>(view);
    if (chart != nullptr && Chance(80)) {
        if (const auto spots = ChartSpots(chart->Canvas()); !spots.empty()) {
            point = chart->Canvas().mapTo(view, AnyOf(spots).Outline.boundingRect().center().toPoint());
        }
    }
    Note("context menu of " + view->accessibleName().toStdString());
    const auto reason = Chance(80) ? QContextMenuEvent::Mouse : QContextMenuEvent::Keyboard;
    QContextMenuEvent event(reason, point, view->mapToGlobal(point));
    QApplication::sendEvent(view, &event);
}

/// By its keys, or by a click in its menu.
void UserWalk::RunAction() {
    QMenu* menu = nullptr;
    const QList<QAction*> menus = Main.menuBar()->actions();
    while (menu == nullptr || IsForbidden(menu->title())) {
        menu = AnyOf(menus)->menu();
    }
    RunActionOf(*menu);
}

void UserWalk::RunActionOf(QMenu& menu) {
    std::vector<QAction*> actions;
    menu.popup(Main.mapToGlobal(QPoint(5, 5)));
    for (QAction* action : menu.actions()) {
        if (action->isEnabled() && action->isVisible() && !action->isSeparator() && !IsForbidden(action->text())) {
            actions.push_back(action);
        }
    }
    if (actions.empty()) {
        menu.close();
        return;
    }
    QAction* action = AnyOf(actions);
    Note("action " + action->text().toStdString());
    if (!action->shortcut().isEmpty() && Chance(50)) {
        menu.close();
        Press(&Main, action->shortcut()[0]);
    } else {
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
    }
}

void UserWalk::Turn() {
    const auto all = Reachable([](QWidget&) { return true; });
    if (all.empty()) {
        return;
    }
    QWidget* widget = AnyOf(all);
    const QPointF point = AnyPoint(*widget);
    Note("wheel on " + NameOf(*widget));
    QWheelEvent wheel(point, widget->mapToGlobal(point), {}, {0, Chance(50) ? 120 : -240}, Qt::NoButton,
                      Chance(20) ? Qt::ControlModifier : Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &wheel);
}

void UserWalk::Brush() {
    QWidget* button = Main.Dialog() == nullptr ? nullptr : Main.Dialog()->Find(BrushButton);
    if (button != nullptr && button->isEnabled() && button->isVisible()) {
        Click(button, button->rect().center());
    }
}

}  // namespace quillara
