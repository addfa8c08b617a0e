#include <algorithm>
#include <cmath>

#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartArea.h"
#include "workbench/charts/ChartColors.h"
#include "workbench/charts/ChartKinds.h"

namespace quillara {
namespace {

constexpr double leastPointedAt = 6.0;  // pixels
constexpr double valueGap = 2.0;  // pixels between a bar and its count

class HistogramArea : public ChartArea {
  public:
    HistogramArea(const ChartSheet& sheet, const Histogram& chart);

  protected:
    void ArrangeMarks() override;

  private:
    [[nodiscard]] ChartMark BarOf(const GraphSeries& series, std::size_t point) const;
    void AddBar(std::size_t series, std::size_t point);
    void ArrangeCounts();

    const std::shared_ptr<const GraphDocument> Document;  // keeps Chart alive
    const Histogram& Chart;
    const double Total;
    std::vector<ChartMark> Bars;
};

double TotalOf(const Histogram& chart) {
    double total = 0.0;
    for (const GraphSeries& series : chart.Series) {
        for (const GraphPoint& point : series.Points) {
            total += std::isfinite(point.Y) ? point.Y : 0.0;
        }
    }
    return total;
}

double Highest(const Histogram& chart) {
    double highest = 0.0;
    for (const GraphSeries& series : chart.Series) {
        for (const GraphPoint& point : series.Points) {
            highest = std::isfinite(point.Y) ? std::max(highest, point.Y) : highest;
        }
    }
    return highest;
}

/// Counts of small weights can lie above the axis that they were given, down to one of no length.
AreaAxis CountAxis(const Histogram& chart) {
    AreaAxis axis = GivenAxis(chart.Y);
    const double highest = Highest(chart);
    if (!(axis.Range.High > axis.Range.Low) || axis.Range.High < highest) {
        axis.Range = {std::min(axis.Range.Low, 0.0), highest > 0.0 ? highest * 1.1 : 1.0};
        axis.HasRoundNumbers = true;
    }
    return axis;
}

HistogramArea::HistogramArea(const ChartSheet& sheet, const Histogram& chart)
    : ChartArea(sheet.Plot, sheet.Style, GivenAxis(chart.X), CountAxis(chart)),
      Document(sheet.Document),
      Chart(chart),
      Total(TotalOf(chart)) {}

ChartMark HistogramArea::BarOf(const GraphSeries& series, std::size_t point) const {
    const GraphPoint& top = series.Points[point];
    ChartMark bar;
    bar.Outline = RectangleOutline(PixelsOf(top.X - series.Width / 2, 0.0, top.X + series.Width / 2, top.Y));
    bar.Fill = SeriesColor(series.Color, Style.IsDark);
    bar.IsMissing = top.IsMissing;
    bar.Tip = CountTip(Shown(top.Name), top.Y, Total);
    bar.Point = static_cast<int>(point);
    return bar;
}

/// A bar that is too low to be pointed at gets an unseen one behind it.
void HistogramArea::AddBar(std::size_t series, std::size_t point) {
    ChartMark bar = BarOf(Chart.Series[series], point);
    bar.Series = static_cast<int>(series);
    Bars.push_back(bar);
    const QRectF place = bar.Outline.boundingRect();
    if (place.height() < leastPointedAt) {
        ChartMark unseen = bar;
        unseen.Fill = QColor();
        unseen.IsMissing = false;
        unseen.Outline = RectangleOutline(place.adjusted(0.0, place.height() - leastPointedAt, 0.0, 0.0));
        PlacedMarks.push_back(unseen);
    }
    PlacedMarks.push_back(bar);
}

void HistogramArea::ArrangeMarks() {
    Bars.clear();
    for (std::size_t number = 0; number < Chart.Series.size(); ++number) {
        const GraphSeries& series = Chart.Series[number];
        for (std::size_t point = 0; point < series.Points.size(); ++point) {
            if (std::isfinite(series.Points[point].X) && std::isfinite(series.Points[point].Y)) {
                AddBar(number, point);
            }
        }
    }
    if (Highest(Chart) > 0.0) {
        ArrangeCounts();
    } else {
        SayInTheMiddle(QStringLiteral("No cases"));
    }
}

/// The counts above the bars, when all of them have room: above the bar, else inside its top.
void HistogramArea::ArrangeCounts() {
    if (Chart.Series.size() != 1 || Bars.size() != Chart.Series.front().Points.size()) {
        return;
    }
    const std::vector<QString> counts = CountTexts(Chart.Series.front().Points);
    const TextStyle style = Style.Text();
    const double height = LineHeight(style) + valueGap;
    std::vector<PlacedText> texts;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const QRectF bar = Bars[i].Outline.boundingRect();
        const bool isAbove = bar.top() - height >= rect().top();
        const QPointF foot(bar.center().x(), isAbove ? bar.top() - valueGap : bar.top() + height);
        PlacedText text = TextAt(foot, Qt::AlignHCenter | Qt::AlignBottom, counts[i], style);
        if (text.Box.width() > bar.width() || foot.y() > rect().bottom()) {
            return;
        }
        if (!isAbove) {
            text.Style.Color = Bars[i].IsMissing ? Style.Ink : InkOn(Bars[i].Fill);
        }
        texts.push_back(text);
    }
    PlacedTexts.insert(PlacedTexts.end(), texts.begin(), texts.end());
}

}  // namespace

ChartBody BodyOf(const ChartSheet& sheet, const Histogram& chart) {
    return {new HistogramArea(sheet, chart)};
}

}  // namespace quillara
