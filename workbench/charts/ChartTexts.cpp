#include "workbench/charts/ChartTexts.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QRegularExpression>
#include <QTextLayout>
#include <QTransform>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

constexpr QChar LeftToRight = QChar(0x200E);
constexpr QChar IsolateBegin = QChar(0x2068);
constexpr QChar BreakHere = QChar(0x200B);
constexpr QChar IsolateEnd = QChar(0x2069);
constexpr double Touch = 0.5;  // pixels by which two boxes may share ground

double LeftOf(Qt::Alignment alignment, double width) {
    if (alignment & Qt::AlignRight) {
        return -width;
    }
    return alignment & Qt::AlignHCenter ? -width / 2 : 0.0;
}

double TopOf(Qt::Alignment alignment, double height) {
    if (alignment & Qt::AlignBottom) {
        return -height;
    }
    return alignment & Qt::AlignVCenter ? -height / 2 : 0.0;
}

/// Where the corners of a box lie along a direction.
struct Stretch {
    double Low = std::numeric_limits<double>::infinity();
    double High = -std::numeric_limits<double>::infinity();
};

Stretch StretchAlong(const QPolygonF& corners, QPointF direction) {
    Stretch stretch;
    for (const QPointF& corner : corners) {
        const double at = QPointF::dotProduct(corner, direction);
        stretch.Low = std::min(stretch.Low, at);
        stretch.High = std::max(stretch.High, at);
    }
    return stretch;
}

QPointF DirectionOf(double angle) {
    const double radians = angle * std::acos(-1.0) / 180.0;
    return {std::cos(radians), std::sin(radians)};
}

}  // namespace

QPolygonF PlacedText::Outline() const {
    const QTransform turn = QTransform().translate(Pivot.x(), Pivot.y()).rotate(Angle);
    QPolygonF corners;
    for (const QPointF& corner : {Box.topLeft(), Box.topRight(), Box.bottomRight(), Box.bottomLeft()}) {
        corners << turn.map(corner);
    }
    return corners;
}

QString Shown(const std::string& text) {
    return QString::fromStdString(ShownLine(text));
}

QString Isolated(const QString& name) {
    const bool turns = std::ranges::any_of(name, [](QChar character) {
        return character.direction() == QChar::DirR || character.direction() == QChar::DirAL;
    });
    return turns ? QString(LeftToRight) + IsolateBegin + name + IsolateEnd : name;
}

double WidthOf(const QString& text, const TextStyle& style) {
    return QFontMetricsF(style.Font).horizontalAdvance(text);
}

double LineHeight(const TextStyle& style) {
    return QFontMetricsF(style.Font).height();
}

PlacedText TextAt(QPointF pivot, Qt::Alignment alignment, const QString& text, const TextStyle& style) {
    const QFontMetricsF metrics(style.Font);
    const double width = metrics.horizontalAdvance(text);
    const double height = metrics.height();
    const QRectF box(LeftOf(alignment, width), TopOf(alignment, height), width, height);
    return {.Text = text, .Whole = {}, .Pivot = pivot, .Box = box, .Style = style, .Ground = {}};
}

PlacedText TurnedText(PlacedText text, double angle) {
    text.Angle = angle;
    return text;
}

PlacedText ElidedText(QPointF pivot, Qt::Alignment alignment, const QString& text, const TextStyle& style, double width,
                      Qt::TextElideMode cut) {
    const QString shown = QFontMetricsF(style.Font).elidedText(text, cut, width + Touch);
    PlacedText placed = TextAt(pivot, alignment, shown, style);
    if (shown != text) {
        placed.Whole = text;
    }
    return placed;
}

QStringList WrappedLines(const QString& text, const TextStyle& style, double width) {
    QTextLayout layout(text, style.Font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(width, 1.0));
        lines << text.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}

QStringList WholeWordLines(const QString& text, const TextStyle& style, double width) {
    static const QRegularExpression interval(QStringLiteral("(<=?x<=?)"));
    static const QRegularExpression gaps(QStringLiteral("[ \\x{200B}]"));
    QString breakable = text;
    breakable.replace(interval, QString(BreakHere) + QStringLiteral("\\1") + BreakHere);
    for (const QString& word : breakable.split(gaps)) {
        if (WidthOf(word, style) > width) {
            return {};
        }
    }
    return WrappedLines(breakable, style, width).replaceInStrings(QString(BreakHere), QString());
}

void DrawText(QPainter& painter, const PlacedText& text) {
    painter.save();
    painter.setFont(text.Style.Font);
    painter.setPen(text.Style.Color);
    painter.translate(text.Pivot);
    painter.rotate(text.Angle);
    if (text.Ground.isValid()) {
        painter.fillRect(text.Box, text.Ground);
    }
    painter.drawText(text.Box.topLeft() + QPointF(0.0, QFontMetricsF(text.Style.Font).ascent()), text.Text);
    painter.restore();
}

bool Overlap(const PlacedText& one, const PlacedText& other) {
    const QPolygonF first = one.Outline();
    const QPolygonF second = other.Outline();
    const std::array<double, 4> angles = {one.Angle, one.Angle + 90.0, other.Angle, other.Angle + 90.0};
    return std::ranges::all_of(angles, [&](double angle) {
        const Stretch a = StretchAlong(first, DirectionOf(angle));
        const Stretch b = StretchAlong(second, DirectionOf(angle));
        return a.Low + Touch < b.High && b.Low + Touch < a.High;
    });
}

}  // namespace quillara
