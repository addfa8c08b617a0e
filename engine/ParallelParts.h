#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <vector>

#include "host/ParallelRuns.h"

namespace drilldown {

/// Calls `work` with 0 .. parts - 1, on the host's threads at once, or one after another where it has none (null). What
/// a part throws is thrown when all are done; of several parts, what the first of them threw. Parts that the host has
/// left out are done here, so that no count is short of them.
template <typename Work>
void RunParts(ParallelRuns* threads, std::size_t parts, const Work& work) {
    if (threads == nullptr || parts < 2) {
        for (std::size_t part = 0; part < parts; ++part) {
            work(part);
        }
        return;
    }
    struct Outcome {
        std::exception_ptr Failure;
        bool IsDone = false;
    };
    struct Run {
        const Work& Do;
        std::vector<Outcome> Outcomes;
    };
    Run run{work, std::vector<Outcome>(parts)};
    const auto runPart = [](void* address, std::int32_t number) {
        Run& all = *static_cast<Run*>(address);
        const auto part = static_cast<std::size_t>(number);
        try {
            all.Outcomes[part].IsDone = true;
            all.Do(part);
        } catch (...) {
            all.Outcomes[part].Failure = std::current_exception();
        }
    };
    threads->Run(static_cast<std::int32_t>(parts), runPart, &run);
    for (std::size_t part = 0; part < parts; ++part) {
        if (!run.Outcomes[part].IsDone) {
            runPart(&run, static_cast<std::int32_t>(part));
        }
    }
    for (const Outcome& outcome : run.Outcomes) {
        if (outcome.Failure != nullptr) {
            std::rethrow_exception(outcome.Failure);
        }
    }
}

}  // namespace drilldown
