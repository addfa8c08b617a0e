#pragma once

#include <csignal>
#include <initializer_list>

namespace quillara {

/// While it lives, threads that begin take no signals: they are for the calling thread, which waits for some. What a
/// thread itself does wrong it hears of.
class SignalsHeldBack {
  public:
    SignalsHeldBack() {
        sigset_t all{};
        sigfillset(&all);
        for (const int ofTheThreadItself : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) {
            sigdelset(&all, ofTheThreadItself);
        }
        pthread_sigmask(SIG_BLOCK, &all, &Before);
    }
    SignalsHeldBack(const SignalsHeldBack&) = delete;
    SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;
    ~SignalsHeldBack() { pthread_sigmask(SIG_SETMASK, &Before, nullptr); }

  private:
    sigset_t Before{};
};

}  // namespace quillara
