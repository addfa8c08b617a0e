#pragma once

class QWidget;

namespace quillara {

class Window;

/// Shows a modal window of an exploration above a parent and lets the user work in it until it is closed. False when
/// the user has closed it otherwise than by its buttons: it is to be cancelled.
[[nodiscard]] bool WorkInModal(Window& window, QWidget* parent);

}  // namespace quillara
