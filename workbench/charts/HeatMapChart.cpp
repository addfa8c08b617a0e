#include <QImage>
#include <algorithm>
#include <cmath>
#include <utility>

#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartArea.h"
#include "workbench/charts/ChartColors.h"
#include "workbench/charts/ChartKinds.h"
#include "workbench/charts/CountTable.h"
#include "workbench/charts/HeatScale.h"

namespace quillara {
namespace {

constexpr int MostFieldPixels = 16;  // of the image, for each field: viewers blur images that they enlarge
constexpr int MostImagePixels = 2048;
constexpr std::size_t MostPainted = 2500;  // fields that are painted one by one; more are an image
constexpr double StripShare = 0.5;  // of the width
constexpr double LongestStrip = 420.0;
constexpr double StripHeight = 10.0;
constexpr double ScaleRoomAbove = 10.0;
constexpr double KeyGap = 4.0;
constexpr double RoomAroundNumber = 4.0;  // pixels around the number in a field
constexpr int GradientStops = 20;

class HeatArea : public ChartArea {
  public:
    HeatArea(const ChartSheet& sheet, const Histogram3DPlot& plot);

  protected:
    void ArrangeMarks() override;
    void draw(QCPPainter* painter) override;

  private:
    [[nodiscard]] bool IsImage() const { return Table.Columns() * Table.Rows() > MostPainted; }
    void ArrangeField(std::size_t column, std::size_t row, const QString& count);

    const CountTable Table;
    const HeatScale Scale;
    QImage Fields;
};

AreaAxis SideAxis(const QString& caption, const std::vector<QString>& names) {
    AreaAxis axis{caption, {0.5, static_cast<double>(names.size()) + 0.5}, {}, false, false};
    for (std::size_t i = 0; i < names.size(); ++i) {
        axis.Labels.push_back({static_cast<double>(i) + 1.0, names[i]});
    }
    return axis;
}

AreaAxis ColumnAxis(const Histogram3DPlot& plot) {
    const CountTable table(plot);
    return SideAxis(table.ColumnCaption(), table.ColumnNames());
}

AreaAxis RowAxis(const Histogram3DPlot& plot) {
    const CountTable table(plot);
    return SideAxis(table.RowCaption(), table.RowNames());
}

QImage FieldsOf(const CountTable& table, const HeatScale& scale, bool isDark) {
    const auto columns = static_cast<int>(table.Columns());
    const auto rows = static_cast<int>(table.Rows());
    QImage image(std::max(columns, 1), std::max(rows, 1), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const double count = table.CountOf(static_cast<std::size_t>(column), static_cast<std::size_t>(row));
            if (count > 0.0) {
                image.setPixelColor(column, rows - 1 - row, HeatColor(scale.ShareOf(count), isDark));
            }
        }
    }
    const int size = std::clamp(MostImagePixels / std::max({columns, rows, 1}), 1, MostFieldPixels);
    return image.scaled(image.size() * size, Qt::IgnoreAspectRatio, Qt::FastTransformation);
}

HeatArea::HeatArea(const ChartSheet& sheet, const Histogram3DPlot& plot)
    : ChartArea(sheet.Plot, sheet.Style, ColumnAxis(plot), RowAxis(plot)),
      Table(plot),
      Scale(Table.AllCounts()),
      Fields(IsImage() ? FieldsOf(Table, Scale, sheet.Style.IsDark) : QImage()) {}

void HeatArea::ArrangeField(std::size_t column, std::size_t row, const QString& count) {
    const double x = static_cast<double>(column) + 1.0;
    const double y = static_cast<double>(row) + 1.0;
    QRectF place = PixelsOf(x - 0.5, y - 0.5, x + 0.5, y + 0.5);
    place = QRectF(QPointF(place.topLeft().toPoint()), QPointF(place.bottomRight().toPoint()));  // no seams
    ChartMark mark;
    mark.Outline = RectangleOutline(place);
    if (Table.CountOf(column, row) > 0.0 && !IsImage()) {
        mark.Fill = HeatColor(Scale.ShareOf(Table.CountOf(column, row)), Style.IsDark);
    }
    mark.Tip = Table.TipOf(column, row);
    mark.Point = static_cast<int>(Table.PlaceOf(column, row));
    PlacedMarks.push_back(mark);
    if (Table.CountOf(column, row) > 0.0) {
        TextStyle style = Style.Text();
        style.Color = InkOn(HeatColor(Scale.ShareOf(Table.CountOf(column, row)), Style.IsDark));
        const PlacedText text = TextAt(place.center(), Qt::AlignCenter, count, style);
        if (text.Box.width() + RoomAroundNumber <= place.width() && text.Box.height() <= place.height()) {
            PlacedTexts.push_back(text);
        }
    }
}

void HeatArea::ArrangeMarks() {
    if (!(Table.Highest() > 0.0)) {
        SayInTheMiddle(QStringLiteral("No cases"));
    }
    const std::vector<QString> counts = CountTexts(Table.AllCounts());
    for (std::size_t row = 0; row < Table.Rows(); ++row) {
        for (std::size_t column = 0; column < Table.Columns(); ++column) {
            ArrangeField(column, row, counts[Table.PlaceOf(column, row)]);
        }
    }
}

void HeatArea::draw(QCPPainter* painter) {
    ChartArea::draw(painter);
    if (IsImage()) {
        painter->setRenderHint(QPainter::SmoothPixmapTransform, false);
        const double right = static_cast<double>(Table.Columns()) + 0.5;
        painter->drawImage(PixelsOf(0.5, 0.5, right, static_cast<double>(Table.Rows()) + 0.5), Fields);
    }
}

/// The meaning of the colours: a strip over round counts.
class HeatKey : public ChartElement {
  public:
    HeatKey(const ChartSheet& sheet, HeatScale scale, QString caption)
        : ChartElement(sheet.Plot, sheet.Style), Scale(scale), Caption(std::move(caption)) {}
    [[nodiscard]] QSize minimumOuterSizeHint() const override {
        return {0, static_cast<int>(std::ceil(2 * LineHeight(Style.Text()) + ScaleRoomAbove + KeyGap))};
    }
    [[nodiscard]] QSize maximumOuterSizeHint() const override {
        return {QWIDGETSIZE_MAX, minimumOuterSizeHint().height()};
    }

