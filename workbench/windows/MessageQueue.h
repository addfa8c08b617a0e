#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string_view>

#include "platform/Handles.h"
#include "workbench/windows/WindowCall.h"

namespace quillara {

class Window;

/// The messages that wait for the windows of one user-interface thread. It outlives its windows.
class MessageQueue {
  public:
    MessageQueue() = default;
    MessageQueue(const MessageQueue&) = delete;
    MessageQueue& operator=(const MessageQueue&) = delete;

    void Post(Window& window, unsigned message, std::uint64_t wParam, std::int64_t lParam);
    /// Runs the message that waits longest; false when none waits.
    bool DispatchOne();
    /// Runs messages until none waits, those that are posted on the way too.
    void DispatchAll();
    /// Drops what waits for a window that goes.
    void Forget(const Window& window);

    /// Told calls on windows and their lists, in words ("Post 9077", "Fill 9053"); for diagnosis.
    std::function<void(std::string_view call)> Trace;
    /// Told what a user does in a window that can be used so, before it has its effect.
    std::function<void(Window& window, const WindowCall& call)> Hear;

  private:
    struct Waiting {
        Window* Target;
        unsigned Message;
        std::uint64_t WParam;
        std::int64_t LParam;
    };
    std::deque<Waiting> Messages;
};

}  // namespace quillara
