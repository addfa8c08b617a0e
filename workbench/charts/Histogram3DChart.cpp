#include <algorithm>
#include <cmath>

#include "workbench/charts/AxisLabels.h"
#include "workbench/charts/BarVisibility.h"
#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartColors.h"
#include "workbench/charts/ChartKinds.h"
#include "workbench/charts/CountTable.h"
#include "workbench/charts/ObliqueView.h"

namespace quillara {
namespace {

constexpr std::size_t MostOfASide = 20;  // of a side; beyond it bars can't be told apart
constexpr double TopLight = 1.35;
constexpr double SideLight = 0.65;
constexpr double SpaceLabelGap = 6.0;
constexpr double SideShare = 0.25;  // of the width, for the labels of the rows
constexpr double ColumnLabelShare = 0.35;  // of the height, for the labels of the columns
constexpr double CountDistance = 30.0;

class BarsElement : public ChartElement {
  public:
    BarsElement(const ChartSheet& sheet, const Histogram3DPlot& plot);

  protected:
    void Arrange(const QRectF& place) override;
    void draw(QCPPainter* painter) override;

  private:
    void ArrangeBar(std::size_t column, std::size_t row);
    void ArrangeColumnLabels(const QRectF& place);
    void ArrangeRowLabels();
    void ArrangeRowCaption(const QRectF& place);
    void ArrangeCounts(const QRectF& place);
    void ArrangeFloor();
    [[nodiscard]] AxisLabels ColumnLabels(const QRectF& place) const;
    [[nodiscard]] double RowLabelWidth() const;

