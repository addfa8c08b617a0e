#include <algorithm>
#include <cmath>

#include "workbench/charts/BarCounts.h"
#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartArea.h"
#include "workbench/charts/ChartColors.h"
#include "workbench/charts/ChartKinds.h"
#include "workbench/charts/HistogramBars.h"

namespace quillara {
namespace {

constexpr double LeastPointedAt = 6.0;  // pixels
constexpr double LeastWidth = 1.0;  // pixels of a bar
constexpr double LeastApart = 3.0;  // pixels of a bar that has a gap to its neighbour
constexpr double GapShare = 1.0 / 9.0;  // of a bar's width

class HistogramArea : public ChartArea {
  public:
    HistogramArea(const ChartSheet& sheet, const Histogram& chart);

  protected:
    [[nodiscard]] QString Note(double pixels) const override;
    void ArrangeMarks() override;

  private:
    [[nodiscard]] QString TipOf(const HistogramBar& bar) const;
    [[nodiscard]] ChartMark MarkOf(const HistogramBar& bar) const;
    void AddBar(const ChartMark& bar);

    const std::shared_ptr<const GraphDocument> Document;  // keeps Chart alive
    const Histogram& Chart;
    double Total = 0.0;
    double Highest = 0.0;
};

double HighestOf(const Histogram& chart) {
    double highest = 0.0;
    for (const GraphSeries& series : chart.Series) {
        for (const GraphPoint& point : series.Points) {
            highest = std::isfinite(point.Y) ? std::max(highest, point.Y) : highest;
        }
    }
    return highest;
}

/// The first label of the axis that leaves room for the count above the highest bar: the axis may be given far longer.
double EndNear(double highest, const GraphAxis& given) {
    constexpr double withRoom = 1.05;
    const auto end = std::ranges::find_if(
        given.Labels, [=](const AxisLabel& label) { return highest > 0.0 && label.At >= highest * withRoom; });
    return end == given.Labels.end() ? given.Max : std::min(end->At, given.Max);
}

/// Counts of small weights can lie above the axis that they were given, down to one of no length.
AreaAxis CountAxis(const Histogram& chart) {
    AreaAxis axis = GivenAxis(chart.Y);
    const double highest = HighestOf(chart);
    axis.Range.High = EndNear(highest, chart.Y);
    if (!(axis.Range.High > axis.Range.Low) || axis.Range.High < highest) {
        axis.Range = {std::min(axis.Range.Low, 0.0), highest > 0.0 ? highest * 1.1 : 1.0};
        axis.HasRoundNumbers = true;
    }
    return axis;
}

AreaAxis CategoriesOf(const Histogram& chart) {
    AreaAxis axis = GivenAxis(chart.X);
    axis.IsTitled = true;
    return axis;
}

HistogramArea::HistogramArea(const ChartSheet& sheet, const Histogram& chart)
    : ChartArea(sheet.Plot, sheet.Style, CategoriesOf(chart), CountAxis(chart)),
      Document(sheet.Document),
      Chart(chart),
      Highest(HighestOf(chart)) {
    for (const GraphSeries& series : Chart.Series) {
        for (const GraphPoint& point : series.Points) {
            Total += std::isfinite(point.Y) ? point.Y : 0.0;
        }
    }
}

/// Narrow bars stand side by side on whole pixels: their edges would make a pattern that isn't in the data.
QRectF OnWholePixels(QRectF bar) {
    if (bar.width() < LeastApart) {
        const double withGap = bar.width() * (1.0 + GapShare);
        const double right = std::floor(bar.left() + withGap);
        bar.setLeft(std::floor(bar.left()));
        bar.setRight(std::max(bar.left() + LeastWidth, right));
    }
    return bar;
}

QString HistogramArea::Note(double /*pixels*/) const {
    const std::size_t stride = CategoriesABar(Chart, WholeWidth());
    return stride == 1 ? QString()
                       : QStringLiteral("Each bar shows the highest count of %1 neighbouring categories").arg(stride);
}

QString HistogramArea::TipOf(const HistogramBar& bar) const {
    if (bar.Categories == 1) {
        return CountTip(bar.First, bar.Height, Total);
    }
    return CountTip(bar.First + QStringLiteral(" to ") + bar.Last, bar.Total, Total) +
           QStringLiteral("\n%1 categories, the highest count is %2").arg(bar.Categories).arg(CountText(bar.Height));
}

ChartMark HistogramArea::MarkOf(const HistogramBar& bar) const {
    const QRectF place = OnWholePixels(PixelsOf(bar.Left, 0.0, bar.Right, bar.Height));
    ChartMark mark;
    mark.Outline = RectangleOutline(place);
    mark.Fill = SeriesColor(bar.Color, Style.IsDark);
    mark.IsMissing = bar.IsMissing;
    mark.Tip = TipOf(bar);
    mark.Series = bar.Series;
    mark.Point = bar.Point;
    mark.Categories = bar.Categories;
    return mark;
}

/// A bar that is too low to be pointed at gets an unseen one behind it.
void HistogramArea::AddBar(const ChartMark& bar) {
    const QRectF place = bar.Outline.boundingRect();
    if (place.height() < LeastPointedAt) {
        ChartMark unseen = bar;
        unseen.Fill = QColor();
        unseen.IsMissing = false;
        unseen.Outline = RectangleOutline(place.adjusted(0.0, place.height() - LeastPointedAt, 0.0, 0.0));
        PlacedMarks.push_back(unseen);
    }
    PlacedMarks.push_back(bar);
}

void HistogramArea::ArrangeMarks() {
    if (!(Highest > 0.0)) {
        SayInTheMiddle(QStringLiteral("No cases"));
    }
    std::vector<HistogramBar> bars = BarsOf(Chart, WholeWidth());
    const QCPRange shown = Bottom()->range();
    std::erase_if(bars, [&](const HistogramBar& bar) { return bar.Right <= shown.lower || bar.Left >= shown.upper; });
    std::vector<double> counts(bars.size());
    std::ranges::transform(bars, counts.begin(), &HistogramBar::Height);
    const std::vector<QString> texts = CountTexts(counts);
    std::vector<CountedBar> counted;
    for (std::size_t i = 0; i < bars.size(); ++i) {
        const ChartMark mark = MarkOf(bars[i]);
        AddBar(mark);
        counted.push_back({mark.Outline.boundingRect(), texts[i], mark.Fill, mark.IsMissing});
    }
    const bool isOneEach = CategoriesABar(Chart, WholeWidth()) == 1;
    if (Highest > 0.0 && Chart.Series.size() == 1 && isOneEach) {
        const std::vector<PlacedText> labels = CountsOfBars(counted, QRectF(rect()), Style);
        PlacedTexts.insert(PlacedTexts.end(), labels.begin(), labels.end());
    }
}

}  // namespace

ChartBody BodyOf(const ChartSheet& sheet, const Histogram& chart) {
    return {new HistogramArea(sheet, chart)};
}

}  // namespace quillara
