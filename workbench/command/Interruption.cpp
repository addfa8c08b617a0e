#include "workbench/command/Interruption.h"

#include <atomic>
#include <csignal>

#include <unistd.h>

#include "workbench/command/ExitStatus.h"

namespace quillara {
namespace {

std::atomic<bool> Requested = false;
std::atomic<int> WorkRunning = 0;

static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

void OnInterrupt(int) {
    if (WorkRunning.load() == 0) {
        _exit(InterruptedStatus);
    }
    Requested.store(true);
}

}  // namespace

void WatchForInterrupt() {
    struct sigaction action = {};
    action.sa_handler = OnInterrupt;
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
}

const std::atomic<bool>& InterruptFlag() noexcept {
    return Requested;
}

bool IsInterrupted() noexcept {
    return Requested.load();
}

InterruptibleWork::InterruptibleWork() noexcept {
    WorkRunning.fetch_add(1);
}

InterruptibleWork::~InterruptibleWork() {
    WorkRunning.fetch_sub(1);
}

void InterruptibleWork::Finish() {
    if (IsInterrupted()) {
        throw Interrupted();
    }
}

}  // namespace quillara
