#include "workbench/charts/ChartStyle.h"

#include <algorithm>
#include <cmath>

namespace quillara {
namespace {

constexpr double UsualTextSize = 12.0;
constexpr double LeastTextSize = 10.0;
constexpr double HeadingRatio = 1.25;

/// Texts grow with the picture, but slower.
double TextSizeOf(const ChartLook& look) {
    const ChartLook usual;
    const double ratio =
        std::min(static_cast<double>(look.Width) / usual.Width, static_cast<double>(look.Height) / usual.Height);
    return std::max(LeastTextSize, std::round(UsualTextSize * std::sqrt(ratio)));
}

QFont FontOf(double pixels) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(static_cast<int>(std::round(pixels)));
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

}  // namespace

TextStyle ChartStyle::Heading() const {
    TextStyle style{FontOf(TextSize * HeadingRatio), Ink};
    style.Font.setBold(true);
    return style;
}

TextStyle ChartStyle::Text() const {
    return {FontOf(TextSize), Ink};
}

TextStyle ChartStyle::FaintText() const {
    return {FontOf(TextSize), FaintInk};
}

TextStyle ChartStyle::TextOfSize(double size) const {
    return {FontOf(size), Ink};
}

ChartStyle StyleOf(const ChartLook& look) {
    ChartStyle style;
    style.IsDark = look.Dark;
    style.Background = look.Dark ? QColor(0x1E, 0x21, 0x26) : QColor(Qt::white);
    style.Ink = look.Dark ? QColor(0xE8, 0xE8, 0xE8) : QColor(0x1A, 0x1A, 0x1A);
    style.FaintInk = look.Dark ? QColor(0xB4, 0xB8, 0xBE) : QColor(0x55, 0x55, 0x55);
    style.Frame = look.Dark ? QColor(0x90, 0x94, 0x9A) : QColor(0x60, 0x60, 0x60);
    style.Grid = look.Dark ? QColor(0x3A, 0x3E, 0x45) : QColor(0xE0, 0xE0, 0xE0);
    style.MissingFill = look.Dark ? QColor(0x4A, 0x4E, 0x54) : QColor(0xDA, 0xDA, 0xDA);
    style.MissingHatch = look.Dark ? QColor(0xA0, 0xA4, 0xAA) : QColor(0x80, 0x80, 0x80);
    style.OtherFill = look.Dark ? QColor(0x6C, 0x71, 0x78) : QColor(0xBC, 0xBC, 0xBC);
    style.TextSize = TextSizeOf(look);
    style.Picture = QSizeF(look.Width, look.Height);
    return style;
}

}  // namespace quillara
