#include "workbench/exploration/WindowPlaces.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>

namespace quillara {
namespace {

constexpr double BestRatio = 1.3;  // width to height
constexpr int CascadeStep = 28;

/// How far the windows of so many columns are from the best ratio.
double Strangeness(int windows, int columns, WindowSize area) {
    const int rows = (windows + columns - 1) / columns;
    const double width = static_cast<double>(area.Width) / columns;
    const double height = static_cast<double>(area.Height) / rows;
    const int unfilled = rows * columns - windows;
    return std::abs(std::log(width / std::max(1.0, height) / BestRatio)) + 0.25 * unfilled / columns;
}

/// The number that is nearest to the best shape among those that need no scrolling, else as many as have room.
int BestColumns(int windows, WindowSize area, WindowSize least) {
    const int most = std::clamp(area.Width / std::max(1, least.Width), 1, windows);
    std::optional<int> best;
    for (int columns = 1; columns <= most; ++columns) {
        const int rows = (windows + columns - 1) / columns;
        const bool fits = rows * least.Height <= area.Height;
        if (fits && (!best || Strangeness(windows, columns, area) < Strangeness(windows, *best, area))) {
            best = columns;
        }
    }
    return best.value_or(most);
}

std::int64_t Overlap(const WindowPlace& one, const WindowPlace& other) {
    const std::int64_t width = std::min(one.X + one.Width, other.X + other.Width) - std::max(one.X, other.X);
    const std::int64_t height = std::min(one.Y + one.Height, other.Y + other.Height) - std::max(one.Y, other.Y);
    return width > 0 && height > 0 ? width * height : 0;
}

/// Where a window may begin along one side: at the rim, and where others end, or a little inside of those.
std::set<int> Starts(const std::vector<WindowPlace>& others, int WindowPlace::*start, int WindowPlace::*length,
                     int last) {
    std::set<int> starts{0, std::max(0, last)};
    for (const WindowPlace& other : others) {
        for (const int at : {other.*start + other.*length, other.*start + CascadeStep}) {
            if (at >= 0 && at <= last) {
                starts.insert(at);
            }
        }
    }
    return starts;
}

}  // namespace

std::vector<WindowPlace> TiledPlaces(std::size_t windows, WindowSize area, WindowSize least) {
    std::vector<WindowPlace> places;
    const int count = static_cast<int>(windows);
    const int columns = count == 0 ? 1 : BestColumns(count, area, least);
    const int rows = (count + columns - 1) / columns;
    area.Height = std::max(area.Height, rows * least.Height);
    for (int i = 0; i < count; ++i) {
        const int row = i / columns;
        const int inRow = row + 1 == rows ? count - row * columns : columns;
        const int column = i % columns;
        const int left = area.Width * column / inRow;
        const int top = area.Height * row / rows;
        places.push_back({left, top, area.Width * (column + 1) / inRow - left, area.Height * (row + 1) / rows - top});
    }
    return places;
}

WindowPlace FreePlace(const std::vector<WindowPlace>& others, WindowSize wanted, WindowSize area) {
    WindowPlace best;
    std::int64_t least = std::numeric_limits<std::int64_t>::max();
    const WindowSize size{std::min(wanted.Width, area.Width), std::min(wanted.Height, area.Height)};
    const auto columns = Starts(others, &WindowPlace::X, &WindowPlace::Width, area.Width - size.Width);
    for (const int y : Starts(others, &WindowPlace::Y, &WindowPlace::Height, area.Height - size.Height)) {
        for (const int x : columns) {
            const WindowPlace place{x, y, size.Width, size.Height};
            std::int64_t hidden = 0;
            for (const WindowPlace& other : others) {
                hidden += Overlap(place, other);
            }
            if (hidden < least) {
                least = hidden;
                best = place;
            }
        }
    }
    return best;
}

}  // namespace quillara
