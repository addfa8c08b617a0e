#include "tests/workbench/desktop/UserWalk.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "tests/Shares.h"
#include "workbench/charts/ChartPainter.h"
#include "workbench/desktop/brushing/BrushingBar.h"
#include "workbench/desktop/dialogs/DialogView.h"
#include "workbench/desktop/results/ChartCanvas.h"
#include "workbench/desktop/results/ChartResultView.h"
#include "workbench/desktop/window/StepBar.h"
#include "workbench/desktop/window/Workspace.h"

namespace quillara {
namespace {

constexpr std::size_t Remembered = 60;
constexpr int Patience = 30;  // events in what an event has opened, before it is left

/// What leads to files, printers and other programs, by a part of its text.
constexpr std::array Forbidden = {"rint", "ave as", "Save",   "Open...", "Open recent", "Run",    "R&un",
                                  "Quit", "ecord",  "onsole", "cript",   "Browse",      "Choose", "Close the data"};

bool IsForbidden(const QString& text) {
    return std::ranges::any_of(Forbidden, [&](const char* part) {
        return QString(text).remove(u'&').contains(QLatin1String(part)) && !text.contains(QStringLiteral("raw data"));
    });
}

bool IsOfFiles(const QWidget& window) {
    return qobject_cast<const QFileDialog*>(&window) != nullptr || window.inherits("QPrintDialog") ||
           window.inherits("QAbstractPrintDialog") || window.inherits("QPrintPreviewDialog");
}

bool IsLeftAlone(const QWidget& widget) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget); button && IsForbidden(button->text())) {
        return true;
    }
    for (const QWidget* parent = &widget; parent != nullptr; parent = parent->parentWidget()) {
        if (parent->objectName() == QStringLiteral("scriptPanel") ||
            parent->objectName() == QStringLiteral("consolePanel") || parent->inherits("QMenuBar")) {
            return true;
        }
    }
    return false;
}

std::string NameOf(const QWidget& widget) {
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    return widget.metaObject()->className() + std::string(" ") + widget.objectName().toStdString() +
           (button == nullptr ? "" : " \"" + button->text().toStdString() + "\"");
}

bool TakesText(const QWidget& widget) {
    return widget.inherits("QLineEdit") || widget.inherits("QPlainTextEdit") || widget.inherits("QAbstractSpinBox");
}

/// The area keeps the windows in the order in which they were in front as places among all of them.
bool HaveAllBeenInFront(const QMdiArea& area) {
    QList<QMdiSubWindow*> made = area.subWindowList();
    QList<QMdiSubWindow*> used = area.subWindowList(QMdiArea::ActivationHistoryOrder);
    std::ranges::sort(made);
    std::ranges::sort(used);
    return made == used;
}

}  // namespace

// clang-format off
const std::array<UserWalk::Event, 12> UserWalk::InMain = {{
    {"control",    28, &UserWalk::UseControl},
    {"row",        10, &UserWalk::UseRow},
    {"anything",    8, &UserWalk::UseAnything},
    {"key",        10, &UserWalk::PressAnyKey},
    {"back",       10, &UserWalk::GoBack},
    {"menu",        8, &UserWalk::OpenMenuOfResult},
    {"action",      9, &UserWalk::RunAction},
    {"wheel",       3, &UserWalk::Turn},
    {"drag",        4, &UserWalk::Drag},
    {"close",       5, &UserWalk::CloseResult},
    {"brush",       4, &UserWalk::Brush},
    {"resize",      1, &UserWalk::Resize},
}};
const std::array<UserWalk::Event, 5> UserWalk::InModal = {{
    {"anything",   45, &UserWalk::UseAnything},
    {"row",        18, &UserWalk::UseRow},
    {"key",        15, &UserWalk::PressAnyKey},
    {"OK",         14, &UserWalk::Confirm},
    {"Escape",      8, &UserWalk::Escape},
}};
const std::array<UserWalk::Event, 4> UserWalk::InPopup = {{
    {"item",       60, &UserWalk::TakeItem},
    {"key",        18, &UserWalk::PressAnyKey},
    {"wheel",       2, &UserWalk::Turn},
    {"Escape",     20, &UserWalk::Escape},
}};
const std::array<UserWalk::Event, 6> UserWalk::InPicking = {{
    {"bar",        45, &UserWalk::PickBar},
    {"key",        25, &UserWalk::PressPickingKey},
    {"option",     10, &UserWalk::UseBrushingBar},
    {"close",       4, &UserWalk::CloseResult},
    {"wheel",       6, &UserWalk::Turn},
    {"anything",   10, &UserWalk::UseAnything},
}};
// clang-format on

std::string UserWalk::LastDone() const {
    std::string lines;
    for (const std::string& line : Done) {
        lines += line + "\n";
    }
    return lines;
}

void UserWalk::Note(const std::string& what) {
    Done.push_back(std::to_string(Count) + std::string(2U * static_cast<unsigned>(Depth) + 1U, ' ') + what);
    if (Done.size() > Remembered) {
        Done.pop_front();
    }
    if (qEnvironmentVariableIsSet("QUILLARA_WALK_LOG")) {  // for events that end the program
        std::fprintf(stderr, "%s\n", Done.back().c_str());
    }
}

