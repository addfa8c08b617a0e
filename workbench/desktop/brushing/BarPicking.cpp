#include "workbench/desktop/brushing/BarPicking.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QToolTip>

#include "workbench/desktop/brushing/BrushingBar.h"
#include "workbench/desktop/results/ChartCanvas.h"
#include "workbench/desktop/results/ChartResultView.h"
#include "workbench/hosting/AnalysisServices.h"

namespace quillara {
namespace {

constexpr double LeastPointedAt = 12.0;  // pixels that a low bar can be pointed at
constexpr int DrillDownOption = 0;
constexpr int DrillUpOption = 1;

/// Whether a key means something to whoever has the focus.
bool IsForWidget(const QWidget& widget, int key) {
    const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
    return (isReturn && qobject_cast<const QAbstractButton*>(&widget) != nullptr) ||
           qobject_cast<const QAbstractItemView*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr || qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QTextEdit*>(&widget) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(&widget) != nullptr;
}

BrushingBar* BarAbove(ChartResultView& view) {
    auto* bar = view.findChild<BrushingBar*>();
    if (bar == nullptr) {
        bar = new BrushingBar(&view);
        view.PutAbove(bar);
    }
    return bar;
}

}  // namespace

BarPicking::BarPicking(BrushingRun& run, ChartResultView& view, const QString& stepUp, bool isAnalysisToStepUp)
    : Picked(run),
      Canvas(&view.Canvas()),
      Options(BarAbove(view)),
      Choices(run.Regions),
      IsAnalysisToStepUp(isAnalysisToStepUp) {
    Options->Offer(run.Options, stepUp);
    Options->show();
    connect(Options, &BrushingBar::optionTaken, this, &BarPicking::Take);
    connect(Options, &BrushingBar::left, this, &BarPicking::Leave);
    connect(Canvas, &QObject::destroyed, this, &BarPicking::Leave);
    Canvas->SetPicking(true);
    QApplication::instance()->installEventFilter(this);  // keys may come from wherever the focus is
    Canvas->setFocus();
}

BarPicking::~BarPicking() {
    if (Canvas != nullptr) {
        Canvas->SetPicking(false);
        Canvas->unsetCursor();
    }
    QToolTip::hideText();
}

bool BarPicking::Run() {
    ShowLit();
    Loop.exec();
    return IsPicked;
}

void BarPicking::Leave() {
    End(false);
}

void BarPicking::End(bool isPicked) {
    IsPicked = isPicked;
    Loop.quit();
}

/// An option beyond the first is about no bar. Before the first step of the list of steps has been selected, as when
/// bars alone have taken them, the analysis goes by none and would undo none.
void BarPicking::Take(int option) {
    if (option == DrillUpOption && !IsAnalysisToStepUp) {
        LeftForStepUp = true;
        return Leave();
    }
    if (option == DrillDownOption && !Choices.Lit()) {
        return;
    }
    Picked.Choice = option;
    Picked.Regions.setSelected(option == DrillDownOption ? *Choices.Lit() : -1);
    End(true);
}

std::optional<int> BarPicking::BarAt(QPointF pixel) const {
    const QPointF place = Canvas->UnitsAt(pixel);
    const double least = Canvas->UnitsAt(QPointF(0.0, 0.0)).y() - Canvas->UnitsAt(QPointF(0.0, LeastPointedAt)).y();
    return Choices.At(place.x(), place.y(), least);
}

void BarPicking::Point(QPointF pixel) {
    const std::optional<int> bar = BarAt(pixel);
    Canvas->setCursor(bar ? Qt::PointingHandCursor : Qt::ArrowCursor);
    if (!bar) {
        return QToolTip::hideText();
    }
    Choices.Light(*bar);
    ShowLit();
    const QString tip = QString::fromStdString(Choices.Region(*bar).Tip);
    QToolTip::showText(Canvas->mapToGlobal(pixel.toPoint()), tip.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")),
                       Canvas);
}

void BarPicking::Click(QPointF pixel) {
    if (const std::optional<int> bar = BarAt(pixel)) {
        Choices.Light(*bar);
        Take(DrillDownOption);
    }
}

void BarPicking::ShowLit() {
    if (Canvas == nullptr || Options == nullptr) {
        return;
    }
    const std::optional<int> bar = Choices.Lit();
    QPolygonF outline;
    if (bar) {
        const BrushRegion& region = Choices.Region(*bar);
        outline = QPolygonF(Canvas->PixelsOf(region.Left, region.Bottom, region.Right, region.Top));
    }
    Canvas->Light(outline);
    Options->Tell(QString::fromStdString(Choices.Line()));
}

bool BarPicking::Press(int key) {
    switch (key) {
        case Qt::Key_Left:
        case Qt::Key_Down:
            Choices.Move(-1);
            break;
        case Qt::Key_Right:
        case Qt::Key_Up:
            Choices.Move(1);
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Take(DrillDownOption);
            return true;
        case Qt::Key_U:
            if (Picked.Options.size() > DrillUpOption) {
                Take(DrillUpOption);
            }
            return true;
        case Qt::Key_Escape:
            Leave();
            return true;
        default:
            return false;
    }
    ShowLit();
    return true;
}

/// Keys go to the bars from anywhere in the window but from what needs them itself.
bool BarPicking::IsForBars(const QObject* watched, const QKeyEvent& key) const {
    const auto* widget = qobject_cast<const QWidget*>(watched);
    return widget != nullptr && Canvas != nullptr && widget == QApplication::focusWidget() &&
           widget->window() == Canvas->window() && QApplication::activePopupWidget() == nullptr &&
           (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier && !IsForWidget(*widget, key.key());
}

bool BarPicking::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        return (watched == Canvas || IsForBars(watched, key)) && Press(key.key());
    }
    if (watched != Canvas) {
        return false;
    }
    switch (event->type()) {
        case QEvent::MouseMove:
            Point(static_cast<QMouseEvent*>(event)->position());
            break;
        case QEvent::MouseButtonRelease:
            if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
                Click(static_cast<QMouseEvent*>(event)->position());
            }
            break;
        case QEvent::Resize:
            QMetaObject::invokeMethod(this, &BarPicking::ShowLit, Qt::QueuedConnection);
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace quillara
