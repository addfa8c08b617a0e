#include "workbench/charts/ChartArea.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillara {
namespace {

constexpr double TickLength = 4.0;
constexpr double LabelGap = 6.0;  // between the axis and the labels on the left
constexpr double CaptionGap = 4.0;
constexpr double RightRoom = 10.0;
constexpr double LeftShare = 0.35;  // of the width, for labels
constexpr double NarrowLeftShare = 0.55;  // the same where that is less than a number needs
constexpr double NumberRoom = 90.0;  // pixels
constexpr double BelowShare = 0.38;  // of the height, for labels
constexpr double LowLines = 11.0;  // heights of a line: a lower area hasn't the room for what the title says too
constexpr double NoteShare = 0.2;  // of the height, for notes below
constexpr double LeastNoteSize = 7.0;
constexpr double CaptionShare = 0.55;  // of the height, for the caption on the left
constexpr double NumberDistance = 45.0;  // pixels between round numbers, at least
constexpr double Outside = 1e-6;  // of a range, for labels on its bounds
constexpr std::size_t LeastForZoom = 10;  // labels
constexpr double LeastShown = 1.0;  // of the bottom axis: about one category

void SetUpAxis(QCPAxis* axis, const NumberRange& range, const ChartStyle& style) {
    axis->setTicks(false);
    axis->setTickLabels(false);
    axis->grid()->setVisible(false);
    axis->setBasePen(QPen(style.Frame, 1.0));
    axis->setRange(range.Low, range.High);
}

QStringList CaptionLines(const QString& caption, const TextStyle& style, double width) {
    return caption.isEmpty() ? QStringList() : WrappedLines(caption, style, width);
}

double CaptionRoom(const QStringList& lines, const TextStyle& style) {
    return lines.isEmpty() ? 0.0 : static_cast<double>(lines.size()) * LineHeight(style) + CaptionGap;
}

double LeftRoom(double width) {
    return std::max(width * LeftShare, std::min(width * NarrowLeftShare, NumberRoom));
}

/// Low labels on the left and high ones below must not meet at the corner.
double GapBelow(const TextStyle& style) {
    return LineHeight(style) / 2 + 2.0;
}

int Pixels(double length) {
    return static_cast<int>(std::ceil(length));
}

/// The marks within the range that is shown.
std::vector<AxisSpot> ShownSpots(const std::vector<AxisMark>& marks, const QCPAxis& scale) {
    const QCPRange range = scale.range();
    const double slack = range.size() * Outside;
    std::vector<AxisSpot> spots;
    for (const AxisMark& mark : marks) {
        if (range.lower - slack <= mark.At && mark.At <= range.upper + slack) {
            spots.push_back({scale.coordToPixel(mark.At), mark.Text, mark.IsKept, mark.Extent});
        }
    }
    return spots;
}

/// A centre for a text that lies between two bounds as long as the text has room there.
double CentreInside(double centre, double length, double low, double high) {
    return high - low < length ? (low + high) / 2 : std::clamp(centre, low + length / 2, high - length / 2);
}

}  // namespace

ChartArea::ChartArea(QCustomPlot* plot, ChartStyle style, AreaAxis bottom, AreaAxis left)
    : QCPAxisRect(plot, false), Style(style), BottomAxis(std::move(bottom)), LeftAxis(std::move(left)) {
    setAutoMargins(QCP::msNone);
    addAxes(QCPAxis::atBottom | QCPAxis::atLeft);
    SetUpAxis(Bottom(), BottomAxis.Range, Style);
    SetUpAxis(Left(), LeftAxis.Range, Style);
}

void ChartArea::update(UpdatePhase phase) {
    if (phase == upLayout) {
        PlacedTexts.clear();
        PlacedMarks.clear();
        Arrange();
        ArrangeMarks();
    }
    QCPAxisRect::update(phase);
}

std::vector<AxisSpot> ChartArea::SpotsOf(const AreaAxis& axis, const QCPAxis& scale, double room) const {
    const int most = std::clamp(static_cast<int>(room / NumberDistance), 2, 11);
    if (!axis.HasRoundNumbers) {
        return ShownSpots(axis.Labels, scale);
    }
    const QCPRange range = scale.range();
    std::vector<AxisMark> marks = RoundValues(range.lower * axis.Unit, range.upper * axis.Unit, most, axis.Kind);
    std::ranges::for_each(marks, [&](AxisMark& mark) { mark.At /= axis.Unit; });
    return ShownSpots(marks, scale);
}

