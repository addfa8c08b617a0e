#pragma once

#include <atomic>

#include "workbench/data/Errors.h"

namespace quillara {

/// From now on Ctrl-C ends the program with status 130: at once, or, within an InterruptibleWork, when the work asks.
void WatchForInterrupt();

/// True once Ctrl-C has been pressed within an InterruptibleWork; lives as long as the program.
[[nodiscard]] const std::atomic<bool>& InterruptFlag() noexcept;
[[nodiscard]] bool IsInterrupted() noexcept;  ///< the same, for work that asks a function

/// A stretch of work that must not be cut off at any place: it looks at InterruptFlag where it can stop, and calls
/// Finish when it is done.
class InterruptibleWork {
  public:
    InterruptibleWork() noexcept;
    InterruptibleWork(const InterruptibleWork&) = delete;
    InterruptibleWork& operator=(const InterruptibleWork&) = delete;
    ~InterruptibleWork();

    /// Throws Interrupted when Ctrl-C has been pressed.
    static void Finish();
};

}  // namespace quillara
