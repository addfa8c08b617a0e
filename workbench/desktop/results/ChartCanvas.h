#pragma once

#include <qcustomplot.h>

#include <optional>

#include "workbench/charts/ChartPainter.h"
#include "workbench/exploration/ShownBars.h"

class QVariantAnimation;

namespace quillara {

class SpotLight;

/// A chart on the screen: it fills its widget, tells what lies under the pointer, can be looked at closer, and its bars
/// slide to their new heights when its numbers are others. The arrow keys go through its bars.
class ChartCanvas : public QCustomPlot {
    Q_OBJECT

  public:
    explicit ChartCanvas(QWidget* parent);

    /// Shows a graph in place of the one before; zoom and size stay, the zoom for the same variables only.
    void Show(const GraphDocument& graph);
    void SetMotion(bool hasMotion) { HasMotion = hasMotion; }
    /// While bars are picked the pointer draws no rectangle to zoom to, and the arrow keys are left to who picks.
    void SetPicking(bool isPicking);

    [[nodiscard]] bool IsZoomed() const;
    void ShowAll();
    /// Closer by a factor below 1, about the middle.
    void Zoom(double factor);

    /// Lights up a place of the picture; an empty outline: none.
    void Light(const QPolygonF& outline);
    /// What the arrow keys have come to.
    [[nodiscard]] const std::optional<ChartSpot>& Current() const { return Lit; }
    /// A place of the widget in units of the axes, and back.
    [[nodiscard]] QPointF UnitsAt(QPointF pixel) const;
    [[nodiscard]] QRectF PixelsOf(double left, double bottom, double right, double top) const;

  signals:
    /// Another part of the chart is shown.
    void zoomed();

  protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    void Build();
    void Rebuild();
    [[nodiscard]] ChartLook Look() const;
    void ZoomToRectangle(const QRect& rectangle);
    void ChangeZoom(bool hasChanged);
    void SlideFrom(const std::vector<ChartSpot>& before, const ShownBars& names);
    void Step(int by);
    void ShowTipOf(const ChartSpot& spot, QPoint place);

    GraphDocument Graph;  // what is painted, so that a change of size or colours needs nobody
    ShownBars Bars;
    SpotLight* Lamp;
    QVariantAnimation* Motion;
    std::optional<ChartSpot> Lit;
    double TextSize = 0.0;
    bool HasMotion = true;
    bool IsPicking = false;
};

}  // namespace quillara
