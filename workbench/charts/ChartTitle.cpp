#include "workbench/charts/ChartTitle.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

constexpr double UsualShare = 0.30;  // of the picture's height, for a caption of one line a step
constexpr double LargestShare = 0.55;  // beyond it the caption is cut
constexpr std::array<double, 3> Sizes = {1.0, 0.85, 0.7};  // of texts, tried in turn
constexpr double LeastSize = 8.0;
constexpr double RoomBelow = 8.0;
const QString BetweenParts = QStringLiteral("   \u00B7   ");

QStringList WrappedAll(const QStringList& lines, const TextStyle& style, double width) {
    QStringList wrapped;
    for (const QString& line : lines) {
        wrapped << WrappedLines(line, style, width);
    }
    return wrapped;
}

/// As many lines beside each other as there is width for; none is broken that fits alone.
QStringList Flowed(const QStringList& lines, const TextStyle& style, double width) {
    QStringList flowed;
    for (const QString& line : lines) {
        const QString joined = flowed.isEmpty() ? line : flowed.back() + BetweenParts + line;
        if (!flowed.isEmpty() && WidthOf(joined, style) <= width) {
            flowed.back() = joined;
        } else {
            flowed << line;
        }
    }
    return WrappedAll(flowed, style, width);
}

void Append(TitleLayout& layout, const QStringList& lines, const TextStyle& style, double centre) {
    for (const QString& line : lines) {
        layout.Texts.push_back(TextAt({centre, layout.Height}, Qt::AlignHCenter | Qt::AlignTop, line, style));
        layout.Height += LineHeight(style);
    }
}

/// Only so many lines as fit, the last of them with the whole text in its tip.
QStringList CutTo(QStringList lines, double height, const TextStyle& style) {
    const auto most = std::max(1, static_cast<int>(height / LineHeight(style)));
    if (lines.size() > most) {
        lines = lines.first(most);
        lines.back() += QStringLiteral(" \u2026");
    }
    return lines;
}

TextStyle Resized(TextStyle style, double ratio) {
    style.Font.setPixelSize(static_cast<int>(std::max(LeastSize, std::round(style.Font.pixelSize() * ratio))));
    return style;
}

/// The caption's lines and their style: the first form that takes no more than the usual share.
std::pair<QStringList, TextStyle> FittedCaption(const QStringList& caption, const ChartStyle& style,
                                                const QSizeF& picture) {
    const TextStyle usual = style.FaintText();
    QStringList lines = WrappedAll(caption, usual, picture.width());
    if (static_cast<double>(lines.size()) * LineHeight(usual) <= UsualShare * picture.height()) {
        return {lines, usual};
    }
    for (const double size : Sizes) {
        const TextStyle smaller = Resized(usual, size);
        lines = Flowed(caption, smaller, picture.width());
        if (static_cast<double>(lines.size()) * LineHeight(smaller) <= UsualShare * picture.height()) {
            return {lines, smaller};
        }
    }
    return {lines, Resized(usual, Sizes.back())};
}

}  // namespace

TitleLayout LayOutTitle(const QString& heading, const QStringList& caption, const ChartStyle& style,
                        const QSizeF& picture) {
    const TextStyle headingStyle = style.Heading();
    TitleLayout layout;
    Append(layout, CutTo(WrappedLines(heading, headingStyle, picture.width()), picture.height() / 4, headingStyle),
           headingStyle, picture.width() / 2);
    const bool headingIsCut = layout.Texts.back().Text.endsWith(QStringLiteral(" \u2026"));
    if (headingIsCut) {
        layout.Texts.back().Whole = heading;
    }
    const auto [lines, captionStyle] = FittedCaption(caption, style, picture);
    const QStringList shown = CutTo(lines, LargestShare * picture.height() - layout.Height, captionStyle);
    Append(layout, shown, captionStyle, picture.width() / 2);
    if (shown.size() < lines.size()) {
        layout.Texts.back().Whole = caption.join(u'\n');
    }
    return layout;
}

ChartTitle::ChartTitle(QCustomPlot* plot, ChartStyle style, const std::vector<std::string>& title)
    : ChartElement(plot, style) {
    for (const std::string& part : title) {
        for (const std::string& line : ShownLines(part)) {
            if (!line.empty()) {
                CaptionLines << QString::fromStdString(line);
            }
        }
    }
    if (!CaptionLines.isEmpty()) {
        HeadingLine = CaptionLines.takeFirst();
    }
}

QSize ChartTitle::minimumOuterSizeHint() const {
    const QRect picture = parentPlot()->plotLayout()->rect();
    const double height =
        HeadingLine.isEmpty()
            ? 0.0
            : LayOutTitle(HeadingLine, CaptionLines, Style, QSizeF(picture.size())).Height + RoomBelow;
    return {0, static_cast<int>(std::ceil(height))};
}

QSize ChartTitle::maximumOuterSizeHint() const {
    return {QWIDGETSIZE_MAX, minimumOuterSizeHint().height()};
}

void ChartTitle::Arrange(const QRectF& place) {
    if (HeadingLine.isEmpty()) {
        return;
    }
    const QRect picture = parentPlot()->plotLayout()->rect();
    PlacedTexts = LayOutTitle(HeadingLine, CaptionLines, Style, QSizeF(picture.size())).Texts;
    for (PlacedText& text : PlacedTexts) {
        text.Pivot += place.topLeft();
    }
}

}  // namespace quillara
