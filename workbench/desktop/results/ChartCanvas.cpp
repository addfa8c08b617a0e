#include "workbench/desktop/results/ChartCanvas.h"

#include <QToolTip>
#include <QVariantAnimation>
#include <algorithm>

#include "workbench/charts/ChartStyle.h"
#include "workbench/charts/ChartZoom.h"
#include "workbench/desktop/results/SpotLight.h"

namespace quillara {
namespace {

constexpr int SlideTime = 180;  // milliseconds
constexpr int LeastRectangle = 6;  // pixels; less is a click that shook
constexpr double Closer = 0.8;

/// The spots that stand for data, each once: low bars have a second one to be pointed at.
std::vector<ChartSpot> SpotsOfData(const QCustomPlot& plot) {
    std::vector<ChartSpot> spots;
    for (const ChartSpot& spot : ChartSpots(plot)) {
        const bool isKnown = std::ranges::any_of(
            spots, [&](const ChartSpot& other) { return other.Series == spot.Series && other.Point == spot.Point; });
        if (spot.Point >= 0 && !isKnown) {
            spots.push_back(spot);
        }
    }
    return spots;
}

bool AreAboutTheSame(const Subject& one, const Subject& other) {
    return std::ranges::equal(one.Variables, other.Variables, {}, &ShownVariable::Number, &ShownVariable::Number);
}

bool IsLarger(const QRectF& one, const QRectF& other) {
    return one.width() * one.height() > other.width() * other.height();
}

}  // namespace

ChartCanvas::ChartCanvas(QWidget* parent)
    : QCustomPlot(parent), Lamp(new SpotLight(this)), Motion(new QVariantAnimation(this)) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_NoMousePropagation, false);  // the context menu is the document's
    setMinimumSize(160, 120);
    connect(selectionRect(), &QCPSelectionRect::accepted, this, [this](const QRect& rect) { ZoomToRectangle(rect); });
    Motion->setStartValue(0.0);
    Motion->setEndValue(1.0);
    Motion->setDuration(SlideTime);
    Motion->setEasingCurve(QEasingCurve::OutCubic);
    connect(Motion, &QVariantAnimation::valueChanged, this, [this](const QVariant& share) {
        SlideTo(*this, share.toDouble());
        replot(QCustomPlot::rpQueuedReplot);
    });
}

ChartLook ChartCanvas::Look() const {
    ChartLook look;
    look.Width = std::max(width(), 1);
    look.Height = std::max(height(), 1);
    look.Dark = palette().color(QPalette::Window).lightness() < 128;
    return look;
}

void ChartCanvas::Show(const GraphDocument& graph) {
    const bool isFirst = plottableCount() == 0 && TextSize == 0.0;
    const bool slides = HasMotion && !isFirst && isVisible() &&
                        style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0;
    const std::vector<ChartSpot> before = slides ? ChartSpots(*this) : std::vector<ChartSpot>();
    const ShownBars names = std::exchange(Bars, ShownBars(graph));
    if (!AreAboutTheSame(Graph.About, graph.About)) {
        SetZoom(*this, {});
    }
    Graph = graph;
    Motion->stop();
    Light({});
    Build();
    if (slides) {
        SlideFrom(before, names);
    }
    replot();
    emit zoomed();
}

void ChartCanvas::Build() {
    const ChartRanges ranges = ZoomOf(*this);
    const ChartLook look = Look();
    TextSize = StyleOf(look).TextSize;
    BuildChart(*this, Graph, look);
    SetZoom(*this, ranges);
    setSelectionRectMode(CanZoom(*this) && !IsPicking ? QCP::srmCustom : QCP::srmNone);
}

void ChartCanvas::Rebuild() {
    Build();
    replot();
    emit zoomed();
}

/// Bars of the same category slide; those of a new one grow.
void ChartCanvas::SlideFrom(const std::vector<ChartSpot>& before, const ShownBars& names) {
    std::vector<ChartSpot> starts;
    for (const ChartSpot& spot : before) {
        const auto place = Bars.Find(names, {spot.Series, spot.Point});
        if (!place) {
            continue;
        }
        ChartSpot start = spot;
        std::tie(start.Series, start.Point) = *place;
        const auto same = std::ranges::find_if(
            starts, [&](const ChartSpot& other) { return other.Series == start.Series && other.Point == start.Point; });
        if (same == starts.end()) {
            starts.push_back(start);
        } else if (IsLarger(same->Outline.boundingRect(), start.Outline.boundingRect())) {
            *same = start;  // the bar itself, not the one behind it that is to be pointed at
        }
    }
    if (!starts.empty()) {
        BeginSlide(*this, starts);
        Motion->start();
    }
}

void ChartCanvas::SetPicking(bool isPicking) {
    IsPicking = isPicking;
    setSelectionRectMode(CanZoom(*this) && !IsPicking ? QCP::srmCustom : QCP::srmNone);
    Light({});
}

bool ChartCanvas::IsZoomed() const {
    return quillara::IsZoomed(*this);
}

void ChartCanvas::ShowAll() {
    SetZoom(*this, {});
    ChangeZoom(true);
}

