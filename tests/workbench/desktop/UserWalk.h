#pragma once

#include <QObject>
#include <QPoint>
#include <array>
#include <deque>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "workbench/desktop/window/MainWindow.h"

class QAbstractItemView;
class QMenu;

namespace quillara {

class BrushingBar;

/// A person who does anything at random in a main window, event by event, and goes on in whatever that opens. Windows
/// that choose files or printers are left at once, and scripts aren't run.
class UserWalk {
  public:
    UserWalk(MainWindow& window, unsigned seed) : Main(window), Random(seed) { WaitInside(); }

    /// What a person is after for a while.
    enum class Liking { Anything, Windows };

    /// So many events, and then leaves what is open.
    void Do(int events, Liking liking = Liking::Anything);
    /// What has been done last, a line each, the deepest of what was open indented.
    [[nodiscard]] std::string LastDone() const;

  private:
    struct Event {
        const char* Name;
        int Share;  ///< of 100
        void (UserWalk::*Do)();
    };
    static const std::array<Event, 12> InMain;
    static const std::array<Event, 10> AmongWindows;
    static const std::array<Event, 5> InModal;
    static const std::array<Event, 4> InPopup;
    static const std::array<Event, 6> InPicking;

    // Chance

    int Below(std::size_t limit) { return std::uniform_int_distribution<int>(0, static_cast<int>(limit) - 1)(Random); }
    bool Chance(int percent) { return Below(100) < percent; }
    template <typename Values>
    auto AnyOf(const Values& values) {
        return values[static_cast<decltype(std::size(values))>(Below(static_cast<std::size_t>(std::size(values))))];
    }
    QPoint AnyPoint(const QWidget& widget);

    // What is open

    /// Where the next event goes: what stands in front of all else.
    [[nodiscard]] QWidget& Front() const;
    [[nodiscard]] BrushingBar* Picking() const;
    [[nodiscard]] bool IsInside() const;
    [[nodiscard]] std::vector<QWidget*> Reachable(const std::function<bool(QWidget&)>& isWanted) const;

    void WaitInside();
    void ActInside();
    void LeaveInside();
    void Act();
    void Note(const std::string& what);

    // Hands

    void Click(QWidget* widget, QPoint point);
    void DoubleClick(QWidget* widget, QPoint point);
    void Press(QWidget* widget, QKeyCombination keys);
    void Type(QWidget* widget);
    void ClickAnyRow(QAbstractItemView& view);
    void DragIn(QWidget& begun, QPoint point);
    void RunActionOf(QMenu& menu);

    // Events

    void UseControl();
    void UseRow();
    void UseAnything();
    void PressAnyKey();
    void GoBack();
    void OpenMenuOfResult();
    void RunAction();
    void Turn();
    void Brush();
    void MakeResult();
    void UseTab();
    void UseFrame();
    void Arrange();
    void Drag();
    void CloseResult();
    void Resize();
    void Confirm();
    void Escape();
    void TakeItem();
    void PickBar();
    void PressPickingKey();
    void UseBrushingBar();

    MainWindow& Main;
    std::mt19937 Random;
    std::deque<std::string> Done;
    int Count = 0;
    int Inside = 0;  // events in what an event has opened
    int Depth = 0;
    bool IsLeaving = false;
    Liking Likes = Liking::Anything;
    QObject Waiting;  // what waits ends with it
};

}  // namespace quillara
