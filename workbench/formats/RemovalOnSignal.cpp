#include "workbench/formats/RemovalOnSignal.h"

#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>

namespace quillara {
namespace {

// The last four are faults, as of a library that lacks memory.
constexpr std::array EndingSignals = {SIGHUP,  SIGINT,  SIGQUIT, SIGPIPE, SIGALRM, SIGTERM,
                                      SIGXCPU, SIGXFSZ, SIGSEGV, SIGBUS,  SIGABRT, SIGFPE};

std::atomic_flag IsTaken;
std::atomic<bool> LastIsFinished = false;
std::array<char, PATH_MAX> Doomed = {};  // written before a handler is set
std::array<struct sigaction, EndingSignals.size()> Former = {};

/// By now the signal has its ordinary effect again, and ends the program when this returns.
void RemoveAndEnd(int signal) {
    unlink(Doomed.data());
    raise(signal);
}

void CatchSignals() {
    struct sigaction action = {};
    action.sa_handler = RemoveAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (std::size_t i = 0; i < EndingSignals.size(); ++i) {
        sigaction(EndingSignals[i], nullptr, &Former[i]);
        if (Former[i].sa_handler == SIG_DFL) {
            sigaction(EndingSignals[i], &action, nullptr);
        }
    }
}

void ReleaseSignals() {
    for (std::size_t i = 0; i < EndingSignals.size(); ++i) {
        if (Former[i].sa_handler == SIG_DFL) {
            sigaction(EndingSignals[i], &Former[i], nullptr);
        }
    }
}

/// Holds the signals of this thread back.
class HeldSignals {
  public:
    HeldSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &Before);
    }
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;
    ~HeldSignals() { pthread_sigmask(SIG_SETMASK, &Before, nullptr); }

  private:
    sigset_t Before = {};
};

}  // namespace

RemovalOnSignal::~RemovalOnSignal() {
    if (IsWatching) {
        ReleaseSignals();
        IsTaken.clear();
    }
}

int RemovalOnSignal::Watch(const std::string& path, const std::function<int()>& make) {
    const HeldSignals held;
    const int descriptor = make();
    const int error = errno;
    if (descriptor >= 0 && path.size() < Doomed.size() && !IsTaken.test_and_set()) {
        IsWatching = true;
        *std::ranges::copy(path, Doomed.begin()).out = '\0';
        CatchSignals();
        LastIsFinished.store(false);
    }
    errno = error;
    return descriptor;
}

bool RemovalOnSignal::EndBy(const std::function<bool()>& move) {
    const HeldSignals held;
    const bool isMoved = move();
    const int error = errno;
    LastIsFinished.store(isMoved);
    errno = error;
    return isMoved;
}

bool RemoveUnfinishedFile() noexcept {
    if (LastIsFinished.load()) {
        return false;
    }
    if (IsTaken.test()) {
        unlink(Doomed.data());
    }
    return true;
}

}  // namespace quillara
