// One command of each kind of chart over 1,000,000 cases. The counter "pass" is its time divided by that of the pass
// after a drill, measured in turns in one run. Painting isn't part of it.

#include <benchmark/benchmark.h>

#include "bench/DrillTable.h"
#include "bench/ProcessorTime.h"

namespace {

/// Runs a command on an analysis under one step, with six variables of each kind drilled on and reviewed.
template <typename Command>
void BesideThePass(benchmark::State& state, Command command) {
    BenchAnalysis bench({1});
    CDrillDown& analysis = bench.Analysis();
    analysis.SetRVVariable(nullptr, 1, 0, analysis.Table.Variables);
    bench.Answer({2}, {CategoricalVariables + 1});
    double passTime = 0.0;
    double time = 0.0;
    for (auto round : state) {
        (void)round;
        bench.Forget();
        const double start = ProcessorSeconds();
        analysis.ReadAfterDrill(0);
        analysis.ReadBeforeDrill(0);
        const double middle = ProcessorSeconds();
        command(analysis);
        const double end = ProcessorSeconds();
        passTime += middle - start;
        time += end - middle;
        state.SetIterationTime(end - middle);
    }
    state.counters["pass"] = time / passTime;
}

void Histograms(benchmark::State& state) {
    BesideThePass(state, [](CDrillDown& analysis) { analysis.DDNHistograms(nullptr); });
}

void PieCharts(benchmark::State& state) {
    BesideThePass(state, [](CDrillDown& analysis) { analysis.DDNPiecharts(0, nullptr); });
}

void StackedPlots(benchmark::State& state) {
    BesideThePass(state, [](CDrillDown& analysis) { analysis.DDNStackedplots(0, nullptr); });
}

void BrushingGraph(benchmark::State& state) {
    BesideThePass(state, [](CDrillDown& analysis) { analysis.DDNGraphForBrushing(nullptr); });
}

void BoxPlots(benchmark::State& state) {
    BesideThePass(state, [](CDrillDown& analysis) {
        analysis.PlotMedianQuartileRange = 1;
        analysis.PlotMeanSEAndSD = 0;
        analysis.RVBoxWhiker(nullptr);
    });
}

void ScatterplotMatrix(benchmark::State& state) {
    BesideThePass(state, [](CDrillDown& analysis) { analysis.RVScatterPlot(nullptr); });
}

void Histogram3D(benchmark::State& state) {
    BesideThePass(state, [](CDrillDown& analysis) { analysis.RV3DHistograms(0, nullptr); });
}

void Settings(benchmark::internal::Benchmark* bench) {
    bench->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(8);  // the passes beside take most of the time
}

BENCHMARK(Histograms)->Apply(Settings);
BENCHMARK(PieCharts)->Apply(Settings);
BENCHMARK(StackedPlots)->Apply(Settings);
BENCHMARK(BrushingGraph)->Apply(Settings);
BENCHMARK(BoxPlots)->Apply(Settings);
BENCHMARK(ScatterplotMatrix)->Apply(Settings);
BENCHMARK(Histogram3D)->Apply(Settings);

}  // namespace
