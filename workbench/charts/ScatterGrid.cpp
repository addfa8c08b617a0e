#include "workbench/charts/ScatterGrid.h"

#include <algorithm>
#include <cmath>

namespace quillara {
namespace {

constexpr double between = 2.0;  // pixels, half of it on each side of a cell
constexpr double rangeRoom = 0.04;
constexpr double labelGap = 5.0;
constexpr double tickLength = 3.0;
constexpr double mostLabelShare = 0.2;  // of the place, for the labels of one side
constexpr double numberDistance = 9.0;  // pixels between texts
constexpr int mostNumbers = 6;
constexpr double leastTextSize = 7.0;

double CountOf(const std::vector<NumberRange>& ranges) {
    return std::max(1.0, static_cast<double>(ranges.size()));
}

/// The most round numbers whose texts stand beside each other in so many pixels.
template <typename SizeOf>
std::vector<AxisMark> NumbersFitting(const NumberRange& range, double pixels, const SizeOf& sizeOf) {
    std::vector<AxisMark> marks;
    for (int most = mostNumbers; most >= 2; --most) {
        marks = RoundNumbers(range.Low, range.High, most);
        double needed = 0.0;
        for (const AxisMark& mark : marks) {
            needed += sizeOf(mark.Text) + numberDistance;
        }
        if (needed <= pixels) {
            break;
        }
    }
    return marks;
}

TextStyle LabelStyle(const ChartStyle& style, double cellHeight) {
    TextStyle text = style.TextOfSize(std::clamp(cellHeight * 0.4, leastTextSize, style.TextSize - 2.0));
    text.Color = style.FaintInk;
    return text;
}

}  // namespace

ScatterGrid::ScatterGrid(const std::vector<ScatterVariable>& variables, const QRectF& place, const ChartStyle& style)
    : Area(place) {
    for (const ScatterVariable& variable : variables) {
        Ranges.push_back(variable.Cases > 0 ? Widened({variable.Min, variable.Max}, rangeRoom) : NumberRange{});
    }
    const TextStyle text = LabelStyle(style, place.height() / CountOf(Ranges));
    const double mostLeft = place.width() * mostLabelShare;
    const double mostBelow = place.height() * mostLabelShare;
    Area.setLeft(place.left() + std::ceil(LabelRows(text, mostLeft)) + labelGap);
    Area.setBottom(place.bottom() - std::ceil(LabelColumns(text, mostBelow)) - labelGap);
    PlacedLabels.clear();
    TickLines.clear();
    LabelRows(text, mostLeft);
    LabelColumns(text, mostBelow);
}

QRectF ScatterGrid::Cell(std::size_t row, std::size_t column) const {
    const double width = Area.width() / CountOf(Ranges);
    const double height = Area.height() / CountOf(Ranges);
    const QRectF whole(Area.left() + static_cast<double>(column) * width,
                       Area.top() + static_cast<double>(row) * height, width, height);
    return whole.adjusted(between / 2, between / 2, -between / 2, -between / 2);
}

double ScatterGrid::Across(std::size_t column, double value) const {
    const QRectF cell = Cell(0, column);
    const NumberRange& range = Ranges[column];
    return cell.left() + (value - range.Low) / (range.High - range.Low) * cell.width();
}

double ScatterGrid::Up(std::size_t row, double value) const {
    const QRectF cell = Cell(row, 0);
    const NumberRange& range = Ranges[row];
    return cell.bottom() - (value - range.Low) / (range.High - range.Low) * cell.height();
}

std::vector<AxisSpot> ScatterGrid::SpotsAcross(std::size_t column, const TextStyle& style) const {
    const auto widthOf = [&](const QString& text) { return WidthOf(text, style); };
    std::vector<AxisSpot> spots;
    for (const AxisMark& mark : NumbersFitting(Ranges[column], Cell(0, column).width(), widthOf)) {
        spots.push_back({Across(column, mark.At), mark.Text});
    }
    return spots;
}

std::vector<AxisSpot> ScatterGrid::SpotsUp(std::size_t row, const TextStyle& style) const {
    const auto heightOf = [&](const QString&) { return LineHeight(style); };
    std::vector<AxisSpot> spots;
    for (const AxisMark& mark : NumbersFitting(Ranges[row], Cell(row, 0).height(), heightOf)) {
        spots.push_back({Up(row, mark.At), mark.Text});
    }
    return spots;
}

/// Places the labels left of the rows and tells their width.
double ScatterGrid::LabelRows(const TextStyle& style, double depth) {
    double widest = 0.0;
    for (std::size_t row = 0; row < Ranges.size(); ++row) {
        const QRectF cell = Cell(row, 0);
        const AxisLabels labels = LabelsBeside(SpotsUp(row, style), {cell.top(), cell.bottom(), depth}, style);
        widest = std::max(widest, labels.Depth);
        for (PlacedText text : labels.Texts) {
            text.Pivot += QPointF(cell.left() - labelGap, 0.0);
            PlacedLabels.push_back(text);
        }
        for (const double y : labels.Ticks) {
            TickLines.push_back(QLineF(cell.left() - tickLength, y, cell.left(), y));
        }
    }
    return widest;
}

/// Places the labels below the columns and tells their height.
double ScatterGrid::LabelColumns(const TextStyle& style, double depth) {
    double highest = 0.0;
    for (std::size_t column = 0; column < Ranges.size(); ++column) {
        const QRectF cell = Cell(Ranges.size() - 1, column);
        const AxisLabels labels = LabelsBelow(SpotsAcross(column, style), {cell.left(), cell.right(), depth}, style);
        highest = std::max(highest, labels.Depth);
        for (PlacedText text : labels.Texts) {
            text.Pivot += QPointF(0.0, cell.bottom() + labelGap);
            PlacedLabels.push_back(text);
        }
        for (const double x : labels.Ticks) {
            TickLines.push_back(QLineF(x, cell.bottom(), x, cell.bottom() + tickLength));
        }
    }
    return highest;
}

}  // namespace quillara
