#include <algorithm>
#include <cmath>

#include "workbench/charts/ChartColors.h"
#include "workbench/charts/ChartKinds.h"
#include "workbench/charts/ScatterCells.h"
#include "workbench/charts/ScatterGrid.h"

namespace quillara {
namespace {

constexpr std::size_t mostSinglePoints = 20000;  // of a vector file
constexpr double nameShare = 0.45;  // of a diagonal cell, above a histogram
constexpr double nameRoom = 3.0;
constexpr double mostNameShare = 0.2;  // of the width, for names beside the rows
constexpr double leastNameSize = 7.0;
const QSizeF leastForCorrelation(80.0, 55.0);

class ScatterElement : public ChartElement {
  public:
    ScatterElement(const ChartSheet& sheet, const ScatterMatrix& matrix);

  protected:
    void Arrange(const QRectF& place) override;
    void draw(QCPPainter* painter) override;

  private:
    [[nodiscard]] std::size_t Count() const { return Matrix.Variables.size(); }
    [[nodiscard]] const ScatterCell& CellOf(std::size_t row, std::size_t column) const;
    [[nodiscard]] double NameSize() const;
    [[nodiscard]] double NameHeight(const QRectF& cell) const;
    void ArrangeNames(const QRectF& place);
    void ArrangeName(std::size_t variable, double size);
    void ArrangeNamesBeside(const QRectF& place);
    void ArrangeCell(std::size_t row, std::size_t column);
    void DrawCell(QCPPainter& painter, std::size_t row, std::size_t column) const;
    void DrawHistogram(QCPPainter& painter, std::size_t variable) const;
    void DrawLine(QCPPainter& painter, std::size_t row, std::size_t column) const;

