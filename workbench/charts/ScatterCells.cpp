#include "workbench/charts/ScatterCells.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "workbench/charts/ChartColors.h"

namespace quillara {
namespace {

/// Shares of light that pass the points painted so far, for each pixel of a picture.
class PointLayer {
  public:
    explicit PointLayer(QSize size)
        : Size(size), Passing(static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height()), 1.0F) {}

    /// Adds a round point about a centre.
    void Add(QPointF centre, double radius, double opacity) {
        const double reach = radius + Edge;
        const int bottom = std::min(static_cast<int>(centre.y() + reach), Size.height() - 1);
        const int right = std::min(static_cast<int>(centre.x() + reach), Size.width() - 1);
        for (int y = std::max(static_cast<int>(centre.y() - reach), 0); y <= bottom; ++y) {
            for (int x = std::max(static_cast<int>(centre.x() - reach), 0); x <= right; ++x) {
                const double fromX = x + Edge - centre.x();
                const double fromY = y + Edge - centre.y();
                const double covered = std::clamp(reach - std::sqrt(fromX * fromX + fromY * fromY), 0.0, 1.0);
                Passing[PlaceOf(x, y)] *= static_cast<float>(1.0 - covered * opacity);
            }
        }
    }

    [[nodiscard]] QImage Image(const QColor& color) const {
        QImage image(Size, QImage::Format_ARGB32);
        for (int y = 0; y < Size.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
            for (int x = 0; x < Size.width(); ++x) {
                const int alpha = qRound(255.0F * (1.0F - Passing[PlaceOf(x, y)]));
                line[x] = qRgba(color.red(), color.green(), color.blue(), alpha);
            }
        }
        return image;
    }

  private:
    static constexpr double Edge = 0.5;  // of a pixel

    [[nodiscard]] std::size_t PlaceOf(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(Size.width()) + static_cast<std::size_t>(x);
    }

    QSize Size;
    std::vector<float> Passing;
};

/// Colours of counts up to the largest; that of a single case stands out from the ground.
std::vector<QRgb> ColorsOfCounts(std::uint32_t most, bool isDark) {
    constexpr double faintest = 0.45;
    constexpr std::size_t longest = 4096;
    std::vector<QRgb> colors(std::min<std::size_t>(most, longest) + 1, qRgba(0, 0, 0, 0));
    for (std::size_t i = 1; i < colors.size(); ++i) {
        const double top = static_cast<double>(colors.size() - 1);
        const double share = top > 1.0 ? std::log(static_cast<double>(i)) / std::log(top) : 1.0;
        colors[i] = HeatColor(faintest + (1.0 - faintest) * share, isDark).rgba();
    }
    return colors;
}

/// Whether no pixel around another has cases.
bool IsAlone(const PixelCounts& counts, int column, int row) {
    for (int y = std::max(row - 1, 0); y <= std::min(row + 1, counts.Rows - 1); ++y) {
        for (int x = std::max(column - 1, 0); x <= std::min(column + 1, counts.Columns - 1); ++x) {
            if ((x != column || y != row) && counts.At(x, y) > 0) {
                return false;
            }
        }
    }
    return true;
}

/// The other pixel of two along a side of so many.
int Beside(int place, int pixels) {
    return place + 1 < pixels ? place + 1 : std::max(place - 1, 0);
}

}  // namespace

void DrawPoints(QPainter& painter, const std::vector<QPointF>& points, const PointLook& look) {
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(QPen(look.Color, look.Diameter, Qt::SolidLine, Qt::RoundCap));
    painter.drawPoints(points.data(), static_cast<int>(points.size()));
}

void DrawPointsOnPixels(QPainter& painter, const std::vector<QPointF>& points, const QRect& pixels,
                        const PointLook& look) {
    if (points.empty() || pixels.isEmpty()) {
        return;
    }
    PointLayer layer(pixels.size());
    for (const QPointF& point : points) {
        layer.Add(point - pixels.topLeft(), look.Diameter / 2, look.Color.alphaF());
    }
    painter.drawImage(pixels.topLeft(), layer.Image(look.Color));
}

PixelPlaces PixelPlacesOf(const std::vector<float>& places, double first, double last, int pixels) {
    const auto none = static_cast<std::uint16_t>(pixels);
    const auto start = static_cast<float>(first);
    const auto length = static_cast<float>(last - first);
    const auto end = static_cast<float>(pixels - 1);
    PixelPlaces result(places.size());
    std::ranges::transform(places, result.begin(), [&](float place) {
        return place >= 0.0F ? static_cast<std::uint16_t>(std::clamp(start + place * length, 0.0F, end)) : none;
    });
    return result;
}

PixelCounts CountedCases(const PixelPlaces& x, int columns, const PixelPlaces& y, int rows) {
    const auto width = static_cast<std::size_t>(columns) + 1;  // a column and a row more, for what isn't valid
    std::vector<std::uint32_t> all(width * (static_cast<std::size_t>(rows) + 1));
    for (std::size_t i = 0; i < x.size(); ++i) {
        ++all[y[i] * width + x[i]];
    }
    PixelCounts counts{columns, rows, {}};
    counts.Counts.reserve(all.size());
    for (std::size_t row = 0; row < static_cast<std::size_t>(rows); ++row) {
        const auto line = all.begin() + static_cast<std::ptrdiff_t>(row * width);
        counts.Counts.insert(counts.Counts.end(), line, line + columns);
    }
    return counts;
}

void DrawCounts(QPainter& painter, const PixelCounts& counts, QPoint topLeft, bool isDark) {
    const std::uint32_t most = counts.Counts.empty() ? 0 : std::ranges::max(counts.Counts);
    if (most == 0) {
        return;
    }
    const std::vector<QRgb> colors = ColorsOfCounts(most, isDark);
    QImage image(counts.Columns, counts.Rows, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    for (int row = 0; row < counts.Rows; ++row) {
        for (int column = 0; column < counts.Columns; ++column) {
            const std::uint32_t count = counts.At(column, row);
            if (count == 0) {
                continue;
            }
            const QRgb color = colors[std::min<std::size_t>(count, colors.size() - 1)];
            image.setPixel(column, row, color);
            if (IsAlone(counts, column, row)) {
                image.setPixel(Beside(column, counts.Columns), row, color);
                image.setPixel(column, Beside(row, counts.Rows), color);
                image.setPixel(Beside(column, counts.Columns), Beside(row, counts.Rows), color);
            }
        }
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(topLeft, image);
}

QLineF LineWithin(const QLineF& line, double top, double bottom) {
    if (!std::isfinite(line.y1()) || !std::isfinite(line.y2())) {
        return {};
    }
    const auto [high, low] = std::minmax({line.y1(), line.y2()});
    if (low < top || high > bottom) {
        return {};
    }
    if (high == low) {
        return line;
    }
    const auto shareAt = [&](double height) { return (height - line.y1()) / line.dy(); };
    const auto [from, to] = std::minmax({shareAt(top), shareAt(bottom)});
    return QLineF(line.pointAt(std::max(from, 0.0)), line.pointAt(std::min(to, 1.0)));
}

}  // namespace quillara
