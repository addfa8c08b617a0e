#include <algorithm>
#include <cmath>

#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartKinds.h"
#include "workbench/charts/PieLayout.h"

namespace quillara {
namespace {

constexpr double ArcStep = FullCircle / 240;
constexpr double LeastEdgedArc = 4.0;  // pixels of the arc; thinner slices would be nothing but edge

class PieElement : public ChartElement {
  public:
    PieElement(const ChartSheet& sheet, const PieChart& chart)
        : ChartElement(sheet.Plot, sheet.Style), Categories(SlicesOf(chart)) {}

  protected:
    void Arrange(const QRectF& place) override;
    void draw(QCPPainter* painter) override;

  private:
    void ArrangeSlices(const PieLayout& pie);

    const std::vector<PieSlice> Categories;
    std::vector<QPolygonF> Leaders;
};

QPolygonF SliceOutline(const PieCircle& circle, double from, double to) {
    QPolygonF outline;
    if (to - from < FullCircle * (1 - 1e-9)) {
        outline << circle.Centre;
    }
    const int steps = std::max(1, static_cast<int>(std::ceil((to - from) / ArcStep)));
    for (int i = 0; i <= steps; ++i) {
        const double angle = from + (to - from) * i / steps;
        outline << circle.Centre + circle.Radius * QPointF(std::cos(angle), std::sin(angle));
    }
    return outline;
}

void PieElement::ArrangeSlices(const PieLayout& pie) {
    const double total = TotalOf(pie.Slices);
    double angle = pie.Start;
    for (const PieSlice& slice : pie.Slices) {
        const double next = angle + FullCircle * slice.Count / total;
        ChartMark mark;
        mark.Outline = SliceOutline(pie.Circle, angle, next);
        mark.Fill = slice.Color;
        mark.IsMissing = slice.IsMissing;
        mark.Edge = (next - angle) * pie.Circle.Radius > LeastEdgedArc ? Style.Background : QColor();
        mark.Tip = CountTip(slice.Name, slice.Count, total);
        mark.Series = slice.Point < 0 ? -1 : 0;
        mark.Point = slice.Point;
        PlacedMarks.push_back(mark);
        angle = next;
    }
}

void PieElement::Arrange(const QRectF& place) {
    Leaders.clear();
    if (!(TotalOf(Categories) > 0.0)) {
        PlacedTexts.push_back(TextAt(place.center(), Qt::AlignCenter, QStringLiteral("No cases"), Style.FaintText()));
        return;
    }
    PieLayout pie = LayOutPie(Categories, place, Style);
    ArrangeSlices(pie);
    PlacedTexts = std::move(pie.Labels.Texts);
    Leaders = std::move(pie.Labels.Leaders);
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
