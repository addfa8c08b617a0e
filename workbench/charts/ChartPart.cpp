#include "workbench/charts/ChartPart.h"

#include <algorithm>
#include <utility>

namespace quillara {
namespace {

constexpr double HatchDistance = 6.0;
constexpr double HatchWidth = 1.2;
/// No picture has pixels beyond; bars that are zoomed in on, or of counts near the end of the doubles, reach farther.
const QRectF Paintable(-50000.0, -50000.0, 100000.0, 100000.0);

/// Slanted stripes inside an outline, as an area: clipping and brush patterns are lost on some vector devices.
QPainterPath Hatching(const QPolygonF& whole) {
    const bool isWithin = Paintable.contains(whole.boundingRect());
    const QPolygonF outline = isWithin ? whole : whole.intersected(QPolygonF(Paintable));
    const QRectF bounds = outline.boundingRect();
    QPainterPath stripes;
    for (double x = bounds.left() - bounds.height(); x < bounds.right(); x += HatchDistance) {
        const QPointF foot(x, bounds.bottom());
        const QPointF head(x + bounds.height(), bounds.top());
        const QPointF width(HatchWidth, 0.0);
        stripes.addPolygon(QPolygonF({foot, head, head + width, foot + width, foot}));
    }
    QPainterPath shape;
    shape.addPolygon(outline);
    shape.closeSubpath();
    return shape.intersected(stripes);
}

void DrawMark(QPainter& painter, const ChartMark& mark, const ChartStyle& style) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(mark.IsMissing ? style.MissingFill : mark.Fill);
    painter.drawPolygon(mark.Outline);
    if (mark.IsMissing) {
        painter.fillPath(Hatching(mark.Outline), style.MissingHatch);
    }
    if (mark.Edge.isValid()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(mark.Edge, 1.0, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawPolygon(mark.Outline);
    }
}

/// Between two outlines of as many corners; of others the second.
QPolygonF Between(const QPolygonF& from, const QPolygonF& to, double share) {
    QPolygonF between = to;
    for (qsizetype i = 0; i < to.size() && from.size() == to.size(); ++i) {
        between[i] = from[i] + (to[i] - from[i]) * share;
    }
    return between;
}

/// A face that begins as nothing on its lower edge.
QPolygonF LowerEdge(const QPolygonF& outline) {
    QPolygonF edge = outline;
    const double bottom = outline.boundingRect().bottom();
    std::ranges::for_each(edge, [bottom](QPointF& corner) { corner.setY(bottom); });
    return edge;
}

}  // namespace

void ChartPart::Slide(std::vector<FaceStart> starts, double share) {
    Starts = std::move(starts);
    SlideShare = share;
}

std::vector<ChartMark> ChartPart::SlidMarks() const {
    std::vector<ChartMark> marks = PlacedMarks;
    for (ChartMark& mark : marks) {
        const auto start = std::ranges::find_if(
            Starts, [&](const FaceStart& face) { return face.Series == mark.Series && face.Point == mark.Point; });
        mark.Outline =
            Between(start == Starts.end() ? LowerEdge(mark.Outline) : start->Outline, mark.Outline, SlideShare);
    }
    return marks;
}

ChartElement::ChartElement(QCustomPlot* plot, ChartStyle style) : QCPLayoutElement(plot), Style(style) {
    setAutoMargins(QCP::msNone);
}

void ChartElement::update(UpdatePhase phase) {
    QCPLayoutElement::update(phase);
    if (phase == upLayout) {
        PlacedTexts.clear();
        PlacedMarks.clear();
        Arrange(QRectF(rect()));
    }
}

void ChartElement::draw(QCPPainter* painter) {
    painter->setAntialiasing(true);
    DrawMarks(*painter, PlacedMarks, Style);
}

QPolygonF RectangleOutline(const QRectF& rectangle) {
    return QPolygonF({rectangle.topLeft(), rectangle.topRight(), rectangle.bottomRight(), rectangle.bottomLeft()});
}

void DrawMarks(QPainter& painter, const std::vector<ChartMark>& marks, const ChartStyle& style) {
    for (const ChartMark& mark : marks) {
        if (mark.Fill.isValid() || mark.IsMissing) {
            DrawMark(painter, mark, style);
        }
    }
}

}  // namespace quillara
