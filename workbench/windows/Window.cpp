#include "workbench/windows/Window.h"

#include "host/WindowServices.h"

namespace quillara {

Control& Window::AddControl(int id) {
    return Controls[id];
}

Window& Window::AddPage() {
    return *Pages.emplace_back(std::make_unique<Window>());
}

Control* Window::Find(int id) {
    if (const auto own = Controls.find(id); own != Controls.end()) {
        return &own->second;
    }
    for (const auto& page : Pages) {
        if (Control* control = page->Find(id)) {
            return control;
        }
    }
    return nullptr;
}

}  // namespace quillara

HWND GetDlgItem(HWND dialog, int id) {
    auto* window = dynamic_cast<quillara::Window*>(dialog);
    return window == nullptr ? nullptr : window->Find(id);
}

void EnableWindow(HWND control, bool enable) {
    if (control != nullptr) {
        control->Enabled = enable;
    }
}

void InitStaticListBox(HWND listBox, const char* const* texts) {
    auto* control = dynamic_cast<quillara::Control*>(listBox);
    if (control == nullptr) {
        return;
    }
    control->Rows.clear();
    for (; texts != nullptr && *texts != nullptr; ++texts) {
        control->Rows.emplace_back(*texts);
    }
}