// What is open

QWidget& UserWalk::Front() const {
    if (QWidget* popup = QApplication::activePopupWidget()) {
        return *popup;
    }
    QWidget* modal = QApplication::activeModalWidget();
    return modal == nullptr ? Main : *modal;
}

BrushingBar* UserWalk::Picking() const {
    auto* bar = Main.Results().findChild<BrushingBar*>();
    return bar != nullptr && Main.Model().IsBusy() && &Front() == &Main ? bar : nullptr;
}

bool UserWalk::IsInside() const {
    return &Front() != &Main || Picking() != nullptr;
}

std::vector<QWidget*> UserWalk::Reachable(const std::function<bool(QWidget&)>& isWanted) const {
    std::vector<QWidget*> widgets;
    for (QWidget* widget : Front().findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->isEnabled() && widget->window() == Front().window() &&
            !widget->visibleRegion().isEmpty() && !IsLeftAlone(*widget) && isWanted(*widget)) {
            widgets.push_back(widget);
        }
    }
    return widgets;
}

// The walk

void UserWalk::Do(int events) {
    IsLeaving = false;
    for (const int last = Count + events; Count < last;) {
        Inside = 0;
        ++Count;
        Act();
        QCoreApplication::processEvents();
        if (!HaveAllBeenInFront(Main.Results())) {
            ADD_FAILURE() << "the area has lost count of its windows\n" << LastDone();
            return;
        }
    }
    IsLeaving = true;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (int quiet = 0; quiet < 3; quiet = IsInside() ? 0 : quiet + 1) {  // a command may begin another
        QCoreApplication::processEvents();
    }
}

/// A modal window, or the picking of bars, keeps the event that has opened it until it has been left: what is done in
/// it comes from its event loop.
void UserWalk::WaitInside() {
    QTimer::singleShot(0, &Waiting, [this] {
        WaitInside();
        if (IsInside()) {
            ++Depth;
            ActInside();
            --Depth;
        }
    });
}

void UserWalk::ActInside() {
    ++Count;
    if (++Inside > Patience || IsLeaving || IsOfFiles(Front())) {
        LeaveInside();
        return;
    }
    Act();
}

void UserWalk::LeaveInside() {
    Note("leave " + NameOf(Front()));
    if (Inside > 10 * Patience) {
        ADD_FAILURE() << "can't be left\n" << LastDone();
        std::abort();
    }
    if (BrushingBar* bar = Picking()) {
        Click(bar->DoneButton(), bar->DoneButton()->rect().center());
    } else if (auto* dialog = qobject_cast<QDialog*>(&Front())) {
        dialog->reject();
    } else if (&Front() != &Main) {
        Front().close();
    }
}

void UserWalk::Act() {
    const auto run = [this](const auto& events) {
        const Event& event = RowByShare(events, Below(100));
        (this->*event.Do)();
    };
    if (QApplication::activePopupWidget() != nullptr) {
        run(InPopup);
    } else if (QApplication::activeModalWidget() != nullptr) {
        run(InModal);
    } else if (Picking() != nullptr) {
        run(InPicking);
    } else {
        run(InMain);
    }
}

// Hands

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

// Events

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
    std::vector<QAction*> actions;
    const QList<QAction*> menus = Main.menuBar()->actions();
    while (menu == nullptr || IsForbidden(menu->title())) {
        menu = AnyOf(menus)->menu();
    }
    menu->popup(Main.mapToGlobal(QPoint(5, 5)));
    for (QAction* action : menu->actions()) {
        if (action->isEnabled() && action->isVisible() && !action->isSeparator() && !IsForbidden(action->text())) {
            actions.push_back(action);
        }
    }
    if (actions.empty()) {
        menu->close();
        return;
    }
    QAction* action = AnyOf(actions);
    Note("action " + action->text().toStdString());
    if (!action->shortcut().isEmpty() && Chance(50)) {
        menu->close();
        Press(&Main, action->shortcut()[0]);
    } else {
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
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

void UserWalk::Drag() {
    const auto all = Reachable([](QWidget& widget) {
        return widget.parentWidget()->inherits("QAbstractItemView") || widget.inherits("QCustomPlot") ||
               widget.inherits("QMdiSubWindow");
    });
    if (all.empty()) {
        return;
    }
    const QPointer<QWidget> widget(AnyOf(all));
    Note("drag in " + NameOf(*widget));
    QPoint point = AnyPoint(*widget);
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

void UserWalk::Brush() {
    QWidget* button = Main.Dialog() == nullptr ? nullptr : Main.Dialog()->Find(BrushButton);
    if (button != nullptr && button->isEnabled() && button->isVisible()) {
        Click(button, button->rect().center());
    }
}

void UserWalk::Resize() {
    Note("resize");
    Main.resize(600 + Below(500), 480 + Below(300));
}

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