void ChartCanvas::Zoom(double factor) {
    ChangeZoom(ZoomAbout(*this, QPointF(rect().center()), factor));
}

void ChartCanvas::ZoomToRectangle(const QRect& rectangle) {
    const QRect drawn = rectangle.normalized();
    if (std::max(drawn.width(), drawn.height()) >= LeastRectangle) {
        ChangeZoom(ZoomTo(*this, QRectF(drawn)));
    }
}

void ChartCanvas::ChangeZoom(bool hasChanged) {
    if (hasChanged) {
        Light({});
        replot();
        emit zoomed();
    }
}

void ChartCanvas::Light(const QPolygonF& outline) {
    if (outline.isEmpty()) {
        Lit.reset();
    }
    Lamp->Light(outline);
}

QPointF ChartCanvas::UnitsAt(QPointF pixel) const {
    const QCPAxisRect* area = axisRectCount() == 0 ? nullptr : axisRect(0);
    return area == nullptr ? QPointF(-1.0, -1.0)
                           : QPointF(area->axis(QCPAxis::atBottom)->pixelToCoord(pixel.x()),
                                     area->axis(QCPAxis::atLeft)->pixelToCoord(pixel.y()));
}

QRectF ChartCanvas::PixelsOf(double left, double bottom, double right, double top) const {
    const QCPAxisRect* area = axisRectCount() == 0 ? nullptr : axisRect(0);
    if (area == nullptr) {
        return {};
    }
    const QCPAxis* across = area->axis(QCPAxis::atBottom);
    const QCPAxis* up = area->axis(QCPAxis::atLeft);
    return QRectF(QPointF(across->coordToPixel(left), up->coordToPixel(top)),
                  QPointF(across->coordToPixel(right), up->coordToPixel(bottom)))
        .normalized();
}

void ChartCanvas::ShowTipOf(const ChartSpot& spot, QPoint place) {
    QToolTip::showText(mapToGlobal(place), spot.Tip.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")), this);
}

void ChartCanvas::mouseMoveEvent(QMouseEvent* event) {
    QCustomPlot::mouseMoveEvent(event);
    if (event->buttons() != Qt::NoButton || IsPicking) {
        return;
    }
    if (const std::optional<ChartSpot> spot = ChartSpotAt(*this, event->position())) {
        ShowTipOf(*spot, event->position().toPoint());
    } else {
        QToolTip::hideText();
    }
}

void ChartCanvas::mouseDoubleClickEvent(QMouseEvent* event) {
    QCustomPlot::mouseDoubleClickEvent(event);
    if (IsZoomed() && !IsPicking) {
        ShowAll();
    }
}

void ChartCanvas::wheelEvent(QWheelEvent* event) {
    const double turns = event->angleDelta().y() / 120.0;
    const bool hasChanged = turns != 0.0 && ZoomAbout(*this, event->position(), std::pow(Closer, turns));
    ChangeZoom(hasChanged);
    event->setAccepted(hasChanged);
}

void ChartCanvas::Step(int by) {
    const std::vector<ChartSpot> spots = SpotsOfData(*this);
    const auto count = static_cast<int>(spots.size());
    const auto found = std::ranges::find_if(
        spots, [this](const ChartSpot& spot) { return Lit && spot.Series == Lit->Series && spot.Point == Lit->Point; });
    if (count == 0) {
        return;
    }
    const bool isNew = found == spots.end();
    const int next = isNew ? (by > 0 ? 0 : count - 1) : (static_cast<int>(found - spots.begin()) + by + count) % count;
    const ChartSpot& spot = spots[static_cast<std::size_t>(next)];
    Light(spot.Outline);
    Lit = spot;
    setAccessibleDescription(spot.Tip);
    ShowTipOf(spot, spot.Outline.boundingRect().center().toPoint());
}

void ChartCanvas::keyPressEvent(QKeyEvent* event) {
    if (IsPicking) {
        return QCustomPlot::keyPressEvent(event);
    }
    switch (event->key()) {
        case Qt::Key_Right:
        case Qt::Key_Down:
            return Step(1);
        case Qt::Key_Left:
        case Qt::Key_Up:
            return Step(-1);
        case Qt::Key_Plus:
            return Zoom(Closer);
        case Qt::Key_Minus:
            return Zoom(1.0 / Closer);
        case Qt::Key_Escape:
            QToolTip::hideText();
            return Lit || !IsZoomed() ? Light({}) : ShowAll();
        default:
            QCustomPlot::keyPressEvent(event);
    }
}

/// Texts grow with the picture, which asks for a new one.
void ChartCanvas::resizeEvent(QResizeEvent* event) {
    QCustomPlot::resizeEvent(event);
    Light({});
    if (TextSize != 0.0 && StyleOf(Look()).TextSize != TextSize) {
        Rebuild();
    }
}

void ChartCanvas::changeEvent(QEvent* event) {
    QCustomPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && TextSize != 0.0) {
        Rebuild();
    }
}

void ChartCanvas::leaveEvent(QEvent* event) {
    QCustomPlot::leaveEvent(event);
    QToolTip::hideText();
}

}  // namespace quillara
