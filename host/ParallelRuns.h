#pragma once

#include <cstdint>

// Optional service of a host beside whole columns: work done by several threads at once. The module starts none;
// without the service it does the same work part by part. Results are the same to the last bit with any number of
// threads.

/// Implemented by the host, used by the module. Calls come on the host's one thread.
class ParallelRuns {
  public:
    /// One part of some work. It throws nothing and calls nothing of the host, and no two parts write the same memory.
    using Part = void (*)(void* work, std::int32_t part);

    virtual ~ParallelRuns() = default;

    /// How many parts run at once at most, the thread of the caller included; less than 1 counts as 1.
    [[nodiscard]] virtual std::int32_t Threads() const = 0;
    /// Of how many cases on a run pays for waking the threads; fewer are counted by the caller's.
    [[nodiscard]] virtual std::int32_t CasesWorthSharing() const { return 2048; }
    /// Does parts 0 .. parts - 1, each once, taken up in that order by whichever thread is free; the caller's may be
    /// one of them. Returns when all are done; what they wrote can be read then. Runs don't nest. Runs are short, down
    /// to some microseconds, and come one after another, so threads should be kept and not started for each. Where
    /// threads can't be had the caller's does all parts. Doesn't fail; the module does itself what parts were left out,
    /// but no part may be done twice or run on behind the return.
    virtual void Run(std::int32_t parts, Part part, void* work) = 0;
};