    const CountTable Table;
    ObliqueView View;
    std::vector<AxisMark> Counts;
    double MostRowLabel = 0.0;  ///< pixels
    std::vector<QLineF> Lines;  ///< of the floor and the walls
};

BarsElement::BarsElement(const ChartSheet& sheet, const Histogram3DPlot& plot)
    : ChartElement(sheet.Plot, sheet.Style), Table(plot), View({}, QRectF(0.0, 0.0, 1.0, 1.0)) {}

ObliqueView::Extent SpaceOf(const CountTable& table, const std::vector<AxisMark>& counts) {
    const double top = counts.empty() ? 1.0 : std::max(counts.back().At, table.Highest());
    return {static_cast<double>(table.Columns()), static_cast<double>(table.Rows()), top > 0.0 ? top : 1.0};
}

/// Round numbers of which the last is no lower than the highest bar.
std::vector<AxisMark> CountMarks(double highest, double pixels) {
    const int most = std::clamp(static_cast<int>(pixels / CountDistance), 3, 8);
    std::vector<AxisMark> marks = RoundNumbers(0.0, highest, most);
    if (marks.size() > 1 && marks.back().At < highest) {
        marks = RoundNumbers(0.0, marks.back().At + marks[1].At, most + 1);
    }
    return marks;
}

void BarsElement::ArrangeBar(std::size_t column, std::size_t row) {
    const double count = Table.CountOf(column, row);
    if (!(count > 0.0)) {
        return;
    }
    const double left = static_cast<double>(column) + (1 - BarWidth3D) / 2;
    const double front = static_cast<double>(row) + (1 - BarWidth3D) / 2;
    const double right = left + BarWidth3D;
    const double back = front + BarWidth3D;
    const auto at = [&](double x, double y, double z) { return View.Seen(x, y, z); };
    const QColor color = HeatColor(0.35 + 0.5 * count / Table.Highest(), false);

    ChartMark face;
    face.Edge = Shaded(color, 0.5);
    face.Tip = Table.TipOf(column, row);
    face.Point = static_cast<int>(Table.PlaceOf(column, row));
    face.Fill = Shaded(color, SideLight);
    face.Outline = {at(right, front, 0), at(right, back, 0), at(right, back, count), at(right, front, count)};
    PlacedMarks.push_back(face);
    face.Fill = Shaded(color, TopLight);
    face.Outline = {at(left, front, count), at(right, front, count), at(right, back, count), at(left, back, count)};
    PlacedMarks.push_back(face);
    face.Fill = color;
    face.Outline = {at(left, front, 0), at(right, front, 0), at(right, front, count), at(left, front, count)};
    PlacedMarks.push_back(face);
}

void BarsElement::ArrangeFloor() {
    const double columns = View.Space().Columns;
    const double rows = View.Space().Rows;
    for (double column = 0.0; column <= columns; ++column) {
        Lines.push_back(QLineF(View.Seen(column, 0.0, 0.0), View.Seen(column, rows, 0.0)));
    }
    for (double row = 0.0; row <= rows; ++row) {
        Lines.push_back(QLineF(View.Seen(0.0, row, 0.0), View.Seen(columns, row, 0.0)));
    }
}

AxisLabels BarsElement::ColumnLabels(const QRectF& place) const {
    std::vector<AxisSpot> spots;
    for (std::size_t i = 0; i < Table.Columns(); ++i) {
        spots.push_back({View.Seen(static_cast<double>(i) + 0.5, 0.0, 0.0).x(), Table.ColumnNames()[i]});
    }
    const double right = View.Seen(View.Space().Columns, 0.0, 0.0).x();
    return LabelsBelow(spots, {place.left(), right, place.height() * ColumnLabelShare}, Style.Text());
}

void BarsElement::ArrangeColumnLabels(const QRectF& place) {
    const double bottom = View.Seen(0.0, 0.0, 0.0).y() + SpaceLabelGap;
    const AxisLabels labels = ColumnLabels(place);
    for (PlacedText text : labels.Texts) {
        text.Pivot += QPointF(0.0, bottom);
        PlacedTexts.push_back(text);
    }
    const QPointF middle = View.Seen(View.Space().Columns / 2, 0.0, 0.0);
    PlacedTexts.push_back(ElidedText({middle.x(), place.bottom()}, Qt::AlignHCenter | Qt::AlignBottom,
                                     Table.ColumnCaption(), Style.Text(),
                                     View.Seen(View.Space().Columns, 0.0, 0.0).x() - View.Seen(0.0, 0.0, 0.0).x()));
}

double BarsElement::RowLabelWidth() const {
    double widest = 0.0;
    for (const QString& name : Table.RowNames()) {
        widest = std::max(widest, WidthOf(name, Style.Text()));
    }
    return std::min(widest, MostRowLabel);
}

/// The labels of the rows stand right of the floor's slanted edge.
void BarsElement::ArrangeRowLabels() {
    const TextStyle style = Style.Text();
    const double pitch = View.Seen(0.0, 0.0, 0.0).y() - View.Seen(0.0, 1.0, 0.0).y();
    const auto stride = static_cast<std::size_t>(std::max(1.0, std::ceil(LineHeight(style) / pitch)));
    for (std::size_t row = 0; row < Table.Rows(); row += stride) {
        const QPointF edge = View.Seen(View.Space().Columns, static_cast<double>(row) + 0.5, 0.0);
        const QPointF pivot = edge + QPointF(SpaceLabelGap, 0.0);
        PlacedTexts.push_back(
            ElidedText(pivot, Qt::AlignLeft | Qt::AlignVCenter, Table.RowNames()[row], style, RowLabelWidth()));
    }
}

/// The caption of the rows runs along their labels; where it is longer than the edge it stands at the front corner.
void BarsElement::ArrangeRowCaption(const QRectF& place) {
    const TextStyle style = Style.Text();
    const QLineF edge(View.Seen(View.Space().Columns, 0.0, 0.0),
                      View.Seen(View.Space().Columns, View.Space().Rows, 0.0));
    if (WidthOf(Table.RowCaption(), style) <= edge.length()) {
        const double besideLabels = LineHeight(style) / 2 * std::fabs(edge.dx() / edge.dy());
        const QPointF pivot = edge.center() + QPointF(2 * SpaceLabelGap + RowLabelWidth() + besideLabels, 0.0);
        PlacedTexts.push_back(
            TurnedText(TextAt(pivot, Qt::AlignHCenter | Qt::AlignTop, Table.RowCaption(), style), -edge.angle()));
        return;
    }
    const QPointF corner = edge.p1() + QPointF(3 * SpaceLabelGap, SpaceLabelGap);
    const double width = place.right() - corner.x();
    const auto most = std::max(1, static_cast<int>((place.bottom() - corner.y()) / LineHeight(style)));
    const QStringList lines = WrappedLines(Table.RowCaption(), style, width);
    for (int i = 0; i < std::min<qsizetype>(lines.size(), most); ++i) {
        const bool isCut = i + 1 == most && lines.size() > most;
        PlacedTexts.push_back(ElidedText({corner.x(), corner.y() + i * LineHeight(style)}, Qt::AlignLeft | Qt::AlignTop,
                                         isCut ? lines[i] + QStringLiteral(" \u2026") : lines[i], style, width));
        if (isCut) {
            PlacedTexts.back().Whole = Table.RowCaption();
        }
    }
}

void BarsElement::ArrangeCounts(const QRectF& place) {
    const TextStyle style = Style.Text();
    std::vector<AxisSpot> spots;
    for (const AxisMark& mark : Counts) {
        const QPointF front = View.Seen(0.0, 0.0, mark.At);
        const QPointF back = View.Seen(0.0, View.Space().Rows, mark.At);
        Lines.push_back(QLineF(front, back));
        Lines.push_back(QLineF(back, View.Seen(View.Space().Columns, View.Space().Rows, mark.At)));
        spots.push_back({front.y(), mark.Text});
    }
    const double left = View.Seen(0.0, 0.0, 0.0).x() - SpaceLabelGap;
    const AxisLabels labels = LabelsBeside(spots, {place.top(), place.bottom(), left - place.left()}, style);
    for (PlacedText text : labels.Texts) {
        text.Pivot.rx() += left;
        PlacedTexts.push_back(text);
    }
    const double middle = (View.Seen(0.0, 0.0, 0.0).y() + View.Seen(0.0, 0.0, View.Space().Height).y()) / 2;
    PlacedTexts.push_back(TurnedText(
        TextAt({place.left(), middle}, Qt::AlignHCenter | Qt::AlignTop, Table.CountCaption(), style), -90.0));
}

void BarsElement::Arrange(const QRectF& place) {
    Lines.clear();
    if (!(Table.Highest() > 0.0)) {
        PlacedTexts.push_back(TextAt(place.center(), Qt::AlignCenter, QStringLiteral("No cases"), Style.FaintText()));
        return;
    }
    const TextStyle style = Style.Text();
    const double height = LineHeight(style);
    Counts = CountMarks(Table.Highest(), place.height() / 2);
    double countWidth = 0.0;
    for (const AxisMark& mark : Counts) {
        countWidth = std::max(countWidth, WidthOf(mark.Text, style));
    }
    MostRowLabel = place.width() * SideShare;
    const double right = RowLabelWidth() + 2 * (SpaceLabelGap + height);
    QRectF space = place.adjusted(height + countWidth + 2 * SpaceLabelGap, 2 * height, -right, 0.0);
    View = ObliqueView(SpaceOf(Table, Counts), space);
    space.setBottom(place.bottom() - SpaceLabelGap * 1.5 - height - ColumnLabels(place).Depth);
    View = ObliqueView(SpaceOf(Table, Counts), space);

    ArrangeFloor();
    ArrangeCounts(place);
    ArrangeColumnLabels(place);
    ArrangeRowLabels();
    ArrangeRowCaption(place);
    for (std::size_t row = Table.Rows(); row-- > 0;) {
        for (std::size_t column = 0; column < Table.Columns(); ++column) {
            ArrangeBar(column, row);
        }
    }
}

void BarsElement::draw(QCPPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setPen(QPen(Style.Grid, 1.0));
    painter->drawLines(QList<QLineF>(Lines.begin(), Lines.end()));
    ChartElement::draw(painter);
}

}  // namespace

ChartBody BodyOf(const ChartSheet& sheet, const Histogram3DPlot& plot) {
    const CountTable table(plot);
    if (std::max(table.Columns(), table.Rows()) > MostOfASide || BarsHideOthers(table)) {
        return HeatMapOf(sheet, plot);
    }
    return {new BarsElement(sheet, plot)};
}

}  // namespace quillara
