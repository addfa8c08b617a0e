#include "workbench/hosting/WorkerThreads.h"

#include <algorithm>
#include <exception>
#include <system_error>

#include "workbench/formats/SignalsHeldBack.h"

namespace quillara {
namespace {

constexpr std::int32_t MostThreads = 256;
/// Looks at what another thread is about to write before a thread goes to sleep: runs are short and follow each other.
constexpr int ShortWait = 2000;

void Pause() {
#if defined(__x86_64__)
    __builtin_ia32_pause();
#endif
}

template <typename Condition>
void WaitShortly(Condition holds) {
    for (int look = 0; look < ShortWait && !holds(); ++look) {
        Pause();
    }
}

/// Parts that may throw, as a run takes them.
struct GuardedWork {
    const std::function<void(std::int32_t)>& Work;
    std::mutex Guard;
    std::exception_ptr Failure;
    std::atomic<bool> HasFailed = false;

    static void Do(void* self, std::int32_t part) {
        auto& guarded = *static_cast<GuardedWork*>(self);
        if (guarded.HasFailed) {
            return;
        }
        try {
            guarded.Work(part);
        } catch (...) {
            const std::lock_guard lock(guarded.Guard);
            guarded.Failure = guarded.Failure ? guarded.Failure : std::current_exception();
            guarded.HasFailed = true;
        }
    }
};

}  // namespace

WorkerThreads::~WorkerThreads() {
    End();
}

void WorkerThreads::SetThreads(std::int32_t threads) {
    End();
    Wanted = threads;
}

std::int32_t WorkerThreads::Threads() const {
    const auto cores = static_cast<std::int32_t>(std::thread::hardware_concurrency());
    return std::clamp(Wanted > 0 ? Wanted : cores, 1, MostThreads);
}

void WorkerThreads::Start(std::int32_t workers) {
    const SignalsHeldBack heldBack;
    try {
        while (static_cast<std::int32_t>(Workers.size()) < workers) {
            Workers.emplace_back([this] { Serve(); });
        }
    } catch (const std::system_error&) {
        // The threads that there are do the work.
    } catch (const std::bad_alloc&) {
        // The same.
    }
}

void WorkerThreads::TakeParts(Job& job) {
    for (std::int32_t part = job.Next++; part < job.Parts; part = job.Next++) {
        job.Work(job.Argument, part);
    }
}

void WorkerThreads::Run(std::int32_t parts, Part part, void* work) {
    const std::int32_t others = std::min(Threads(), parts) - 1;
    Job job;
    job.Work = part;
    job.Argument = work;
    job.Parts = parts;
    job.Places = others;
    if (others > 0) {
        Start(others);
        {
            const std::lock_guard lock(Guard);
            Current = &job;
            ++Runs;
        }
        Wake.notify_all();
    }
    TakeParts(job);
    if (others > 0) {
        {
            const std::lock_guard lock(Guard);
            Current = nullptr;  // who comes now comes too late
        }
        WaitShortly([this] { return Busy == 0; });
        std::unique_lock lock(Guard);
        Idle.wait(lock, [this] { return Busy == 0; });
    }
}

void WorkerThreads::Serve() {
    std::uint32_t seen = 0;
    for (;;) {
        WaitShortly([&] { return Runs != seen; });
        std::unique_lock lock(Guard);
        Wake.wait(lock, [&] { return Runs != seen || IsEnding; });
        if (IsEnding) {
            return;
        }
        seen = Runs;
        if (Current == nullptr || Current->Places == 0) {
            continue;
        }
        Job& job = *Current;
        --job.Places;
        ++Busy;
        lock.unlock();
        TakeParts(job);
        lock.lock();
        --Busy;
        Idle.notify_one();
    }
}

void WorkerThreads::End() {
    {
        const std::lock_guard lock(Guard);
        IsEnding = true;
    }
    Wake.notify_all();
    for (std::thread& worker : Workers) {
        worker.join();
    }
    Workers.clear();
    IsEnding = false;
}

void WorkerThreads::RunEach(std::int32_t parts, const std::function<void(std::int32_t part)>& work) {
    GuardedWork guarded{work, {}, {}, {}};
    Run(parts, &GuardedWork::Do, &guarded);
    if (guarded.Failure) {
        std::rethrow_exception(guarded.Failure);
    }
}

}  // namespace quillara
