#pragma once

#include <functional>

namespace quillara {

class Window;
struct Control;

/// What is done in a startup dialog, as a user does it. Throws as a Window where a control can't be used.
class DialogActions {
  public:
    /// Works in a modal dialog until it is closed. When it throws or leaves the dialog open, the dialog is cancelled.
    using Answer = std::function<void(Window&)>;

    DialogActions() = default;
    DialogActions(const DialogActions&) = delete;
    DialogActions& operator=(const DialogActions&) = delete;
    virtual ~DialogActions() = default;

    /// Clicks a button or box of the startup dialog. Dialogs that it opens are cancelled.
    virtual void Press(int id) = 0;
    /// Clicks a button that opens a modal dialog. What the answer throws comes out of here once the dialog is
    /// cancelled; an answer that leaves the dialog open is a DataError, and so is a dialog that isn't opened.
    virtual void Press(int id, const Answer& answer) = 0;
    virtual void ClickRow(int list, int row) = 0;
    virtual void TypeNumber(int field, double number) = 0;
    /// A control of the startup dialog; there must be one.
    [[nodiscard]] virtual const Control& At(int id) = 0;
};

}  // namespace quillara
