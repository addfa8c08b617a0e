#include "workbench/charts/PieLayout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include "workbench/charts/CategoryAxis.h"

namespace quillara {
namespace {

constexpr std::size_t MostNamedSlices = 12;
constexpr double LabelShare = 0.30;  // of the width, for the labels of one side
constexpr double UsualRadiusShare = 0.28;  // of the shorter side, at least
constexpr double LeastRadiusShare = 0.16;  // the same where names would be cut else
constexpr double LeastRadius = 20.0;
constexpr qsizetype MostNameLines = 3;
constexpr double TwelveOClock = -FullCircle / 4;

/// What the labels tell, from the most to what has room anywhere.
enum class LabelContent { WholeNameAndCount, NameAndPercent };

/// One way to label a pie.
struct Labelling {
    LabelContent Content;
    double RadiusShare;  ///< of the shorter side, that labels leave to the circle
};
constexpr std::array<Labelling, 4> Labellings = {{
    {LabelContent::WholeNameAndCount, UsualRadiusShare},
    {LabelContent::WholeNameAndCount, LeastRadiusShare},
    {LabelContent::NameAndPercent, UsualRadiusShare},
    {LabelContent::NameAndPercent, LeastRadiusShare},
}};

/// How wide a line of a label may be, and how it is written.
struct LabelRoom {
    TextStyle Style;
    double Width = 0.0;
};

QString Elided(const QString& text, const LabelRoom& room, double width) {
    return ElidedText({}, Qt::AlignLeft, text, room.Style, width).Text;
}

/// All on one line where that has room, else the name above its numbers.
PieLabelWish WholeLabel(const PieSlice& slice, const QString& percent, const LabelRoom& room) {
    const QString numbers = slice.CountText + QStringLiteral(" (%1)").arg(percent);
    const QString line = Isolated(slice.Name) + QStringLiteral(": ") + numbers;
    if (WidthOf(line, room.Style) <= room.Width) {
        return {{line}, 0.0, {}};
    }
    QStringList lines = WrappedLines(slice.Name, room.Style, room.Width);
    QString whole;
    if (lines.size() > MostNameLines) {
        lines = lines.first(MostNameLines);
        lines.back() = Elided(lines.back() + QStringLiteral("\u2026"), room, room.Width);
        whole = slice.Name;
    }
    return {lines << numbers, 0.0, whole};
}

/// The name gives way to the number behind it.
PieLabelWish ShortLabel(const PieSlice& slice, const QString& percent, const LabelRoom& room) {
    const QString number = QStringLiteral(" ") + percent;
    const QString name = Elided(slice.Name, room, room.Width - WidthOf(number, room.Style));
    return {{Isolated(name) + number}, 0.0, name == slice.Name ? QString() : slice.Name};
}

std::vector<PieLabelWish> WishesOf(const PieLayout& pie, LabelContent content, const LabelRoom& room) {
    const double total = TotalOf(pie.Slices);
    std::vector<PieLabelWish> wishes;
    double before = 0.0;
    for (const PieSlice& slice : pie.Slices) {
        const QString percent = PercentText(slice.Count, total);
        PieLabelWish wish = content == LabelContent::WholeNameAndCount ? WholeLabel(slice, percent, room)
                                                                       : ShortLabel(slice, percent, room);
        wish.Angle = pie.Start + FullCircle * (before + slice.Count / 2) / total;
        wishes.push_back(wish);
        before += slice.Count;
    }
    return wishes;
}

double WidestLine(const std::vector<PieLabelWish>& wishes, const TextStyle& style) {
    double widest = 0.0;
    for (const PieLabelWish& wish : wishes) {
        for (const QString& line : wish.Lines) {
            widest = std::max(widest, WidthOf(line, style));
        }
    }
    return widest;
}

/// Where the first slice begins so that the largest lies on the left, and the small ones fan out on the right.
double LargestOnTheLeft(const std::vector<PieSlice>& slices) {
    const auto largest = std::ranges::max_element(slices, {}, &PieSlice::Count);
    double before = largest->Count / 2;
    for (auto slice = slices.begin(); slice != largest; ++slice) {
        before += slice->Count;
    }
    return FullCircle / 2 - FullCircle * before / TotalOf(slices);
}

/// The widest that the labels of one side may become.
double LabelWidth(const QRectF& place, double radiusShare) {
    const double radius = std::max(LeastRadius, std::min(place.width(), place.height()) * radiusShare);
    const double besideCircle = place.width() / 2 - PieLabelDistance() - radius;
    const double most = place.width() / 2 - PieLabelDistance() - LeastRadius;
    return std::min(std::max(place.width() * LabelShare, besideCircle), most);
}

PieLayout Labelled(PieLayout pie, const Labelling& labelling, const QRectF& place, const TextStyle& style) {
    const LabelRoom room{style, LabelWidth(place, labelling.RadiusShare)};
    const std::vector<PieLabelWish> wishes = WishesOf(pie, labelling.Content, room);
    const double beside = std::min(WidestLine(wishes, style), room.Width) + PieLabelDistance();
    const double radius = std::min(place.width() / 2 - beside, place.height() / 2 - LineHeight(style));
    pie.Circle = {place.center(), std::max(LeastRadius, radius)};
    pie.Labels = LayOutPieLabels(wishes, pie.Circle, place, style);
    return pie;
}

std::size_t CutNames(const PieLayout& pie) {
    return static_cast<std::size_t>(
        std::ranges::count_if(pie.Labels.Texts, [](const PlacedText& text) { return !text.Whole.isEmpty(); }));
}

/// The first way of labelling in which nothing is wrong, or the one in which the least is.
PieLayout BestLabelled(PieLayout pie, const QRectF& place, const TextStyle& style) {
    std::optional<PieLayout> best;
    const auto badness = [](const PieLayout& one) { return std::pair(one.Labels.Faults, CutNames(one)); };
    for (const Labelling& labelling : Labellings) {
        for (const double start : std::array{TwelveOClock, LargestOnTheLeft(pie.Slices)}) {
            pie.Start = start;
            const PieLayout layout = Labelled(pie, labelling, place, style);
            if (!best || badness(layout) < badness(*best)) {
                best = layout;
            }
            if (badness(*best) == std::pair<std::size_t, std::size_t>(0, 0)) {
                return *best;
            }
        }
    }
    return *best;
}

}  // namespace

PieLayout LayOutPie(const std::vector<PieSlice>& categories, const QRectF& place, const ChartStyle& style) {
    PieLayout best;
    best.Labels.Faults = categories.size() + 1;
    for (std::size_t most = MostNamedSlices; most > 0 && best.Labels.Faults > 0; --most) {
        PieLayout pie;
        pie.Slices = Gathered(categories, most);
        Paint(pie.Slices, style);
        pie = BestLabelled(pie, place, style.Text());
        best = pie.Labels.Faults < best.Labels.Faults ? pie : best;
    }
    return best;
}

}  // namespace quillara
