// What a walk does in what it has opened: modal windows, menus, the picking of bars.

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <array>

#include "tests/workbench/desktop/UserWalk.h"
#include "tests/workbench/desktop/UserWalkSight.h"
#include "workbench/charts/ChartPainter.h"
#include "workbench/desktop/brushing/BrushingBar.h"
#include "workbench/desktop/results/ChartCanvas.h"
#include "workbench/desktop/results/ChartResultView.h"

namespace quillara {

/// The button that Return stands for, or the first.
void UserWalk::Confirm() {
    QPushButton* chosen = nullptr;
    for (auto* button : Front().findChildren<QPushButton*>()) {
        if (button->isVisible() && button->isEnabled() && !IsLeftAlone(*button) &&
            (chosen == nullptr || button->isDefault())) {
            chosen = button;
        }
    }
    if (chosen != nullptr) {
        Click(chosen, chosen->rect().center());
    }
}

void UserWalk::Escape() {
    Press(&Front(), Qt::Key_Escape);
}

void UserWalk::TakeItem() {
    auto* menu = qobject_cast<QMenu*>(&Front());
    if (menu == nullptr) {
        PressAnyKey();
        return;
    }
    std::vector<QAction*> actions;
    for (QAction* action : menu->actions()) {
        if (!action->isSeparator() && !IsForbidden(action->text())) {
            actions.push_back(action);
        }
    }
    if (actions.empty()) {
        menu->close();
        return;
    }
    QAction* action = AnyOf(actions);
    Note("item " + action->text().toStdString());
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
}

void UserWalk::PickBar() {
    auto* view = qobject_cast<ChartResultView*>(Picking()->parentWidget());
    if (view == nullptr) {
        return;
    }
    ChartCanvas& canvas = view->Canvas();
    const auto spots = ChartSpots(canvas);
    const QPoint point =
        spots.empty() || Chance(20) ? AnyPoint(canvas) : AnyOf(spots).Outline.boundingRect().center().toPoint();
    if (Chance(30)) {
        Note("point at a bar");
        QTest::mouseMove(&canvas, point);
    } else {
        Click(&canvas, point);
    }
}

void UserWalk::PressPickingKey() {
    static constexpr std::array keys = {Qt::Key_Left, Qt::Key_Right,  Qt::Key_Right, Qt::Key_Return,
                                        Qt::Key_U,    Qt::Key_Escape, Qt::Key_Tab};
    auto* view = qobject_cast<ChartResultView*>(Picking()->parentWidget());
    if (view != nullptr) {
        Press(&view->Canvas(), AnyOf(keys));
    }
}

void UserWalk::UseBrushingBar() {
    BrushingBar* bar = Picking();
    QPushButton* button = Chance(20) ? bar->DoneButton() : bar->Button(static_cast<std::size_t>(Below(2)));
    if (button != nullptr && button->isEnabled()) {
        Click(button, button->rect().center());
    }
}

}  // namespace quillara
