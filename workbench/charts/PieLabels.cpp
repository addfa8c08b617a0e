#include "workbench/charts/PieLabels.h"

#include <algorithm>
#include <cmath>

namespace quillara {
namespace {

constexpr double elbow = 8.0;
constexpr double distance = 22.0;
constexpr double textGap = 4.0;
constexpr double blockGap = 2.0;

/// A label of one side on its way to its place.
struct Block {
    PieLabelWish Wish;
    double Height = 0.0;
    double Top = 0.0;
};
using Blocks = std::vector<Block>;

enum class Side { Left, Right };

QPointF OnRay(const PieCircle& circle, double angle, double radius) {
    return circle.Centre + radius * QPointF(std::cos(angle), std::sin(angle));
}

Blocks BlocksOn(Side side, const std::vector<PieLabelWish>& wishes, const PieCircle& circle, double lineHeight) {
    Blocks blocks;
    for (const PieLabelWish& wish : wishes) {
        const bool isRight = std::cos(wish.Angle) >= 0.0;
        if (isRight == (side == Side::Right)) {
            const double height = static_cast<double>(wish.Lines.size()) * lineHeight + blockGap;
            const double middle = OnRay(circle, wish.Angle, circle.Radius + elbow).y();
            blocks.push_back({wish, height, middle - height / 2});
        }
    }
    std::ranges::stable_sort(blocks, {}, &Block::Top);
    return blocks;
}

double HeightOf(const Blocks& blocks) {
    double height = 0.0;
    for (const Block& block : blocks) {
        height += block.Height;
    }
    return height;
}

std::size_t DropLightest(Blocks& blocks, double room) {
    std::size_t dropped = 0;
    while (!blocks.empty() && HeightOf(blocks) > room) {
        blocks.erase(std::ranges::min_element(blocks, {}, [](const Block& block) { return block.Wish.Weight; }));
        ++dropped;
    }
    return dropped;
}

/// Pushes blocks down until none overlap, then up until none stands below the place.
void Spread(Blocks& blocks, const QRectF& place) {
    double top = place.top();
    for (Block& block : blocks) {
        block.Top = std::max(block.Top, top);
        top = block.Top + block.Height;
    }
    double bottom = place.bottom();
    for (auto block = blocks.rbegin(); block != blocks.rend(); ++block) {
        block->Top = std::min(block->Top, bottom - block->Height);
        bottom = block->Top;
    }
}

void Place(PieLabels& labels, const Block& block, const PieCircle& circle, const QRectF& place,
           const ChartStyle& style) {
    const TextStyle text = style.Text();
    const bool isRight = std::cos(block.Wish.Angle) >= 0.0;
    const double x = circle.Centre.x() + (isRight ? 1.0 : -1.0) * (circle.Radius + distance);
    const double width = isRight ? place.right() - x : x - place.left();
    const double y = block.Top + block.Height / 2;
    const Qt::Alignment alignment = (isRight ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignTop;
    for (int i = 0; i < block.Wish.Lines.size(); ++i) {
        const QPointF pivot(x, block.Top + blockGap / 2 + i * LineHeight(text));
        labels.Texts.push_back(ElidedText(pivot, alignment, block.Wish.Lines[i], text, width));
    }
    labels.Leaders.push_back(QPolygonF({OnRay(circle, block.Wish.Angle, circle.Radius),
                                        OnRay(circle, block.Wish.Angle, circle.Radius + elbow),
                                        QPointF(x + (isRight ? -textGap : textGap), y)}));
}

}  // namespace

PieLabels LayOutPieLabels(const std::vector<PieLabelWish>& wishes, const PieCircle& circle, const QRectF& place,
                          const ChartStyle& style) {
    PieLabels labels;
    for (const Side side : {Side::Left, Side::Right}) {
        Blocks blocks = BlocksOn(side, wishes, circle, LineHeight(style.Text()));
        labels.LeftOut += DropLightest(blocks, place.height());
        Spread(blocks, place);
        for (const Block& block : blocks) {
            Place(labels, block, circle, place, style);
        }
    }
    return labels;
}

double PieLabelDistance() {
    return distance;
}

}  // namespace quillara
