#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "host/ParallelRuns.h"

class CAnalysisDoc;

namespace quillara {

/// Threads that share out the parts of a run. They begin with the first run that has a use for them, wait for the next
/// one, and end with their owner. A run without free threads is done by its caller alone.
class WorkerThreads : public ParallelRuns {
  public:
    WorkerThreads() = default;
    WorkerThreads(const WorkerThreads&) = delete;
    WorkerThreads& operator=(const WorkerThreads&) = delete;
    ~WorkerThreads() override;

    /// How many threads work at once from now on, the caller's included; 0: as many as the machine has cores. Not
    /// within a run.
    void SetThreads(std::int32_t threads);

    [[nodiscard]] std::int32_t Threads() const override;
    void Run(std::int32_t parts, Part part, void* work) override;

    /// The same for parts that may throw: the first failure ends the run, and is thrown when all that had begun are
    /// done.
    void RunEach(std::int32_t parts, const std::function<void(std::int32_t part)>& work);

  private:
    /// A run that is under way.
    struct Job {
        Part Work = nullptr;
        void* Argument = nullptr;
        std::int32_t Parts = 0;
        std::atomic<std::int32_t> Next = 0;
        std::int32_t Places = 0;  // for further threads
    };

    void Start(std::int32_t workers);
    void Serve();
    void End();
    static void TakeParts(Job& job);

    std::int32_t Wanted = 0;
    std::mutex Guard;
    std::condition_variable Wake;
    std::condition_variable Idle;
    Job* Current = nullptr;  // guarded
    bool IsEnding = false;  // guarded
    std::atomic<std::uint32_t> Runs = 0;  // raised with each run, which waiting threads see before they are woken
    std::atomic<std::int32_t> Busy = 0;  // threads within a run
    std::vector<std::thread> Workers;
};

/// Those of a document; without a document some that do nothing else.
[[nodiscard]] WorkerThreads& WorkersOf(CAnalysisDoc* document);

}  // namespace quillara
