#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/DialogResource.h"
#include "workbench/windows/Control.h"

namespace quillara {

class MessageQueue;

/// What a window shows; for a view of the window that shows more of it than its controls do.
class WindowContent {
  public:
    WindowContent() = default;
    WindowContent(const WindowContent&) = delete;
    WindowContent& operator=(const WindowContent&) = delete;
    virtual ~WindowContent() = default;
};

/// A window without a screen, made from a dialog resource: its controls by id, its pages, and what a user can do in it.
/// Its address is its handle, and so is that of a control. A control id that stands in it twice is one control.
/// Clicks reach the procedure as messages, which are run at once; entries into fields and drags don't. Messages to a
/// closed window are dropped, those that wait as it goes too. A disabled window can't be used.
class Window : public WindowHandleTag {
  public:
    /// Acts on a message of a window.
    using Procedure = std::function<std::int64_t(HWND, unsigned, std::uint64_t, std::int64_t)>;

    /// The queue and the resource outlive the window.
    Window(MessageQueue& queue, const DialogResource& resource, Procedure procedure);
    /// Tells the reordering objects of its lists that their window ends.
    ~Window() override;

    // Making it

    /// Adds a page whose controls are the window's own. The resource outlives the window.
    void AddPage(const DialogResource& page);
    /// Runs the start message, then asks for the colour of each control.
    void Start();

    // Messages

    std::int64_t Send(unsigned message, std::uint64_t wParam, std::int64_t lParam);
    void Post(unsigned message, std::uint64_t wParam, std::int64_t lParam);
    /// Runs the command of a control, whether or not it can be used; changes no check, unlike a click.
    std::int64_t SendCommand(int id);
    /// Runs a command of a button, or changes a check box or a radio button as a click does, whether or not the control
    /// can be seen and used; for scripts, which have rules of their own. Gives the result of the command.
    std::int64_t Press(Control& control);

    // What a user does. Each throws UsageError when the control isn't there, can't be seen, is disabled or is of
    // another kind; the text says which.

    /// Clicks a button, a check box, which changes its check, or a radio button, which takes the check from the others
    /// of its page; then the command is run.
    void Click(int id);
    /// Clicks a row of a list box or report list.
    void ClickRow(int id, int row);
    void DoubleClickRow(int id, int row);
    /// Clicks the first row whose first cell is this text.
    void ClickText(int id, std::string_view text);
    /// Replaces the text of an edit.
    void Type(int id, std::string_view text);
    /// Replaces the content of a number field; a number beyond its range becomes the nearest bound, one for an integer
    /// field the nearest whole number. Throws UsageError when it isn't finite.
    void TypeNumber(int id, double number);
    /// Drags the selected row of a list box so that it stands before row `target`.
    void Drag(int id, int target);

    // State

    [[nodiscard]] const DialogResource& Resource() const { return *Main; }
    [[nodiscard]] const std::vector<const DialogResource*>& Pages() const { return PageResources; }
    /// The control of an id; null when there is none.
    [[nodiscard]] Control* Find(int id);
    /// As Find; throws UsageError when there is none.
    [[nodiscard]] Control& At(int id);

    /// What it shows, which outlives it or owns it; null when that isn't told.
    void SetContent(WindowContent* content) { Content = content; }
    [[nodiscard]] WindowContent* Shows() const { return Content; }

    /// Marks the window as closed with a result, unless it is closed already.
    void Close(int result);
    [[nodiscard]] bool IsClosed() const { return Result.has_value(); }
    /// What it was closed with; 0 while it is open.
    [[nodiscard]] int CloseResult() const { return Result.value_or(0); }
    /// The queue that its messages wait in.
    [[nodiscard]] MessageQueue& Messages() const { return Queue; }

  private:
    void AddControls(const DialogResource& resource);
    void Tell(const char* name, std::initializer_list<double> numbers);
    void ChooseRow(Control& list, int row);
    [[nodiscard]] Control& Usable(int id, std::initializer_list<ControlKind> kinds);
    void TakeRadioCheck(const Control& button);
    void SelectRow(Control& list, int row);

    MessageQueue& Queue;
    const DialogResource* Main;
    std::vector<const DialogResource*> PageResources;
    Procedure Act;
    std::map<int, Control> Controls;
    std::optional<int> Result;
    WindowContent* Content = nullptr;
};

}  // namespace quillara