    const std::shared_ptr<const GraphDocument> Document;  // keeps Matrix alive
    const ScatterMatrix& Matrix;
    ScatterGrid Grid;
    bool NamesAreInside = true;
    std::vector<QRectF> Plates;  ///< grounds of texts that stand on points
};

ScatterElement::ScatterElement(const ChartSheet& sheet, const ScatterMatrix& matrix)
    : ChartElement(sheet.Plot, sheet.Style),
      Document(sheet.Document),
      Matrix(matrix),
      Grid(matrix.Variables, QRectF(), sheet.Style) {}

const ScatterCell& ScatterElement::CellOf(std::size_t row, std::size_t column) const {
    static const ScatterCell none;
    const std::size_t place = row * Count() + column;
    return place < Matrix.Cells.size() ? Matrix.Cells[place] : none;
}

double ScatterElement::NameHeight(const QRectF& cell) const {
    if (!NamesAreInside) {
        return 0.0;
    }
    return (Matrix.Flags & ScatterFlag::Histograms) != 0 ? cell.height() * nameShare : cell.height();
}

/// The size of text with which all names fit whole into their cells; 0 when they don't even in the smallest.
double ScatterElement::NameSize() const {
    for (double size = Style.TextSize; size >= leastNameSize; size -= 1.0) {
        const TextStyle style = Style.TextOfSize(size);
        const bool allFit = std::ranges::all_of(Matrix.Variables, [&](const ScatterVariable& variable) {
            const QRectF cell = Grid.Cell(0, 0);
            const QStringList lines = WrappedLines(Shown(variable.Name), style, cell.width() - 2 * nameRoom);
            const bool isWhole = lines.join(u' ') == Shown(variable.Name).simplified();
            return isWhole && static_cast<double>(lines.size()) * LineHeight(style) <= NameHeight(cell);
        });
        if (allFit) {
            return size;
        }
    }
    return 0.0;
}

void ScatterElement::ArrangeName(std::size_t variable, double size) {
    const QRectF cell = Grid.Cell(variable, variable);
    const TextStyle style = Style.TextOfSize(size);
    const QStringList lines = WrappedLines(Shown(Matrix.Variables[variable].Name), style, cell.width() - 2 * nameRoom);
    double y = cell.top() + (NameHeight(cell) - static_cast<double>(lines.size()) * LineHeight(style)) / 2;
    for (const QString& line : lines) {
        PlacedTexts.push_back(TextAt({cell.center().x(), y}, Qt::AlignHCenter | Qt::AlignTop, line, style));
        y += LineHeight(style);
    }
}

/// Where cells are too small for the names, these stand at the right ends of the rows.
void ScatterElement::ArrangeNamesBeside(const QRectF& place) {
    const double cellHeight = place.height() / static_cast<double>(Count());
    const TextStyle style = Style.TextOfSize(std::clamp(cellHeight * 0.6, leastNameSize, Style.TextSize));
    double widest = 0.0;
    for (const ScatterVariable& variable : Matrix.Variables) {
        widest = std::max(widest, WidthOf(Shown(variable.Name), style));
    }
    const double width = std::min(widest, place.width() * mostNameShare);
    Grid = ScatterGrid(Matrix.Variables, place.adjusted(0.0, 0.0, -width - 2 * nameRoom, 0.0), Style);
    for (std::size_t row = 0; row < Count(); ++row) {
        const QRectF cell = Grid.Cell(row, Count() - 1);
        PlacedTexts.push_back(ElidedText({cell.right() + 2 * nameRoom, cell.center().y()},
                                         Qt::AlignLeft | Qt::AlignVCenter, Shown(Matrix.Variables[row].Name), style,
                                         width));
    }
}

void ScatterElement::ArrangeNames(const QRectF& place) {
    const double size = NameSize();
    NamesAreInside = size > 0.0;
    if (!NamesAreInside) {
        ArrangeNamesBeside(place);
        return;
    }
    for (std::size_t variable = 0; variable < Count(); ++variable) {
        ArrangeName(variable, size);
    }
}

QString NameOf(const ScatterVariable& variable) {
    const QString name = Shown(variable.Name);
    return variable.LongName.empty() ? name : name + QStringLiteral(": ") + Shown(variable.LongName);
}

QString VariableTip(const ScatterVariable& variable) {
    return QStringLiteral("%1\nMean: %2, SD: %3\nRange: %4 to %5\nValid cases: %6")
        .arg(NameOf(variable), NumberText(variable.Mean), NumberText(variable.StandardDeviation),
             NumberText(variable.Min), NumberText(variable.Max))
        .arg(variable.Cases);
}

void ScatterElement::ArrangeCell(std::size_t row, std::size_t column) {
    const ScatterCell& cell = CellOf(row, column);
    const QRectF place = Grid.Cell(row, column);
    const bool isDiagonal = row == column;
    const QString correlation = std::isfinite(cell.Correlation)
                                    ? QStringLiteral("r = ") + QString::number(cell.Correlation, 'f', 2)
                                    : QString();
    ChartMark mark;
    mark.Outline = RectangleOutline(place);
    mark.Point = static_cast<int>(row * Count() + column);
    mark.Tip = isDiagonal ? VariableTip(Matrix.Variables[row])
                          : QStringLiteral("%1 against %2\n%3\nCases: %4")
                                .arg(NameOf(Matrix.Variables[row]), NameOf(Matrix.Variables[column]), correlation)
                                .arg(cell.Cases);
    PlacedMarks.push_back(mark);
    const bool hasRoom = place.width() >= leastForCorrelation.width() && place.height() >= leastForCorrelation.height();
    if (!isDiagonal && hasRoom && cell.Cases > 0 && !correlation.isEmpty()) {
        const TextStyle style = Style.TextOfSize(std::max(8.0, Style.TextSize - 3.0));
        PlacedTexts.push_back(
            TextAt(place.topLeft() + QPointF(3.0, 2.0), Qt::AlignLeft | Qt::AlignTop, correlation, style));
        Plates.push_back(PlacedTexts.back().Outline().boundingRect().adjusted(-2.0, -1.0, 2.0, 0.0));
    }
}

void ScatterElement::Arrange(const QRectF& place) {
    const QRectF inner = place.adjusted(0.0, 0.0, -1.0, -1.0);
    Grid = ScatterGrid(Matrix.Variables, inner, Style);
    NamesAreInside = true;
    Plates.clear();
    if (Matrix.Variables.empty()) {
        PlacedTexts.push_back(
            TextAt(place.center(), Qt::AlignCenter, QStringLiteral("No variables"), Style.FaintText()));
        return;
    }
    ArrangeNames(inner);
    PlacedTexts.insert(PlacedTexts.end(), Grid.Labels().begin(), Grid.Labels().end());
    for (std::size_t row = 0; row < Count(); ++row) {
        for (std::size_t column = 0; column < Count(); ++column) {
            ArrangeCell(row, column);
        }
    }
}

void ScatterElement::DrawHistogram(QCPPainter& painter, std::size_t variable) const {
    const BinnedCounts& bins = Matrix.Variables[variable].Histogram;
    const double most = bins.Counts.empty() ? 0.0 : std::ranges::max(bins.Counts);
    if (!(most > 0.0)) {
        return;
    }
    const QRectF cell = Grid.Cell(variable, variable);
    const double room = cell.height() - NameHeight(cell);
    painter.setPen(QPen(Style.Background, 0.5));
    painter.setBrush(SeriesColor(ChartColor::Blue, Style.IsDark));
    for (std::size_t i = 0; i < bins.Counts.size(); ++i) {
        const double low = bins.Low + static_cast<double>(i) * bins.Step;
        const double left = std::max(Grid.Across(variable, low), cell.left());
        const double right = std::min(Grid.Across(variable, low + bins.Step), cell.right());
        const double height = bins.Counts[i] / most * room;
        if (height > 0.0 && left < right) {
            painter.drawRect(QRectF(left, cell.bottom() - height, right - left, height));
        }
    }
}

void ScatterElement::DrawLine(QCPPainter& painter, std::size_t row, std::size_t column) const {
    const auto line = LineWithin(CellOf(row, column), Grid.RangeOf(column), Grid.RangeOf(row));
    if (line) {
        painter.setPen(QPen(SeriesColor(ChartColor::Vermilion, Style.IsDark), 1.6));
        painter.drawLine(QLineF(Grid.Across(column, line->x1()), Grid.Up(row, line->y1()),
                                Grid.Across(column, line->x2()), Grid.Up(row, line->y2())));
    }
}

/// Points that stand for more cases are fainter, so that crowds show.
PointLook LookOf(const ScatterMatrix& matrix, const ScatterCell& cell, const ChartStyle& style,
                 const QSizeF& cellSize) {
    std::size_t all = 0;
    for (const ScatterCell& other : matrix.Cells) {
        all += other.Points.size();
    }
    PointLook look;
    look.Color = SeriesColor(ChartColor::Blue, style.IsDark);
    look.Color.setAlphaF(
        static_cast<float>(std::clamp(30.0 / std::sqrt(static_cast<double>(cell.Points.size()) + 1.0), 0.25, 0.8)));
    look.Diameter = std::clamp(cellSize.height() / 25.0, 1.0, 4.5);
    look.Diameter *= cell.Points.size() > 1000 ? 0.7 : 1.0;
    look.AsImage = all > mostSinglePoints;
    return look;
}

void ScatterElement::DrawCell(QCPPainter& painter, std::size_t row, std::size_t column) const {
    const ScatterCell& cell = CellOf(row, column);
    if (cell.Density) {
        const ScatterVariable& x = Matrix.Variables[column];
        const ScatterVariable& y = Matrix.Variables[row];
        const QRectF place(QPointF(Grid.Across(column, x.Min), Grid.Up(row, y.Max)),
                           QPointF(Grid.Across(column, x.Max), Grid.Up(row, y.Min)));
        DrawDensity(painter, *cell.Density, place, Style.IsDark);
    }
    std::vector<QPointF> places(cell.Points.size());
    std::ranges::transform(cell.Points, places.begin(), [&](const std::pair<float, float>& point) {
        return QPointF(Grid.Across(column, point.first), Grid.Up(row, point.second));
    });
    PointLook look = LookOf(Matrix, cell, Style, Grid.Cell(row, column).size());
    look.AsImage = look.AsImage && painter.modes().testFlag(QCPPainter::pmVectorized);
    DrawPoints(painter, cell, look, places);
    painter.setRenderHint(QPainter::Antialiasing, true);
    if ((Matrix.Flags & ScatterFlag::Lines) != 0) {
        DrawLine(painter, row, column);
    }
}

void ScatterElement::draw(QCPPainter* painter) {
    for (std::size_t row = 0; row < Count(); ++row) {
        for (std::size_t column = 0; column < Count(); ++column) {
            if (row != column) {
                DrawCell(*painter, row, column);
            } else if ((Matrix.Flags & ScatterFlag::Histograms) != 0) {
                DrawHistogram(*painter, row);
            }
        }
    }
    QColor plate = Style.Background;
    plate.setAlphaF(0.8F);
    for (const QRectF& place : Plates) {
        painter->fillRect(place, plate);
    }
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(Style.Frame, 1.0));
    for (const ChartMark& mark : PlacedMarks) {
        painter->drawPolygon(mark.Outline);
    }
    for (const QLineF& tick : Grid.Ticks()) {
        painter->drawLine(tick);
    }
}

}  // namespace

ChartBody BodyOf(const ChartSheet& sheet, const ScatterMatrix& matrix) {
    return {new ScatterElement(sheet, matrix)};
}

}  // namespace quillara
