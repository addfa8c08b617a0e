#include "workbench/charts/ChartColors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace quillara {
namespace {

/// One of the analysis's colour numbers and what stands for it. The light column is a set made for colour-blind
/// readers, with eight well-known tones first and seven that stay apart from them; the dark column is brighter.
struct PaletteRow {
    int Number;
    QRgb Light;
    QRgb Dark;
};
// clang-format off
constexpr std::array<PaletteRow, 15> Palette = {{
    // number  on white    on black
    { 1,       0xFF999999, 0xFFB3B3B3},  // grey
    { 2,       0xFF332288, 0xFF9A8CF0},  // indigo
    { 3,       0xFF999933, 0xFFC6C65C},  // olive
    { 4,       0xFF44AA99, 0xFF5CC8B6},  // teal
    { 5,       0xFF117733, 0xFF4FB872},  // dark green
    { 6,       0xFFDDCC77, 0xFFE6D88F},  // sand
    { 7,       0xFFAA4499, 0xFFD078C2},  // magenta
    { 8,       0xFF882255, 0xFFD0628F},  // wine
    { 9,       0xFF56B4E9, 0xFF7CC7F0},  // sky blue
    {10,       0xFFE69F00, 0xFFF0B030},  // orange
    {11,       0xFF009E73, 0xFF2BBF94},  // bluish green
    {12,       0xFF0072B2, 0xFF4A9FDC},  // blue
    {13,       0xFFF0E442, 0xFFF2E968},  // yellow
    {14,       0xFFCC79A7, 0xFFE09AC2},  // purple
    {15,       0xFFD55E00, 0xFFF07F3C},  // vermilion
}};
/// Colour numbers of slices, in their order: neighbours differ in tone and in brightness.
constexpr std::array<int, 13> SliceNumbers = {12, 10, 11, 9, 15, 13, 14, 2, 4, 8, 6, 5, 7};
/// Colour numbers of columns of layers, in their order.
constexpr std::array<int, 5> ColumnNumbers = {12, 15, 11, 14, 10};
/// Equal steps from faint to strong.
constexpr std::array<QRgb, 6> HeatOnWhite = {0xFFE4EFF7, 0xFFB5D4E9, 0xFF74B3D8, 0xFF3A8FC4, 0xFF1565A0, 0xFF08306B};
constexpr std::array<QRgb, 6> HeatOnBlack = {0xFF2A3440, 0xFF24506F, 0xFF2A719B, 0xFF4495C2, 0xFF7FBEDD, 0xFFDCEFF8};
// clang-format on
// The light of the lowest and of the highest layer, see Shaded.
constexpr double DarkestLayer = 0.85;
constexpr double LightestLayer = 1.75;

constexpr bool NumbersCount() {
    for (std::size_t i = 0; i < Palette.size(); ++i) {
        if (Palette[i].Number != static_cast<int>(i) + 1) {
            return false;
        }
    }
    return true;
}
static_assert(NumbersCount(), "a number is found by its place");

const PaletteRow& RowOf(int number) {
    const auto count = static_cast<int>(Palette.size());
    const int place = ((number - 1) % count + count) % count;
    return Palette[static_cast<std::size_t>(place)];
}

double Mixed(double from, double to, double share) {
    return from + (to - from) * share;
}

QColor MixedColor(const QColor& from, const QColor& to, double share) {
    return QColor::fromRgbF(static_cast<float>(Mixed(from.redF(), to.redF(), share)),
                            static_cast<float>(Mixed(from.greenF(), to.greenF(), share)),
                            static_cast<float>(Mixed(from.blueF(), to.blueF(), share)));
}

double Brightness(const QColor& color) {
    return 0.299 * color.redF() + 0.587 * color.greenF() + 0.114 * color.blueF();
}

}  // namespace

QColor SeriesColor(int number, bool isDark) {
    const PaletteRow& row = RowOf(number);
    return QColor(isDark ? row.Dark : row.Light);
}

QColor SliceColor(int slice, bool isDark) {
    return SeriesColor(SliceNumbers[static_cast<std::size_t>(slice) % SliceNumbers.size()], isDark);
}

QColor LayerColor(int column, double shade, bool isDark) {
    const QColor tone = SeriesColor(ColumnNumbers[static_cast<std::size_t>(column) % ColumnNumbers.size()], isDark);
    return Shaded(tone, Mixed(DarkestLayer, LightestLayer, shade));
}

QColor HeatColor(double share, bool isDark) {
    const auto& steps = isDark ? HeatOnBlack : HeatOnWhite;
    const double place = std::clamp(share, 0.0, 1.0) * static_cast<double>(steps.size() - 1);
    const auto below = std::min(static_cast<std::size_t>(place), steps.size() - 2);
    return MixedColor(QColor(steps[below]), QColor(steps[below + 1]), place - static_cast<double>(below));
}

QColor InkOn(const QColor& ground) {
    return Brightness(ground) > 0.55 ? QColor(0x10, 0x10, 0x10) : QColor(Qt::white);
}

QColor Shaded(const QColor& color, double light) {
    return light < 1.0 ? MixedColor(QColor(Qt::black), color, light)
                       : MixedColor(color, QColor(Qt::white), light - 1.0);
}

}  // namespace quillara
