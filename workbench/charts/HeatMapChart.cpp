#include <QImage>
#include <algorithm>
#include <cmath>

#include "workbench/charts/CategoryAxis.h"
#include "workbench/charts/ChartArea.h"
#include "workbench/charts/ChartColors.h"
#include "workbench/charts/ChartKinds.h"
#include "workbench/charts/CountTable.h"

namespace quillara {
namespace {

constexpr int mostFieldPixels = 16;  // of the image, for each field: viewers blur images that they enlarge
constexpr int mostImagePixels = 2048;
constexpr double leastShare = 0.08;  // of the colours, for a field with a case
constexpr double stripWidth = 180.0;
constexpr double stripHeight = 10.0;
constexpr double roomAbove = 8.0;
constexpr double gap = 6.0;

double ShareOf(double count, double highest) {
    return leastShare + (1.0 - leastShare) * count / highest;
}

class HeatArea : public ChartArea {
  public:
    HeatArea(const ChartSheet& sheet, const Histogram3DPlot& plot);

  protected:
    void ArrangeMarks() override;
    void draw(QCPPainter* painter) override;

  private:
    const CountTable Table;
    QImage Fields;
};

AreaAxis SideAxis(const QString& caption, const std::vector<QString>& names) {
    AreaAxis axis{caption, {0.5, static_cast<double>(names.size()) + 0.5}, {}, false};
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

QImage FieldsOf(const CountTable& table, bool isDark) {
    const auto columns = static_cast<int>(table.Columns());
    const auto rows = static_cast<int>(table.Rows());
    QImage image(std::max(columns, 1), std::max(rows, 1), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const double count = table.CountOf(static_cast<std::size_t>(column), static_cast<std::size_t>(row));
            if (count > 0.0) {
                image.setPixelColor(column, rows - 1 - row, HeatColor(ShareOf(count, table.Highest()), isDark));
            }
        }
    }
    const int size = std::clamp(mostImagePixels / std::max({columns, rows, 1}), 1, mostFieldPixels);
    return image.scaled(image.size() * size, Qt::IgnoreAspectRatio, Qt::FastTransformation);
}

HeatArea::HeatArea(const ChartSheet& sheet, const Histogram3DPlot& plot)
    : ChartArea(sheet.Plot, sheet.Style, ColumnAxis(plot), RowAxis(plot)),
      Table(plot),
      Fields(FieldsOf(Table, sheet.Style.IsDark)) {}

void HeatArea::ArrangeMarks() {
    if (!(Table.Highest() > 0.0)) {
        SayInTheMiddle(QStringLiteral("No cases"));
    }
    for (std::size_t row = 0; row < Table.Rows(); ++row) {
        for (std::size_t column = 0; column < Table.Columns(); ++column) {
            const double x = static_cast<double>(column) + 1.0;
            const double y = static_cast<double>(row) + 1.0;
            ChartMark mark;
            mark.Outline = RectangleOutline(PixelsOf(x - 0.5, y - 0.5, x + 0.5, y + 0.5));
            mark.Tip = Table.TipOf(column, row);
            mark.Point = static_cast<int>(Table.PlaceOf(column, row));
            PlacedMarks.push_back(mark);
        }
    }
}

void HeatArea::draw(QCPPainter* painter) {
    painter->save();
    ChartArea::draw(painter);
    painter->setRenderHint(QPainter::SmoothPixmapTransform, false);
    const double right = static_cast<double>(Table.Columns()) + 0.5;
    painter->drawImage(PixelsOf(0.5, 0.5, right, static_cast<double>(Table.Rows()) + 0.5), Fields);
    painter->restore();
}

/// The meaning of the colours: a strip from none to the highest count.
class HeatKey : public ChartElement {
  public:
    HeatKey(const ChartSheet& sheet, double highest) : ChartElement(sheet.Plot, sheet.Style), Highest(highest) {}
    [[nodiscard]] QSize minimumOuterSizeHint() const override {
        return {0, static_cast<int>(std::ceil(LineHeight(Style.Text()) + roomAbove))};
    }
    [[nodiscard]] QSize maximumOuterSizeHint() const override {
        return {QWIDGETSIZE_MAX, minimumOuterSizeHint().height()};
    }

  protected:
    void Arrange(const QRectF& place) override;
    void draw(QCPPainter* painter) override;

  private:
    const double Highest;
    QRectF Strip;
};

void HeatKey::Arrange(const QRectF& place) {
    const double middle = place.bottom() - LineHeight(Style.Text()) / 2;
    Strip = QRectF(place.center().x() - stripWidth / 2, middle - stripHeight / 2, stripWidth, stripHeight);
    const QPointF left(Strip.left() - gap, middle);
    const QPointF right(Strip.right() + gap, middle);
    PlacedTexts.push_back(
        TextAt(left, Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("Number of counts: 0"), Style.Text()));
    PlacedTexts.push_back(TextAt(right, Qt::AlignLeft | Qt::AlignVCenter, CountText(Highest), Style.Text()));
}

void HeatKey::draw(QCPPainter* painter) {
    QLinearGradient gradient(Strip.topLeft(), Strip.topRight());
    constexpr int stops = 10;
    for (int i = 0; i <= stops; ++i) {
        const double at = static_cast<double>(i) / stops;
        gradient.setColorAt(at, HeatColor(ShareOf(at, 1.0), Style.IsDark));
    }
    painter->setPen(QPen(Style.Frame, 1.0));
    painter->setBrush(gradient);
    painter->drawRect(Strip);
}

}  // namespace

ChartBody HeatMapOf(const ChartSheet& sheet, const Histogram3DPlot& plot) {
    const double highest = CountTable(plot).Highest();
    return {new HeatArea(sheet, plot), highest > 0.0 ? new HeatKey(sheet, highest) : nullptr};
}

}  // namespace quillara
