#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <string>
#include <vector>

class QPainter;

namespace quillara {

struct TextStyle {
    QFont Font;
    QColor Color;
};

/// A line of text at its place in a picture.
struct PlacedText {
    QString Text;  ///< as it is drawn
    QString Whole;  ///< the full text when `Text` has an ellipsis, else empty
    QPointF Pivot;  ///< pixels
    QRectF Box;  ///< of the text before it is turned, relative to the pivot
    double Angle = 0.0;  ///< degrees clockwise about the pivot
    TextStyle Style;
    QColor Ground{};  ///< painted behind the text; invalid: nothing

    /// The corners of the box as turned, in pixels of the picture.
    [[nodiscard]] QPolygonF Outline() const;
};

/// A text of the document for people: well-formed, on one line.
[[nodiscard]] QString Shown(const std::string& text);

/// A name as part of a longer text: one that is written from right to left doesn't turn what stands around it.
[[nodiscard]] QString Isolated(const QString& name);

[[nodiscard]] double WidthOf(const QString& text, const TextStyle& style);
[[nodiscard]] double LineHeight(const TextStyle& style);

/// A text beside a point: `alignment` tells which part of the text the point marks (its left end, its middle, its top).
[[nodiscard]] PlacedText TextAt(QPointF pivot, Qt::Alignment alignment, const QString& text, const TextStyle& style);

/// The same, turned clockwise about the point.
[[nodiscard]] PlacedText TurnedText(PlacedText text, double angle);

/// The same no wider than a width, with an ellipsis where it is cut. Its end marks move with it: it's measured anew.
[[nodiscard]] PlacedText ElidedText(QPointF pivot, Qt::Alignment alignment, const QString& text, const TextStyle& style,
                                    double width, Qt::TextElideMode cut = Qt::ElideRight);

/// The lines of a text that is no wider than a width; a word that is wider alone is broken.
[[nodiscard]] QStringList WrappedLines(const QString& text, const TextStyle& style, double width);

/// The same with every word whole, and intervals broken beside their x only; none when a word is wider.
[[nodiscard]] QStringList WholeWordLines(const QString& text, const TextStyle& style, double width);

void DrawText(QPainter& painter, const PlacedText& text);

/// Whether two texts overlap, boxes that only touch left out.
[[nodiscard]] bool Overlap(const PlacedText& one, const PlacedText& other);

}  // namespace quillara
