#pragma once

#include <functional>
#include <string>

namespace dialogtest {

/// Told of calls that members make of the host before they are made: "get integer 204", "put real 9072 2.5", "press
/// 9056", "text", "controls", "pass", "name". What it throws comes out of the call.
extern std::function<void(const std::string& call)> OnHostCall;

/// Has the next call of a kind throw something.
inline void FailNext(const std::string& kind, const std::function<void()>& failure) {
    OnHostCall = [kind, failure](const std::string& call) {
        if (call.starts_with(kind)) {
            const std::function<void()> once = failure;
            OnHostCall = nullptr;
            once();
        }
    };
}

}  // namespace dialogtest
