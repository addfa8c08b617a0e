#include "workbench/charts/PieLabels.h"

#include <QLineF>
#include <algorithm>
#include <cmath>

namespace quillara {
namespace {

constexpr double Elbow = 8.0;
constexpr double Distance = 24.0;
constexpr double LineToText = 4.0;
constexpr double BlockGap = 2.0;
constexpr double LeastClearance = 2.0;  // between a leader and the circle

/// A label of one side on its way to its place.
struct Block {
    PieLabelWish Wish;
    double Height = 0.0;
    double Middle = 0.0;  ///< where it wants to stand
    double Top = 0.0;  ///< where it stands
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
            const double height = static_cast<double>(wish.Lines.size()) * lineHeight + BlockGap;
            blocks.push_back({wish, height, OnRay(circle, wish.Angle, circle.Radius + Elbow).y(), 0.0});
        }
    }
    std::ranges::stable_sort(blocks, {}, &Block::Middle);
    return blocks;
}

/// Blocks that touch each other, from `First` to before the next cluster.
struct Cluster {
    std::size_t First = 0;
    double Count = 0.0;
    double Height = 0.0;
    double Wish = 0.0;  ///< the top at which its blocks are nearest to their places
    double Top = 0.0;  ///< the same, inside the place
};

Cluster Joined(const Cluster& upper, const Cluster& lower) {
    Cluster both{upper.First, upper.Count + lower.Count, upper.Height + lower.Height, 0.0, 0.0};
    both.Wish = (upper.Count * upper.Wish + lower.Count * (lower.Wish - upper.Height)) / both.Count;
    return both;
}

/// Moves blocks as little as possible so that none overlap and none leaves the place, which holds them all.
void Spread(Blocks& blocks, const QRectF& place) {
    const auto moveInside = [&](Cluster& cluster) {
        cluster.Top = std::max(place.top(), std::min(cluster.Wish, place.bottom() - cluster.Height));
    };
    std::vector<Cluster> clusters;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        Cluster cluster{i, 1.0, blocks[i].Height, blocks[i].Middle - blocks[i].Height / 2, 0.0};
        moveInside(cluster);
        while (!clusters.empty() && clusters.back().Top + clusters.back().Height > cluster.Top) {
            cluster = Joined(clusters.back(), cluster);
            moveInside(cluster);
            clusters.pop_back();
        }
        clusters.push_back(cluster);
    }
    for (const Cluster& cluster : clusters) {
        double top = cluster.Top;
        for (std::size_t i = cluster.First; i < cluster.First + static_cast<std::size_t>(cluster.Count); ++i) {
            blocks[i].Top = top;
            top += blocks[i].Height;
        }
    }
}

/// Leaves out labels from the end while they are higher than the place.
std::size_t DropLast(Blocks& blocks, double room) {
    double height = 0.0;
    std::size_t kept = 0;
    while (kept < blocks.size() && height + blocks[kept].Height <= room) {
        height += blocks[kept++].Height;
    }
    const std::size_t dropped = blocks.size() - kept;
    blocks.resize(kept);
    return dropped;
}

void Place(PieLabels& labels, const Block& block, const PieCircle& circle, const QRectF& place,
           const TextStyle& style) {
    const bool isRight = std::cos(block.Wish.Angle) >= 0.0;
    const double x = circle.Centre.x() + (isRight ? 1.0 : -1.0) * (circle.Radius + Distance);
    const double width = isRight ? place.right() - x : x - place.left();
    const double y = block.Top + block.Height / 2;
    const Qt::Alignment alignment = (isRight ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignTop;
    for (int i = 0; i < block.Wish.Lines.size(); ++i) {
        const QPointF pivot(x, block.Top + BlockGap / 2 + i * LineHeight(style));
        labels.Texts.push_back(ElidedText(pivot, alignment, block.Wish.Lines[i], style, width));
        if (!block.Wish.Whole.isEmpty()) {
            labels.Texts.back().Whole = block.Wish.Whole;
        }
    }
    labels.Leaders.push_back(QPolygonF({OnRay(circle, block.Wish.Angle, circle.Radius),
                                        OnRay(circle, block.Wish.Angle, circle.Radius + Elbow),
                                        QPointF(x + (isRight ? -LineToText : LineToText), y)}));
}

double DistanceTo(QPointF point, const QLineF& line) {
    const QPointF along = line.p2() - line.p1();
    const double length = QPointF::dotProduct(along, along);
    const double share = length > 0.0 ? QPointF::dotProduct(point - line.p1(), along) / length : 0.0;
    return QLineF(point, line.pointAt(std::clamp(share, 0.0, 1.0))).length();
}

bool Cross(const QPolygonF& one, const QPolygonF& other) {
    for (int i = 1; i < one.size(); ++i) {
        for (int j = 1; j < other.size(); ++j) {
            if (QLineF(one[i - 1], one[i]).intersects(QLineF(other[j - 1], other[j]), nullptr) ==
                QLineF::BoundedIntersection) {
                return true;
            }
        }
    }
    return false;
}

std::size_t FaultsOf(const std::vector<QPolygonF>& leaders, const PieCircle& circle) {
    std::size_t faults = 0;
    for (auto leader = leaders.begin(); leader != leaders.end(); ++leader) {
        const QLineF last(leader->at(1), leader->at(2));
        faults += DistanceTo(circle.Centre, last) < circle.Radius + LeastClearance ? 1 : 0;
        faults += static_cast<std::size_t>(
            std::count_if(leaders.begin(), leader, [&](const QPolygonF& other) { return Cross(*leader, other); }));
    }
    return faults;
}

}  // namespace

PieLabels LayOutPieLabels(const std::vector<PieLabelWish>& wishes, const PieCircle& circle, const QRectF& place,
                          const TextStyle& style) {
    PieLabels labels;
    for (const Side side : {Side::Left, Side::Right}) {
        Blocks blocks = BlocksOn(side, wishes, circle, LineHeight(style));
        labels.Faults += DropLast(blocks, place.height());
        Spread(blocks, place);
        for (const Block& block : blocks) {
            Place(labels, block, circle, place, style);
        }
    }
    labels.Faults += FaultsOf(labels.Leaders, circle);
    return labels;
}

double PieLabelDistance() {
    return Distance;
}

}  // namespace quillara
