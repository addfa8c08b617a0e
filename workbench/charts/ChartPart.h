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
    int Categories = 1;  ///< that share it
};

/// Where a face comes from while it slides to its place.
struct FaceStart {
    int Series = -1;
    int Point = -1;
    QPolygonF Outline;  ///< pixels
};

/// What every element of a chart tells of itself once it is laid out. Texts of all parts are drawn last, above
/// everything else.
class ChartPart {
  public:
    virtual ~ChartPart() = default;
    [[nodiscard]] const std::vector<PlacedText>& Texts() const { return PlacedTexts; }
    [[nodiscard]] const std::vector<ChartMark>& Marks() const { return PlacedMarks; }
    /// From now on faces are painted on the way from their starts, 0, to their places, 1; one without a start grows up
    /// from its lower edge.
    void Slide(std::vector<FaceStart> starts, double share);
    void SlideOn(double share) { SlideShare = share; }

  protected:
    /// The marks as they are painted now.
    [[nodiscard]] std::vector<ChartMark> SlidMarks() const;
    [[nodiscard]] bool IsSliding() const { return SlideShare < 1.0; }

    std::vector<PlacedText> PlacedTexts;
    std::vector<ChartMark> PlacedMarks;  ///< from the back to the front

  private:
    std::vector<FaceStart> Starts;
    double SlideShare = 1.0;
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
