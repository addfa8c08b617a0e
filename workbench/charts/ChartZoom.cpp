#include "workbench/charts/ChartZoom.h"

#include <qcustomplot.h>

#include <algorithm>

namespace quillara {
namespace {

std::vector<ZoomablePart*> ZoomablePartsOf(const QCustomPlot& plot) {
    std::vector<ZoomablePart*> parts;
    for (QCPLayoutElement* element : plot.plotLayout()->elements(true)) {
        if (auto* part = dynamic_cast<ZoomablePart*>(element)) {
            parts.push_back(part);
        }
    }
    return parts;
}

}  // namespace

bool CanZoom(const QCustomPlot& plot) {
    return std::ranges::any_of(ZoomablePartsOf(plot), &ZoomablePart::CanZoom);
}

bool IsZoomed(const QCustomPlot& plot) {
    return std::ranges::any_of(ZoomOf(plot), [](const auto& ranges) { return !ranges.empty(); });
}

ChartRanges ZoomOf(const QCustomPlot& plot) {
    ChartRanges ranges;
    for (const ZoomablePart* part : ZoomablePartsOf(plot)) {
        ranges.push_back(part->Zoom());
    }
    return ranges;
}

void SetZoom(QCustomPlot& plot, const ChartRanges& ranges) {
    const std::vector<ZoomablePart*> parts = ZoomablePartsOf(plot);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        parts[i]->SetZoom(i < ranges.size() ? ranges[i] : std::vector<NumberRange>());
    }
}

bool ZoomTo(QCustomPlot& plot, const QRectF& pixels) {
    return std::ranges::any_of(ZoomablePartsOf(plot), [&](ZoomablePart* part) { return part->ZoomTo(pixels); });
}

bool ZoomAbout(QCustomPlot& plot, QPointF point, double factor) {
    return std::ranges::any_of(ZoomablePartsOf(plot),
                               [&](ZoomablePart* part) { return part->ZoomAbout(point, factor); });
}

}  // namespace quillara