AxisLabels ChartArea::ArrangedNotes(const QRectF& outer) const {
    const LabelRoom room{outer.left(), outer.right(), outer.height() * NoteShare};
    AxisLabels labels;
    for (const std::vector<AxisMark>* notes : {&BottomAxis.Notes, &BottomAxis.ShortNotes}) {
        for (double size = Style.TextSize; size >= LeastNoteSize; size -= 1.0) {
            TextStyle style = Style.TextOfSize(size);
            style.Color = Style.FaintInk;
            labels = LabelsBelow(ShownSpots(*notes, *Bottom()), room, style);
            if (labels.Depth <= LineHeight(style) * 1.5 && labels.Texts.size() == notes->size()) {
                return labels;
            }
        }
    }
    return labels;
}

void ChartArea::Arrange() {
    const QRectF outer(outerRect());
    const TextStyle text = Style.Text();
    const int top = Pixels(LineHeight(text) / 2);
    setMargins(QMargins(0, top, 0, Pixels(outer.height() * BelowShare)));
    const LabelRoom leftRoom{outer.top(), outer.bottom(), LeftRoom(outer.width())};
    const QStringList leftCaption = CaptionLines(LeftAxis.Caption, text, outer.height() * CaptionShare);
    const AxisLabels widths = LabelsBeside(SpotsOf(LeftAxis, *Left(), outer.height()), leftRoom, text);
    const int left = Pixels(widths.Depth + LabelGap + CaptionRoom(leftCaption, text));

    setMargins(QMargins(left, top, Pixels(RightRoom), 0));
    const bool hasCaption = !BottomAxis.IsTitled || outer.height() >= LowLines * LineHeight(text);
    const QStringList belowCaption = hasCaption ? CaptionLines(BottomAxis.Caption, text, outer.width()) : QStringList();
    const double saved = hasCaption ? 0.0 : LineHeight(text) + CaptionGap;
    const LabelRoom belowRoom{outer.left(), outer.right(), outer.height() * BelowShare + saved};
    const AxisLabels below = LabelsBelow(SpotsOf(BottomAxis, *Bottom(), rect().width()), belowRoom, text);
    const QStringList note = CaptionLines(Note(rect().width()), text, outer.width());
    const AxisLabels notes = ArrangedNotes(outer);
    NotesDepth = notes.Depth;
    const int bottom = Pixels(GapBelow(text) + NotesDepth + below.Depth + CaptionRoom(belowCaption + note, text));

    setMargins(QMargins(left, top, Pixels(RightRoom), bottom));
    PlaceTextsBelow(notes, rect().bottom() + 1 + GapBelow(text));
    PlaceBelow(outer, below, belowCaption);
    PlaceNote(outer, note);
    PlaceLeft(outer, LabelsBeside(SpotsOf(LeftAxis, *Left(), rect().height()), leftRoom, text), leftCaption);
}

void ChartArea::PlaceLeft(const QRectF& outer, const AxisLabels& labels, const QStringList& caption) {
    const TextStyle style = Style.Text();
    const double height = LineHeight(style);
    for (PlacedText text : labels.Texts) {
        text.Pivot += QPointF(rect().left() - LabelGap, 0.0);
        PlacedTexts.push_back(text);
    }
    for (int i = 0; i < caption.size(); ++i) {
        const double y = CentreInside(rect().center().y(), WidthOf(caption[i], style), outer.top(), outer.bottom());
        const QPointF pivot(outer.left() + i * height, y);
        PlacedTexts.push_back(TurnedText(TextAt(pivot, Qt::AlignHCenter | Qt::AlignTop, caption[i], style), -90.0));
    }
    LeftTicks = labels.Ticks;
}

void ChartArea::PlaceTextsBelow(const AxisLabels& labels, double y) {
    for (PlacedText text : labels.Texts) {
        text.Pivot += QPointF(0.0, y);
        PlacedTexts.push_back(text);
    }
}

void ChartArea::PlaceBelow(const QRectF& outer, const AxisLabels& labels, const QStringList& caption) {
    const TextStyle style = Style.Text();
    const double y = rect().bottom() + 1 + GapBelow(style) + NotesDepth;
    PlaceTextsBelow(labels, y);
    for (int i = 0; i < caption.size(); ++i) {
        const double x = CentreInside(rect().center().x(), WidthOf(caption[i], style), outer.left(), outer.right());
        const QPointF pivot(x, y + labels.Depth + CaptionGap + i * LineHeight(style));
        PlacedTexts.push_back(TextAt(pivot, Qt::AlignHCenter | Qt::AlignTop, caption[i], style));
    }
    BottomTicks = labels.Ticks;
}

