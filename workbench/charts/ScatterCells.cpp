#include "workbench/charts/ScatterCells.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "workbench/charts/ChartColors.h"

namespace quillara {
namespace {

constexpr int imagePixels = 3;  // of an image in a vector file, for each pixel of the picture

void DrawSingly(QPainter& painter, const PointLook& look, const std::vector<QPointF>& places) {
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(QPen(look.Color, look.Diameter, Qt::SolidLine, Qt::RoundCap));
    painter.drawPoints(places.data(), static_cast<int>(places.size()));
}

QRectF BoundsOf(const std::vector<QPointF>& places, double rim) {
    const auto [left, right] = std::ranges::minmax(places, {}, &QPointF::x);
    const auto [top, bottom] = std::ranges::minmax(places, {}, &QPointF::y);
    return QRectF(QPointF(left.x(), top.y()), QPointF(right.x(), bottom.y())).adjusted(-rim, -rim, rim, rim);
}

void DrawAsImage(QPainter& painter, const PointLook& look, const std::vector<QPointF>& places) {
    const QRectF bounds = BoundsOf(places, look.Diameter);
    QImage image((bounds.size() * imagePixels).toSize() + QSize(1, 1), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter onImage(&image);
    onImage.scale(imagePixels, imagePixels);
    onImage.translate(-bounds.topLeft());
    DrawSingly(onImage, look, places);
    onImage.end();
    painter.drawImage(QRectF(bounds.topLeft(), QSizeF(image.size()) / imagePixels), image);
}

float Most(const DensityGrid& density) {
    return density.Counts.empty() ? 0.0F : std::ranges::max(density.Counts);
}

/// Where a line of a slope enters and leaves a range of y, in x; the whole range of x when it is level within it.
std::optional<NumberRange> Crossing(const ScatterCell& cell, const NumberRange& x, const NumberRange& y) {
    if (cell.Slope == 0.0) {
        const bool isInside = y.Low <= cell.Intercept && cell.Intercept <= y.High;
        return isInside ? std::optional(x) : std::nullopt;
    }
    const auto [low, high] =
        std::minmax({(y.Low - cell.Intercept) / cell.Slope, (y.High - cell.Intercept) / cell.Slope});
    return NumberRange{std::max(low, x.Low), std::min(high, x.High)};
}

}  // namespace

void DrawPoints(QPainter& painter, const ScatterCell& cell, const PointLook& look, const std::vector<QPointF>& places) {
    if (cell.Points.empty()) {
        return;
    }
    if (look.AsImage) {
        DrawAsImage(painter, look, places);
    } else {
        DrawSingly(painter, look, places);
    }
}

void DrawDensity(QPainter& painter, const DensityGrid& density, const QRectF& place, bool isDark) {
    const float most = Most(density);
    const auto expected = static_cast<std::size_t>(density.Columns) * static_cast<std::size_t>(density.Rows);
    if (most <= 0.0F || density.Counts.size() != expected) {
        return;
    }
    QImage image(density.Columns, density.Rows, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    for (int row = 0; row < density.Rows; ++row) {
        for (int column = 0; column < density.Columns; ++column) {
            const float count =
                density.Counts[static_cast<std::size_t>(row) * static_cast<std::size_t>(density.Columns) +
                               static_cast<std::size_t>(column)];
            if (count > 0.0F) {
                // A single point must still be seen beside places with thousands.
                const double share = std::log1p(static_cast<double>(count)) / std::log1p(static_cast<double>(most));
                image.setPixelColor(column, density.Rows - 1 - row, HeatColor(0.2 + 0.8 * share, isDark));
            }
        }
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(place, image);
}

std::optional<QLineF> LineWithin(const ScatterCell& cell, const NumberRange& x, const NumberRange& y) {
    if (!std::isfinite(cell.Slope) || !std::isfinite(cell.Intercept)) {
        return std::nullopt;
    }
    const auto crossing = Crossing(cell, x, y);
    if (!crossing || !(crossing->Low < crossing->High)) {
        return std::nullopt;
    }
    const auto height = [&](double at) { return std::clamp(cell.Intercept + cell.Slope * at, y.Low, y.High); };
    return QLineF(crossing->Low, height(crossing->Low), crossing->High, height(crossing->High));
}

}  // namespace quillara
