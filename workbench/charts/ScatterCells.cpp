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

/// The pixel along a side in which a place lies.
class PlaceToPixel {
  public:
    explicit PlaceToPixel(const PixelSide& side)
        : Start(static_cast<float>(side.First)),
          Length(static_cast<float>(side.Last - side.First)),
          End(static_cast<float>(side.Pixels - 1)) {}

    int operator()(float place) const { return static_cast<int>(std::clamp(Start + place * Length, 0.0F, End)); }

  private:
    float Start;
    float Length;
    float End;
};

PixelCounts NoneOf(int columns, int rows) {
    return {columns, rows,
            std::vector<std::uint32_t>(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows))};
}

/// Colours of counts up to the largest; that of a single case stands out from the ground.
class CountColors {
  public:
    CountColors(std::uint32_t most, bool isDark)
        : Colors(std::min<std::size_t>(most, Longest) + 1, qRgba(0, 0, 0, 0)), IsDark(isDark) {}

    /// Of a count from 1. A cell has few of all counts, so that each colour is mixed when it is needed.
    QRgb operator()(std::uint32_t count) {
        const std::size_t place = std::min<std::size_t>(count, Colors.size() - 1);
        if (qAlpha(Colors[place]) == 0) {
            const double top = static_cast<double>(Colors.size() - 1);
            const double share = top > 1.0 ? std::log(static_cast<double>(place)) / std::log(top) : 1.0;
            Colors[place] = HeatColor(Faintest + (1.0 - Faintest) * share, IsDark).rgba();
        }
        return Colors[place];
    }

  private:
    static constexpr double Faintest = 0.45;
    static constexpr std::size_t Longest = 4096;
    std::vector<QRgb> Colors;
    bool IsDark;
};

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

PixelSteps PixelStepsOf(const std::vector<float>& places, const PixelSide& across, const PixelSide& up) {
    const auto steps = static_cast<std::size_t>(across.Pixels) + static_cast<std::size_t>(up.Pixels) - 1;
    const auto none = static_cast<std::uint16_t>(steps);
    const PlaceToPixel toColumn(across);
    const PlaceToPixel toRow(up);
    PixelSteps result{std::vector<std::uint16_t>(places.size()), std::vector<std::uint16_t>(steps),
                      std::vector<std::uint16_t>(steps), across.Pixels, up.Pixels};
    // Both pixels move with the place, so that what they have moved together tells them apart.
    const auto stepOf = [&](int column, int row) { return static_cast<std::uint16_t>(column + up.Pixels - 1 - row); };
    std::ranges::transform(places, result.Cases.begin(), [&](float place) {
        const float valid = place >= 0.0F ? place : 0.0F;  // without a branch, so that places are taken side by side
        const std::uint16_t step = stepOf(toColumn(valid), toRow(valid));
        return place >= 0.0F ? step : none;
    });
    std::vector<float> examples(steps + 1, -1.0F);
    for (std::size_t i = 0; i < places.size(); ++i) {
        examples[result.Cases[i]] = places[i];
    }
    for (std::size_t step = 0; step < steps; ++step) {
        if (examples[step] >= 0.0F) {
            result.Across[step] = static_cast<std::uint16_t>(toColumn(examples[step]));
            result.Up[step] = static_cast<std::uint16_t>(toRow(examples[step]));
        }
    }
    return result;
}

CellCounts CountedCases(const PixelSteps& first, const PixelSteps& second) {
    const std::size_t width = first.Across.size() + 1;  // a step more, for what isn't valid
    std::vector<std::uint32_t> all(width * (second.Up.size() + 1));
    for (std::size_t i = 0; i < first.Cases.size(); ++i) {
        ++all[second.Cases[i] * width + first.Cases[i]];
    }
    CellCounts cells{NoneOf(first.Columns, second.Rows), NoneOf(second.Columns, first.Rows)};
    for (std::size_t y = 0; y < second.Up.size(); ++y) {
        for (std::size_t x = 0; x < first.Across.size(); ++x) {
            const std::uint32_t count = all[y * width + x];
            cells.SecondUp.At(first.Across[x], second.Up[y]) += count;
            cells.FirstUp.At(second.Across[y], first.Up[x]) += count;
        }
    }
    return cells;
}

void DrawCounts(QPainter& painter, const PixelCounts& counts, QPoint topLeft, bool isDark) {
    const std::uint32_t most = counts.Counts.empty() ? 0 : std::ranges::max(counts.Counts);
    if (most == 0) {
        return;
    }
    CountColors colorOf(most, isDark);
    QImage image(counts.Columns, counts.Rows, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    for (int row = 0; row < counts.Rows; ++row) {
        for (int column = 0; column < counts.Columns; ++column) {
            const std::uint32_t count = counts.At(column, row);
            if (count == 0) {
                continue;
            }
            const QRgb color = colorOf(count);
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
