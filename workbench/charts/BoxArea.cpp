#include "workbench/charts/BoxArea.h"

#include <algorithm>

#include "workbench/charts/ChartColors.h"
#include "workbench/documents/BoxTypes.h"

namespace quillara {
namespace {

constexpr double BoxWidth = 0.5;  // of the distance of two boxes
constexpr double BoxOpacity = 0.35;

/// The place of a box of a panel on its lower axis.
double PlaceOf(std::size_t index) {
    return static_cast<double>(index) + 1.0;
}

QString NameWithLabel(const std::string& name, const std::string& longName) {
    return longName.empty() ? Shown(name) : Shown(name) + QStringLiteral(": ") + Shown(longName);
}

AreaAxis VariableAxis(const BoxPlot& plot, const BoxPanel& panel) {
    const QString caption = plot.Groups ? NameWithLabel(plot.Groups->By, plot.Groups->ByLongName) : QString();
    AreaAxis axis{
        .Caption = caption, .Range = {PlaceOf(0) - 0.75, PlaceOf(panel.Boxes.size() - 1) + 0.75}, .Labels = {}};
    for (std::size_t i = 0; i < panel.Boxes.size(); ++i) {
        const BoxStatistics& box = plot.Boxes[panel.Boxes[i]];
        axis.Labels.push_back({PlaceOf(i), Shown(box.Variable)});
        axis.Notes.push_back({PlaceOf(i), QStringLiteral("n\u00A0=\u00A0%1").arg(box.Cases)});
        axis.ShortNotes.push_back({PlaceOf(i), QString::number(box.Cases)});
    }
    return axis;
}

AreaAxis ValueAxis(const BoxPlot& plot, const BoxPanel& panel) {
    return {.Caption = plot.Groups ? NameWithLabel(plot.Groups->Variable, plot.Groups->LongName) : QString(),
            .Range = panel.Range,
            .Labels = {},
            .HasRoundNumbers = true,
            .Kind = panel.Kind,
            .Unit = panel.Unit};
}

QString TipOf(const BoxStatistics& box, const BoxPlot& plot, ValueKind kind) {
    const BoxTypeFacts& facts = FactsOf(plot.Type);
    const QString name = plot.Groups ? Shown(plot.Groups->By) + QStringLiteral(" = ") + Shown(box.Variable)
                                     : NameWithLabel(box.Variable, box.LongName);
    const auto line = [&](const char* what, double low, double high) {
        return QStringLiteral("\n%1: %2 to %3")
            .arg(QString::fromUtf8(what), ValueText(low, kind), ValueText(high, kind));
    };
    const QString weights =
        plot.Weight.empty() ? QString() : QStringLiteral("\nSum of weights: %1").arg(NumberText(box.WeightedCases));
    return name + QStringLiteral("\n%1: %2").arg(QString::fromUtf8(facts.MiddleName), ValueText(box.Middle, kind)) +
           line(facts.BoxText, box.BoxLow, box.BoxHigh) + line(facts.WhiskerText, box.WhiskerLow, box.WhiskerHigh) +
           QStringLiteral("\nValid cases: %1").arg(box.Cases) + weights;
}

QCPScatterStyle MarkerOf(QCPScatterStyle::ScatterShape shape, const QColor& color, double size) {
    QCPScatterStyle marker(shape, size);
    marker.setPen(QPen(color, 1.3));
    if (shape == QCPScatterStyle::ssSquare) {
        marker.setBrush(color);
    }
    return marker;
}

}  // namespace

BoxMarkers MarkersOf(const ChartStyle& style) {
    return {MarkerOf(QCPScatterStyle::ssSquare, style.Ink, 6.0),
            MarkerOf(QCPScatterStyle::ssCircle, SeriesColor(ChartColor::Vermilion, style.IsDark), 6.0),
            MarkerOf(QCPScatterStyle::ssStar, SeriesColor(ChartColor::Wine, style.IsDark), 8.0)};
}

QColor BoxFill(const ChartStyle& style) {
    QColor fill = SeriesColor(ChartColor::Blue, style.IsDark);
    fill.setAlphaF(BoxOpacity);
    return fill;
}

BoxArea::BoxArea(const ChartSheet& sheet, const BoxPlot& plot, const BoxPanel& panel)
    : ChartArea(sheet.Plot, sheet.Style, VariableAxis(plot, panel), ValueAxis(plot, panel)),
      Document(sheet.Document),
      Plot(plot),
      Panel(panel) {
    AddBoxes();
    AddPoints();
}

QString BoxArea::Note(double /*pixels*/) const {
    return Plot.Groups ? Shown(Plot.Groups->Note) : QString();
}

void BoxArea::ArrangeMarks() {
    for (std::size_t i = 0; i < Panel.Boxes.size(); ++i) {
        const BoxStatistics& box = Plot.Boxes[Panel.Boxes[i]];
        if (IsDrawn(box)) {
            const double low = std::min(box.WhiskerLow, box.BoxLow) / Panel.Unit;
            const double high = std::max(box.WhiskerHigh, box.BoxHigh) / Panel.Unit;
            const QRectF place = PixelsOf(PlaceOf(i) - BoxWidth / 2, low, PlaceOf(i) + BoxWidth / 2, high);
            ChartMark mark;
            mark.Outline = RectangleOutline(place.adjusted(0.0, -2.0, 0.0, 2.0));
            mark.Tip = TipOf(box, Plot, Panel.Kind);
            mark.Point = static_cast<int>(Panel.Boxes[i]);
            PlacedMarks.push_back(mark);
        }
    }
}

void BoxArea::AddBoxes() {
    auto* boxes = new QCPStatisticalBox(Bottom(), Left());
    boxes->setWidth(BoxWidth);
    boxes->setWhiskerWidth(BoxWidth / 2);
    boxes->setPen(QPen(SeriesColor(ChartColor::Blue, Style.IsDark), 1.3));
    boxes->setBrush(BoxFill(Style));
    boxes->setWhiskerPen(QPen(Style.Ink, 1.0));
    boxes->setWhiskerBarPen(QPen(Style.Ink, 1.0));
    boxes->setMedianPen(FactsOf(Plot.Type).ShowsMedian() ? QPen(Style.Ink, 2.2, Qt::SolidLine, Qt::FlatCap)
                                                         : QPen(Qt::NoPen));
    for (std::size_t i = 0; i < Panel.Boxes.size(); ++i) {
        const BoxStatistics& box = Plot.Boxes[Panel.Boxes[i]];
        if (IsDrawn(box)) {
            boxes->addData(PlaceOf(i), box.WhiskerLow / Panel.Unit, box.BoxLow / Panel.Unit, box.Middle / Panel.Unit,
                           box.BoxHigh / Panel.Unit, box.WhiskerHigh / Panel.Unit);
        }
    }
}

void BoxArea::AddMarkers(const QCPScatterStyle& marker, const std::vector<QPointF>& points) {
    if (points.empty()) {
        return;
    }
    QCPGraph* graph = parentPlot()->addGraph(Bottom(), Left());
    graph->setLineStyle(QCPGraph::lsNone);
    graph->setScatterStyle(marker);
    for (const QPointF& point : points) {
        graph->addData(point.x(), point.y());
    }
}

void BoxArea::AddPoints() {
    std::vector<QPointF> middles;
    std::vector<QPointF> outliers;
    std::vector<QPointF> extremes;
    for (std::size_t i = 0; i < Panel.Boxes.size(); ++i) {
        const BoxStatistics& box = Plot.Boxes[Panel.Boxes[i]];
        if (!IsDrawn(box)) {
            continue;
        }
        const auto pointAt = [&](double value) { return QPointF(PlaceOf(i), value / Panel.Unit); };
        middles.push_back(pointAt(box.Middle));
        std::ranges::transform(box.Outliers, std::back_inserter(outliers), pointAt);
        std::ranges::transform(box.Extremes, std::back_inserter(extremes), pointAt);
    }
    const BoxMarkers markers = MarkersOf(Style);
    if (!FactsOf(Plot.Type).ShowsMedian()) {
        AddMarkers(markers.Middle, middles);
    }
    AddMarkers(markers.Outlier, outliers);
    AddMarkers(markers.Extreme, extremes);
}

}  // namespace quillara
