#include "workbench/charts/BarCounts.h"

#include <algorithm>
#include <numeric>

#include "workbench/charts/ChartColors.h"

namespace quillara {
namespace {

constexpr double CountGap = 2.0;  // pixels between a bar and its count
constexpr double BetweenCounts = 3.0;  // between neighbouring counts

QRectF GroundOf(const PlacedText& text) {
    return text.Outline().boundingRect();
}

/// Texts that stand, by the number of their bar.
class CountLabels {
  public:
    CountLabels(const std::vector<CountedBar>& bars, const QRectF& area, const ChartStyle& style)
        : Bars(bars), Area(area), Style(style), Grounds(bars.size()) {}

    void Add(std::size_t number);
    std::vector<PlacedText> Texts;

  private:
    [[nodiscard]] bool IsFree(const QRectF& ground, std::size_t number) const;
    template <typename Step>
    [[nodiscard]] bool IsFreeOf(const QRectF& ground, std::size_t number, Step step) const;

    const std::vector<CountedBar>& Bars;
    const QRectF Area;
    const ChartStyle& Style;
    std::vector<QRectF> Grounds;  ///< empty: no text
};

/// Goes over the neighbours of one side as far as a text of any of them can reach.
template <typename Step>
bool CountLabels::IsFreeOf(const QRectF& ground, std::size_t number, Step step) const {
    const double reach = 2 * ground.width() + BetweenCounts;
    for (std::size_t other = step(number); other < Bars.size(); other = step(other)) {
        const QRectF& bar = Bars[other].Place;
        if (bar.left() > ground.right() + reach || bar.right() < ground.left() - reach) {
            break;
        }
        const bool meetsText = !Grounds[other].isEmpty() &&
                               Grounds[other].adjusted(-BetweenCounts, 0.0, BetweenCounts, 0.0).intersects(ground);
        if (meetsText || bar.adjusted(0.0, -1.0, 0.0, 0.0).intersects(ground)) {
            return false;
        }
    }
    return true;
}

bool CountLabels::IsFree(const QRectF& ground, std::size_t number) const {
    return IsFreeOf(ground, number, [](std::size_t at) { return at + 1; }) &&
           IsFreeOf(ground, number, [](std::size_t at) { return at - 1; });  // below 0 lies behind the last
}

void CountLabels::Add(std::size_t number) {
    const CountedBar& bar = Bars[number];
    const TextStyle style = Style.Text();
    const double height = LineHeight(style) + CountGap;
    const bool isAbove = bar.Place.top() - height >= Area.top();
    const QPointF foot(bar.Place.center().x(), isAbove ? bar.Place.top() - CountGap : bar.Place.top() + height);
    PlacedText text = TextAt(foot, Qt::AlignHCenter | Qt::AlignBottom, bar.Count, style);
    const QRectF ground = GroundOf(text);
    const bool hasRoom = isAbove ? ground.left() >= Area.left() && ground.right() <= Area.right()
                                 : ground.width() <= bar.Place.width() && foot.y() <= Area.bottom();
    if (!hasRoom || !IsFree(ground, number)) {
        return;
    }
    if (!isAbove) {
        text.Style.Color = bar.IsMissing ? Style.Ink : InkOn(bar.Fill);
        text.Ground = bar.IsMissing ? Style.MissingFill : QColor();
    }
    Grounds[number] = ground;
    Texts.push_back(text);
}

}  // namespace

std::vector<PlacedText> CountsOfBars(const std::vector<CountedBar>& bars, const QRectF& area, const ChartStyle& style) {
    std::vector<std::size_t> order(bars.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t number) { return bars[number].Place.top(); });
    CountLabels labels(bars, area, style);
    for (const std::size_t number : order) {
        labels.Add(number);
    }
    return labels.Texts;
}

}  // namespace quillara
