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
    bool IsHeading = false;  ///< of the entries behind it: stays beside the next one
};

/// A legend below a plot: entries beside each other, in as many rows as it takes. Of many entries those for which a
/// third of the picture has no room are left out; the last line says how many.
class ChartKey : public ChartElement {
  public:
    ChartKey(QCustomPlot* plot, ChartStyle style, std::vector<KeyEntry> entries);
    void update(UpdatePhase phase) override;
    [[nodiscard]] QSize minimumOuterSizeHint() const override;
    [[nodiscard]] QSize maximumOuterSizeHint() const override;

  protected:
    void Arrange(const QRectF& place) override;
    void draw(QCPPainter* painter) override;

  private:
    [[nodiscard]] std::vector<QPointF> Places(double width) const;
    [[nodiscard]] double TextWidth(const KeyEntry& entry, double width) const;
    [[nodiscard]] std::vector<KeyEntry> First(std::size_t shown) const;
    void Fit();

    const std::vector<KeyEntry> All;
    std::vector<KeyEntry> Entries;  // that are shown
    QSize FittedTo;
    std::vector<QRectF> Signs;
};

}  // namespace quillara
