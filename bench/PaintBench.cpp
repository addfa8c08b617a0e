// Painting of each kind of chart of 1,000,000 cases as a picture of 900 x 600 pixels in memory. The counter "pass" is
// the time of the chart that takes longest, divided by that of the pass after a drill and its recount, measured in
// turns in one run by processor time on one thread. The start of the toolkit, with the fonts, and files aren't part of
// it.

#include <benchmark/benchmark.h>
#include <qcustomplot.h>

#include <algorithm>
#include <string>
#include <vector>

#include "bench/ChartCommands.h"
#include "bench/Times.h"
#include "workbench/charts/ChartPainter.h"
#include "workbench/charts/OffscreenApplication.h"

using quillara::GraphDocument;

namespace {

constexpr int Rounds = 15;

void Paint(const GraphDocument& graph) {
    const quillara::ChartLook look;
    QImage image(look.Width, look.Height, QImage::Format_RGB32);
    QCustomPlot plot;
    quillara::BuildChart(plot, graph, look);
    quillara::PaintPlot(plot, image, image.size());
}

void PaintedBesideThePass(benchmark::State& state, const ChartCommand& command) {
    ChartAnalysis bench;
    const std::vector<GraphDocument> graphs = bench.GraphsOf([&] { command.Run(bench.Analysis()); });
    std::ranges::for_each(graphs, Paint);
    Times passes;
    std::vector<Times> charts(graphs.size());
    for (auto round : state) {
        (void)round;
        passes.Add(SecondsOf(Clock::Processor, [&] { bench.Pass(); }));
        double longest = 0.0;
        for (std::size_t i = 0; i < graphs.size(); ++i) {
            charts[i].Add(SecondsOf(Clock::Processor, [&] { Paint(graphs[i]); }));
            longest = std::max(longest, charts[i].Median());
        }
        state.SetIterationTime(longest);
    }
    const double longest = std::ranges::max(charts, {}, &Times::Median).Median();
    state.counters["charts"] = static_cast<double>(charts.size());
    state.counters["ms"] = longest * 1e3;
    state.counters["pass"] = longest / passes.Median();
}

}  // namespace

int main(int argc, char** argv) {
    quillara::EnsureApplication();
    benchmark::Initialize(&argc, argv);
    for (const ChartCommand& command : ChartCommands) {
        const std::string name = std::string("Painting/") + command.Name;
        benchmark::RegisterBenchmark(name.c_str(),
                                     [&](benchmark::State& state) { PaintedBesideThePass(state, command); })
            ->Unit(benchmark::kMillisecond)
            ->UseManualTime()
            ->Iterations(Rounds);
    }
    benchmark::RunSpecifiedBenchmarks();
}
