#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <utility>

#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartArea.h"
#include "workbench/charts/ChartColors.h"
#include "workbench/charts/ChartKey.h"
#include "workbench/charts/ChartKinds.h"
#include "workbench/charts/StackedLayers.h"

namespace quillara {
namespace {

constexpr double LeastEdgedHeight = 3.0;  // pixels; thinner layers would be nothing but edge
constexpr double TextRoom = 8.0;  // pixels around the text of a layer
constexpr int MostLabels = 20;
// Of the picture, what the columns have at least: layers that have no room for their names there are named in the key.
constexpr double LeastAreaWidth = 0.8;
constexpr double LeastAreaHeight = 0.5;
constexpr std::size_t MostKeysOfColumn = 8;
constexpr std::size_t MostShades = 12;  // of a column that are told apart by the eye

class StackedArea : public ChartArea {
  public:
    StackedArea(const ChartSheet& sheet, const StackedPlot& chart);

  protected:
    void ArrangeMarks() override;

  private:
    void ArrangeColumn(std::size_t column);
    void ArrangeTexts(const StackedLayer& layer, const QRectF& place, const ChartMark& mark);

    const std::shared_ptr<const GraphDocument> Document;  // keeps Chart alive
    const StackedPlot& Chart;
};

/// The labels that the step of an axis without labels asks for.
AreaAxis PercentAxis(const GraphAxis& given) {
    AreaAxis axis = GivenAxis(given);
    const double steps = (given.Max - given.Min) / given.Step;
    if (axis.Labels.empty() && given.Step > 0.0 && steps <= MostLabels) {
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

QString NameOf(const StackedLayer& layer) {
    if (layer.IsMissing && layer.First.isEmpty()) {
        return QStringLiteral("Missing");
    }
    return layer.Categories == 1 || layer.First.isEmpty() ? layer.First
                                                          : layer.First + QStringLiteral(" to ") + layer.Last;
}

/// "sex = Male: 66.9%".
QString TipOf(const QString& variable, const StackedLayer& layer) {
    QString tip = Isolated(variable);
    if (const QString name = NameOf(layer); !name.isEmpty()) {
        tip += QStringLiteral(" = ") + Isolated(name);
    }
    if (layer.Categories > 1) {
        tip += QStringLiteral(" (%1 categories)").arg(layer.Categories);
    }
    return tip + QStringLiteral(": ") + PercentText(layer.Share(), 100.0);
}

bool HasRoom(const QStringList& lines, const TextStyle& style, const QSizeF& room) {
    return !lines.isEmpty() && static_cast<double>(lines.size()) * LineHeight(style) <= room.height() &&
           std::ranges::all_of(lines, [&](const QString& line) { return WidthOf(line, style) <= room.width(); });
}

/// What has room of the name and the share of a layer.
QStringList LayerLines(const StackedLayer& layer, const TextStyle& style, const QSizeF& room) {
    const QString percent = PercentText(layer.Share(), 100.0);
    const QString name = NameOf(layer);
    if (!name.isEmpty() && HasRoom({Isolated(name) + QStringLiteral(": ") + percent}, style, room)) {
        return {Isolated(name) + QStringLiteral(": ") + percent};
    }
    const QStringList words = name.isEmpty() ? QStringList() : WholeWordLines(name, style, room.width());
    if (!words.isEmpty() && HasRoom(words + QStringList{percent}, style, room)) {
        return words + QStringList{percent};
    }
    return HasRoom({percent}, style, room) ? QStringList{percent} : QStringList();
}

void StackedArea::ArrangeTexts(const StackedLayer& layer, const QRectF& place, const ChartMark& mark) {
    const TextStyle style{Style.Text().Font, mark.IsMissing ? Style.Ink : InkOn(mark.Fill)};
    const QStringList lines = LayerLines(layer, style, place.size() - QSizeF(TextRoom, 2.0));
    const double height = LineHeight(style);
    const double top = place.center().y() - static_cast<double>(lines.size()) * height / 2;
    for (int i = 0; i < lines.size(); ++i) {
        PlacedText text =
            TextAt({place.center().x(), top + i * height}, Qt::AlignHCenter | Qt::AlignTop, lines[i], style);
        text.Ground = mark.IsMissing ? Style.MissingFill : QColor();
        PlacedTexts.push_back(text);
    }
}

void StackedArea::ArrangeColumn(std::size_t column) {
    const double pixel = 100.0 / std::max(1.0, PixelsOf(0.0, 0.0, 0.0, 100.0).height());  // in percent
    const GraphSeries& given = Chart.Series.front();
    const double x = given.Points[column].X;
    for (const StackedLayer& layer : LayersOf(Chart, column, pixel)) {
        const QRectF place = PixelsOf(x - given.Width / 2, layer.Bottom, x + given.Width / 2, layer.Top);
        ChartMark mark;
        mark.Outline = RectangleOutline(place);
        mark.Fill = LayerColor(static_cast<int>(column), layer.Shade, Style.IsDark);
        mark.IsMissing = layer.IsMissing;
        mark.Edge = place.height() >= LeastEdgedHeight ? Style.Background : QColor();
        mark.Tip = TipOf(LabelAt(Chart.X, x), layer);
        mark.Series = layer.Series;
        mark.Point = static_cast<int>(column);
        mark.Categories = layer.Categories;
        PlacedMarks.push_back(mark);
        ArrangeTexts(layer, place, mark);
    }
}

void StackedArea::ArrangeMarks() {
    const std::size_t columns = Chart.Series.empty() ? 0 : Chart.Series.front().Points.size();
    for (std::size_t column = 0; column < columns; ++column) {
        ArrangeColumn(column);
    }
    if (PlacedMarks.empty()) {
        SayInTheMiddle(QStringLiteral("No cases"));
    }
}

/// Of what a column is at least as wide and the area as high.
QSizeF LeastRoomOf(const StackedPlot& chart, const ChartStyle& style) {
    const double width = chart.Series.front().Width * LeastAreaWidth * style.Picture.width();
    return {width / std::max(1.0, chart.X.Max - chart.X.Min), LeastAreaHeight * style.Picture.height()};
}

/// The layers of a column that are too thin for their names, the largest first.
std::vector<StackedLayer> UnnamedLayers(const StackedPlot& chart, std::size_t column, const ChartStyle& style) {
    const QSizeF area = LeastRoomOf(chart, style);
    std::vector<StackedLayer> unnamed;
    for (const StackedLayer& layer : LayersOf(chart, column, 100.0 / std::max(1.0, area.height()))) {
        const QSizeF room(area.width() - TextRoom, layer.Share() / 100.0 * area.height() - 2.0);
        const QString percent = PercentText(layer.Share(), 100.0);
        const QStringList lines = LayerLines(layer, style.Text(), room);
        if (!NameOf(layer).isEmpty() && (lines.isEmpty() || lines == QStringList{percent})) {
            unnamed.push_back(layer);
        }
    }
    std::ranges::stable_sort(unnamed, std::greater(), &StackedLayer::Share);
    return unnamed;
}

QColor LayerFill(const StackedLayer& layer, std::size_t column, const ChartStyle& style) {
    return layer.IsMissing ? style.MissingFill : LayerColor(static_cast<int>(column), layer.Shade, style.IsDark);
}

/// The entries of a column: its name, its layers, and how many more there are. Where its shades are too many to be told
/// apart, layers have the percent that they begin at.
void AddUnnamed(std::vector<KeyEntry>& entries, const QString& variable, std::size_t column,
                const std::vector<StackedLayer>& unnamed, const ChartStyle& style) {
    if (unnamed.empty()) {
        return;
    }
    using Sign = KeyEntry::Sign;
    entries.push_back({Sign::None, {}, {}, variable + QStringLiteral(":"), true});
    double rest = 0.0;
    int more = 0;
    for (std::size_t i = 0; i < unnamed.size(); ++i) {
        if (i < MostKeysOfColumn) {
            const QString share = PercentText(unnamed[i].Share(), 100.0);
            const QString place = unnamed.size() > MostShades && !unnamed[i].IsMissing
                                      ? QStringLiteral(" at %1").arg(unnamed[i].Bottom, 0, 'f', 1)
                                      : QString();
            entries.push_back({Sign::Box,
                               LayerFill(unnamed[i], column, style),
                               {},
                               Isolated(NameOf(unnamed[i])) + QStringLiteral(": ") + share + place});
        } else {
            rest += unnamed[i].Share();
            more += unnamed[i].Categories;
        }
    }
    if (more > 0) {
        entries.push_back({Sign::None, {}, {}, QStringLiteral("%1 more: %2").arg(more).arg(PercentText(rest, 100.0))});
    }
}

std::vector<KeyEntry> UnnamedEntries(const StackedPlot& chart, const ChartStyle& style) {
    std::vector<KeyEntry> entries;
    const std::size_t columns = chart.Series.empty() ? 0 : chart.Series.front().Points.size();
    for (std::size_t column = 0; column < columns; ++column) {
        const QString variable = LabelAt(chart.X, chart.Series.front().Points[column].X);
        AddUnnamed(entries, variable, column, UnnamedLayers(chart, column, style), style);
    }
    return entries;
}

}  // namespace

ChartBody BodyOf(const ChartSheet& sheet, const StackedPlot& chart) {
    std::vector<KeyEntry> entries = UnnamedEntries(chart, sheet.Style);
    return {new StackedArea(sheet, chart),
            entries.empty() ? nullptr : new ChartKey(sheet.Plot, sheet.Style, std::move(entries))};
}

}  // namespace quillara
