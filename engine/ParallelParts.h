#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <vector>

#include "host/ParallelRuns.h"

namespace drilldown {

/// Calls `work` with 0 .. parts - 1, on the host's threads at once, or one after another where it has none (null). What
/// a part throws is thrown when all are done; of several parts, what the first of them threw.
template <typename Work>
void RunParts(ParallelRuns* threads, std::size_t parts, const Work& work) {
    if (threads == nullptr || parts < 2) {
        for (std::size_t part = 0; part < parts; ++part) {
            work(part);
        }
        return;
    }
    struct Run {
        const Work& Do;
        std::vector<std::exception_ptr> Failures;
    };
    Run run{work, std::vector<std::exception_ptr>(parts)};
    const auto runPart = [](void* address, std::int32_t number) {
        Run& all = *static_cast<Run*>(address);
        const auto part = static_cast<std::size_t>(number);
        try {
            all.Do(part);
        } catch (...) {
            all.Failures[part] = std::current_exception();
        }
    };
    threads->Run(static_cast<std::int32_t>(parts), runPart, &run);
    for (const std::exception_ptr& failure : run.Failures) {
        if (failure != nullptr) {
            std::rethrow_exception(failure);
        }
    }
}

}  // namespace drilldown
