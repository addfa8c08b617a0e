#pragma once

#include <pybind11/pybind11.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <utility>

/// A call that fails as scripts see it: quillara.Error.
struct ScriptError {
    std::int32_t Code;  ///< as HRESULT
    std::string Text;
    std::string Member;
};

/// The interpreter's lock is free until the end of the scope, and the host, which takes one call at a time, is ours. On
/// the main thread Ctrl-C sets a flag that ends the pass which runs. Nothing of Python may be touched meanwhile.
class HostScope {
  public:
    HostScope();
    HostScope(const HostScope&) = delete;
    HostScope& operator=(const HostScope&) = delete;
    ~HostScope();

    /// Whether Ctrl-C was pressed in the call that runs.
    [[nodiscard]] static const std::atomic<bool>& Cancelled();

  private:
    PyThreadState* State;
    bool Watches;
};

/// Throws what failed in the host, while the exception is handled, as a ScriptError of `member`; other exceptions go
/// on.
[[noreturn]] void RethrowForScript(const std::string& member);

/// Runs a call of the host. When it has ended Python's handlers of signals run: after Ctrl-C it is a KeyboardInterrupt,
/// whatever has come of the call.
template <typename Work>
auto CallHost(const std::string& member, Work work) {
    try {
        auto result = [&] {
            const HostScope scope;
            try {
                return work();
            } catch (...) {
                RethrowForScript(member);
            }
        }();
        if (PyErr_CheckSignals() != 0) {
            throw pybind11::error_already_set();
        }
        return result;
    } catch (const ScriptError&) {
        if (PyErr_CheckSignals() != 0) {
            throw pybind11::error_already_set();
        }
        throw;
    }
}
