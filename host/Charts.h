#pragma once

/// What a chart of the host is: its kind.
class CChartInfo {
  public:
    static constexpr int Stacked = 2;
    static constexpr int Pie = 3;
    static constexpr int Bars = 5;

    CChartInfo() = default;
    explicit CChartInfo(int kind) : ChartKind(kind) {}

    [[nodiscard]] int Kind() const { return ChartKind; }

  private:
    int ChartKind = Bars;
};

/// Asked by plots that the host computes from the cases: whether a case is left out of the plot. `values` holds all
/// values of the case, variable 1 at index 0. 0 keeps the case; other results drop it. `x` and `y` may be null or take
/// the two values to plot. The first two arguments are null.
using CaseFilter = int (*)(char* reserved1, long* reserved2, const double* values, float* x, float* y);
