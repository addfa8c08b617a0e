#include "workbench/windows/MessageQueue.h"

#include "workbench/windows/Window.h"

namespace quillara {

void MessageQueue::Post(Window& window, unsigned message, std::uint64_t wParam, std::int64_t lParam) {
    Messages.push_back({&window, message, wParam, lParam});
}

bool MessageQueue::DispatchOne() {
    if (Messages.empty()) {
        return false;
    }
    const Waiting next = Messages.front();
    Messages.pop_front();
    next.Target->Send(next.Message, next.WParam, next.LParam);
    return true;
}

void MessageQueue::DispatchAll() {
    while (DispatchOne()) {
    }
}

void MessageQueue::Forget(const Window& window) {
    std::erase_if(Messages, [&](const Waiting& waiting) { return waiting.Target == &window; });
}

}  // namespace quillara
