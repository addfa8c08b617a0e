#pragma once

#include "workbench/charts/AxisLabels.h"
#include "workbench/charts/ChartPart.h"
#include "workbench/charts/ChartZoom.h"
#include "workbench/charts/NumberAxis.h"

namespace quillara {

/// One axis of an area.
struct AreaAxis {
    QString Caption;  ///< may be empty
    NumberRange Range;
    std::vector<AxisMark> Labels;
    bool HasRoundNumbers = false;  ///< in place of the labels: round values of the range that is shown
    bool HasGrid = true;  ///< lines across the area, of the left axis only
    ValueKind Kind = ValueKind::Number;  ///< of the round values
    double Unit = 1.0;  ///< what 1 on the axis stands for in round values: a power of two, for numbers beyond a plot's
    std::vector<AxisMark> Notes{};  ///< of the bottom axis: short texts between the axis and the labels
    std::vector<AxisMark> ShortNotes{};  ///< the same for less room
    bool IsTitled = false;  ///< the title says what the caption does: low areas go without it
};

/// A plot area with an axis below and one on the left, whose labels find their own place. Labels outside the range
/// that is shown are left out.
class ChartArea : public QCPAxisRect, public ChartPart, public ZoomablePart {
  public:
    ChartArea(QCustomPlot* plot, ChartStyle style, AreaAxis bottom, AreaAxis left);
    void update(UpdatePhase phase) override;
    /// Along the bottom axis; none unless there are many labels.
    [[nodiscard]] bool CanZoom() const override;
    [[nodiscard]] std::vector<NumberRange> Zoom() const override;
    void SetZoom(const std::vector<NumberRange>& ranges) override;
    bool ZoomTo(const QRectF& pixels) override;
    bool ZoomAbout(QPointF point, double factor) override;
    [[nodiscard]] QCPAxis* Bottom() const { return axis(QCPAxis::atBottom); }
    [[nodiscard]] QCPAxis* Left() const { return axis(QCPAxis::atLeft); }

  protected:
    /// A line below the caption of the bottom axis, for an area of so many pixels; empty: none.
    [[nodiscard]] virtual QString Note(double /*pixels*/) const { return {}; }
    /// Adds marks and texts inside the area; called whenever the place or a range has changed.
    virtual void ArrangeMarks() {}
    void draw(QCPPainter* painter) override;

    /// The rectangle between two numbers of each axis, in pixels.
    [[nodiscard]] QRectF PixelsOf(double left, double bottom, double right, double top) const;
    [[nodiscard]] QPointF PixelOf(double x, double y) const;
    /// How wide the whole bottom axis is at the present zoom, in pixels.
    [[nodiscard]] double WholeWidth() const;
    /// Puts a text into the middle of the area, as of a chart with nothing to show.
    void SayInTheMiddle(const QString& text);

    const ChartStyle Style;

  private:
    bool ShowRange(double low, double high);
    [[nodiscard]] std::vector<AxisSpot> SpotsOf(const AreaAxis& axis, const QCPAxis& scale, double room) const;
    [[nodiscard]] AxisLabels ArrangedNotes(const QRectF& outer) const;
    void Arrange();
    void PlaceLeft(const QRectF& outer, const AxisLabels& labels, const QStringList& caption);
    void PlaceTextsBelow(const AxisLabels& labels, double y);
    void PlaceBelow(const QRectF& outer, const AxisLabels& labels, const QStringList& caption);
    void PlaceNote(const QRectF& outer, const QStringList& lines);

    AreaAxis BottomAxis;
    AreaAxis LeftAxis;
    double NotesDepth = 0.0;  ///< pixels that the notes take
    std::vector<double> BottomTicks;  ///< pixels
    std::vector<double> LeftTicks;
};

}  // namespace quillara
