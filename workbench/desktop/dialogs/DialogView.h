#pragma once

#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "workbench/desktop/dialogs/DialogPlacing.h"
#include "workbench/windows/Window.h"

class QLayout;
class QLineEdit;
class QTabWidget;

namespace quillara {

/// A window of the exploration as widgets, each at the place that its resource gives it, scaled to the font. What the
/// user does goes to the window by `act`, what has been typed before it; what has changed in the window is shown by
/// Refresh, and what hasn't is left alone.
class DialogView : public QWidget {
    Q_OBJECT

  public:
    /// Does something in the window, and what follows from it; it may show messages and open other windows, and take
    /// the view away.
    using Act = std::function<void(const std::function<void(Window&)>&)>;

    /// The window outlives the view, or is taken away by Detach.
    DialogView(Window& window, Act act, QWidget* parent = nullptr);
    /// How a button of the window is clicked; otherwise by Window::Click.
    void SetClick(std::function<void(Window&, int)> click) { ClickIn = std::move(click); }

    /// Shows the state of the window's controls.
    virtual void Refresh();
    /// Lets the window know what has been typed and not been told yet. Every action here begins with it.
    virtual void Commit();
    /// The window goes: the view shows what it has shown, and does nothing any more.
    void Detach() { Shown = nullptr; }
    /// The widget of a control; null when there is none. One that stands in it twice gives the first.
    [[nodiscard]] QWidget* Find(int id) const;
    /// The widgets of all controls, those without an id too.
    [[nodiscard]] const std::vector<PlacedWidget>& All() const { return Made; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// A view that arranges the widgets in a layout of its own begins so.
    void LeaveToLayout(QLayout* layout);
    /// The window; null when it has gone.
    [[nodiscard]] Window* TheWindow() const { return Shown; }
    /// Works in the window unless it is being shown, then shows it.
    void Do(const std::function<void(Window&)>& action);
    /// A button has been clicked; a view may do more than that.
    virtual void Click(int id);
    /// A row has been chosen in a list; a view may choose several.
    virtual void ChooseRow(int id, int row);
    virtual void DoubleClickRow(int id, int row);

  private:
    struct Page {
        const DialogResource* Resource;
        QWidget* Content;
        std::vector<PlacedWidget> Widgets;
    };

    void Build();
    void AddPage(const DialogResource& resource, QWidget* content);
    void AddTabs(QTabWidget& tabs);
    void Connect(const ControlResource& control, QWidget& widget);
    void ConnectList(int id, QWidget& widget);
    void ConnectField(int id, QWidget& widget);
    void TakeNotation();
    void EndTyping(QLineEdit& field);
    void Type(int id, const std::string& text);
    void TypeNumber(int id, double number);
    void PlaceAll();
    void PlacePage(const QObject* content);
    void LeaveField(QObject* field, Qt::FocusReason reason);
    [[nodiscard]] QWidget* WithAccessKey(const QKeyEvent& key) const;
    bool UseAccessKey(const QKeyEvent& key);
    bool ChangePage(const QKeyEvent& key);

    Window* Shown;
    Act ActIn;
    std::function<void(Window&, int)> ClickIn;
    std::vector<Page> Pages;  // the dialog itself first
    std::vector<PlacedWidget> Made;
    std::multimap<int, QWidget*> Widgets;  // by control
    QTabWidget* Tabs = nullptr;
    QSize Least;
    bool IsRefreshing = false;
    bool IsPlacing = false;
};

}  // namespace quillara
