#pragma once

#include <QLineF>
#include <optional>

#include "workbench/charts/ScatterGrid.h"

namespace quillara {

/// How the points of a matrix are painted.
struct PointLook {
    QColor Color;
    double Diameter = 3.0;  ///< pixels
    bool AsImage = false;  ///< one picture a cell in place of single points, for vector files of many points
};

/// The points of a cell, or the image of their density.
void DrawPoints(QPainter& painter, const ScatterCell& cell, const PointLook& look, const std::vector<QPointF>& places);
void DrawDensity(QPainter& painter, const DensityGrid& density, const QRectF& place, bool isDark);

/// The part of a line y = intercept + slope x that lies within both ranges, in numbers of the axes.
[[nodiscard]] std::optional<QLineF> LineWithin(const ScatterCell& cell, const NumberRange& x, const NumberRange& y);

}  // namespace quillara
