#include "workbench/plots/ScatterMatrices.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/OrderedBits.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

constexpr int HistogramParts = 10;
constexpr double Undefined = std::numeric_limits<double>::quiet_NaN();

/// A variable while its cells are computed. Numbers are scaled by a power of two, so that squares fit into doubles.
struct PlottedVariable {
    ScatterVariable Described;
    double Scale = 1.0;
    double Low = 0.0;  ///< scaled
    double High = 0.0;
    std::vector<double> Column;  ///< scaled values, one for each case of the plot; NaN: not valid

    [[nodiscard]] double PlaceOf(double scaled) const { return Low < High ? (scaled - Low) / (High - Low) : 0.5; }
};

BinnedCounts HistogramOf(const std::vector<double>& values, const ValueMoments& moments) {
    const NeatBins bins = NeatBinsOver(moments.Min, moments.Max, HistogramParts);
    BinnedCounts counts{bins.Low, bins.Step, std::vector<double>(bins.UpperBounds.size())};
    for (const double value : values) {
        ++counts.Counts[bins.PlaceOf(value)];
    }
    return counts;
}

ScatterVariable Described(const Variable& variable, const PlotRows& rows) {
    ScatterVariable described{.Name = variable.Name, .LongName = variable.LongName, .Histogram = {}};
    const WeightedValues valid = ValidValues(variable, rows);
    const ValueMoments moments = MomentsOf(valid);
    described.Cases = moments.Cases;
    described.Min = moments.Min;
    described.Max = moments.Max;
    described.Mean = moments.Mean;
    described.StandardDeviation = moments.StandardDeviation;
    if (moments.Cases > 0) {
        described.Histogram = HistogramOf(valid.Values, moments);
    }
    return described;
}

PlottedVariable Plotted(const Variable& variable, const PlotRows& rows) {
    PlottedVariable plotted{.Described = Described(variable, rows), .Column = {}};
    plotted.Scale = ScaleFor(plotted.Described.Min, plotted.Described.Max);
    plotted.Low = plotted.Described.Min * plotted.Scale;
    plotted.High = plotted.Described.Max * plotted.Scale;
    const NearlyEqualRange missing = RangeNearlyEqualTo(variable.MissingCode);
    plotted.Column.reserve(rows.Count());
    rows.ForEachValue(variable.Values, [&](double value) {
        const bool isValid = std::isfinite(value) && !missing.Contains(value);
        plotted.Column.push_back(isValid ? value * plotted.Scale : Undefined);
    });
    std::vector<float> places(plotted.Column.size());
    std::ranges::transform(plotted.Column, places.begin(), [&](double scaled) {
        return static_cast<float>(std::isnan(scaled) ? Undefined : plotted.PlaceOf(scaled));
    });
    plotted.Described.Places = std::make_shared<const std::vector<float>>(std::move(places));
    return plotted;
}

/// Runs over the cases in which both variables are valid.
template <typename Action>
void ForEachPair(const PlottedVariable& x, const PlottedVariable& y, Action action) {
    for (std::size_t i = 0; i < x.Column.size(); ++i) {
        if (!std::isnan(x.Column[i]) && !std::isnan(y.Column[i])) {
            action(x.Column[i], y.Column[i]);
        }
    }
}

/// One variable of a pair, over the cases in which both are valid; scaled.
struct SideMoments {
    double Low = std::numeric_limits<double>::infinity();
    double High = -std::numeric_limits<double>::infinity();
    double Mean = 0.0;
    double Squares = 0.0;  ///< sum of squared deviations from the mean

    void Add(double value) {
        Low = std::min(Low, value);
        High = std::max(High, value);
        Mean += value;
    }
    /// Exactly: the rounding of a mean is no spread.
    [[nodiscard]] bool IsConstant() const { return !(Low < High) || !(Squares > 0.0); }
};

struct PairMoments {
    std::int64_t Cases = 0;
    SideMoments X;
    SideMoments Y;
    double Products = 0.0;
};

PairMoments MomentsOfPair(const PlottedVariable& x, const PlottedVariable& y) {
    PairMoments pair;
    ForEachPair(x, y, [&](double a, double b) {
        ++pair.Cases;
        pair.X.Add(a);
        pair.Y.Add(b);
    });
    pair.X.Mean /= static_cast<double>(pair.Cases);
    pair.Y.Mean /= static_cast<double>(pair.Cases);
    ForEachPair(x, y, [&](double a, double b) {
        const double fromX = a - pair.X.Mean;
        const double fromY = b - pair.Y.Mean;
        pair.X.Squares += fromX * fromX;
        pair.Y.Squares += fromY * fromY;
        pair.Products += fromX * fromY;
    });
    return pair;
}

PairMoments Turned(const PairMoments& pair) {
    return {pair.Cases, pair.Y, pair.X, pair.Products};
}

/// Correlation and least squares line of y on x.
ScatterCell CellOf(const PlottedVariable& x, const PlottedVariable& y, const PairMoments& pair) {
    ScatterCell cell{pair.Cases, Undefined, Undefined, Undefined, Undefined, Undefined};
    if (pair.X.IsConstant() || pair.Y.IsConstant()) {
        return cell;
    }
    const double slope = pair.Products / pair.X.Squares;
    const auto lineAt = [&](double scaled) { return pair.Y.Mean + slope * (scaled - pair.X.Mean); };
    cell.Correlation = std::clamp(pair.Products / std::sqrt(pair.X.Squares * pair.Y.Squares), -1.0, 1.0);
    cell.Intercept = lineAt(0.0) / y.Scale;
    cell.Slope = slope / y.Scale * x.Scale;
    cell.LineAtMin = y.PlaceOf(lineAt(x.Low));
    cell.LineAtMax = y.PlaceOf(lineAt(x.High));
    return cell;
}

void StopWhenCancelled(const ScatterRequest& request) {
    if (request.Cancelled && request.Cancelled()) {
        throw Interrupted();
    }
}

}  // namespace

ScatterMatrix ScatterMatrixOf(const ScatterRequest& request) {
    StopWhenCancelled(request);
    std::vector<PlottedVariable> plotted(request.Variables.size());
    RunParts(request.Runner, plotted.size(), [&](std::size_t part) {
        plotted[part] = Plotted(request.Table.Variables[request.Variables[part]], request.Rows);
    });
    ScatterMatrix matrix;
    matrix.Flags = request.Flags;
    matrix.UnusedWeight = request.UnusedWeight;
    const std::size_t count = plotted.size();
    matrix.Cells.resize(count * count);
    for (std::size_t row = 0; row < count; ++row) {
        matrix.Variables.push_back(plotted[row].Described);
        StopWhenCancelled(request);
        RunParts(request.Runner, row, [&](std::size_t column) {
            const PairMoments pair = MomentsOfPair(plotted[column], plotted[row]);
            matrix.Cells[row * count + column] = CellOf(plotted[column], plotted[row], pair);
            matrix.Cells[column * count + row] = CellOf(plotted[row], plotted[column], Turned(pair));
        });
    }
    return matrix;
}

}  // namespace quillara
