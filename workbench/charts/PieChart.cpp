#include <algorithm>
#include <cmath>
#include <numbers>

#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartKinds.h"
#include "workbench/charts/PieLabels.h"
#include "workbench/charts/PieLegend.h"
#include "workbench/charts/PieSlices.h"

namespace quillara {
namespace {

constexpr std::size_t mostWithoutLegend = 12;
constexpr double leastLabelled = 0.025;  // of the circle, beside a legend
constexpr double labelShare = 0.30;  // of the width, for the labels of one side
constexpr double shareBesideLegend = 0.20;
constexpr double leastRadiusShare = 0.28;  // of the shorter side; names that take more give way to the legend
constexpr double leastRadius = 30.0;
constexpr double fullCircle = 2 * std::numbers::pi;
constexpr double arcStep = fullCircle / 240;
constexpr double smallestEdged = 0.004;  // of the circle; thinner slices would be nothing but edge

/// What the labels of slices tell; beside a legend they can tell less.
enum class LabelContent { NameAndCount, NameAndPercent, Percent };

class PieElement : public ChartElement {
  public:
    PieElement(const ChartSheet& sheet, const PieChart& chart);

  protected:
    void Arrange(const QRectF& place) override;
    void draw(QCPPainter* painter) override;

  private:
    /// The slices that are drawn and the place that is left for them.
    QRectF ArrangeLegend(const QRectF& place, std::vector<PieSlice>& slices);
    [[nodiscard]] std::vector<PieLabelWish> WishesOf(const std::vector<PieSlice>& slices, LabelContent content,
                                                     double width) const;
    [[nodiscard]] double RadiusBeside(const std::vector<PieLabelWish>& wishes, const QRectF& room, double width) const;
    void ArrangeSlices(const std::vector<PieSlice>& slices, const PieCircle& circle);

