#include "workbench/charts/AxisLabels.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <numbers>
#include <numeric>
#include <optional>
#include <set>
#include <utility>

namespace quillara {
namespace {

using Spots = std::vector<AxisSpot>;
using Attempt = std::optional<AxisLabels>;

constexpr double NeighbourGap = 6.0;  // between level neighbours
constexpr int MostLines = 5;
constexpr double Slope = std::numbers::sqrt2 / 2;  // sine and cosine of the angle of slanted labels
constexpr std::size_t PreferenceForLevel = 3;
constexpr std::size_t MostSpots = 100000;

/// One label of an axis, as an attempt places it.
using Placing = PlacedText (*)(const AxisSpot& spot, const LabelRoom& room, const TextStyle& style);

/// How labels are turned, and how many heights of a line their feet are apart at least.
struct Turning {
    Placing Place;
    double LinesApart;
};

double LeastDistance(const Spots& spots) {
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 1; i < spots.size(); ++i) {
        least = std::min(least, std::fabs(spots[i].At - spots[i - 1].At));
    }
    return least;
}

PlacedText MovedInside(PlacedText text, const LabelRoom& room) {
    const QRectF bounds = text.Outline().boundingRect();
    const double fromLeft = std::max(0.0, room.Low - bounds.left());
    const double fromRight = std::max(0.0, bounds.right() - room.High);
    text.Pivot.rx() += fromLeft - fromRight;
    return text;
}

PlacedText LevelText(const AxisSpot& spot, const LabelRoom& room, const TextStyle& style) {
    return ElidedText({spot.At, 0.0}, Qt::AlignHCenter | Qt::AlignTop, spot.Text, style, room.High - room.Low,
                      room.Cut);
}

PlacedText SlantedText(const AxisSpot& spot, const LabelRoom& room, const TextStyle& style) {
    const double height = LineHeight(style);
    const QPointF pivot(spot.At, height / 2 * Slope);
    const double length = std::min(room.Depth / Slope - height, (spot.At - room.Low) / Slope - height / 2);
    return TurnedText(ElidedText(pivot, Qt::AlignRight | Qt::AlignVCenter, spot.Text, style, length, room.Cut), -45.0);
}

PlacedText UprightText(const AxisSpot& spot, const LabelRoom& room, const TextStyle& style) {
    return TurnedText(
        ElidedText({spot.At, 0.0}, Qt::AlignRight | Qt::AlignVCenter, spot.Text, style, room.Depth, room.Cut), -90.0);
}

AxisLabels Placed(const Spots& spots, const LabelRoom& room, const TextStyle& style, Placing place) {
    AxisLabels labels;
    for (const AxisSpot& spot : spots) {
        const PlacedText text = MovedInside(place(spot, room, style), room);
        labels.Depth = std::max(labels.Depth, text.Outline().boundingRect().bottom());
        labels.Texts.push_back(text);
        labels.Ticks.push_back(spot.At);
    }
    return labels;
}

bool IsWhole(const AxisLabels& labels) {
    return std::ranges::all_of(labels.Texts, [](const PlacedText& text) { return text.Whole.isEmpty(); });
}

bool StandApart(const AxisLabels& labels) {
    for (std::size_t i = 1; i < labels.Texts.size(); ++i) {
        const double end = labels.Texts[i - 1].Outline().boundingRect().right();
        if (labels.Texts[i].Outline().boundingRect().left() < end + NeighbourGap) {
            return false;
        }
    }
    return true;
}

Attempt Level(const Spots& spots, const LabelRoom& room, const TextStyle& style) {
    if (LeastDistance(spots) < NeighbourGap) {
        return std::nullopt;  // before thousands of texts are measured in vain
    }
    AxisLabels labels = Placed(spots, room, style, LevelText);
    return StandApart(labels) ? Attempt(std::move(labels)) : std::nullopt;
}

/// The lines of a label that keeps its words whole; none when a word or the number of lines is too large.
QStringList LinesInSlot(const QString& text, const TextStyle& style, double slot) {
    const QStringList lines = WholeWordLines(text, style, slot);
    return lines.size() <= MostLines ? lines : QStringList();
}

Attempt Wrapped(const Spots& spots, const LabelRoom& room, const TextStyle& style) {
    const double widest = std::min(LeastDistance(spots) - NeighbourGap, room.High - room.Low);
    const double height = LineHeight(style);
    AxisLabels labels;
    for (const AxisSpot& spot : spots) {
        const double slot = std::min({widest, 2 * (spot.At - room.Low), 2 * (room.High - spot.At)});
        const QStringList lines = slot > 0.0 ? LinesInSlot(spot.Text, style, slot) : QStringList();
        if (lines.isEmpty()) {
            return std::nullopt;
        }
        for (int i = 0; i < lines.size(); ++i) {
            labels.Texts.push_back(TextAt({spot.At, i * height}, Qt::AlignHCenter | Qt::AlignTop, lines[i], style));
        }
        labels.Depth = std::max(labels.Depth, static_cast<double>(lines.size()) * height);
        labels.Ticks.push_back(spot.At);
    }
    return labels.Depth <= room.Depth ? Attempt(std::move(labels)) : std::nullopt;
}

/// Turned labels whose feet keep a distance, also where they had to be moved into the room.
Attempt Turned(const Spots& spots, const LabelRoom& room, const TextStyle& style, Turning turning) {
    const double distance = turning.LinesApart * LineHeight(style);
    if (LeastDistance(spots) < distance) {
        return std::nullopt;
    }
    AxisLabels labels = Placed(spots, room, style, turning.Place);
    for (std::size_t i = 1; i < labels.Texts.size(); ++i) {
        if (labels.Texts[i].Pivot.x() - labels.Texts[i - 1].Pivot.x() < distance) {
            return std::nullopt;
        }
    }
    return labels;
}

Attempt Slanted(const Spots& spots, const LabelRoom& room, const TextStyle& style) {
    return Turned(spots, room, style, {SlantedText, 1.0 / Slope});
}

Attempt Upright(const Spots& spots, const LabelRoom& room, const TextStyle& style) {
    return Turned(spots, room, style, {UprightText, 1.0});
}

Attempt WholeOnes(Attempt attempt) {
    return attempt && IsWhole(*attempt) ? attempt : std::nullopt;
}

/// The strides that people count by.
std::size_t NextStride(std::size_t stride) {
    std::size_t power = 1;
    while (true) {
        for (const std::size_t factor : {power, 2 * power, 5 * power}) {
            if (factor > stride) {
                return factor;
            }
        }
        power *= 10;
    }
}

/// Labels that show all of their texts, the most readable first; those that are turned upright last.
Attempt InFull(const Spots& spots, const LabelRoom& room, const TextStyle& style) {
    if (Attempt level = WholeOnes(Level(spots, room, style))) {
        return level;
    }
    if (Attempt wrapped = Wrapped(spots, room, style)) {
        return wrapped;
    }
    return WholeOnes(Slanted(spots, room, style));
}

/// Whether the labels are intervals that follow one another, so that some of them tell what the others are.
bool AreIntervals(const Spots& spots) {
    const auto isInterval = [](const AxisSpot& spot) {
        return spot.Text.contains(QLatin1String("<x")) || spot.Text.contains(QLatin1String("x<"));
    };
    return spots.size() > 2 && std::ranges::count_if(spots, isInterval) + 1 >= std::ssize(spots);  // and Missing
}

/// Every so-many-th interval in full: where it is cut its bounds can't be read.
Attempt SomeInFull(const Spots& spots, const LabelRoom& room, const TextStyle& style) {
    for (std::size_t stride = NextStride(1); stride < spots.size(); stride = NextStride(stride)) {
        if (Attempt whole = InFull(Thinned(spots, stride), room, style)) {
            return whole;
        }
    }
    return std::nullopt;
}

using Attempting = Attempt (*)(const Spots& spots, const LabelRoom& room, const TextStyle& style);

std::pair<std::size_t, AxisLabels> LeastThinned(const Spots& spots, const LabelRoom& room, const TextStyle& style,
                                                Attempting attempting) {
    std::size_t stride = 1;
    while (stride < MostSpots) {
        stride = NextStride(stride);
        if (Attempt attempt = attempting(Thinned(spots, stride), room, style)) {
            return {stride, std::move(*attempt)};
        }
    }
    return {stride, AxisLabels{}};
}

/// Level labels are read more easily, so they may be some times as far apart as upright ones.
AxisLabels ThinnedLabels(const Spots& spots, const LabelRoom& room, const TextStyle& style) {
    auto level = LeastThinned(spots, room, style, Level);
    auto upright = LeastThinned(spots, room, style, Upright);
    return level.first <= PreferenceForLevel * upright.first ? std::move(level.second) : std::move(upright.second);
}

/// Whether level labels stand closer than their height once they are moved into their room.
template <typename PlaceOf>
bool Crowded(Spots spots, const PlaceOf& placeOf, double height) {
    for (AxisSpot& spot : spots) {
        spot.At = placeOf(spot);
    }
    return LeastDistance(spots) < height;
}

Spots WithText(const Spots& spots) {
    Spots result;
    std::ranges::copy_if(spots, std::back_inserter(result), [](const AxisSpot& spot) { return !spot.Text.isEmpty(); });
    return result;
}

}  // namespace

