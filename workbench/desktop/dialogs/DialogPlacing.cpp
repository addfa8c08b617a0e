#include "workbench/desktop/dialogs/DialogPlacing.h"

#include <QAbstractButton>
#include <QFontMetricsF>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <cmath>

#include "workbench/desktop/dialogs/ControlWidgets.h"
#include "workbench/windows/DialogPlaces.h"

namespace quillara {
namespace {

constexpr int LettersOfNumber = 9;  // that a field of numbers has room for
constexpr int ShortestThatGrows = 12;  // in dialog units
constexpr int SmallestIcon = 16;  // in pixels
constexpr double TitleHeight = 1.6;  // of a group, in lines
constexpr const char* Letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

/// A quarter of the mean width of a letter, an eighth of the height of a line.
struct DialogUnits {
    double Across;
    double Down;
};

DialogUnits UnitsOf(const QWidget& widget) {
    const QFontMetricsF metrics(widget.font());
    const QString letters = QString::fromLatin1(Letters);
    return {metrics.horizontalAdvance(letters) / static_cast<double>(letters.size()) / 4, metrics.height() / 8};
}

int ButtonWidth(const QAbstractButton& button) {
    const QFontMetrics& metrics = button.fontMetrics();
    const int text = metrics.size(Qt::TextShowMnemonic, button.text()).width();
    const int gap = button.icon().isNull() || text == 0 ? 0 : 4;
    const int icon = button.icon().isNull() ? 0 : button.iconSize().width();
    return text + gap + icon + 2 * metrics.averageCharWidth() + 8;
}

/// All tabs are seen, and the largest page.
QSize TabsSize(const QTabWidget& tabs) {
    return tabs.minimumSizeHint().expandedTo(tabs.tabBar()->sizeHint() + QSize(4, 0));
}

int LeastWidth(const ControlResource& control, const QWidget& widget) {
    switch (control.Kind) {
        case ControlKind::Button:
        case ControlKind::DefaultButton:
            return ButtonWidth(static_cast<const QAbstractButton&>(widget));
        case ControlKind::RadioButton:
            return widget.sizeHint().width();
        case ControlKind::CheckBox:
            return IsWrapped(control) ? 0 : widget.sizeHint().width();
        case ControlKind::GroupBox:
            return widget.fontMetrics()
                       .size(Qt::TextShowMnemonic, static_cast<const QGroupBox&>(widget).title())
                       .width() +
                   4 * widget.fontMetrics().averageCharWidth();
        case ControlKind::Static:
            return ShowsResult(control) ? 0 : widget.sizeHint().width();
        case ControlKind::IntegerField:
            return widget.minimumSizeHint().width();
        case ControlKind::RealField:
            return widget.fontMetrics().averageCharWidth() * LettersOfNumber;
        case ControlKind::TabControl:
            return TabsSize(static_cast<const QTabWidget&>(widget)).width();
        default:
            return 0;
    }
}

/// Breaks a caption at blanks so that no line is wider; a check box does that by itself no more than a button does.
QString Wrapped(const QString& text, const QFontMetrics& metrics, int width) {
    QString wrapped;
    QString line;
    for (const QString& word : text.split(u' ')) {
        const QString longer = line.isEmpty() ? word : line + u' ' + word;
        if (!line.isEmpty() && metrics.size(Qt::TextShowMnemonic, longer).width() > width) {
            wrapped += line + u'\n';
            line = word;
        } else {
            line = longer;
        }
    }
    return wrapped + line;
}

void WrapCaption(const ControlResource& control, QAbstractButton& box, int width) {
    const QStyle& style = *box.style();
    const int beside =
        style.pixelMetric(QStyle::PM_IndicatorWidth) + style.pixelMetric(QStyle::PM_CheckBoxLabelSpacing) + 6;
    box.setText(Wrapped(CaptionText(control), box.fontMetrics(), width - beside));
}

int LeastHeight(const ControlResource& control, QWidget& widget, int width) {
    switch (control.Kind) {
        case ControlKind::GroupBox:
            return 0;
        case ControlKind::HelpText:
            return static_cast<const QLabel&>(widget).heightForWidth(width);
        case ControlKind::ListBox:
        case ControlKind::ReportList:
        case ControlKind::MultiLineEdit:
            return 3 * widget.fontMetrics().lineSpacing();
        case ControlKind::TabControl:
            return TabsSize(static_cast<const QTabWidget&>(widget)).height();
        default:
            return widget.sizeHint().height();
    }
}

bool CanBeHigher(ControlKind kind) {
    return kind == ControlKind::ListBox || kind == ControlKind::ReportList || kind == ControlKind::MultiLineEdit ||
           kind == ControlKind::TabControl;
}

std::vector<double> PlacesAcross(const DialogResource& resource, const std::vector<PlacedWidget>& widgets, double scale,
                                 int room) {
    std::vector<ControlExtent> extents;
    for (const auto& [control, widget] : widgets) {
        const auto least = static_cast<double>(LeastWidth(*control, *widget));
        extents.push_back({control->Place.X, control->Place.X + control->Place.Width, least});
    }
    std::vector<double> places = PlacesAlong(extents, resource.Width, scale);
    SpreadOver(places, room);
    return places;
}

double At(const std::vector<double>& places, int unit) {
    return std::round(places[static_cast<std::size_t>(unit)]);
}

bool IsLine(ControlKind kind) {
    return kind == ControlKind::Static || kind == ControlKind::RadioButton || kind == ControlKind::CheckBox;
}

bool IsField(ControlKind kind) {
    return kind == ControlKind::IntegerField || kind == ControlKind::RealField || kind == ControlKind::Button;
}

/// Where a control ends: a caption as what it stands beside, so that their texts are on one line; a line of help before
/// the next one, which may begin within it.
int BottomOf(const DialogResource& resource, const ControlResource& control) {
    const int top = control.Place.Y;
    int bottom = top + control.Place.Height;
    for (const ControlResource& other : resource.Controls) {
        if (IsLine(control.Kind) && IsField(other.Kind) && other.Place.Y == top) {
            bottom = std::max<int>(bottom, top + other.Place.Height);
        } else if (control.Kind == ControlKind::HelpText && other.Kind == control.Kind && other.Place.Y > top) {
            bottom = std::min<int>(bottom, other.Place.Y);
        }
    }
    return bottom;
}

/// Behind the title of a group stands a gap, before the first control in it.
void AddTitle(const PlacedWidget& group, const std::vector<PlacedWidget>& widgets,
              std::vector<ControlExtent>& extents) {
    const DialogRectangle& frame = group.Control->Place;
    int first = frame.Y + frame.Height;
    for (const PlacedWidget& each : widgets) {
        const DialogRectangle& place = each.Control->Place;
        const bool isInside = place.X >= frame.X && place.X < frame.X + frame.Width && place.Y > frame.Y;
        first = isInside ? std::min<int>(first, place.Y) : first;
    }
    extents.push_back({frame.Y, first, group.Widget->fontMetrics().height() * TitleHeight});
}

std::vector<double> PlacesDown(const DialogResource& resource, const std::vector<PlacedWidget>& widgets, double scale,
                               int room, const std::vector<double>& across) {
    std::vector<ControlExtent> extents;
    for (const auto& [control, widget] : widgets) {
        const DialogRectangle& place = control->Place;
        const int width = static_cast<int>(At(across, place.X + place.Width) - At(across, place.X));
        if (IsWrapped(*control)) {
            WrapCaption(*control, static_cast<QAbstractButton&>(*widget), width);
        }
        const auto least = static_cast<double>(LeastHeight(*control, *widget, width));
        extents.push_back({place.Y, BottomOf(resource, *control), least, CanBeHigher(control->Kind)});
        if (control->Kind == ControlKind::GroupBox) {
            AddTitle({control, widget}, widgets, extents);
        }
    }
    std::vector<double> places = PlacesAlong(extents, resource.Height, scale);
    GrowInto(places, extents, room, ShortestThatGrows);
    return places;
}

}  // namespace

QSize PlaceWidgets(const DialogResource& resource, const std::vector<PlacedWidget>& widgets, QWidget& page,
                   const QSize& room) {
    for (const PlacedWidget& each : widgets) {
        if (auto* button = qobject_cast<QPushButton*>(each.Widget)) {
            const int side = std::max(SmallestIcon, button->fontMetrics().height());
            button->setIconSize({side, side});
        }
    }
    const DialogUnits units = UnitsOf(page);
    const std::vector<double> across = PlacesAcross(resource, widgets, units.Across, room.width());
    const std::vector<double> down = PlacesDown(resource, widgets, units.Down, room.height(), across);
    for (const auto& [control, widget] : widgets) {
        const DialogRectangle& place = control->Place;
        const QPointF begin(At(across, place.X), At(down, place.Y));
        const QPointF end(At(across, place.X + place.Width), At(down, BottomOf(resource, *control)));
        widget->setGeometry(QRectF(begin, end).toRect());
    }
    return QSizeF(At(across, resource.Width), At(down, resource.Height)).toSize();
}

}  // namespace quillara
