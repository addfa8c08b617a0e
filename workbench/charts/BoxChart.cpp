#include <algorithm>
#include <cmath>

#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartArea.h"
#include "workbench/charts/ChartColors.h"
#include "workbench/charts/ChartKey.h"
#include "workbench/charts/ChartKinds.h"
#include "workbench/documents/BoxTypes.h"

namespace quillara {
namespace {

constexpr double boxWidth = 0.5;  // of the distance of two boxes
constexpr double boxOpacity = 0.35;
constexpr double rangeRoom = 0.05;

bool IsDrawn(const BoxStatistics& box) {
    return box.Cases > 0 && std::isfinite(box.Middle);
}

class Range {
  public:
    void Include(double number) {
        if (std::isfinite(number)) {
            Low = std::min(Low, number);
            High = std::max(High, number);
        }
    }
    [[nodiscard]] NumberRange Numbers() const { return Low <= High ? Widened({Low, High}, rangeRoom) : NumberRange{}; }

  private:
    double Low = HUGE_VAL;
    double High = -HUGE_VAL;
};

NumberRange RangeOf(const BoxPlot& plot) {
    Range range;
    for (const BoxStatistics& box : plot.Boxes) {
        if (!IsDrawn(box)) {
            continue;
        }
        for (const double number : {box.Middle, box.BoxLow, box.BoxHigh, box.WhiskerLow, box.WhiskerHigh}) {
            range.Include(number);
        }
        std::ranges::for_each(box.Outliers, [&](double number) { range.Include(number); });
        std::ranges::for_each(box.Extremes, [&](double number) { range.Include(number); });
    }
    return range.Numbers();
}

AreaAxis VariableAxis(const BoxPlot& plot) {
    AreaAxis axis{{}, {0.0, static_cast<double>(plot.Boxes.size()) + 1.0}, {}, false};
    for (std::size_t i = 0; i < plot.Boxes.size(); ++i) {
        axis.Labels.push_back({static_cast<double>(i) + 1.0, Shown(plot.Boxes[i].Variable)});
    }
    return axis;
}

QString TipOf(const BoxStatistics& box, const BoxTypeFacts& facts) {
    const QString name =
        box.LongName.empty() ? Shown(box.Variable) : Shown(box.Variable) + QStringLiteral(": ") + Shown(box.LongName);
    const auto line = [](const char* what, double low, double high) {
        return QStringLiteral("\n%1: %2 to %3").arg(QString::fromUtf8(what), NumberText(low), NumberText(high));
    };
    return name + QStringLiteral("\n%1: %2").arg(QString::fromUtf8(facts.MiddleName), NumberText(box.Middle)) +
           line(facts.BoxText, box.BoxLow, box.BoxHigh) + line(facts.WhiskerText, box.WhiskerLow, box.WhiskerHigh) +
           QStringLiteral("\nValid cases: %1").arg(box.Cases);
}

class BoxArea : public ChartArea {
  public:
    BoxArea(const ChartSheet& sheet, const BoxPlot& boxes);

  protected:
    void ArrangeMarks() override;

  private:
    const std::shared_ptr<const GraphDocument> Document;  // keeps Boxes alive
    const BoxPlot& Boxes;
};

BoxArea::BoxArea(const ChartSheet& sheet, const BoxPlot& boxes)
    : ChartArea(sheet.Plot, sheet.Style, VariableAxis(boxes),
                {{}, RangeOf(boxes), {}, std::ranges::any_of(boxes.Boxes, IsDrawn)}),
      Document(sheet.Document),
      Boxes(boxes) {}

void BoxArea::ArrangeMarks() {
    const BoxTypeFacts& facts = FactsOf(Boxes.Type);
    for (std::size_t i = 0; i < Boxes.Boxes.size(); ++i) {
        const BoxStatistics& box = Boxes.Boxes[i];
        if (IsDrawn(box)) {
            const double x = static_cast<double>(i) + 1.0;
            const double low = std::min(box.WhiskerLow, box.BoxLow);
            const double high = std::max(box.WhiskerHigh, box.BoxHigh);
            ChartMark mark;
            mark.Outline =
                RectangleOutline(PixelsOf(x - boxWidth / 2, low, x + boxWidth / 2, high).adjusted(0.0, -2.0, 0.0, 2.0));
            mark.Tip = TipOf(box, facts);
            mark.Point = static_cast<int>(i);
            PlacedMarks.push_back(mark);
        }
    }
    if (PlacedMarks.empty()) {
        SayInTheMiddle(QStringLiteral("No cases"));
    }
}

QCPScatterStyle MarkerOf(QCPScatterStyle::ScatterShape shape, const QColor& color, double size) {
    QCPScatterStyle marker(shape, size);
    marker.setPen(QPen(color, 1.3));
    if (shape == QCPScatterStyle::ssSquare) {
        marker.setBrush(color);
    }
    return marker;
}

void AddMarkers(const BoxArea& area, const QCPScatterStyle& marker, const QVector<double>& x,
                const QVector<double>& y) {
    if (!x.isEmpty()) {
        QCPGraph* graph = area.parentPlot()->addGraph(area.Bottom(), area.Left());
        graph->setLineStyle(QCPGraph::lsNone);
        graph->setScatterStyle(marker);
        graph->setData(x, y, true);
    }
}

/// The markers of one kind over all boxes.
struct Markers {
    QVector<double> X;
    QVector<double> Y;

