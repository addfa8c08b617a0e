#include "workbench/charts/PieLegend.h"

#include <algorithm>
#include <cmath>

#include "workbench/charts/CategoryAxis.h"

namespace quillara {
namespace {

constexpr double legendShare = 0.5;  // of the width
constexpr double leastNameWidth = 60.0;
constexpr double gap = 8.0;
constexpr double columnGap = 16.0;
constexpr int mostColumns = 3;

double SwatchSize(const ChartStyle& style) {
    return std::round(style.TextSize * 0.8);
}

double Widest(const std::vector<PieSlice>& slices, const TextStyle& style, QString PieSlice::*text) {
    double widest = 0.0;
    for (const PieSlice& slice : slices) {
        widest = std::max(widest, WidthOf(slice.*text, style));
    }
    return widest;
}

ChartMark Swatch(const PieSlice& slice, QPointF centre, const ChartStyle& style) {
    const double size = SwatchSize(style);
    ChartMark mark;
    mark.Outline = RectangleOutline(QRectF(centre - QPointF(size / 2, size / 2), QSizeF(size, size)));
    mark.Fill = slice.Color;
    mark.IsMissing = slice.IsMissing;
    mark.Tip = slice.Name;
    mark.Point = slice.Point;
    mark.Series = slice.Point < 0 ? -1 : 0;
    return mark;
}

}  // namespace

PieLegendPlan PlanLegend(const std::vector<PieSlice>& slices, const QSizeF& place, const ChartStyle& style) {
    const TextStyle text = style.Text();
    PieLegendPlan plan;
    plan.Rows = std::max(1, static_cast<int>(place.height() / LineHeight(text)));
    plan.CountWidth = std::max(Widest(slices, text, &PieSlice::CountText), WidthOf(CountText(TotalOf(slices)), text));
    plan.PercentWidth = WidthOf(QStringLiteral("100.0%"), text);
    const double fixed = columnGap + SwatchSize(style) + 3 * gap + plan.CountWidth + plan.PercentWidth;
    const double room = place.width() * legendShare;
    const int affordable = static_cast<int>(room / (fixed + leastNameWidth));
    const int needed = static_cast<int>((slices.size() + static_cast<std::size_t>(plan.Rows) - 1)) / plan.Rows;
    // Where even several columns don't hold all, one leaves more room for the circle, and the small ones are gathered.
    plan.Columns = needed <= std::min(affordable, mostColumns) ? std::max(needed, 1) : 1;
    const double other = WidthOf(QStringLiteral("Other (999 categories)"), text);
    const double widest =
        std::max(Widest(slices, text, &PieSlice::Name), slices.size() > plan.Capacity() ? other : 0.0);
    plan.NameWidth = std::clamp(room / plan.Columns - fixed, 20.0, std::max(widest, 20.0));
    plan.ColumnWidth = fixed + plan.NameWidth;
    return plan;
}

PieLegend LayOutLegend(const std::vector<PieSlice>& slices, const PieLegendPlan& plan, const QRectF& place,
                       const ChartStyle& style) {
    const TextStyle text = style.Text();
    const double height = LineHeight(text);
    const double swatch = SwatchSize(style);
    const double total = TotalOf(slices);
    const auto rows = std::min<std::size_t>(slices.size(), static_cast<std::size_t>(plan.Rows));
    const double top = place.center().y() - static_cast<double>(rows) * height / 2;
    PieLegend legend;
    for (std::size_t i = 0; i < slices.size(); ++i) {
        const auto column = static_cast<double>(i / static_cast<std::size_t>(plan.Rows));
        const double y = top + (static_cast<double>(i % static_cast<std::size_t>(plan.Rows)) + 0.5) * height;
        const double left = place.right() - plan.Width() + column * plan.ColumnWidth + columnGap;
        const double nameAt = left + swatch + gap;
        const double countEnd = nameAt + plan.NameWidth + gap + plan.CountWidth;
        legend.Swatches.push_back(Swatch(slices[i], {left + swatch / 2, y}, style));
        legend.Texts.push_back(
            ElidedText({nameAt, y}, Qt::AlignLeft | Qt::AlignVCenter, slices[i].Name, text, plan.NameWidth));
        legend.Texts.push_back(TextAt({countEnd, y}, Qt::AlignRight | Qt::AlignVCenter, slices[i].CountText, text));
        legend.Texts.push_back(TextAt({countEnd + gap + plan.PercentWidth, y}, Qt::AlignRight | Qt::AlignVCenter,
                                      PercentText(slices[i].Count, total), style.FaintText()));
    }
    return legend;
}

}  // namespace quillara
