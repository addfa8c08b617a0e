#include "workbench/charts/BoxPanels.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace quillara {
namespace {

constexpr double MostRatio = 10.0;  // of the range of a panel to that of a box
constexpr double RangeRoom = 0.05;
constexpr double LargestPlain = 1e200;  // magnitudes that a plot holds as they are
constexpr double SmallestPlain = 1e-200;
constexpr double DaysAround = 3.0;  // a date without spread
constexpr double SecondsAround = 300.0;  // a time without spread

/// The range of numbers, by halves so that none is too large for a double.
class Reach {
  public:
    void Include(double number) {
        if (std::isfinite(number)) {
            Low = std::min(Low, number);
            High = std::max(High, number);
        }
    }
    [[nodiscard]] double HalfWidth() const { return High / 2 - Low / 2; }
    /// What the range is measured by: that of a single value is the value itself.
    [[nodiscard]] double HalfMeasure() const { return Low < High ? HalfWidth() : std::fabs(Low / 2); }
    [[nodiscard]] Reach With(const Reach& other) const {
        Reach both = *this;
        both.Include(other.Low);
        both.Include(other.High);
        return both;
    }

    double Low = std::numeric_limits<double>::infinity();
    double High = -std::numeric_limits<double>::infinity();
};

Reach ReachOf(const BoxStatistics& box) {
    Reach reach;
    for (const double number : {box.Middle, box.BoxLow, box.BoxHigh, box.WhiskerLow, box.WhiskerHigh}) {
        reach.Include(number);
    }
    for (const std::vector<double>* ends : {&box.Outliers, &box.Extremes}) {
        if (!ends->empty()) {
            reach.Include(ends->front());
            reach.Include(ends->back());
        }
    }
    return reach;
}

/// A panel that is being filled.
struct Group {
    BoxPanel Panel;
    Reach Whole;
    double LeastHalf = std::numeric_limits<double>::infinity();  // of the boxes, but for those at 0

    [[nodiscard]] bool Takes(const Reach& box, ValueKind kind) const {
        const double whole = Whole.With(box).HalfWidth();
        const double half = box.HalfMeasure();
        const double least = half > 0.0 ? std::min(LeastHalf, half) : LeastHalf;
        return kind == Panel.Kind && whole <= MostRatio * least;
    }
    void Add(std::size_t place, const Reach& box) {
        Panel.Boxes.push_back(place);
        Whole = Whole.With(box);
        if (box.HalfMeasure() > 0.0) {
            LeastHalf = std::min(LeastHalf, box.HalfMeasure());
        }
    }
};

NumberRange RoomAround(NumberRange range, ValueKind kind) {
    const double around = kind == ValueKind::Date                                       ? DaysAround
                          : kind == ValueKind::TimeOfDay || kind == ValueKind::DateTime ? SecondsAround
                                                                                        : 0.0;
    return range.Low == range.High && around > 0.0 ? NumberRange{range.Low - around, range.High + around}
                                                   : Widened(range, RangeRoom);
}

BoxPanel Finished(const Group& group) {
    BoxPanel panel = group.Panel;
    const double magnitude = std::max(std::fabs(group.Whole.Low), std::fabs(group.Whole.High));
    const double width = group.Whole.HalfWidth();
    if (magnitude > LargestPlain || (magnitude > 0.0 && magnitude < SmallestPlain) ||
        (width > 0.0 && width < SmallestPlain)) {
        panel.Unit = std::ldexp(1.0, std::max(std::ilogb(magnitude), std::numeric_limits<double>::min_exponent));
    }
    panel.Range = RoomAround({group.Whole.Low / panel.Unit, group.Whole.High / panel.Unit}, panel.Kind);
    return panel;
}

}  // namespace

bool IsDrawn(const BoxStatistics& box) {
    return box.Cases > 0 && std::isfinite(box.Middle);
}

namespace {

/// The boxes of groups are compared with each other, whatever their ranges, and groups without cases keep their places.
BoxPanel PanelOfGroups(const BoxPlot& plot, ValueKind kind) {
    Group group{.Panel = {.Boxes = {}, .Kind = kind, .Range = {}}, .Whole = {}};
    for (std::size_t place = 0; place < plot.Boxes.size(); ++place) {
        if (IsDrawn(plot.Boxes[place])) {
            group.Add(place, ReachOf(plot.Boxes[place]));
        }
    }
    group.Panel.Boxes.resize(plot.Boxes.size());
    std::iota(group.Panel.Boxes.begin(), group.Panel.Boxes.end(), std::size_t{0});
    return Finished(group);
}

}  // namespace

std::vector<BoxPanel> PanelsOf(const BoxPlot& plot, const Subject& about) {
    if (plot.Groups) {
        return std::ranges::any_of(plot.Boxes, IsDrawn) ? std::vector{PanelOfGroups(plot, about.KindOf(0))}
                                                        : std::vector<BoxPanel>();
    }
    std::vector<Group> groups;
    std::vector<std::size_t> empty;
    for (std::size_t place = 0; place < plot.Boxes.size(); ++place) {
        if (!IsDrawn(plot.Boxes[place])) {
            empty.push_back(place);
            continue;
        }
        const Reach reach = ReachOf(plot.Boxes[place]);
        const ValueKind kind = about.KindOf(place);
        auto group = std::ranges::find_if(groups, [&](const Group& each) { return each.Takes(reach, kind); });
        if (group == groups.end()) {
            group = groups.insert(groups.end(), Group{.Panel = {.Boxes = {}, .Kind = kind, .Range = {}}, .Whole = {}});
        }
        group->Add(place, reach);
    }
    std::vector<BoxPanel> panels;
    std::ranges::transform(groups, std::back_inserter(panels), Finished);
    if (!panels.empty()) {
        std::vector<std::size_t>& first = panels.front().Boxes;
        first.insert(first.end(), empty.begin(), empty.end());
        std::ranges::sort(first);
    }
    return panels;
}

}  // namespace quillara
