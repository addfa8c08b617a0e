#include "workbench/formats/WorkCrew.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include "workbench/formats/SignalsHeldBack.h"

namespace quillara {
namespace {

/// The tasks of one call, shared by the workers.
class SharedTasks {
  public:
    SharedTasks(std::size_t tasks, const NumberedTask& task) : Tasks(tasks), Task(task) {}

    /// Does tasks until none is left or the work has failed; `told` hears how many have been done by all.
    void Work(std::size_t worker, const std::function<void(std::size_t done)>& told) noexcept {
        try {
            for (std::size_t task = Next++; task < Tasks && !IsOver; task = Next++) {
                Task(task, worker);
                const std::size_t done = ++Done;
                if (told) {
                    told(done);
                }
            }
        } catch (...) {
            const std::lock_guard lock(Guard);
            Failure = Failure ? Failure : std::current_exception();
            IsOver = true;
        }
    }

    void ThrowFailure() const {
        if (Failure) {
            std::rethrow_exception(Failure);
        }
    }

  private:
    std::size_t Tasks;
    const NumberedTask& Task;
    std::atomic<std::size_t> Next = 0;
    std::atomic<std::size_t> Done = 0;
    std::atomic<bool> IsOver = false;
    std::mutex Guard;
    std::exception_ptr Failure;
};

}  // namespace

WorkCrew::WorkCrew(std::size_t threads, WorkMonitor& monitor)
    : MostWorkers(std::max<std::size_t>(1, threads == 0 ? std::thread::hardware_concurrency() : threads)),
      Monitor(monitor) {}

void WorkCrew::Do(std::size_t tasks, std::size_t units, const NumberedTask& task) const {
    SharedTasks shared(tasks, task);
    {
        std::vector<std::jthread> others;
        others.reserve(std::min(MostWorkers, tasks));
        try {
            const SignalsHeldBack heldBack;
            for (std::size_t worker = 1; worker < std::min(MostWorkers, tasks); ++worker) {
                others.emplace_back([&shared, worker] { shared.Work(worker, {}); });
            }
        } catch (const std::system_error&) {
            // The workers that there are do all.
        }
        std::size_t told = 0;
        shared.Work(0, [&](std::size_t done) {
            Monitor.Advance((done - told) * units);
            told = std::max(told, done);
        });
    }
    shared.ThrowFailure();
}

}  // namespace quillara
