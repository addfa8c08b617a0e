#include "workbench/command/Interruption.h"

#include <atomic>
#include <csignal>
#include <filesystem>

#include <unistd.h>

#include "workbench/command/ExitStatus.h"
#include "workbench/command/ProgressBar.h"
#include "workbench/formats/RemovalOnSignal.h"

namespace quillara {
namespace {

std::atomic<bool> Requested = false;
std::atomic<int> FilesInWriting = 0;

static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

void OnInterrupt(int) {
    if (FilesInWriting.load() == 0 || RemoveUnfinishedFile()) {
        ProgressBar::ClearAnyInSignalHandler();
        _exit(InterruptedStatus);
    }
    Requested.store(true);
}

void Handle(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
}

/// Also of one that isn't there yet.
bool MayBeUndone(const std::string& path) {
    std::error_code error;
    return !std::filesystem::exists(path, error) || std::filesystem::is_regular_file(path, error);
}

}  // namespace

void WatchForInterrupt() {
    Handle(OnInterrupt);
}

bool IsInterrupted() noexcept {
    return Requested.load();
}

void IgnoreInterrupts() {
    Handle(SIG_IGN);
}

FileWriting::FileWriting(const std::string& path) : Holds(MayBeUndone(path)) {
    FilesInWriting.fetch_add(Holds ? 1 : 0);
}

FileWriting::~FileWriting() {
    FilesInWriting.fetch_sub(Holds ? 1 : 0);
}

}  // namespace quillara