    void Add(double x, double y) {
        X << x;
        Y << y;
    }
};

void AddBoxes(const BoxArea& area, const BoxPlot& plot, const ChartStyle& style) {
    auto* boxes = new QCPStatisticalBox(area.Bottom(), area.Left());
    QColor fill = SeriesColor(ChartColor::Blue, style.IsDark);
    fill.setAlphaF(boxOpacity);
    const bool middleIsLine = FactsOf(plot.Type).ShowsMedian();
    boxes->setWidth(boxWidth);
    boxes->setWhiskerWidth(boxWidth / 2);
    boxes->setPen(QPen(SeriesColor(ChartColor::Blue, style.IsDark), 1.3));
    boxes->setBrush(fill);
    boxes->setWhiskerPen(QPen(style.Ink, 1.0));
    boxes->setWhiskerBarPen(QPen(style.Ink, 1.0));
    boxes->setMedianPen(middleIsLine ? QPen(style.Ink, 2.2, Qt::SolidLine, Qt::FlatCap) : QPen(Qt::NoPen));
    for (std::size_t i = 0; i < plot.Boxes.size(); ++i) {
        const BoxStatistics& box = plot.Boxes[i];
        if (IsDrawn(box)) {
            boxes->addData(static_cast<double>(i) + 1.0, box.WhiskerLow, box.BoxLow, box.Middle, box.BoxHigh,
                           box.WhiskerHigh);
        }
    }
}

struct BoxMarkers {
    QCPScatterStyle Middle;
    QCPScatterStyle Outlier;
    QCPScatterStyle Extreme;
};

BoxMarkers MarkersOf(const ChartStyle& style) {
    return {MarkerOf(QCPScatterStyle::ssSquare, style.Ink, 6.0),
            MarkerOf(QCPScatterStyle::ssCircle, SeriesColor(ChartColor::Vermilion, style.IsDark), 6.0),
            MarkerOf(QCPScatterStyle::ssStar, SeriesColor(ChartColor::Wine, style.IsDark), 8.0)};
}

void AddPoints(const BoxArea& area, const BoxPlot& plot, const BoxMarkers& signs) {
    Markers middles;
    Markers outliers;
    Markers extremes;
    for (std::size_t i = 0; i < plot.Boxes.size(); ++i) {
        const BoxStatistics& box = plot.Boxes[i];
        const double x = static_cast<double>(i) + 1.0;
        if (IsDrawn(box)) {
            middles.Add(x, box.Middle);
            std::ranges::for_each(box.Outliers, [&](double y) { outliers.Add(x, y); });
            std::ranges::for_each(box.Extremes, [&](double y) { extremes.Add(x, y); });
        }
    }
    if (!FactsOf(plot.Type).ShowsMedian()) {
        AddMarkers(area, signs.Middle, middles.X, middles.Y);
    }
    AddMarkers(area, signs.Outlier, outliers.X, outliers.Y);
    AddMarkers(area, signs.Extreme, extremes.X, extremes.Y);
}

std::vector<KeyEntry> KeyOf(const BoxPlot& plot, const BoxMarkers& signs, const ChartStyle& style) {
    const auto anyHas = [&](std::vector<double> BoxStatistics::*values) {
        return std::ranges::any_of(plot.Boxes, [&](const BoxStatistics& box) { return !(box.*values).empty(); });
    };
    const bool hasOutliers = anyHas(&BoxStatistics::Outliers);
    const bool hasExtremes = anyHas(&BoxStatistics::Extremes);
    const BoxTypeFacts& facts = FactsOf(plot.Type);
    const bool isWholeRange = facts.ShowsMedian() && !hasOutliers && !hasExtremes;
    QColor fill = SeriesColor(ChartColor::Blue, style.IsDark);
    fill.setAlphaF(boxOpacity);
    using Sign = KeyEntry::Sign;
    std::vector<KeyEntry> entries = {
        {facts.ShowsMedian() ? Sign::Line : Sign::Marker, style.Ink, signs.Middle, QString::fromUtf8(facts.MiddleName)},
        {Sign::Box, fill, {}, QString::fromUtf8(facts.BoxText)},
        {Sign::Whisker, style.Ink, {}, isWholeRange ? QStringLiteral("Range") : QString::fromUtf8(facts.WhiskerText)}};
    if (hasOutliers) {
        entries.push_back({Sign::Marker, style.Ink, signs.Outlier, QStringLiteral("Outliers")});
    }
    if (hasExtremes) {
        entries.push_back({Sign::Marker, style.Ink, signs.Extreme, QStringLiteral("Extremes")});
    }
    return entries;
}

}  // namespace

ChartBody BodyOf(const ChartSheet& sheet, const BoxPlot& plot) {
    auto* area = new BoxArea(sheet, plot);
    const BoxMarkers signs = MarkersOf(sheet.Style);
    AddBoxes(*area, plot, sheet.Style);
    AddPoints(*area, plot, signs);
    if (std::ranges::none_of(plot.Boxes, IsDrawn)) {
        return {area};
    }
    return {area, new ChartKey(sheet.Plot, sheet.Style, KeyOf(plot, signs, sheet.Style))};
}

}  // namespace quillara
