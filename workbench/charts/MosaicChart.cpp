#include <algorithm>
#include <functional>
#include <numeric>

#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartArea.h"
#include "workbench/charts/ChartColors.h"
#include "workbench/charts/ChartKey.h"
#include "workbench/charts/ChartKinds.h"

namespace quillara {
namespace {

constexpr double LeastEdgedSide = 3.0;  // pixels; smaller tiles would be nothing but edge
constexpr double RoomAroundShare = 6.0;  // pixels around the share in a tile
constexpr std::size_t MostColors = 13;  // more can't be told apart
constexpr double PercentStep = 20.0;
constexpr double WholePercent = 100.0;

/// The colours of the layers: where there are more than can be told apart, of those that have the most cases.
class LayerColors {
  public:
    LayerColors(const MosaicPlot& plot, const ChartStyle& style);
    [[nodiscard]] bool HasOwn(std::size_t layer) const { return Own[layer].isValid(); }
    [[nodiscard]] QColor Of(std::size_t layer) const { return HasOwn(layer) ? Own[layer] : Others; }

  private:
    std::vector<QColor> Own;
    QColor Others;
};

LayerColors::LayerColors(const MosaicPlot& plot, const ChartStyle& style)
    : Own(plot.Layers.Labels.size()), Others(style.OtherFill) {
    std::vector<double> totals(Own.size());
    for (std::size_t i = 0; i < plot.Counts.size(); ++i) {
        totals[i % totals.size()] += plot.Counts[i];
    }
    std::vector<std::size_t> order(Own.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::greater(), [&](std::size_t layer) { return totals[layer]; });
    order.resize(order.size() > MostColors ? MostColors - 1 : order.size());
    std::ranges::sort(order);
    for (std::size_t place = 0; place < order.size(); ++place) {
        Own[order[place]] = SliceColor(static_cast<int>(place), style.IsDark);
    }
}

/// The layers of a column from below, in percent of the column; and the column's place, in percent of all.
class MosaicArea : public ChartArea {
  public:
    MosaicArea(const ChartSheet& sheet, const MosaicPlot& plot);

  protected:
    [[nodiscard]] QString Note(double pixels) const override;
    void ArrangeMarks() override;

  private:
    void ArrangeColumn(std::size_t column, double left, double right);
    void ArrangeShare(const QRectF& place, const ChartMark& mark, double share);

