#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "workbench/windows/Window.h"

namespace quillara {

/// A dialog of the host itself, which the user ends before going on: owns its window and acts as its procedure. OK
/// checks what the user has chosen and closes the window with OkCommand, or says what is wrong and leaves it open;
/// Cancel closes it with CancelCommand. Ids of controls are below 200; scripts press them.
class HostDialog : public WindowContent {
  public:
    /// Shows a message to the user.
    using Tell = std::function<void(std::string_view)>;
    /// What it says when memory is lacking for what was asked.
    static constexpr std::string_view NoMemory =
        "There is not enough memory for this; close other programs and try again.";

    HostDialog(const HostDialog&) = delete;
    HostDialog& operator=(const HostDialog&) = delete;
    ~HostDialog() override = default;

    /// The window, filled and not started yet; it lives as long as the dialog.
    [[nodiscard]] Window& Shown() { return TheWindow; }

  protected:
    /// The queue outlives the dialog. `tell` may be empty.
    HostDialog(MessageQueue& queue, const DialogResource& resource, Tell tell);
    /// A dialog with a title of its own.
    HostDialog(MessageQueue& queue, const DialogResource& resource, std::string title, Tell tell);

    /// The user has used a control other than OK and Cancel.
    virtual void Use(int control);
    /// Takes what stands in the window as the dialog's value. An exception's text tells the user what is wrong.
    virtual void Accept() = 0;
    /// Computes from the state of the window what is enabled.
    virtual void Update();

    [[nodiscard]] Control& At(int id) { return TheWindow.At(id); }

  private:
    std::int64_t Act(unsigned message, std::uint64_t wParam);
    void TryToAccept();
    void Say(std::string_view text) const;

    std::string Title;
    DialogResource Shape;
    Tell TellUser;
    Window TheWindow;
};

/// A row of a report list that stands for a numbered thing.
[[nodiscard]] ReportRow NumberedRow(int number, std::vector<std::string> cells);
/// What a row that NumberedRow made stands for.
[[nodiscard]] int NumberOf(const ReportRow& row);
/// The selected row of a report list; null when there is none.
[[nodiscard]] const ReportRow* SelectedRow(const Control& list);

}  // namespace quillara
