#pragma once

#include "bench/DrillTable.h"

/// A command that makes charts of one kind.
struct ChartCommand {
    const char* Name;
    void (*Run)(CDrillDown& analysis);
};

inline constexpr ChartCommand ChartCommands[] = {
    {"Histograms", [](CDrillDown& analysis) { analysis.DDNHistograms(nullptr); }},
    {"PieCharts", [](CDrillDown& analysis) { analysis.DDNPiecharts(0, nullptr); }},
    {"StackedPlots", [](CDrillDown& analysis) { analysis.DDNStackedplots(0, nullptr); }},
    {"BrushingGraph", [](CDrillDown& analysis) { analysis.DDNGraphForBrushing(nullptr); }},
    {"BoxPlots",
     [](CDrillDown& analysis) {
         analysis.PlotMedianQuartileRange = 1;
         analysis.PlotMeanSEAndSD = 0;
         analysis.RVBoxWhiker(nullptr);
     }},
    {"BoxPlotsOfMeans",
     [](CDrillDown& analysis) {
         analysis.PlotMedianQuartileRange = 0;
         analysis.PlotMeanSEAndSD = 1;
         analysis.RVBoxWhiker(nullptr);
     }},
    {"ScatterplotMatrix", [](CDrillDown& analysis) { analysis.RVScatterPlot(nullptr); }},
    {"Histogram3D", [](CDrillDown& analysis) { analysis.RV3DHistograms(0, nullptr); }},
};

/// An analysis under one step, with six variables of each kind drilled on and reviewed.
class ChartAnalysis : public BenchAnalysis {
  public:
    explicit ChartAnalysis(int threads = 1) : BenchAnalysis({.Steps = 1, .Threads = threads}) {
        Analysis().SetRVVariable(nullptr, 1, 0, Analysis().Table.Variables);
        Answer({2}, {CategoricalVariables + 1});  // of histograms in three dimensions
    }

    /// What feeds the charts, from the cases.
    void Pass() {
        Forget();
        ReadBoth();
    }
};