    const std::shared_ptr<const GraphDocument> Document;  // keeps Plot alive
    const MosaicPlot& Plot;
    const LayerColors Colors;
    const std::vector<AxisMark> Names;
};

double TotalOf(const MosaicPlot& plot) {
    return std::accumulate(plot.Counts.begin(), plot.Counts.end(), 0.0);
}

double TotalOf(const MosaicPlot& plot, std::size_t column) {
    const std::size_t width = plot.Layers.Labels.size();
    const auto first = plot.Counts.begin() + static_cast<std::ptrdiff_t>(column * width);
    return std::accumulate(first, first + static_cast<std::ptrdiff_t>(width), 0.0);
}

QString SideCaption(const Histogram3DSide& side) {
    return Shown(side.LongName.empty() ? side.Variable : side.LongName);
}

/// The right ends of the columns, in percent of all.
std::vector<double> EndsOf(const MosaicPlot& plot) {
    const double total = TotalOf(plot);
    std::vector<double> ends;
    double reached = 0.0;
    for (std::size_t column = 0; column < plot.Columns.Labels.size(); ++column) {
        reached += TotalOf(plot, column);
        ends.push_back(total > 0.0 ? reached / total * 100.0 : 0.0);
    }
    return ends;
}

AreaAxis ColumnAxis(const MosaicPlot& plot) {
    AreaAxis axis{
        SideCaption(plot.Columns) + QStringLiteral(" (widths: shares of all)"), {0.0, 100.0}, {}, false, false};
    double left = 0.0;
    const std::vector<double> ends = EndsOf(plot);
    for (std::size_t column = 0; column < ends.size(); ++column) {
        axis.Labels.push_back(
            {(left + ends[column]) / 2, Shown(plot.Columns.Labels[column]), false, ends[column] - left});
        left = ends[column];
    }
    return axis;
}

AreaAxis ShareAxis(const MosaicPlot& plot) {
    AreaAxis axis{QStringLiteral("Percent within ") + SideCaption(plot.Columns) + QStringLiteral(", by ") +
                      SideCaption(plot.Layers),
                  {0.0, 100.0},
                  {},
                  false,
                  false};
    for (double percent = 0.0; percent <= 100.0; percent += PercentStep) {
        axis.Labels.push_back({percent, QString::number(percent)});
    }
    return axis;
}

MosaicArea::MosaicArea(const ChartSheet& sheet, const MosaicPlot& plot)
    : ChartArea(sheet.Plot, sheet.Style, ColumnAxis(plot), ShareAxis(plot)),
      Document(sheet.Document),
      Plot(plot),
      Colors(plot, sheet.Style),
      Names(ColumnAxis(plot).Labels) {}

/// What the table says of itself, and which columns are too narrow for a name.
QString MosaicArea::Note(double pixels) const {
    std::vector<AxisSpot> spots;
    for (const AxisMark& name : Names) {
        spots.push_back({name.At * pixels / WholePercent, name.Text, false, name.Extent});
    }
    const std::size_t unnamed = spots.size() - LargestApart(spots, LineHeight(Style.Text())).size();
    const QString text = Shown(Plot.Note);
    return unnamed == 0
               ? text
               : text + (text.isEmpty() ? QString() : QStringLiteral(". ")) +
                     QStringLiteral("%1 of %2 columns are too narrow for their names").arg(unnamed).arg(spots.size());
}

void MosaicArea::ArrangeShare(const QRectF& place, const ChartMark& mark, double share) {
    TextStyle style = Style.Text();
    style.Color = InkOn(mark.Fill);
    const PlacedText text = TextAt(place.center(), Qt::AlignCenter, PercentText(share, 1.0), style);
    if (text.Box.width() + RoomAroundShare <= place.width() && text.Box.height() <= place.height()) {
        PlacedTexts.push_back(text);
    }
}

void MosaicArea::ArrangeColumn(std::size_t column, double left, double right) {
    const std::size_t width = Plot.Layers.Labels.size();
    const double total = TotalOf(Plot, column);
    double bottom = 0.0;
    for (std::size_t layer = 0; layer < width && total > 0.0; ++layer) {
        const double share = Plot.Counts[column * width + layer] / total;
        if (!(share > 0.0)) {
            continue;
        }
        const double top = bottom + share * 100.0;
        const QRectF place = PixelsOf(left, bottom, right, top);
        bottom = top;
        ChartMark mark;
        mark.Outline = RectangleOutline(place);
        mark.Fill = Colors.Of(layer);
        mark.Edge = std::min(place.width(), place.height()) >= LeastEdgedSide ? Style.Background : QColor();
        mark.Tip = CountTip(Isolated(Shown(Plot.Columns.Labels[column])) + QStringLiteral(", ") +
                                Isolated(Shown(Plot.Layers.Labels[layer])),
                            Plot.Counts[column * width + layer], total);
        mark.Series = static_cast<int>(column);
        mark.Point = static_cast<int>(layer);
        PlacedMarks.push_back(mark);
        ArrangeShare(place, mark, share);
    }
}

void MosaicArea::ArrangeMarks() {
    double left = 0.0;
    const std::vector<double> ends = EndsOf(Plot);
    for (std::size_t column = 0; column < ends.size(); ++column) {
        ArrangeColumn(column, left, ends[column]);
        left = ends[column];
    }
    if (PlacedMarks.empty()) {
        SayInTheMiddle(QStringLiteral("No cases"));
    }
}

/// The colours of the layers, and that of those without one of their own.
std::vector<KeyEntry> EntriesOf(const MosaicPlot& plot, const ChartStyle& style) {
    const LayerColors colors(plot, style);
    std::vector<KeyEntry> entries;
    for (std::size_t layer = 0; layer < plot.Layers.Labels.size(); ++layer) {
        if (colors.HasOwn(layer)) {
            entries.push_back({KeyEntry::Sign::Box, colors.Of(layer), {}, Shown(plot.Layers.Labels[layer])});
        }
    }
    if (const std::size_t others = plot.Layers.Labels.size() - entries.size(); others > 0) {
        entries.push_back({KeyEntry::Sign::Box, style.OtherFill, {}, QStringLiteral("%1 others").arg(others)});
    }
    return entries;
}

}  // namespace

ChartBody BodyOf(const ChartSheet& sheet, const MosaicPlot& plot) {
    return {new MosaicArea(sheet, plot), new ChartKey(sheet.Plot, sheet.Style, EntriesOf(plot, sheet.Style))};
}

}  // namespace quillara
