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
#include "workbench/plots/ColumnSweeps.h"

namespace quillara {
namespace {

constexpr int HistogramParts = 10;
constexpr double OnConstant = 0.5;  // the place of all values of a constant
constexpr std::size_t CasesAPart = std::size_t{1} << 16;  // of the sums of pairs, whoever makes them
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
    double Mean = 0.0;
    std::vector<double>
        Column;  ///< one value for each case of the plot, not scaled; NaN: not valid, or behind the last

    [[nodiscard]] double PlaceOf(double scaled) const {
        return Low < High ? (scaled - Low) / (High - Low) : OnConstant;
    }
};

/// The values of a column by the bounds that they lie above.
BinnedCounts HistogramOf(std::span<const double> column, const ColumnRange& range) {
    const NeatBins bins = NeatBinsOver(range.Min, range.Max, HistogramParts);
    BinnedCounts counts{bins.Low, bins.Step, {}};
    std::int64_t above = range.Cases;
    for (const std::int64_t next : CasesAbove(column, std::span(bins.UpperBounds).first(bins.UpperBounds.size() - 1))) {
        counts.Counts.push_back(static_cast<double>(above - next));
        above = next;
    }
    counts.Counts.push_back(static_cast<double>(above));
    return counts;
}

std::vector<double> ValuesOf(const Column& column, const PlotRows& rows) {
    std::vector<double> values((rows.Count() + CasesAtATime - 1) / CasesAtATime * CasesAtATime, Undefined);
    rows.ForEachValue(column, [place = values.data()](double value) mutable { *place++ = value; });
    return values;
}

std::shared_ptr<const std::vector<float>> PlacesOf(const PlottedVariable& plotted, std::size_t cases) {
    std::vector<float> places(plotted.Column.size());
    const double width = plotted.High - plotted.Low;
    WritePlaces(plotted.Column, plotted.Scale, plotted.Low, width > 0.0 ? 1.0 / width : 0.0, places);
    if (!(width > 0.0)) {
        std::ranges::for_each(places, [](float& place) { place += static_cast<float>(OnConstant); });
    }
    places.resize(cases);
    return std::make_shared<const std::vector<float>>(std::move(places));
}

/// All but the deviation, which comes with the pairs.
PlottedVariable Plotted(const Variable& variable, const PlotRows& rows) {
    PlottedVariable plotted{.Described = {.Name = variable.Name, .LongName = variable.LongName, .Histogram = {}},
                            .Column = ValuesOf(variable.Values, rows)};
    const ColumnRange range = KeepValid(plotted.Column, RangeNearlyEqualTo(variable.MissingCode));
    ScatterVariable& described = plotted.Described;
    described.Cases = range.Cases;
    described.Min = range.Min;
    described.Max = range.Max;
    plotted.Scale = ScaleFor(range.Min, range.Max);
    plotted.Low = range.Min * plotted.Scale;
    plotted.High = range.Max * plotted.Scale;
    if (range.Cases > 0) {
        plotted.Mean = ScaledSum(plotted.Column, plotted.Scale) / static_cast<double>(range.Cases);
        described.Mean = plotted.Mean / plotted.Scale;
        described.Histogram = HistogramOf(plotted.Column, range);
    }
    described.Places = PlacesOf(plotted, rows.Count());
    return plotted;
}

/// The root of the sum of squared deviations divided by the cases less 1.
double StandardDeviationOf(const PlottedVariable& plotted, const PairSums& itself) {
    if (itself.Cases <= 1.0) {
        return 0.0;
    }
    const double squares = std::max(itself.XX - itself.X * itself.X / itself.Cases, 0.0);
    return std::sqrt(squares / (itself.Cases - 1.0)) / plotted.Scale;
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
            take(part, areValid ? a * x.Scale : undefined, areValid ? b * y.Scale : undefined);
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

/// The moments by two sweeps over the cases: the means come first.
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

/// Whether the mean of a pair's cases is near enough to that of all cases that nothing is lost by deviations from this.
bool IsNear(double sum, double squares, double cases) {
    constexpr double farthest = 0.25;
    return squares > 0.0 && sum * sum <= farthest * squares * cases;
}

SideMoments SideOf(const PlottedVariable& variable, double sum, double squares, double cases) {
    return {variable.Low, variable.High, variable.Mean + sum / cases, squares - sum * sum / cases};
}

/// Few cases are taken in two sweeps, too, which round less: their line may be an exact one.
PairMoments MomentsOfPair(const PlottedVariable& x, const PlottedVariable& y, const PairSums& sums) {
    if (x.Column.size() <= CasesAPart || !IsNear(sums.X, sums.XX, sums.Cases) || !IsNear(sums.Y, sums.YY, sums.Cases)) {
        return MomentsOfPair(x, y);
    }
    return {static_cast<std::int64_t>(sums.Cases), SideOf(x, sums.X, sums.XX, sums.Cases),
            SideOf(y, sums.Y, sums.YY, sums.Cases), sums.XY - sums.X * sums.Y / sums.Cases};
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

/// The sums of all pairs, made in parts of the cases and added in their order: the same with any number of threads.
std::vector<PairSums> SumsOf(const std::vector<PlottedVariable>& plotted, const ScatterRequest& request) {
    std::vector<CentredColumn> columns;
    for (const PlottedVariable& variable : plotted) {
        columns.push_back({variable.Column, variable.Scale, variable.Mean});
    }
    const std::size_t cases = plotted.empty() ? 0 : plotted.front().Column.size();
    std::vector<std::vector<PairSums>> parts((cases + CasesAPart - 1) / CasesAPart);
    RunParts(request.Runner, parts.size(), [&](std::size_t part) {
        const std::size_t first = part * CasesAPart;
        parts[part] = SumsOfPairs(columns, first, std::min(CasesAPart, cases - first));
    });
    std::vector<PairSums> sums(plotted.size() * (plotted.size() + 1) / 2);
    for (const std::vector<PairSums>& part : parts) {
        for (std::size_t pair = 0; pair < sums.size(); ++pair) {
            sums[pair] += part[pair];
        }
    }
    return sums;
}

}  // namespace

ScatterMatrix ScatterMatrixOf(const ScatterRequest& request) {
    StopWhenCancelled(request);
    std::vector<PlottedVariable> plotted(request.Variables.size());
    RunParts(request.Runner, plotted.size(), [&](std::size_t part) {
        plotted[part] = Plotted(request.Table.Variables[request.Variables[part]], request.Rows);
    });
    StopWhenCancelled(request);
    const std::vector<PairSums> sums = SumsOf(plotted, request);
    ScatterMatrix matrix;
    matrix.Flags = request.Flags;
    matrix.UnusedWeight = request.UnusedWeight;
    const std::size_t count = plotted.size();
    matrix.Cells.resize(count * count);
    for (std::size_t row = 0; row < count; ++row) {
        StopWhenCancelled(request);
        const std::span<const PairSums> ofRow = std::span(sums).subspan(row * (row + 1) / 2);
        plotted[row].Described.StandardDeviation = StandardDeviationOf(plotted[row], ofRow[row]);
        matrix.Variables.push_back(plotted[row].Described);
        RunParts(request.Runner, row, [&](std::size_t column) {
            const PairMoments pair = MomentsOfPair(plotted[column], plotted[row], ofRow[column]);
            matrix.Cells[row * count + column] = CellOf(plotted[column], plotted[row], pair);
            matrix.Cells[column * count + row] = CellOf(plotted[row], plotted[column], Turned(pair));
        });
    }
    return matrix;
}

}  // namespace quillara
