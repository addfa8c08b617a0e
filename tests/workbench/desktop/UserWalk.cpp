#include "tests/workbench/desktop/UserWalk.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "tests/Shares.h"
#include "tests/workbench/desktop/UserWalkSight.h"
#include "workbench/desktop/brushing/BrushingBar.h"
#include "workbench/desktop/window/Workspace.h"

namespace quillara {
namespace {

constexpr std::size_t Remembered = 60;
constexpr int Patience = 30;  // events in what an event has opened, before it is left

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
const std::array<UserWalk::Event, 10> UserWalk::AmongWindows = {{
    {"result",     22, &UserWalk::MakeResult},
    {"tab",        18, &UserWalk::UseTab},
    {"frame",      18, &UserWalk::UseFrame},
    {"arrange",    12, &UserWalk::Arrange},
    {"close",       8, &UserWalk::CloseResult},
    {"back",        8, &UserWalk::GoBack},
    {"control",     5, &UserWalk::UseControl},
    {"brush",       3, &UserWalk::Brush},
    {"drag",        3, &UserWalk::Drag},
    {"resize",      3, &UserWalk::Resize},
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

void UserWalk::Do(int events, Liking liking) {
    IsLeaving = false;
    Likes = liking;
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
    } else if (Likes == Liking::Windows) {
        run(AmongWindows);
    } else {
        run(InMain);
    }
}

}  // namespace quillara
