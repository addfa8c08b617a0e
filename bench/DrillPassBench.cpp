// A drill step and its passes over 1,000,000 cases beside two floors over the same data, all run in turns. The counters
// are the median time of the pass divided by that of a floor: "plain" of plain loops on one thread, "codes" of codes,
// bitmaps and vectors on as many threads as the pass has. Runs on one thread are measured by processor time, others by
// the clock, for which the machine should have nothing else to do; "parallel" says how many threads were at work.
// Nothing is known of the cases before a run.

#include <benchmark/benchmark.h>

#include "bench/DrillTable.h"
#include "bench/Times.h"

namespace {

BenchCase CaseOf(const benchmark::State& state) {
    return {static_cast<int>(state.range(0)), state.range(1) != 0, state.range(2) != 0,
            static_cast<int>(state.range(3))};
}

/// Runs an operation and the floors in turns; the time that counts is that of the operation.
template <typename Operation>
void BesideTheFloors(benchmark::State& state, Operation operation) {
    const BenchCase setting = CaseOf(state);
    const Clock clock = setting.Threads == 1 ? Clock::Processor : Clock::Elapsed;
    const FloorSetting floor{setting.Steps, setting.Weighted};
    const FloorColumns& columns = BenchColumns();
    BenchAnalysis bench(setting);
    Times own;
    Times work;
    Times plain;
    Times codes;
    for (auto round : state) {
        (void)round;
        plain.Add(SecondsOf(clock, [&] { benchmark::DoNotOptimize(RunPlainFloor(columns, floor)); }));
        codes.Add(SecondsOf(clock, [&] { benchmark::DoNotOptimize(RunCodesFloor(columns, floor, setting.Threads)); }));
        bench.Forget();
        const double worked = SecondsOf(Clock::Processor);
        const double seconds = SecondsOf(clock, [&] { operation(bench); });
        work.Add(SecondsOf(Clock::Processor) - worked);
        own.Add(seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["plain"] = own.Median() / plain.Median();
    state.counters["codes"] = own.Median() / codes.Median();
    if (clock == Clock::Elapsed) {
        state.counters["parallel"] = work.Median() / own.Median();
    }
}

void ReadAfterDrill(benchmark::State& state) {
    BesideTheFloors(state, [](BenchAnalysis& bench) { bench.Analysis().ReadAfterDrill(0); });
}

void ReadBeforeDrill(benchmark::State& state) {
    BesideTheFloors(state, [](BenchAnalysis& bench) { bench.Analysis().ReadBeforeDrill(0); });
}

void DrillStep(benchmark::State& state) {
    BesideTheFloors(state, [](BenchAnalysis& bench) { bench.ReadBoth(); });
}

/// A step up, the oldest one, and the same down again in a stack of ten. The counter "open" is their time divided by
/// that of a drill step without steps in force.
void StepsInAStackOfTen(benchmark::State& state) {
    constexpr int steps = 10;
    BenchAnalysis open({});
    BenchAnalysis bench({steps});
    Times own;
    Times passes;
    for (auto round : state) {
        (void)round;
        open.Forget();
        passes.Add(SecondsOf(Clock::Processor, [&] { open.ReadBoth(); }));
        const double seconds = SecondsOf(Clock::Processor, [&] {
            bench.DrillUp(steps - 1);
            bench.Drill(1);
        });
        own.Add(seconds / 2.0);
        state.SetIterationTime(seconds / 2.0);
    }
    state.counters["open"] = own.Median() / passes.Median();
}

void Settings(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"steps", "weighted", "services", "threads"})
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->MinTime(0.1);
}

void OnOneThread(benchmark::internal::Benchmark* bench) {
    bench->ArgsProduct({{0, 1, 2, 3}, {0, 1}, {1, 0}, {1}})->Apply(Settings);
}

BENCHMARK(ReadAfterDrill)->Apply(OnOneThread);
BENCHMARK(ReadBeforeDrill)->Apply(OnOneThread);
BENCHMARK(DrillStep)->Apply(OnOneThread);
BENCHMARK(DrillStep)->ArgsProduct({{0, 1, 2, 3}, {0, 1}, {1}, {2}})->Apply(Settings);
BENCHMARK(StepsInAStackOfTen)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(20);

}  // namespace

BENCHMARK_MAIN();
