#pragma once

#include <vector>

#include "workbench/charts/ChartPart.h"

namespace quillara {

/// One entry of a legend: a mark as it is drawn in the plot, and what it means.
struct KeyEntry {
    enum class Sign { Line, Box, Whisker, Marker, None };
    Sign Kind = Sign::Marker;
    QColor Color;
    QCPScatterStyle Marker;  ///< of the kind Marker
    QString Text;
};

/// A legend below a plot: entries beside each other, in as many rows as it takes.
class ChartKey : public ChartElement {
  public:
    ChartKey(QCustomPlot* plot, ChartStyle style, std::vector<KeyEntry> entries);
    [[nodiscard]] QSize minimumOuterSizeHint() const override;
    [[nodiscard]] QSize maximumOuterSizeHint() const override;

  protected:
    void Arrange(const QRectF& place) override;
    void draw(QCPPainter* painter) override;

  private:
    [[nodiscard]] std::vector<QPointF> Places(double width) const;

    const std::vector<KeyEntry> Entries;
    std::vector<QRectF> Signs;
};

}  // namespace quillara
