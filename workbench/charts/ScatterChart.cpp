#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "workbench/charts/ChartColors.h"
#include "workbench/charts/ChartKinds.h"
#include "workbench/charts/ChartZoom.h"
#include "workbench/charts/NoCases.h"
#include "workbench/charts/ScatterCells.h"
#include "workbench/charts/ScatterGrid.h"

namespace quillara {
namespace {

constexpr std::int64_t MostSinglePoints = 20000;  // of a vector file
constexpr double MostGround = 2.0;  // of a cell, that points cover when none lies on another
constexpr double ConstantShare = 0.2;  // of the width of a cell, for the one bar of a constant
constexpr double NameShare = 0.45;  // of a diagonal cell, above a histogram
constexpr double NameRoom = 3.0;
constexpr double MostNameShare = 0.2;  // of the width, for names beside the rows
constexpr double LeastNameSize = 7.0;

class ScatterElement : public ChartElement, public ZoomablePart {
  public:
    ScatterElement(const ChartSheet& sheet, const ScatterMatrix& matrix);
    [[nodiscard]] bool CanZoom() const override { return HasCases(); }
    [[nodiscard]] std::vector<NumberRange> Zoom() const override { return Ranges; }
    void SetZoom(const std::vector<NumberRange>& ranges) override;
    bool ZoomTo(const QRectF& pixels) override;
    bool ZoomAbout(QPointF point, double factor) override;

  protected:
    void Arrange(const QRectF& place) override;
    void draw(QCPPainter* painter) override;

  private:
    [[nodiscard]] std::size_t Count() const { return Matrix.Variables.size(); }
    [[nodiscard]] bool HasCases() const;
    [[nodiscard]] const ScatterCell& CellOf(std::size_t row, std::size_t column) const;
    [[nodiscard]] ScatterGrid GridAt(const QRectF& place) const;
    [[nodiscard]] double NameSize() const;
    [[nodiscard]] double NameHeight(const QRectF& cell) const;
    [[nodiscard]] QRectF ArrangeNote(const QRectF& place);
    [[nodiscard]] std::optional<std::size_t> CellAt(QPointF point) const;
    bool ShowPlaces(std::size_t variable, const NumberRange& places);
    void ArrangeNames(const QRectF& place);
    void ArrangeName(std::size_t variable, double size);
    void ArrangeNamesBeside(const QRectF& place);
    void ArrangeCell(std::size_t row, std::size_t column);
    [[nodiscard]] PointLook Look() const;
    [[nodiscard]] bool ShowsCounts() const;
    [[nodiscard]] std::vector<QPointF> PointsOf(std::size_t row, std::size_t column) const;
    void DrawPointCells(QCPPainter& painter) const;
    [[nodiscard]] PixelSteps StepsOf(std::size_t variable) const;
    void DrawCountCells(QCPPainter& painter) const;
    void DrawHistogram(QCPPainter& painter, std::size_t variable) const;
    void DrawLine(QCPPainter& painter, std::size_t row, std::size_t column) const;
    void DrawFrames(QCPPainter& painter) const;

