// Passes over 1,000,000 cases beside the floor of plain loops over the same columns. The counter "floor" is the time
// of a pass divided by the time of the floor, measured in turns in one run.

#include <benchmark/benchmark.h>

#include "bench/DrillTable.h"
#include "bench/ProcessorTime.h"

namespace {

BenchCase CaseOf(const benchmark::State& state) {
    return {static_cast<int>(state.range(0)), state.range(1) != 0, state.range(2) != 0};
}

/// Runs an operation and the floor in turns; the time that counts is that of the operation.
template <typename Operation>
void BesideTheFloor(benchmark::State& state, Operation operation) {
    const BenchCase setting = CaseOf(state);
    BenchAnalysis bench(setting);
    const PlainLoops floor(setting);
    double floorTime = 0.0;
    double time = 0.0;
    for (auto round : state) {
        (void)round;
        const double start = ProcessorSeconds();
        benchmark::DoNotOptimize(floor.Run());
        const double middle = ProcessorSeconds();
        operation(bench.Analysis());
        const double end = ProcessorSeconds();
        floorTime += middle - start;
        time += end - middle;
        state.SetIterationTime(end - middle);
    }
    state.counters["floor"] = time / floorTime;
}

void ReadAfterDrill(benchmark::State& state) {
    BesideTheFloor(state, [](CDrillDown& analysis) { analysis.ReadAfterDrill(0); });
}

void ReadBeforeDrill(benchmark::State& state) {
    BesideTheFloor(state, [](CDrillDown& analysis) { analysis.ReadBeforeDrill(0); });
}

void DrillStep(benchmark::State& state) {
    BesideTheFloor(state, [](CDrillDown& analysis) {
        analysis.ReadAfterDrill(0);
        analysis.ReadBeforeDrill(0);
    });
}

void Settings(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"steps", "weighted", "blocks"})
        ->ArgsProduct({{0, 1, 2, 3}, {0, 1}, {1, 0}})
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->MinTime(0.5);
}

BENCHMARK(ReadAfterDrill)->Apply(Settings);
BENCHMARK(ReadBeforeDrill)->Apply(Settings);
BENCHMARK(DrillStep)->Apply(Settings);

}  // namespace

BENCHMARK_MAIN();
