#pragma once

#include <QPointF>
#include <QRectF>
#include <vector>

#include "workbench/charts/NumberAxis.h"

class QCustomPlot;

namespace quillara {

/// An element of a chart of which a part can be looked at closer.
class ZoomablePart {
  public:
    virtual ~ZoomablePart() = default;
    [[nodiscard]] virtual bool CanZoom() const = 0;
    /// What is shown of each side that can be zoomed; empty: all.
    [[nodiscard]] virtual std::vector<NumberRange> Zoom() const = 0;
    /// Shows these, or as near as there is something to show; empty: all.
    virtual void SetZoom(const std::vector<NumberRange>& ranges) = 0;
    /// Makes a part of the picture, in pixels, fill its place. False when nothing changes.
    virtual bool ZoomTo(const QRectF& pixels) = 0;
    /// Shows less (a factor below 1) or more about a point that stays where it is. False when nothing changes.
    virtual bool ZoomAbout(QPointF point, double factor) = 0;
};

/// What is shown of a chart, for the same chart or one with other numbers.
using ChartRanges = std::vector<std::vector<NumberRange>>;

// The same of all of a plot made by BuildChart and painted since; call replot() to see it.

[[nodiscard]] bool CanZoom(const QCustomPlot& plot);
[[nodiscard]] bool IsZoomed(const QCustomPlot& plot);
[[nodiscard]] ChartRanges ZoomOf(const QCustomPlot& plot);
void SetZoom(QCustomPlot& plot, const ChartRanges& ranges);
bool ZoomTo(QCustomPlot& plot, const QRectF& pixels);
bool ZoomAbout(QCustomPlot& plot, QPointF point, double factor);

}  // namespace quillara
