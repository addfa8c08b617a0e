#pragma once

class QWidget;

namespace quillara {

class Window;

/// Shows a modal window of an exploration above a parent, and above the modal windows that are open, and lets the user
/// work in it until it is closed. Enter presses its default button, Escape and the cross its Cancel button; it comes up
/// where a window of its kind has stood last. False when it is left otherwise than by its buttons: it is to be
/// cancelled.
[[nodiscard]] bool WorkInModal(Window& window, QWidget* parent);

/// The window that a message or dialog is to stand above: the modal one that is in front, or else `usual`.
[[nodiscard]] QWidget* FrontWindow(QWidget* usual);

}  // namespace quillara