  protected:
    void Arrange(const QRectF& place) override;
    void draw(QCPPainter* painter) override;

  private:
    const HeatScale Scale;
    const QString Caption;
    QRectF Strip;
};

/// The caption stands left of the strip, its round counts below it.
void HeatKey::Arrange(const QRectF& place) {
    const TextStyle style = Style.Text();
    const double height = LineHeight(style);
    const double width = std::min(place.width() * StripShare, LongestStrip);
    const double besides = WidthOf(Caption, style) + 2 * KeyGap;
    const double left = place.center().x() - (width + besides) / 2 + besides;
    const double middle = place.top() + ScaleRoomAbove + height / 2;
    Strip = QRectF(left, middle - StripHeight / 2, width, StripHeight);
    PlacedTexts.push_back(TextAt({left - 2 * KeyGap, middle}, Qt::AlignRight | Qt::AlignVCenter, Caption, style));
    std::vector<AxisSpot> spots;
    for (const AxisMark& mark : Scale.Marks()) {
        spots.push_back({left + width * Scale.PlaceOf(mark.At), mark.Text});
    }
    for (PlacedText text : LabelsBelow(spots, {left - besides, place.right(), height}, style).Texts) {
        text.Pivot.ry() += middle + height / 2;
        PlacedTexts.push_back(text);
    }
}

void HeatKey::draw(QCPPainter* painter) {
    QLinearGradient gradient(Strip.topLeft(), Strip.topRight());
    for (int i = 0; i <= GradientStops; ++i) {
        const double at = static_cast<double>(i) / GradientStops;
        gradient.setColorAt(at, HeatColor(HeatScale::ColorAt(at), Style.IsDark));
    }
    painter->setPen(QPen(Style.Frame, 1.0));
    painter->setBrush(gradient);
    painter->drawRect(Strip);
}

}  // namespace

ChartBody HeatMapOf(const ChartSheet& sheet, const Histogram3DPlot& plot) {
    const CountTable table(plot);
    return {new HeatArea(sheet, plot),
            table.Highest() > 0.0 ? new HeatKey(sheet, HeatScale(table.AllCounts()), table.CountCaption()) : nullptr};
}

}  // namespace quillara
