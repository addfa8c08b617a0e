#include "workbench/exploration/BrushedBars.h"

#include <algorithm>

namespace quillara {

BrushedBars::BrushedBars(const CGraphBrushRgnGraph& regions) : Bars(regions.Regions()) {
    int selected = -1;
    if (regions.getSelected(selected) && CanBePicked(selected)) {
        Current = selected;
    }
}

bool BrushedBars::CanBePicked(int bar) const {
    return bar >= 0 && static_cast<std::size_t>(bar) < Bars.size() && Region(bar).Top > Region(bar).Bottom;
}

std::optional<int> BrushedBars::At(double x, double y, double least) const {
    const auto found = std::ranges::find_if(Bars, [&](const BrushRegion& bar) {
        return bar.Left <= x && x <= bar.Right && bar.Bottom <= y && y <= std::max(bar.Top, bar.Bottom + least);
    });
    const int bar = static_cast<int>(found - Bars.begin());
    return found != Bars.end() && CanBePicked(bar) ? std::optional(bar) : std::nullopt;
}

void BrushedBars::Move(int direction) {
    const int count = static_cast<int>(Bars.size());
    const int from = Current ? *Current : (direction > 0 ? -1 : count);
    for (int bar = from + direction; bar >= 0 && bar < count; bar += direction) {
        if (CanBePicked(bar)) {
            Current = bar;
            return;
        }
    }
}

std::string BrushedBars::Line() const {
    std::string line = Current ? Region(*Current).Tip : std::string();
    for (std::size_t end = line.find('\n'); end != std::string::npos; end = line.find('\n')) {
        line.replace(end, 1, ", ");
    }
    return line;
}

}  // namespace quillara
