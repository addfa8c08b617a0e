// One command of each kind of chart over 1,000,000 cases. The counter "pass" is its time divided by that of the pass
// after a drill and its recount, measured in turns in one run: on one thread by processor time, on two by the clock.
// Painting isn't part of it.

#include <benchmark/benchmark.h>

#include <string>

#include "bench/ChartCommands.h"
#include "bench/Times.h"

namespace {

constexpr int Rounds = 15;

void BesideThePass(benchmark::State& state, const ChartCommand& command, int threads) {
    const Clock clock = threads == 1 ? Clock::Processor : Clock::Elapsed;
    ChartAnalysis bench(threads);
    Times passes;
    Times commands;
    for (auto round : state) {
        (void)round;
        passes.Add(SecondsOf(clock, [&] { bench.Pass(); }));
        const double seconds = SecondsOf(clock, [&] { command.Run(bench.Analysis()); });
        commands.Add(seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["pass"] = commands.Median() / passes.Median();
}

[[maybe_unused]] const bool Registered = [] {
    for (const ChartCommand& command : ChartCommands) {
        for (const int threads : {1, 2}) {
            const std::string name = std::string("Charts/") + command.Name + "/threads:" + std::to_string(threads);
            benchmark::RegisterBenchmark(
                name.c_str(), [&, threads](benchmark::State& state) { BesideThePass(state, command, threads); })
                ->Unit(benchmark::kMillisecond)
                ->UseManualTime()
                ->Iterations(Rounds);  // the passes beside take most of the time
        }
    }
    return true;
}();

}  // namespace
