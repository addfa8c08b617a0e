#pragma once

#include <memory>

#include "workbench/charts/BoxPanels.h"
#include "workbench/charts/ChartArea.h"
#include "workbench/charts/ChartKinds.h"

namespace quillara {

/// How single values of a box-whisker plot are marked.
struct BoxMarkers {
    QCPScatterStyle Middle;
    QCPScatterStyle Outlier;
    QCPScatterStyle Extreme;
};
[[nodiscard]] BoxMarkers MarkersOf(const ChartStyle& style);
[[nodiscard]] QColor BoxFill(const ChartStyle& style);

/// A panel of a box-whisker plot: boxes beside each other over one axis, the number of cases under each.
class BoxArea : public ChartArea {
  public:
    BoxArea(const ChartSheet& sheet, const BoxPlot& plot, const BoxPanel& panel);
    [[nodiscard]] std::size_t Count() const { return Panel.Boxes.size(); }

  protected:
    [[nodiscard]] QString Note(double pixels) const override;
    void ArrangeMarks() override;

  private:
    void AddBoxes();
    void AddPoints();
    void AddMarkers(const QCPScatterStyle& marker, const std::vector<QPointF>& points);

    const std::shared_ptr<const GraphDocument> Document;  // keeps Plot alive
    const BoxPlot& Plot;
    const BoxPanel Panel;
};

}  // namespace quillara
