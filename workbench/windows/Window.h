#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/Handles.h"

/// What a handle of a window points to: a window or a control of the model below.
struct WindowHandleTag {
    WindowHandleTag() = default;
    WindowHandleTag(const WindowHandleTag&) = delete;
    WindowHandleTag& operator=(const WindowHandleTag&) = delete;
    virtual ~WindowHandleTag() = default;

    bool Enabled = true;
};

namespace quillara {

/// A control of a window.
struct Control : WindowHandleTag {
    std::vector<std::string> Rows;  ///< of a list box
};

/// A window without a screen: its controls by id, and its pages, which are windows themselves. Its address is its
/// handle, and so is that of a control.
class Window : public WindowHandleTag {
  public:
    /// Adds a control, or gives the one that has the id. It lives as long as the window.
    Control& AddControl(int id);
    /// Adds a page. It lives as long as the window.
    Window& AddPage();
    /// The control of an id, of this window before those of its pages; null when there is none.
    [[nodiscard]] Control* Find(int id);

  private:
    std::map<int, Control> Controls;
    std::vector<std::unique_ptr<Window>> Pages;
};

}  // namespace quillara
