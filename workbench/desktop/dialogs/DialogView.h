#pragma once

#include <QWidget>
#include <functional>
#include <map>
#include <vector>

#include "workbench/windows/Window.h"

class QTabWidget;

namespace quillara {

/// A window of the exploration as widgets, each at the place that its resource gives it, scaled to the font. What the
/// user does goes to the window by `act`; what has changed in the window is shown by Refresh.
class DialogView : public QWidget {
    Q_OBJECT

  public:
    /// Does something in the window, and what follows from it; it may show messages and open other windows.
    using Act = std::function<void(const std::function<void(Window&)>&)>;

    /// The window outlives the view, or is taken away by Detach.
    DialogView(Window& window, Act act, QWidget* parent = nullptr);

    /// Shows the state of the window's controls.
    void Refresh();
    /// The window goes: the view shows what it has shown, and does nothing any more.
    void Detach() { Shown = nullptr; }
    /// The widget of a control; null when there is none. One that stands in it twice gives the first.
    [[nodiscard]] QWidget* Find(int id) const;

  private:
    struct Place {
        DialogRectangle Units;
        QWidget* Widget;
    };

    void AddControls(const DialogResource& resource, QWidget* page);
    QWidget* Make(const ControlResource& row, QWidget* page);
    QWidget* MakeButton(const ControlResource& row, QWidget* page);
    QWidget* MakeList(const ControlResource& row, QWidget* page);
    QWidget* MakeReport(const ControlResource& row, QWidget* page);
    QWidget* MakeField(const ControlResource& row, QWidget* page);
    void Show(const Control& control, QWidget& widget);
    void Do(const std::function<void(Window&)>& action);

    Window* Shown;
    Act ActIn;
    QTabWidget* Tabs = nullptr;
    std::multimap<int, QWidget*> Widgets;  // by control
    bool IsRefreshing = false;
};

}  // namespace quillara
