// A drill step and its passes over 1,000,000 cases beside two floors over the same data, all run in turns. The counters
// are the median time of the pass divided by that of a floor: "plain" of plain loops on one thread, "codes" and
// "codes2" of codes, bitmaps and vectors on one thread and on two.

#include <benchmark/benchmark.h>

#include "bench/DrillTable.h"
#include "bench/InTurns.h"

namespace {

BenchCase CaseOf(const benchmark::State& state) {
    return {static_cast<int>(state.range(0)), state.range(1) != 0, state.range(2) != 0};
}

/// Runs an operation and the floors in turns; the time that counts is that of the operation.
template <typename Operation>
void BesideTheFloors(benchmark::State& state, Operation operation) {
    const BenchCase setting = CaseOf(state);
    const FloorSetting floor{setting.Steps, setting.Weighted};
    const FloorColumns& columns = BenchColumns();
    BenchAnalysis bench(setting);
    Times own;
    Times plain;
    Times codes;
    Times codes2;
    for (auto round : state) {
        (void)round;
        plain.Add(SecondsOf(Clock::Processor, [&] { benchmark::DoNotOptimize(RunPlainFloor(columns, floor)); }));
        codes.Add(SecondsOf(Clock::Processor, [&] { benchmark::DoNotOptimize(RunCodesFloor(columns, floor, 1)); }));
        codes2.Add(SecondsOf(Clock::Elapsed, [&] { benchmark::DoNotOptimize(RunCodesFloor(columns, floor, 2)); }));
        const double seconds = SecondsOf(Clock::Processor, [&] { operation(bench.Analysis()); });
        own.Add(seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["plain"] = own.Median() / plain.Median();
    state.counters["codes"] = own.Median() / codes.Median();
    state.counters["codes2"] = own.Median() / codes2.Median();
}

void ReadAfterDrill(benchmark::State& state) {
    BesideTheFloors(state, [](CDrillDown& analysis) { analysis.ReadAfterDrill(0); });
}

void ReadBeforeDrill(benchmark::State& state) {
    BesideTheFloors(state, [](CDrillDown& analysis) { analysis.ReadBeforeDrill(0); });
}

void DrillStep(benchmark::State& state) {
    BesideTheFloors(state, [](CDrillDown& analysis) {
        analysis.ReadAfterDrill(0);
        analysis.ReadBeforeDrill(0);
    });
}

void Settings(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"steps", "weighted", "blocks"})
        ->ArgsProduct({{0, 1, 2, 3}, {0, 1}, {1, 0}})
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->MinTime(0.2);
}

BENCHMARK(ReadAfterDrill)->Apply(Settings);
BENCHMARK(ReadBeforeDrill)->Apply(Settings);
BENCHMARK(DrillStep)->Apply(Settings);

}  // namespace

BENCHMARK_MAIN();