    const std::vector<PieSlice> Slices;
    std::vector<QPolygonF> Leaders;
};

PieElement::PieElement(const ChartSheet& sheet, const PieChart& chart)
    : ChartElement(sheet.Plot, sheet.Style), Slices(SlicesOf(chart, sheet.Style)) {}

/// How wide a line of a label may be, and how it is written.
struct PieLabelRoom {
    TextStyle Style;
    double Width = 0.0;
};

QPolygonF SliceOutline(const PieCircle& circle, double from, double to) {
    QPolygonF outline;
    if (to - from < fullCircle * (1 - 1e-9)) {
        outline << circle.Centre;
    }
    const int steps = std::max(1, static_cast<int>(std::ceil((to - from) / arcStep)));
    for (int i = 0; i <= steps; ++i) {
        const double angle = from + (to - from) * i / steps;
        outline << circle.Centre + circle.Radius * QPointF(std::cos(angle), std::sin(angle));
    }
    return outline;
}

double WidestLine(const std::vector<PieLabelWish>& wishes, const TextStyle& style) {
    double widest = 0.0;
    for (const PieLabelWish& wish : wishes) {
        for (const QString& line : wish.Lines) {
            widest = std::max(widest, WidthOf(line, style));
        }
    }
    return widest;
}

QRectF PieElement::ArrangeLegend(const QRectF& place, std::vector<PieSlice>& slices) {
    if (slices.size() <= mostWithoutLegend) {
        return place;
    }
    const PieLegendPlan plan = PlanLegend(slices, place.size(), Style);
    slices = Gathered(slices, std::max<std::size_t>(2, plan.Capacity()), Style);
    PieLegend legend = LayOutLegend(slices, plan, place, Style);
    PlacedTexts = std::move(legend.Texts);
    PlacedMarks = std::move(legend.Swatches);
    return place.adjusted(0.0, 0.0, -plan.Width(), 0.0);
}

/// A label on one line where that has room, else the name above its numbers.
QStringList LabelLines(const PieSlice& slice, double total, LabelContent content, const PieLabelRoom& room) {
    const QString percent = PercentText(slice.Count, total);
    if (content == LabelContent::Percent) {
        return {percent};
    }
    const QString numbers =
        content == LabelContent::NameAndCount ? slice.CountText + QStringLiteral(" (%1)").arg(percent) : percent;
    const QString line = slice.Name + QStringLiteral(": ") + numbers;
    return WidthOf(line, room.Style) <= room.Width ? QStringList{line}
                                                   : WrappedLines(slice.Name, room.Style, room.Width) << numbers;
}

/// Beside a legend only larger slices have labels.
std::vector<PieLabelWish> PieElement::WishesOf(const std::vector<PieSlice>& slices, LabelContent content,
                                               double width) const {
    const double total = TotalOf(slices);
    const double least = content == LabelContent::NameAndCount ? 0.0 : leastLabelled * total;
    std::vector<PieLabelWish> wishes;
    double before = 0.0;
    for (const PieSlice& slice : slices) {
        const double middle = (before + slice.Count / 2) / total;
        before += slice.Count;
        if (slice.Count > 0.0 && slice.Count >= least) {
            const QStringList lines = LabelLines(slice, total, content, {Style.Text(), width});
            wishes.push_back({lines, fullCircle * middle - fullCircle / 4, slice.Count});
        }
    }
    return wishes;
}

void PieElement::ArrangeSlices(const std::vector<PieSlice>& slices, const PieCircle& circle) {
    const double total = TotalOf(slices);
    double angle = -fullCircle / 4;
    for (const PieSlice& slice : slices) {
        const double next = angle + fullCircle * slice.Count / total;
        if (slice.Count > 0.0) {
            ChartMark mark;
            mark.Outline = SliceOutline(circle, angle, next);
            mark.Fill = slice.Color;
            mark.IsMissing = slice.IsMissing;
            mark.Edge = slice.Count > smallestEdged * total ? Style.Background : QColor();
            mark.Tip = CountTip(slice.Name, slice.Count, total);
            mark.Series = slice.Point < 0 ? -1 : 0;
            mark.Point = slice.Point;
            PlacedMarks.push_back(mark);
        }
        angle = next;
    }
}

double PieElement::RadiusBeside(const std::vector<PieLabelWish>& wishes, const QRectF& room, double width) const {
    const double beside = std::min(WidestLine(wishes, Style.Text()), width) + PieLabelDistance();
    const double radius = std::min(room.width() / 2 - beside, room.height() / 2 - LineHeight(Style.Text()));
    return std::max(leastRadius, radius);
}

void PieElement::Arrange(const QRectF& place) {
    Leaders.clear();
    std::vector<PieSlice> slices = Slices;
    if (!(TotalOf(slices) > 0.0)) {
        PlacedTexts.push_back(TextAt(place.center(), Qt::AlignCenter, QStringLiteral("No cases"), Style.FaintText()));
        return;
    }
    const QRectF room = ArrangeLegend(place, slices);
    const bool hasLegend = room != place;
    const double width = room.width() * (hasLegend ? shareBesideLegend : labelShare);
    std::vector<PieLabelWish> wishes =
        WishesOf(slices, hasLegend ? LabelContent::NameAndPercent : LabelContent::NameAndCount, width);
    const double least = std::min(room.width(), room.height()) * leastRadiusShare;
    if (hasLegend && RadiusBeside(wishes, room, width) < least) {
        wishes = WishesOf(slices, LabelContent::Percent, width);
    }
    const PieCircle circle{room.center(), RadiusBeside(wishes, room, width)};
    ArrangeSlices(slices, circle);
    PieLabels labels = LayOutPieLabels(wishes, circle, room, Style);
    PlacedTexts.insert(PlacedTexts.end(), labels.Texts.begin(), labels.Texts.end());
    Leaders = std::move(labels.Leaders);
}

void PieElement::draw(QCPPainter* painter) {
    ChartElement::draw(painter);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(Style.FaintInk, 1.0));
    for (const QPolygonF& leader : Leaders) {
        painter->drawPolyline(leader);
    }
}

}  // namespace

ChartBody BodyOf(const ChartSheet& sheet, const PieChart& chart) {
    return {new PieElement(sheet, chart)};
}

}  // namespace quillara
