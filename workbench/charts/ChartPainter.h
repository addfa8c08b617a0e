#pragma once

#include <QPointF>
#include <QPolygonF>
#include <QSize>
#include <QString>
#include <optional>
#include <vector>

#include "workbench/charts/ChartFile.h"
#include "workbench/charts/ChartTexts.h"

class QCustomPlot;
class QPaintDevice;

namespace quillara {

/// A bar, layer, slice, box or cell of a chart, as it lies in the picture.
struct ChartSpot {
    int Series = -1;  ///< of GraphDocument::Series; -1: none
    int Point = -1;  ///< of the series, or the box, or the cell, from 0; -1: none, as of a text that was cut
    int Categories = 1;  ///< that share it; of several, `Point` or `Series` is the first
    QString Tip;  ///< plain text, may hold line feeds
    QPolygonF Outline;  ///< pixels
};

/// Makes the graph the content of a plot, in place of whatever it showed; call replot() to see it. The plot keeps no
/// reference to the document and lays itself out anew whenever it is resized, dragged or zoomed; only the size of the
/// texts is that of `look`.
void BuildChart(QCustomPlot& plot, const GraphDocument& document, const ChartLook& look);

/// While bars slide from where they were to where they are: from the outlines of earlier spots, found by series and
/// point, at a share of 0 to their own at 1; call replot() to see it. A bar that wasn't there grows. Texts, tips and
/// spots are those of the end all the while.
void BeginSlide(QCustomPlot& plot, const std::vector<ChartSpot>& from);
void SlideTo(QCustomPlot& plot, double share);

/// Paints a plot made by BuildChart on a device at a size in pixels of its own; on vector devices as lines and texts.
void PaintPlot(QCustomPlot& plot, QPaintDevice& device, QSize size);

/// What lies under a point of the plot as it was last painted, the foremost first; nothing on the bare ground.
[[nodiscard]] std::optional<ChartSpot> ChartSpotAt(const QCustomPlot& plot, QPointF point);

/// All spots of the plot as it was last painted, from the back to the front.
[[nodiscard]] std::vector<ChartSpot> ChartSpots(const QCustomPlot& plot);

/// All texts of the plot as it was last painted.
[[nodiscard]] std::vector<PlacedText> ChartTexts(const QCustomPlot& plot);

}  // namespace quillara