    const std::shared_ptr<const GraphDocument> Document;  // keeps Matrix alive
    const ScatterMatrix& Matrix;
    std::vector<NumberRange> Ranges;  // values that are shown of each variable; empty: all
    ScatterGrid Grid;
    bool NamesAreInside = true;
};

/// A range of places about one of them, by a factor, no wider than what the cases take.
NumberRange Scaled(const ScatterSide& side, double about, double factor) {
    const double at = std::clamp(about, side.LowPlace, side.HighPlace);
    return {at - (at - side.LowPlace) * factor, at + (side.HighPlace - at) * factor};
}

ScatterElement::ScatterElement(const ChartSheet& sheet, const ScatterMatrix& matrix)
    : ChartElement(sheet.Plot, sheet.Style), Document(sheet.Document), Matrix(matrix), Grid(GridAt(QRectF())) {}

void ScatterElement::SetZoom(const std::vector<NumberRange>& ranges) {
    Ranges = ranges.size() == Count() ? ranges : std::vector<NumberRange>();
}

/// The place of the cell in which a point lies.
std::optional<std::size_t> ScatterElement::CellAt(QPointF point) const {
    for (std::size_t cell = 0; cell < Count() * Count(); ++cell) {
        if (Grid.Cell(cell / Count(), cell % Count()).contains(point)) {
            return cell;
        }
    }
    return std::nullopt;
}

/// All cells of the variable show the same places of it.
bool ScatterElement::ShowPlaces(std::size_t variable, const NumberRange& places) {
    const ScatterSide& side = Grid.Side(variable);
    if (!(side.Min < side.Max)) {
        return false;
    }
    if (Ranges.empty()) {
        for (std::size_t each = 0; each < Count(); ++each) {
            const ScatterSide& whole = Grid.Side(each);
            Ranges.push_back({whole.ValueAt(whole.LowPlace), whole.ValueAt(whole.HighPlace)});
        }
    }
    NumberRange& range = Ranges[variable];
    const NumberRange before = range;
    range = {side.ValueAt(places.Low), side.ValueAt(places.High)};
    return before.Low != range.Low || before.High != range.High;
}

bool ScatterElement::ZoomTo(const QRectF& pixels) {
    const std::optional<std::size_t> cell = CellAt(pixels.center());
    if (!cell) {
        return false;
    }
    const std::size_t row = *cell / Count();
    const std::size_t column = *cell % Count();
    const NumberRange across{Grid.PlaceAcross(column, pixels.left()), Grid.PlaceAcross(column, pixels.right())};
    const NumberRange up{Grid.PlaceUp(row, pixels.bottom()), Grid.PlaceUp(row, pixels.top())};
    const bool isWider = ShowPlaces(column, across);
    return (row != column && ShowPlaces(row, up)) || isWider;
}

bool ScatterElement::ZoomAbout(QPointF point, double factor) {
    const std::optional<std::size_t> cell = CellAt(point);
    if (!cell || (Ranges.empty() && factor > 1.0)) {
        return false;
    }
    const std::size_t row = *cell / Count();
    const std::size_t column = *cell % Count();
    const NumberRange across = Scaled(Grid.Side(column), Grid.PlaceAcross(column, point.x()), factor);
    const NumberRange up = Scaled(Grid.Side(row), Grid.PlaceUp(row, point.y()), factor);
    const bool isWider = ShowPlaces(column, across);
    return (row != column && ShowPlaces(row, up)) || isWider;
}

bool ScatterElement::HasCases() const {
    return std::ranges::any_of(Matrix.Variables, [](const ScatterVariable& variable) { return variable.Cases > 0; });
}

const ScatterCell& ScatterElement::CellOf(std::size_t row, std::size_t column) const {
    static const ScatterCell none;
    const std::size_t place = row * Count() + column;
    return place < Matrix.Cells.size() ? Matrix.Cells[place] : none;
}

ScatterGrid ScatterElement::GridAt(const QRectF& place) const {
    return {Matrix, Document->About, place, Style, Ranges};
}

double ScatterElement::NameHeight(const QRectF& cell) const {
    if (!NamesAreInside) {
        return 0.0;
    }
    return (Matrix.Flags & ScatterFlag::Histograms) != 0 ? cell.height() * NameShare : cell.height();
}

/// The size of text with which all names fit whole into their cells; 0 when they don't even in the smallest.
double ScatterElement::NameSize() const {
    for (double size = Style.TextSize; size >= LeastNameSize; size -= 1.0) {
        const TextStyle style = Style.TextOfSize(size);
        const bool allFit = std::ranges::all_of(Matrix.Variables, [&](const ScatterVariable& variable) {
            const QRectF cell = Grid.Cell(0, 0);
            const QStringList lines = WrappedLines(Shown(variable.Name), style, cell.width() - 2 * NameRoom);
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
    const QStringList lines = WrappedLines(Shown(Matrix.Variables[variable].Name), style, cell.width() - 2 * NameRoom);
    double y = cell.top() + (NameHeight(cell) - static_cast<double>(lines.size()) * LineHeight(style)) / 2;
    for (const QString& line : lines) {
        PlacedTexts.push_back(TextAt({cell.center().x(), y}, Qt::AlignHCenter | Qt::AlignTop, line, style));
        y += LineHeight(style);
    }
}

/// Where cells are too small for the names, these stand at the right ends of the rows.
void ScatterElement::ArrangeNamesBeside(const QRectF& place) {
    const double cellHeight = place.height() / static_cast<double>(Count());
    const TextStyle style = Style.TextOfSize(std::clamp(cellHeight * 0.6, LeastNameSize, Style.TextSize));
    double widest = 0.0;
    for (const ScatterVariable& variable : Matrix.Variables) {
        widest = std::max(widest, WidthOf(Shown(variable.Name), style));
    }
    const double width = std::min(widest, place.width() * MostNameShare);
    Grid = GridAt(place.adjusted(0.0, 0.0, -width - 2 * NameRoom, 0.0));
    for (std::size_t row = 0; row < Count(); ++row) {
        const QRectF cell = Grid.Cell(row, Count() - 1);
        PlacedTexts.push_back(ElidedText({cell.right() + 2 * NameRoom, cell.center().y()},
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

QString VariableTip(const ScatterVariable& variable, ValueKind kind) {
    if (variable.Cases == 0) {
        return NameOf(variable) + QStringLiteral("\nValid cases: 0");
    }
    return QStringLiteral("%1\nMean: %2, SD: %3\nRange: %4 to %5\nValid cases: %6")
        .arg(NameOf(variable), ValueText(variable.Mean, kind), DistanceText(variable.StandardDeviation, kind),
             ValueText(variable.Min, kind), ValueText(variable.Max, kind))
        .arg(variable.Cases);
}

/// "r = 0.31"; empty where it isn't defined.
QString CorrelationText(const ScatterCell& cell) {
    if (!std::isfinite(cell.Correlation) || cell.Cases == 0) {
        return {};
    }
    const QString number = QString::number(cell.Correlation, 'f', 2);
    return QStringLiteral("r = ") + (number == QStringLiteral("-0.00") ? QStringLiteral("0.00") : number);
}

QString CellTip(const ScatterVariable& y, const ScatterVariable& x, const ScatterCell& cell) {
    const QString correlation = CorrelationText(cell);
    const QString first = QStringLiteral("%1 against %2\n").arg(NameOf(y), NameOf(x));
    return first + (correlation.isEmpty() ? QStringLiteral("r isn't defined") : correlation) +
           QStringLiteral("\nCases: %1").arg(cell.Cases);
}

void ScatterElement::ArrangeCell(std::size_t row, std::size_t column) {
    const ScatterCell& cell = CellOf(row, column);
    const QRectF place = Grid.Cell(row, column);
    const bool isDiagonal = row == column;
    ChartMark mark;
    mark.Outline = RectangleOutline(place);
    mark.Point = static_cast<int>(row * Count() + column);
    mark.Tip = isDiagonal ? VariableTip(Matrix.Variables[row], Grid.Side(row).Kind)
                          : CellTip(Matrix.Variables[row], Matrix.Variables[column], cell);
    PlacedMarks.push_back(mark);
    const QString correlation = CorrelationText(cell);
    if (!isDiagonal && Grid.HeadingHeight() > 0.0 && !correlation.isEmpty()) {
        PlacedTexts.push_back(TextAt(place.topLeft() + QPointF(3.0, 2.0), Qt::AlignLeft | Qt::AlignTop, correlation,
                                     Grid.HeadingStyle()));
    }
}

/// Says below the matrix that weights play no part in it; what remains is for the cells.
QRectF ScatterElement::ArrangeNote(const QRectF& place) {
    if (Matrix.UnusedWeight.empty()) {
        return place;
    }
    const TextStyle style = Style.FaintText();
    const QString note = QStringLiteral("Not weighted by %1: each case is one point and counts once in r and line")
                             .arg(Shown(Matrix.UnusedWeight));
    PlacedTexts.push_back(ElidedText(place.bottomLeft(), Qt::AlignLeft | Qt::AlignBottom, note, style, place.width()));
    return place.adjusted(0.0, 0.0, 0.0, -LineHeight(style));
}

void ScatterElement::Arrange(const QRectF& place) {
    NamesAreInside = true;
    if (Matrix.Variables.empty()) {
        PlacedTexts.push_back(
            TextAt(place.center(), Qt::AlignCenter, QStringLiteral("No variables"), Style.FaintText()));
        return;
    }
    if (!HasCases()) {
        PlacedTexts = NoCasesOfReview(Document->About, place, Style.FaintText());
        return;
    }
    const QRectF inner = ArrangeNote(place.adjusted(0.0, 0.0, -1.0, -1.0));
    Grid = GridAt(inner);
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
    const ScatterSide& side = Grid.Side(variable);
    const QRectF cell = Grid.Cell(variable, variable);
    const double room = cell.height() - NameHeight(cell);
    painter.setPen(QPen(Style.Background, 0.5));
    painter.setBrush(SeriesColor(ChartColor::Blue, Style.IsDark));
    if (!(side.Min < side.Max)) {
        const double width = cell.width() * ConstantShare;
        painter.drawRect(QRectF(cell.center().x() - width / 2, cell.bottom() - room, width, room));
        return;
    }
    for (std::size_t i = 0; i < bins.Counts.size(); ++i) {
        const double low = bins.Low + static_cast<double>(i) * bins.Step;
        const double left = std::max(cell.left(), Grid.Across(variable, side.PlaceOf(low)));
        const double right = std::min(cell.right(), Grid.Across(variable, side.PlaceOf(low + bins.Step)));
        const double height = bins.Counts[i] / most * room;
        if (height > 0.0 && left < right) {
            painter.drawRect(QRectF(left, cell.bottom() - height, right - left, height));
        }
    }
}

void ScatterElement::DrawLine(QCPPainter& painter, std::size_t row, std::size_t column) const {
    const ScatterCell& cell = CellOf(row, column);
    const ScatterSide& x = Grid.Side(column);
    const ScatterSide& y = Grid.Side(row);
    const auto height = [&](double place) {
        return Grid.Up(row, cell.LineAtMin + place * (cell.LineAtMax - cell.LineAtMin));
    };
    const QLineF whole(Grid.Across(column, x.LowPlace), height(x.LowPlace), Grid.Across(column, x.HighPlace),
                       height(x.HighPlace));
    const QLineF line = LineWithin(whole, Grid.Up(row, y.HighPlace), Grid.Up(row, y.LowPlace));
    if (std::isfinite(cell.Correlation) && !line.isNull()) {
        painter.setPen(QPen(SeriesColor(ChartColor::Vermilion, Style.IsDark), 1.6));
        painter.drawLine(line);
    }
}

std::int64_t MostCases(const ScatterMatrix& matrix) {
    return matrix.Cells.empty() ? 0 : std::ranges::max(matrix.Cells, {}, &ScatterCell::Cases).Cases;
}

/// Points that stand for more cases are fainter, so that crowds show.
PointLook ScatterElement::Look() const {
    PointLook look{SeriesColor(ChartColor::Blue, Style.IsDark), Grid.PointSize()};
    const double opacity = 30.0 / std::sqrt(static_cast<double>(MostCases(Matrix)) + 1.0);
    look.Color.setAlphaF(static_cast<float>(std::clamp(opacity, 0.25, 0.8)));
    return look;
}

/// Whether there are more cases than points could be told apart: then the cells show how many lie in each pixel.
bool ScatterElement::ShowsCounts() const {
    const QSizeF cell = Grid.Cell(0, 0).size();
    const double ground = static_cast<double>(MostCases(Matrix)) * Grid.PointSize() * Grid.PointSize();
    return ground > MostGround * cell.width() * cell.height();
}

/// The pixels that lie wholly within a place.
QRect PixelsOf(const QRectF& place) {
    const QPoint topLeft(static_cast<int>(std::ceil(place.left())), static_cast<int>(std::ceil(place.top())));
    const QPoint end(static_cast<int>(std::floor(place.right())), static_cast<int>(std::floor(place.bottom())));
    return {topLeft, QSize(std::max(end.x() - topLeft.x(), 1), std::max(end.y() - topLeft.y(), 1))};
}

const std::vector<float>& PlacesOf(const ScatterVariable& variable) {
    static const std::vector<float> none;
    return variable.Places ? *variable.Places : none;
}

/// The places that are shown; the others become those of cases that aren't valid.
std::vector<float> ShownPlaces(const std::vector<float>& places, const ScatterSide& side) {
    std::vector<float> shown = places;
    std::ranges::replace_if(
        shown, [&side](float place) { return !side.Shows(place); }, std::numeric_limits<float>::quiet_NaN());
    return shown;
}

std::vector<QPointF> ScatterElement::PointsOf(std::size_t row, std::size_t column) const {
    const std::vector<float>& x = PlacesOf(Matrix.Variables[column]);
    const std::vector<float>& y = PlacesOf(Matrix.Variables[row]);
    std::vector<QPointF> points;
    for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i) {
        if (Grid.Side(column).Shows(x[i]) && Grid.Side(row).Shows(y[i])) {
            points.emplace_back(Grid.Across(column, x[i]), Grid.Up(row, y[i]));
        }
    }
    return points;
}

void ScatterElement::DrawPointCells(QCPPainter& painter) const {
    const PointLook look = Look();
    const auto cells = static_cast<std::int64_t>(Matrix.Cells.size());
    const bool asShapes =
        painter.modes().testFlag(QCPPainter::pmVectorized) && MostCases(Matrix) * cells <= MostSinglePoints;
    for (std::size_t place = 0; place < Matrix.Cells.size(); ++place) {
        const std::size_t row = place / Count();
        const std::size_t column = place % Count();
        if (row == column) {
            continue;
        }
        if (asShapes) {
            DrawPoints(painter, PointsOf(row, column), look);
        } else {
            DrawPointsOnPixels(painter, PointsOf(row, column), PixelsOf(Grid.Cell(row, column)), look);
        }
    }
}

PixelSteps ScatterElement::StepsOf(std::size_t variable) const {
    const QRect pixels = PixelsOf(Grid.Cell(variable, variable));
    const auto sideFrom = [](int start, int count, double first, double last) {
        return PixelSide{first - start, last - start, count};
    };
    return PixelStepsOf(ShownPlaces(PlacesOf(Matrix.Variables[variable]), Grid.Side(variable)),
                        sideFrom(pixels.left(), pixels.width(), Grid.Across(variable, 0.0), Grid.Across(variable, 1.0)),
                        sideFrom(pixels.top(), pixels.height(), Grid.Up(variable, 0.0), Grid.Up(variable, 1.0)));
}

void ScatterElement::DrawCountCells(QCPPainter& painter) const {
    std::vector<PixelSteps> steps;
    for (std::size_t variable = 0; variable < Count(); ++variable) {
        steps.push_back(StepsOf(variable));
    }
    const auto draw = [&](const PixelCounts& counts, std::size_t row, std::size_t column) {
        DrawCounts(painter, counts, PixelsOf(Grid.Cell(row, column)).topLeft(), Style.IsDark);
    };
    for (std::size_t row = 0; row < Count(); ++row) {
        for (std::size_t column = 0; column < row; ++column) {
            const CellCounts cells = CountedCases(steps[column], steps[row]);
            draw(cells.SecondUp, row, column);
            draw(cells.FirstUp, column, row);
        }
    }
}

void ScatterElement::DrawFrames(QCPPainter& painter) const {
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Style.Frame, 1.0));
    for (const ChartMark& mark : PlacedMarks) {
        painter.drawPolygon(mark.Outline);
    }
    for (const QLineF& tick : Grid.Ticks()) {
        painter.drawLine(tick);
    }
}

void ScatterElement::draw(QCPPainter* painter) {
    if (!HasCases()) {
        return;
    }
    if (ShowsCounts()) {
        DrawCountCells(*painter);
    } else {
        DrawPointCells(*painter);
    }
    painter->setRenderHint(QPainter::Antialiasing, true);
    for (std::size_t row = 0; row < Count(); ++row) {
        if ((Matrix.Flags & ScatterFlag::Histograms) != 0) {
            DrawHistogram(*painter, row);
        }
        for (std::size_t column = 0; column < Count(); ++column) {
            if (row != column && (Matrix.Flags & ScatterFlag::Lines) != 0) {
                DrawLine(*painter, row, column);
            }
        }
    }
    DrawFrames(*painter);
}

}  // namespace

ChartBody BodyOf(const ChartSheet& sheet, const ScatterMatrix& matrix) {
    return {new ScatterElement(sheet, matrix)};
}

}  // namespace quillara
