#include "workbench/hosting/WorkerThreads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <stdexcept>

namespace quillara {
namespace {

TEST(WorkerThreads, DoEachPartOnce) {
    WorkerThreads workers;
    for (const int threads : {1, 2, 3, 16, 0, 2}) {
        workers.SetThreads(threads);
        EXPECT_TRUE(threads == 0 ? workers.Threads() >= 1 : workers.Threads() == threads);
        for (int run = 0; run < 300; ++run) {
            std::vector<std::int32_t> done(static_cast<std::size_t>(run % 40));
            workers.Run(
                static_cast<std::int32_t>(done.size()),
                [](void* work, std::int32_t part) { ++static_cast<std::int32_t*>(work)[part]; }, done.data());
            ASSERT_EQ(std::ranges::count(done, 1), static_cast<std::int64_t>(done.size()));
        }
    }
}

TEST(WorkerThreads, WorkAtOnce) {
    WorkerThreads workers;
    workers.SetThreads(3);
    std::atomic<int> met = 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    workers.RunEach(3, [&](std::int32_t) {
        for (++met; met < 3 && std::chrono::steady_clock::now() < end;) {
            std::this_thread::yield();
        }
    });
    EXPECT_EQ(met, 3);
}

TEST(WorkerThreads, AFailureEndsTheRunAndReachesTheCaller) {
    for (const int threads : {1, 3}) {
        WorkerThreads workers;
        workers.SetThreads(threads);
        for (int run = 0; run < 100; ++run) {
            std::atomic<int> begun = 0;
            const auto fail = [&](std::int32_t part) {
                ++begun;
                if (part >= 5) {
                    throw std::runtime_error("no");
                }
            };
            EXPECT_THROW(workers.RunEach(1000, fail), std::runtime_error);
            EXPECT_LE(begun, 5 + threads);
        }
        int sum = 0;
        workers.RunEach(1, [&](std::int32_t part) { sum = part + 1; });
        EXPECT_EQ(sum, 1);
    }
}

}  // namespace
}  // namespace quillara
