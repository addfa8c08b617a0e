#include "workbench/charts/ScatterGrid.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/Charts.h"

namespace quillara {
namespace {

constexpr double BetweenCells = 2.0;  // pixels, half of it on each side of a cell
constexpr double RimShare = 0.03;  // of a cell, around its points
constexpr double CellLabelGap = 5.0;
constexpr double CellTickLength = 3.0;
constexpr double MostLabelShare = 0.2;  // of the place, for the labels of one side
constexpr double TextDistance = 9.0;  // pixels between texts beside each other
constexpr double LineDistance = 3.0;  // and between texts below each other
constexpr int MostNumbers = 6;
constexpr double LeastCellTextSize = 7.0;
const QSizeF LeastForHeading(80.0, 55.0);  // pixels of a cell
constexpr double HeadingRoom = 3.0;
constexpr double Largest = std::numeric_limits<double>::max();
constexpr double OnConstant = 0.5;  // where all values of a constant lie

double CountOf(const std::vector<ScatterSide>& sides) {
    return std::max(1.0, static_cast<double>(sides.size()));
}

ScatterSide SideOf(const ScatterVariable& variable, ValueKind kind, bool hasBars) {
    ScatterSide side{variable.Min, variable.Max, variable.Cases > 0, 0.0, 1.0, kind};
    const BinnedCounts& bins = variable.Histogram;
    if (hasBars && side.HasCases && side.Min < side.Max) {
        side.LowPlace = std::min(0.0, side.PlaceOf(bins.Low));
        side.HighPlace = std::max(1.0, side.PlaceOf(bins.Low + static_cast<double>(bins.Counts.size()) * bins.Step));
    }
    return side;
}

/// A part of what a side shows, at least a little of it.
void ShowOnly(ScatterSide& side, const NumberRange& values) {
    constexpr double leastShare = 1e-4;
    const double low = std::clamp(side.PlaceOf(values.Low), side.LowPlace, side.HighPlace);
    const double high = std::clamp(side.PlaceOf(values.High), side.LowPlace, side.HighPlace);
    if (high - low > leastShare * (side.HighPlace - side.LowPlace)) {
        side.LowPlace = low;
        side.HighPlace = high;
    }
}

/// The most round values whose texts stand beside each other in so many pixels.
template <typename SizeOf>
std::vector<AxisMark> ValuesFitting(const ScatterSide& side, double rim, double pixels, const SizeOf& sizeOf) {
    std::vector<AxisMark> marks;
    const double rimPlaces = rim / std::max(pixels - 2 * rim, 1.0) * (side.HighPlace - side.LowPlace);
    const double low = side.ValueAt(side.LowPlace - rimPlaces);
    const double high = side.ValueAt(side.HighPlace + rimPlaces);
    for (int most = MostNumbers; most >= 2; --most) {
        marks = RoundValues(low, high, most, side.Kind);
        double needed = 0.0;
        for (const AxisMark& mark : marks) {
            needed += sizeOf(mark.Text);
        }
        if (needed <= pixels) {
            break;
        }
    }
    return marks;
}

TextStyle LabelStyle(const ChartStyle& style, double cellHeight) {
    TextStyle text = style.TextOfSize(std::clamp(cellHeight * 0.4, LeastCellTextSize, style.TextSize - 2.0));
    text.Color = style.FaintInk;
    return text;
}

}  // namespace

double ScatterSide::PlaceOf(double value) const {
    if (!(Min < Max)) {
        return OnConstant;
    }
    const double width = Max - Min;
    const double held = std::clamp(value, -Largest, Largest);
    return std::isfinite(width) ? (held - Min) / width : (held / 2 - Min / 2) / (Max / 2 - Min / 2);
}

double ScatterSide::ValueAt(double place) const {
    return Min < Max ? std::clamp(Min * (1.0 - place) + Max * place, -Largest, Largest) : Min;
}

ScatterGrid::ScatterGrid(const ScatterMatrix& matrix, const Subject& about, const QRectF& place,
                         const ChartStyle& style, const std::vector<NumberRange>& shown)
    : Style(style), Area(place) {
    const bool hasBars = (matrix.Flags & ScatterFlag::Histograms) != 0;
    for (std::size_t i = 0; i < matrix.Variables.size(); ++i) {
        Sides.push_back(SideOf(matrix.Variables[i], about.KindOf(i), hasBars));
        if (i < shown.size()) {
            ShowOnly(Sides.back(), shown[i]);
        }
    }
    const TextStyle text = LabelStyle(style, place.height() / CountOf(Sides));
    const double mostLeft = place.width() * MostLabelShare;
    const double mostBelow = place.height() * MostLabelShare;
    Area.setLeft(place.left() + std::ceil(LabelRows(text, mostLeft)) + CellLabelGap);
    Area.setBottom(place.bottom() - std::ceil(LabelColumns(text, mostBelow)) - CellLabelGap);
    PlacedLabels.clear();
    TickLines.clear();
    LabelRows(text, mostLeft);
    LabelColumns(text, mostBelow);
}

QRectF ScatterGrid::Cell(std::size_t row, std::size_t column) const {
    const double width = Area.width() / CountOf(Sides);
    const double height = Area.height() / CountOf(Sides);
    const QRectF whole(Area.left() + static_cast<double>(column) * width,
                       Area.top() + static_cast<double>(row) * height, width, height);
    return whole.adjusted(BetweenCells / 2, BetweenCells / 2, -BetweenCells / 2, -BetweenCells / 2);
}

TextStyle ScatterGrid::HeadingStyle() const {
    return Style.TextOfSize(std::max(8.0, Style.TextSize - 3.0));
}

double ScatterGrid::HeadingHeight() const {
    const QSizeF cell = Cell(0, 0).size();
    const bool hasRoom = cell.width() >= LeastForHeading.width() && cell.height() >= LeastForHeading.height();
    return hasRoom ? LineHeight(HeadingStyle()) + HeadingRoom : 0.0;
}

double ScatterGrid::PointSize() const {
    return std::clamp(Cell(0, 0).height() / 25.0, 1.0, 4.5);
}

/// Points on the bounds of the range lie wholly within the cell.
double ScatterGrid::Rim(double length) const {
    return std::max(PointSize() / 2 + 1.0, length * RimShare);
}

double ScatterGrid::Across(std::size_t column, double place) const {
    const QRectF cell = Cell(0, column);
    const ScatterSide& side = Sides[column];
    const double rim = Rim(cell.width());
    const double share = (place - side.LowPlace) / (side.HighPlace - side.LowPlace);
    return cell.left() + rim + share * (cell.width() - 2 * rim);
}

double ScatterGrid::Up(std::size_t row, double place) const {
    const QRectF cell = Cell(row, 0).adjusted(0.0, HeadingHeight(), 0.0, 0.0);
    const ScatterSide& side = Sides[row];
    const double rim = Rim(cell.height());
    const double share = (place - side.LowPlace) / (side.HighPlace - side.LowPlace);
    return cell.bottom() - rim - share * (cell.height() - 2 * rim);
}

double ScatterGrid::PlaceAcross(std::size_t column, double pixel) const {
    const ScatterSide& side = Sides[column];
    const double low = Across(column, side.LowPlace);
    const double high = Across(column, side.HighPlace);
    return side.LowPlace + (pixel - low) / (high - low) * (side.HighPlace - side.LowPlace);
}

double ScatterGrid::PlaceUp(std::size_t row, double pixel) const {
    const ScatterSide& side = Sides[row];
    const double low = Up(row, side.LowPlace);
    const double high = Up(row, side.HighPlace);
    return side.LowPlace + (pixel - low) / (high - low) * (side.HighPlace - side.LowPlace);
}

std::vector<AxisSpot> ScatterGrid::SpotsAcross(std::size_t column, const TextStyle& style) const {
    const auto widthOf = [&](const QString& text) { return WidthOf(text, style) + TextDistance; };
    const ScatterSide& side = Sides[column];
    const double width = Cell(0, column).width();
    std::vector<AxisSpot> spots;
    for (const AxisMark& mark : ValuesFitting(side, Rim(width), width, widthOf)) {
        spots.push_back({Across(column, side.PlaceOf(mark.At)), mark.Text});
    }
    return spots;
}

std::vector<AxisSpot> ScatterGrid::SpotsUp(std::size_t row, const TextStyle& style) const {
    const auto heightOf = [&](const QString&) { return LineHeight(style) + LineDistance; };
    const ScatterSide& side = Sides[row];
    const double height = Cell(row, 0).height() - HeadingHeight();
    std::vector<AxisSpot> spots;
    for (const AxisMark& mark : ValuesFitting(side, Rim(height), height, heightOf)) {
        spots.push_back({Up(row, side.PlaceOf(mark.At)), mark.Text});
    }
    return spots;
}

/// Places the labels left of the rows and tells their width.
double ScatterGrid::LabelRows(const TextStyle& style, double depth) {
    double widest = 0.0;
    for (std::size_t row = 0; row < Sides.size(); ++row) {
        if (!Sides[row].HasCases) {
            continue;
        }
        const QRectF cell = Cell(row, 0);
        const AxisLabels labels = LabelsBeside(SpotsUp(row, style), {cell.top(), cell.bottom(), depth}, style);
        widest = std::max(widest, labels.Depth);
        for (PlacedText text : labels.Texts) {
            text.Pivot += QPointF(cell.left() - CellLabelGap, 0.0);
            PlacedLabels.push_back(text);
        }
        for (const double y : labels.Ticks) {
            TickLines.push_back(QLineF(cell.left() - CellTickLength, y, cell.left(), y));
        }
    }
    return widest;
}

/// Places the labels below the columns and tells their height.
double ScatterGrid::LabelColumns(const TextStyle& style, double depth) {
    double highest = 0.0;
    for (std::size_t column = 0; column < Sides.size(); ++column) {
        if (!Sides[column].HasCases) {
            continue;
        }
        const QRectF cell = Cell(Sides.size() - 1, column);
        const AxisLabels labels = LabelsBelow(SpotsAcross(column, style), {cell.left(), cell.right(), depth}, style);
        highest = std::max(highest, labels.Depth);
        for (PlacedText text : labels.Texts) {
            text.Pivot += QPointF(0.0, cell.bottom() + CellLabelGap);
            PlacedLabels.push_back(text);
        }
        for (const double x : labels.Ticks) {
            TickLines.push_back(QLineF(x, cell.bottom(), x, cell.bottom() + CellTickLength));
        }
    }
    return highest;
}

}  // namespace quillara
