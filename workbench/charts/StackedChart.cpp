#include <algorithm>
#include <cmath>

#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartColors.h"
#include "workbench/charts/ChartKinds.h"

namespace quillara {
namespace {

constexpr double leastLayer = 1e-6;  // percent; thinner ones are what rounding has left
constexpr double leastEdged = 3.0;  // pixels; thinner layers would be nothing but edge
constexpr double textRoom = 4.0;  // pixels around the text of a layer
constexpr int mostLabels = 20;

/// The series hold the heights of the lines between the layers of each column, from the top down: layer j of a column
/// lies between series j and j + 1. A series that a column doesn't reach has its point at x = 0.
class StackedArea : public ChartArea {
  public:
    StackedArea(const ChartSheet& sheet, const StackedPlot& chart);

  protected:
    void ArrangeMarks() override;

  private:
    [[nodiscard]] double HeightOf(std::size_t series, std::size_t column) const;
    void ArrangeLayer(std::size_t series, std::size_t column);

    const std::shared_ptr<const GraphDocument> Document;  // keeps Chart alive
    const StackedPlot& Chart;
};

/// The labels that the step of an axis without labels asks for.
AreaAxis PercentAxis(const GraphAxis& given) {
    AreaAxis axis = GivenAxis(given);
    const double steps = (given.Max - given.Min) / given.Step;
    if (axis.Labels.empty() && given.Step > 0.0 && steps <= mostLabels) {
        for (int i = 0; i <= static_cast<int>(steps); ++i) {
            const double number = given.Min + i * given.Step;
            axis.Labels.push_back({number, NumberText(number)});
        }
    }
    return axis;
}

StackedArea::StackedArea(const ChartSheet& sheet, const StackedPlot& chart)
    : ChartArea(sheet.Plot, sheet.Style, GivenAxis(chart.X), PercentAxis(chart.Y)),
      Document(sheet.Document),
      Chart(chart) {}

double StackedArea::HeightOf(std::size_t series, std::size_t column) const {
    if (series >= Chart.Series.size() || column >= Chart.Series[series].Points.size()) {
        return 0.0;
    }
    const GraphPoint& point = Chart.Series[series].Points[column];
    return point.X > 0.0 && std::isfinite(point.Y) ? point.Y : 0.0;
}

void StackedArea::ArrangeLayer(std::size_t series, std::size_t column) {
    const GraphSeries& upper = Chart.Series[series];
    const double top = HeightOf(series, column);
    const double bottom = std::max(0.0, HeightOf(series + 1, column));
    if (top - bottom < leastLayer) {
        return;
    }
    const double x = upper.Points[column].X;
    const QRectF place = PixelsOf(x - upper.Width / 2, bottom, x + upper.Width / 2, top);
    const QString percent = PercentText(top - bottom, 100.0);
    ChartMark layer;
    layer.Outline = RectangleOutline(place);
    layer.Fill = SeriesColor(upper.Color, Style.IsDark);
    layer.Edge = place.height() >= leastEdged ? Style.Background : QColor();
    layer.Tip = LabelAt(Chart.X, x) + QStringLiteral(": ") + percent;
    layer.Series = static_cast<int>(series);
    layer.Point = static_cast<int>(column);
    PlacedMarks.push_back(layer);

    const TextStyle style{Style.Text().Font, InkOn(layer.Fill)};
    const PlacedText text = TextAt(place.center(), Qt::AlignCenter, percent, style);
    const double widest = std::max(text.Box.width(), WidthOf(QStringLiteral("88.8%"), style));
    if (widest + textRoom <= place.width() && text.Box.height() + textRoom <= place.height()) {
        PlacedTexts.push_back(text);
    }
}

void StackedArea::ArrangeMarks() {
    for (std::size_t series = 0; series < Chart.Series.size(); ++series) {
        for (std::size_t column = 0; column < Chart.Series[series].Points.size(); ++column) {
            ArrangeLayer(series, column);
        }
    }
    if (PlacedMarks.empty()) {
        SayInTheMiddle(QStringLiteral("No cases"));
    }
}

}  // namespace

ChartBody BodyOf(const ChartSheet& sheet, const StackedPlot& chart) {
    return {new StackedArea(sheet, chart)};
}

}  // namespace quillara