void ChartArea::PlaceNote(const QRectF& outer, const QStringList& lines) {
    const TextStyle style = Style.FaintText();
    for (int i = 0; i < lines.size(); ++i) {
        const double above = static_cast<double>(lines.size() - i) * LineHeight(style);
        PlacedTexts.push_back(
            TextAt({outer.center().x(), outer.bottom() - above}, Qt::AlignHCenter | Qt::AlignTop, lines[i], style));
    }
}

void ChartArea::draw(QCPPainter* painter) {
    const QRectF area(rect());
    painter->setRenderHint(QPainter::Antialiasing, false);
    for (const double y : LeftTicks) {
        if (LeftAxis.HasGrid) {
            painter->setPen(QPen(Style.Grid, 1.0));
            painter->drawLine(QLineF(area.left(), y, area.right(), y));
        }
        painter->setPen(QPen(Style.Frame, 1.0));
        painter->drawLine(QLineF(area.left() - TickLength, y, area.left(), y));
    }
    for (const double x : BottomTicks) {
        painter->drawLine(QLineF(x, area.bottom(), x, area.bottom() + TickLength));
    }
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setClipRect(area);
    DrawMarks(*painter, IsSliding() ? SlidMarks() : PlacedMarks, Style);
}

QRectF ChartArea::PixelsOf(double left, double bottom, double right, double top) const {
    return QRectF(PixelOf(left, top), PixelOf(right, bottom)).normalized();
}

QPointF ChartArea::PixelOf(double x, double y) const {
    return {Bottom()->coordToPixel(x), Left()->coordToPixel(y)};
}

double ChartArea::WholeWidth() const {
    const double shown = Bottom()->range().size();
    return shown > 0.0 ? rect().width() * (BottomAxis.Range.High - BottomAxis.Range.Low) / shown : rect().width();
}

bool ChartArea::CanZoom() const {
    return BottomAxis.Labels.size() >= LeastForZoom;
}

std::vector<NumberRange> ChartArea::Zoom() const {
    const QCPRange shown = Bottom()->range();
    const bool isWhole = shown.lower <= BottomAxis.Range.Low && shown.upper >= BottomAxis.Range.High;
    return isWhole ? std::vector<NumberRange>() : std::vector<NumberRange>{{shown.lower, shown.upper}};
}

/// A part of the whole axis; what reaches beyond it is moved inside.
bool ChartArea::ShowRange(double low, double high) {
    const NumberRange& whole = BottomAxis.Range;
    const double size = std::clamp(high - low, std::min(LeastShown, whole.High - whole.Low), whole.High - whole.Low);
    const double begin = std::clamp((low + high - size) / 2, whole.Low, whole.High - size);
    const QCPRange before = Bottom()->range();
    Bottom()->setRange(begin, begin + size);
    return Bottom()->range() != before;
}

void ChartArea::SetZoom(const std::vector<NumberRange>& ranges) {
    if (ranges.empty() || !CanZoom()) {
        ShowRange(BottomAxis.Range.Low, BottomAxis.Range.High);
    } else {
        ShowRange(ranges.front().Low, ranges.front().High);
    }
}

bool ChartArea::ZoomTo(const QRectF& pixels) {
    return CanZoom() && pixels.intersects(QRectF(rect())) &&
           ShowRange(Bottom()->pixelToCoord(pixels.left()), Bottom()->pixelToCoord(pixels.right()));
}

bool ChartArea::ZoomAbout(QPointF point, double factor) {
    if (!CanZoom() || !QRectF(outerRect()).contains(point)) {
        return false;
    }
    const QCPRange shown = Bottom()->range();
    const double at = std::clamp(Bottom()->pixelToCoord(point.x()), shown.lower, shown.upper);
    return ShowRange(at - (at - shown.lower) * factor, at + (shown.upper - at) * factor);
}

void ChartArea::SayInTheMiddle(const QString& text) {
    PlacedTexts.push_back(TextAt(QPointF(rect().center()), Qt::AlignCenter, text, Style.FaintText()));
}

}  // namespace quillara
