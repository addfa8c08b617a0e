#include "python/HostCall.h"

#include <csignal>
#include <mutex>
#include <new>

#include <unistd.h>

#include "host/Exceptions.h"
#include "platform/Status.h"
#include "workbench/data/Errors.h"
#include "workbench/documents/NamedCall.h"
#include "workbench/hosting/StatusTexts.h"

namespace {

std::atomic<bool> IsCancelled = false;
struct sigaction Former;  // what Ctrl-C does outside of calls
int Depth = 0;  // of calls within calls, which listeners of events make

static_assert(std::atomic<bool>::is_always_lock_free);

void OnInterrupt(int signal) {
    IsCancelled.store(true);
    Former.sa_handler(signal);
}

/// Python itself hears of signals on this thread only.
bool IsMainThread() {
    thread_local const bool isMain = gettid() == getpid();
    return isMain;
}

/// Only where somebody handles it: else it ends the program, or does nothing.
bool WatchForInterrupt() {
    sigaction(SIGINT, nullptr, &Former);
    const bool isHandled = (Former.sa_flags & SA_SIGINFO) == 0 && Former.sa_handler != SIG_DFL &&
                           Former.sa_handler != SIG_IGN && Former.sa_handler != OnInterrupt;
    if (isHandled) {
        struct sigaction own = Former;
        own.sa_handler = OnInterrupt;
        sigaction(SIGINT, &own, nullptr);
    }
    return isHandled;
}

/// Never destroyed: objects of scripts may go later than static ones.
std::recursive_mutex& HostMutex() {
    static auto* const mutex = new std::recursive_mutex;
    return *mutex;
}

[[noreturn]] void Throw(HRESULT code, std::string text, const std::string& member) {
    throw ScriptError{code, std::move(text), member};
}

}  // namespace

HostScope::HostScope() : State(PyEval_SaveThread()) {
    HostMutex().lock();
    const bool isOutermost = Depth++ == 0;
    if (isOutermost) {
        IsCancelled.store(false);
    }
    Watches = isOutermost && IsMainThread() && WatchForInterrupt();
}

HostScope::~HostScope() {
    if (Watches) {
        sigaction(SIGINT, &Former, nullptr);
    }
    --Depth;
    HostMutex().unlock();
    PyEval_RestoreThread(State);
}

const std::atomic<bool>& HostScope::Cancelled() {
    return IsCancelled;
}

void RethrowForScript(const std::string& member) {
    try {
        throw;
    } catch (const quillara::UsageError& error) {
        Throw(E_INVALIDARG, error.what(), member);
    } catch (const quillara::DataError& error) {
        Throw(E_FAIL, error.what(), member);
    } catch (const quillara::Interrupted& error) {
        Throw(E_FAIL, error.what(), member);
    } catch (const quillara::MemberRefusal& refusal) {
        Throw(refusal.Status, quillara::StandardMessage(refusal.Status), member);
    } catch (const std::bad_alloc&) {
        Throw(E_OUTOFMEMORY, quillara::StandardMessage(E_OUTOFMEMORY), member);
    } catch (CException* exception) {
        char text[512];
        exception->GetErrorMessage(text, sizeof(text));
        const HRESULT status = COleException::Process(exception);
        exception->Delete();
        Throw(status, text, member);
    }
}