std::vector<AxisSpot> Thinned(const std::vector<AxisSpot>& spots, std::size_t stride) {
    Spots kept;
    for (std::size_t i = 0; i < spots.size(); i += stride) {
        kept.push_back(spots[i]);
    }
    if (spots.size() > stride && spots.back().IsKept) {
        const bool isKept = (spots.size() - 1) % stride == 0;
        kept.resize(kept.size() - (isKept ? 2 : 1));  // the label before it gives way
        kept.push_back(spots.back());
    }
    return kept;
}

std::vector<AxisSpot> LargestApart(const std::vector<AxisSpot>& spots, double distance) {
    std::vector<std::size_t> order(spots.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::greater(), [&](std::size_t place) { return spots[place].Extent; });
    std::set<double> taken;
    std::vector<bool> stays(spots.size());
    for (const std::size_t place : order) {
        const auto next = taken.lower_bound(spots[place].At - distance);
        stays[place] = next == taken.end() || *next >= spots[place].At + distance;
        if (stays[place]) {
            taken.insert(spots[place].At);
        }
    }
    Spots kept;
    for (std::size_t place = 0; place < spots.size(); ++place) {
        if (stays[place]) {
            kept.push_back(spots[place]);
        }
    }
    return kept;
}

namespace {

/// Whether texts that differ are alike once they are cut.
bool HaveTwins(const AxisLabels& labels) {
    std::map<QString, QString> wholes;
    return std::ranges::any_of(labels.Texts, [&wholes](const PlacedText& text) {
        return !text.Whole.isEmpty() && wholes.emplace(text.Text, text.Whole).first->second != text.Whole;
    });
}

/// Names that begin alike are told apart by their ends.
template <typename Labels>
AxisLabels Distinguished(const Labels& labelsIn, LabelRoom room) {
    AxisLabels labels = labelsIn(room);
    if (HaveTwins(labels)) {
        room.Cut = Qt::ElideMiddle;
        labels = labelsIn(room);
    }
    return labels;
}

AxisLabels CutBelow(const Spots& spots, const LabelRoom& room, const TextStyle& style) {
    const bool haveExtents = std::ranges::any_of(spots, [](const AxisSpot& spot) { return spot.Extent > 0.0; });
    const Spots shown = WithText(haveExtents ? LargestApart(spots, LineHeight(style)) : spots);
    if (Attempt whole = InFull(shown, room, style)) {
        return *whole;
    }
    const Attempt upright = Upright(shown, room, style);
    if (AreIntervals(shown) && !(upright && IsWhole(*upright))) {
        if (Attempt some = SomeInFull(shown, room, style)) {
            return *some;
        }
    }
    if (upright) {
        return *upright;
    }
    return ThinnedLabels(shown, room, style);
}

AxisLabels CutBeside(const Spots& spots, const LabelRoom& room, const TextStyle& style) {
    const double height = LineHeight(style);
    const double highest = room.Low + height / 2;
    const double lowest = std::max(room.High - height / 2, highest);
    const auto placeOf = [&](const AxisSpot& spot) { return std::clamp(spot.At, highest, lowest); };
    const Spots all = WithText(spots);
    Spots shown = all;
    for (std::size_t stride = 1; stride < MostSpots && shown.size() > 1 && Crowded(shown, placeOf, height);) {
        stride = NextStride(stride);
        shown = Thinned(all, stride);
    }
    AxisLabels labels;
    for (const AxisSpot& spot : shown) {
        labels.Texts.push_back(ElidedText({0.0, placeOf(spot)}, Qt::AlignRight | Qt::AlignVCenter, spot.Text, style,
                                          room.Depth, room.Cut));
        labels.Depth = std::max(labels.Depth, labels.Texts.back().Box.width());
        labels.Ticks.push_back(spot.At);
    }
    return labels;
}

}  // namespace

AxisLabels LabelsBelow(const std::vector<AxisSpot>& spots, const LabelRoom& room, const TextStyle& style) {
    return Distinguished([&](const LabelRoom& cut) { return CutBelow(spots, cut, style); }, room);
}

AxisLabels LabelsBeside(const std::vector<AxisSpot>& spots, const LabelRoom& room, const TextStyle& style) {
    return Distinguished([&](const LabelRoom& cut) { return CutBeside(spots, cut, style); }, room);
}

}  // namespace quillara
