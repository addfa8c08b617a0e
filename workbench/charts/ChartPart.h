#pragma once

#include <qcustomplot.h>

#include <vector>

#include "workbench/charts/ChartStyle.h"
#include "workbench/charts/ChartTexts.h"

namespace quillara {

/// A face in the picture that stands for data.
struct ChartMark {
    QPolygonF Outline;  ///< pixels
    QColor Fill;  ///< invalid: nothing is painted, the mark only bears its tip
    QColor Edge;  ///< invalid: no edge
    bool IsMissing = false;  ///< hatched, in place of `Fill`
    QString Tip;
    int Series = -1;
    int Point = -1;
};

/// What every element of a chart tells of itself once it is laid out. Texts of all parts are drawn last, above
/// everything else.
class ChartPart {
  public:
    virtual ~ChartPart() = default;
    [[nodiscard]] const std::vector<PlacedText>& Texts() const { return PlacedTexts; }
    [[nodiscard]] const std::vector<ChartMark>& Marks() const { return PlacedMarks; }

  protected:
    std::vector<PlacedText> PlacedTexts;
    std::vector<ChartMark> PlacedMarks;  ///< from the back to the front
};

/// An element that fills its place in the picture by itself.
class ChartElement : public QCPLayoutElement, public ChartPart {
  public:
    ChartElement(QCustomPlot* plot, ChartStyle style);
    void update(UpdatePhase phase) override;

  protected:
    /// Fills the texts and marks, which are empty, for a place in pixels.
    virtual void Arrange(const QRectF& place) = 0;
    void draw(QCPPainter* painter) override;

    const ChartStyle Style;
};

[[nodiscard]] QPolygonF RectangleOutline(const QRectF& rectangle);
void DrawMarks(QPainter& painter, const std::vector<ChartMark>& marks, const ChartStyle& style);

}  // namespace quillara
