// Calls on windows and list boxes by handle.

#include "host/WindowServices.h"

#include <string_view>

#include "workbench/windows/MessageQueue.h"
#include "workbench/windows/Window.h"

using quillara::Control;
using quillara::Window;

namespace {

Control* ControlOf(HWND handle) {
    return dynamic_cast<Control*>(handle);
}

/// The window of a handle, or of the control that it is.
Window* WindowOf(HWND handle) {
    if (auto* window = dynamic_cast<Window*>(handle)) {
        return window;
    }
    const Control* control = ControlOf(handle);
    return control == nullptr ? nullptr : control->Owner;
}

void Trace(Window* window, std::string_view call, std::uint64_t id) {
    if (window != nullptr && window->Messages().Trace) {
        window->Messages().Trace(std::string(call) + " " + std::to_string(id));
    }
}

void Trace(const Control& control, std::string_view call) {
    Trace(control.Owner, call, static_cast<std::uint64_t>(control.Id));
}

bool HasRow(const Control& list, int row) {
    return row >= 0 && static_cast<std::size_t>(row) < list.Rows.size();
}

}  // namespace

HWND GetDlgItem(HWND dialog, int id) {
    auto* window = dynamic_cast<Window*>(dialog);
    return window == nullptr ? nullptr : window->Find(id);
}

int GetDlgCtrlID(HWND control) {
    const Control* known = ControlOf(control);
    return known == nullptr ? 0 : known->Id;
}

void EnableWindow(HWND control, bool enable) {
    if (control != nullptr) {
        control->Enabled = enable;
    }
}

std::int64_t SendWindowMessage(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam) {
    Window* target = WindowOf(window);
    Trace(target, "Send", wParam);
    return target == nullptr ? 0 : target->Send(message, wParam, lParam);
}

void PostWindowMessage(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam) {
    if (Window* target = WindowOf(window)) {
        Trace(target, "Post", wParam);
        target->Post(message, wParam, lParam);
    }
}

void InitStaticListBox(HWND listBox, const char* const* texts) {
    Control* list = ControlOf(listBox);
    if (list == nullptr) {
        return;
    }
    Trace(*list, "Fill");
    list->Rows.clear();
    list->Selected = -1;
    for (; texts != nullptr && *texts != nullptr; ++texts) {
        list->Rows.emplace_back(*texts);
    }
}

int GetListSelection(HWND listBox) {
    const Control* list = ControlOf(listBox);
    if (list == nullptr) {
        return -1;
    }
    Trace(*list, "Selection");
    return list->Selected;
}

void SetListSelection(HWND listBox, int row) {
    if (Control* list = ControlOf(listBox)) {
        Trace(*list, "Select");
        list->Selected = HasRow(*list, row) ? row : -1;
    }
}

std::string GetListText(HWND listBox, int row) {
    const Control* list = ControlOf(listBox);
    return list != nullptr && HasRow(*list, row) ? list->Rows[static_cast<std::size_t>(row)] : "";
}

void InsertListText(HWND listBox, int row, const std::string& text) {
    Control* list = ControlOf(listBox);
    if (list != nullptr && row >= 0 && static_cast<std::size_t>(row) <= list->Rows.size()) {
        list->Rows.insert(list->Rows.begin() + row, text);
    }
}

void DeleteListRow(HWND listBox, int row) {
    Control* list = ControlOf(listBox);
    if (list == nullptr || !HasRow(*list, row)) {
        return;
    }
    list->Rows.erase(list->Rows.begin() + row);
    if (list->Selected == row) {
        list->Selected = -1;
    }
}
