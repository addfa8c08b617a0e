#include "workbench/plots/ScatterMatrices.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <span>

#include "platform/OrderedBits.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

constexpr int HistogramParts = 10;
constexpr double Undefined = std::numeric_limits<double>::quiet_NaN();

/// Cases that are taken side by side, each to sums of its own, so that none waits for the one before.
using Lanes = double __attribute__((vector_size(16)));
constexpr std::size_t LaneCount = sizeof(Lanes) / sizeof(double);
constexpr std::size_t LaneGroups = 4;
constexpr std::size_t CasesAtATime = LaneGroups * LaneCount;
using Sums = std::array<Lanes, LaneGroups>;

/// A variable while its cells are computed. Numbers are scaled by a power of two, so that squares fit into doubles.
struct PlottedVariable {
    ScatterVariable Described;
    double Scale = 1.0;
    double Low = 0.0;  ///< scaled
    double High = 0.0;
    std::vector<double> Column;  ///< scaled values, one for each case of the plot; NaN: not valid, or behind the last

    [[nodiscard]] double PlaceOf(double scaled) const { return Low < High ? (scaled - Low) / (High - Low) : 0.5; }
};

BinnedCounts HistogramOf(const std::vector<double>& values, const ValueMoments& moments) {
    const NeatBins bins = NeatBinsOver(moments.Min, moments.Max, HistogramParts);
    const std::size_t places = bins.UpperBounds.size();
    std::vector<std::size_t> cases(2 * places);  // two tables by turns: most neighbours fall into one interval
    for (std::size_t i = 0; i < values.size(); ++i) {
        ++cases[i % 2 * places + bins.PlaceOf(values[i])];
    }
    BinnedCounts counts{bins.Low, bins.Step, std::vector<double>(places)};
    for (std::size_t place = 0; place < places; ++place) {
        counts.Counts[place] = static_cast<double>(cases[place] + cases[places + place]);
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
    const std::size_t cases = rows.Count();
    plotted.Column.resize((cases + CasesAtATime - 1) / CasesAtATime * CasesAtATime, Undefined);
    rows.ForEachValue(variable.Values, [&, place = plotted.Column.data()](double value) mutable {
        const bool isValid = std::isfinite(value) && !missing.Contains(value);
        *place++ = isValid ? value * plotted.Scale : Undefined;
    });
    std::vector<float> places(cases);
    std::ranges::transform(std::span(plotted.Column).first(cases), places.begin(), [&](double scaled) {
        return static_cast<float>(std::isnan(scaled) ? Undefined : plotted.PlaceOf(scaled));
    });
    plotted.Described.Places = std::make_shared<const std::vector<float>>(std::move(places));
    return plotted;
}

/// One variable of a pair, over the cases in which both are valid; scaled.
struct SideMoments {
    double Low = std::numeric_limits<double>::infinity();
    double High = -std::numeric_limits<double>::infinity();
    double Mean = 0.0;
    double Squares = 0.0;  ///< sum of squared deviations from the mean

    /// Exactly: the rounding of a mean is no spread.
    [[nodiscard]] bool IsConstant() const { return !(Low < High) || !(Squares > 0.0); }
};

struct PairMoments {
    std::int64_t Cases = 0;
    SideMoments X;
    SideMoments Y;
    double Products = 0.0;
};

Sums SumsFrom(double value) {
    Sums sums{};
    sums.fill(Lanes{value, value});
    return sums;
}

template <typename Join>
double Joined(const Sums& sums, Join join) {
    double joined = sums[0][0];
    for (std::size_t i = 1; i < CasesAtATime; ++i) {
        joined = join(joined, sums[i / LaneCount][i % LaneCount]);
    }
    return joined;
}

double Total(const Sums& sums) {
    return Joined(sums, std::plus<>());
}

/// Calls `take(part, x, y)` for the cases of two variables that are both valid; others are NaN in both.
template <typename Take>
void ForEachPair(const PlottedVariable& x, const PlottedVariable& y, Take take) {
    const Lanes undefined = {Undefined, Undefined};
    for (std::size_t i = 0; i < x.Column.size(); i += CasesAtATime) {
        for (std::size_t part = 0; part < LaneGroups; ++part) {
            Lanes a;
            Lanes b;
            std::memcpy(&a, &x.Column[i + part * LaneCount], sizeof(a));
            std::memcpy(&b, &y.Column[i + part * LaneCount], sizeof(b));
            const auto areValid = (a == a) & (b == b);
            take(part, areValid ? a : undefined, areValid ? b : undefined);
        }
    }
}

/// Valid values, and 0 in place of others.
Lanes ValidOrZero(const Lanes& values) {
    return values == values ? values : Lanes{};
}

/// Range and sum of a variable of a pair.
struct SideSums {
    Sums Low = SumsFrom(std::numeric_limits<double>::infinity());
    Sums High = SumsFrom(-std::numeric_limits<double>::infinity());
    Sums Values{};

    void Add(std::size_t part, const Lanes& values) {
        Low[part] = values < Low[part] ? values : Low[part];
        High[part] = values > High[part] ? values : High[part];
        Values[part] += ValidOrZero(values);
    }
    [[nodiscard]] SideMoments Moments(std::int64_t cases) const {
        const double low = Joined(Low, [](double left, double right) { return std::min(left, right); });
        const double high = Joined(High, [](double left, double right) { return std::max(left, right); });
        return {low, high, Total(Values) / static_cast<double>(cases)};
    }
};

PairMoments MomentsOfPair(const PlottedVariable& x, const PlottedVariable& y) {
    constexpr Lanes one = {1.0, 1.0};
    Sums cases{};
    SideSums sumsX;
    SideSums sumsY;
    ForEachPair(x, y, [&](std::size_t part, const Lanes& a, const Lanes& b) {
        cases[part] += a == a ? one : Lanes{};
        sumsX.Add(part, a);
        sumsY.Add(part, b);
    });
    PairMoments pair;
    pair.Cases = static_cast<std::int64_t>(Total(cases));
    pair.X = sumsX.Moments(pair.Cases);
    pair.Y = sumsY.Moments(pair.Cases);
    Sums squaresX{};
    Sums squaresY{};
    Sums products{};
    ForEachPair(x, y, [&](std::size_t part, const Lanes& a, const Lanes& b) {
        const Lanes fromX = ValidOrZero(a - pair.X.Mean);
        const Lanes fromY = ValidOrZero(b - pair.Y.Mean);
        squaresX[part] += fromX * fromX;
        squaresY[part] += fromY * fromY;
        products[part] += fromX * fromY;
    });
    pair.X.Squares = Total(squaresX);
    pair.Y.Squares = Total(squaresY);
    pair.Products = Total(products);
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
