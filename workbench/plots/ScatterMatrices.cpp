#include "workbench/plots/ScatterMatrices.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "workbench/data/Errors.h"

namespace quillara {
namespace {

constexpr int HistogramParts = 10;
constexpr double Undefined = std::numeric_limits<double>::quiet_NaN();

/// The values of a variable in the rows of a plot; NaN where it has none.
std::vector<double> PlottedColumn(const Variable& variable, const PlotRows& rows) {
    std::vector<double> column(rows.size());
    std::ranges::transform(rows, column.begin(), [&](std::uint32_t row) {
        const double value = variable.Values[row];
        return std::isfinite(value) && !variable.IsMissing(value) ? value : Undefined;
    });
    return column;
}

ScatterVariable DescribedVariable(const Variable& variable, const std::vector<double>& column) {
    std::vector<double> values;
    std::ranges::copy_if(column, std::back_inserter(values), [](double value) { return !std::isnan(value); });
    const ValueMoments moments = MomentsOf(values);
    ScatterVariable described{variable.Name,
                              variable.LongName,
                              moments.Cases,
                              moments.Min,
                              moments.Max,
                              moments.Mean,
                              moments.StandardDeviation(),
                              {}};
    if (!values.empty()) {
        const NeatBins bins = NeatBinsOver(moments.Min, moments.Max, HistogramParts);
        described.Histogram = {bins.Low, bins.Step, std::vector<double>(bins.UpperBounds.size())};
        for (const double value : values) {
            ++described.Histogram.Counts[bins.PlaceOf(value)];
        }
    }
    return described;
}

/// Runs over the cases in which both variables are valid.
template <typename Action>
void ForEachPair(const std::vector<double>& x, const std::vector<double>& y, Action action) {
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (!std::isnan(x[i]) && !std::isnan(y[i])) {
            action(x[i], y[i]);
        }
    }
}

struct PlottedVariable {
    ScatterVariable Described;
    std::vector<double> Column;
};

/// How fine the cells of a matrix are.
struct CellDetail {
    std::size_t MostPoints;
    int GridSide;
};

/// The cells of a large matrix are small on any screen and together must stay within the memory.
CellDetail DetailFor(std::size_t variables) {
    constexpr std::size_t fullDetail = 8;  // variables
    constexpr std::size_t fewestPoints = 500;
    constexpr int smallestGrid = 16;
    if (variables <= fullDetail) {
        return {MostScatterPoints, DensityGridSide};
    }
    const std::size_t share = (variables * variables) / (fullDetail * fullDetail);
    return {std::max(MostScatterPoints / share, fewestPoints),
            std::max(DensityGridSide * static_cast<int>(fullDetail) / static_cast<int>(variables), smallestGrid)};
}

/// Sums of deviations of two variables from their means, over the cases in which both are valid.
struct PairMoments {
    std::int64_t Cases = 0;
    double MeanX = 0.0;
    double MeanY = 0.0;
    double SquaresX = 0.0;
    double SquaresY = 0.0;
    double Products = 0.0;
};

PairMoments MomentsOfPair(const std::vector<double>& x, const std::vector<double>& y) {
    PairMoments moments;
    ForEachPair(x, y, [&](double a, double b) {
        ++moments.Cases;
        moments.MeanX += a;
        moments.MeanY += b;
    });
    moments.MeanX /= static_cast<double>(moments.Cases);
    moments.MeanY /= static_cast<double>(moments.Cases);
    ForEachPair(x, y, [&](double a, double b) {
        moments.SquaresX += (a - moments.MeanX) * (a - moments.MeanX);
        moments.SquaresY += (b - moments.MeanY) * (b - moments.MeanY);
        moments.Products += (a - moments.MeanX) * (b - moments.MeanY);
    });
    return moments;
}

/// Correlation and least squares line of y on x.
void FitLine(ScatterCell& cell, const PairMoments& moments) {
    const bool hasBoth = moments.SquaresX > 0.0 && moments.SquaresY > 0.0;
    cell.Cases = moments.Cases;
    cell.Slope = moments.SquaresX > 0.0 ? moments.Products / moments.SquaresX : Undefined;
    cell.Intercept = moments.MeanY - cell.Slope * moments.MeanX;
    cell.Correlation = hasBoth ? moments.Products / std::sqrt(moments.SquaresX * moments.SquaresY) : Undefined;
}

int GridPlace(double value, const ScatterVariable& variable, int side) {
    const double range = variable.Max / 2 - variable.Min / 2;  // halved, so that no range is too large for a double
    const double share = range > 0 ? (value / 2 - variable.Min / 2) / range : 0.0;
    return std::clamp(static_cast<int>(share * side), 0, side - 1);
}

DensityGrid GridOf(const PlottedVariable& x, const PlottedVariable& y, int side) {
    DensityGrid grid{side, side, std::vector<float>(static_cast<std::size_t>(side) * static_cast<std::size_t>(side))};
    ForEachPair(x.Column, y.Column, [&](double a, double b) {
        const int place = GridPlace(b, y.Described, side) * side + GridPlace(a, x.Described, side);
        ++grid.Counts[static_cast<std::size_t>(place)];
    });
    return grid;
}

ScatterCell CellOf(const PlottedVariable& x, const PlottedVariable& y, const CellDetail& detail) {
    ScatterCell cell;
    FitLine(cell, MomentsOfPair(x.Column, y.Column));
    if (static_cast<std::size_t>(cell.Cases) > detail.MostPoints) {
        cell.Density = GridOf(x, y, detail.GridSide);
    } else {
        ForEachPair(x.Column, y.Column, [&](double a, double b) {
            cell.Points.emplace_back(static_cast<float>(a), static_cast<float>(b));
        });
    }
    return cell;
}

std::vector<PlottedVariable> PlottedVariables(const ScatterRequest& request) {
    std::vector<PlottedVariable> plotted;
    for (const std::size_t index : request.Variables) {
        std::vector<double> column = PlottedColumn(request.Table.Variables[index], request.Rows);
        ScatterVariable described = DescribedVariable(request.Table.Variables[index], column);
        plotted.push_back({std::move(described), std::move(column)});
    }
    return plotted;
}

}  // namespace

ScatterMatrix ScatterMatrixOf(const ScatterRequest& request) {
    const std::vector<PlottedVariable> plotted = PlottedVariables(request);
    const CellDetail detail = DetailFor(plotted.size());
    ScatterMatrix matrix;
    matrix.Flags = request.Flags;
    for (const PlottedVariable& y : plotted) {
        matrix.Variables.push_back(y.Described);
        for (const PlottedVariable& x : plotted) {
            if (request.Cancelled && request.Cancelled()) {
                throw Interrupted();
            }
            matrix.Cells.push_back(&x == &y ? ScatterCell() : CellOf(x, y, detail));
        }
    }
    return matrix;
}

}  // namespace quillara
