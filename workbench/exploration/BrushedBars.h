#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/Brushing.h"

namespace quillara {

/// The bars of a brushing graph while one of them is to be picked, by index from 0, from left to right.
class BrushedBars {
  public:
    /// Begins with the bar that is selected in the regions, if it can be picked.
    explicit BrushedBars(const CGraphBrushRgnGraph& regions);

    [[nodiscard]] const BrushRegion& Region(int bar) const { return Bars[static_cast<std::size_t>(bar)]; }
    /// An empty bar can't be picked: there is nothing to drill down to.
    [[nodiscard]] bool CanBePicked(int bar) const;
    /// The bar that is lit; nothing: none can be picked.
    [[nodiscard]] std::optional<int> Lit() const { return Current; }

    /// The bar at a point in units of the axes that can be picked. Bars lower than `least` count as that high, so that
    /// they can be pointed at.
    [[nodiscard]] std::optional<int> At(double x, double y, double least) const;
    void Light(int bar) { Current = bar; }
    /// Lights the next bar on the right that can be picked, or on the left (-1); at the end it stays.
    void Move(int direction);

    /// What a bar is, on one line: "CATEGORY: Female, COUNT: 1077"; empty when none is lit.
    [[nodiscard]] std::string Line() const;

  private:
    const std::vector<BrushRegion>& Bars;
    std::optional<int> Current;
};

}  // namespace quillara
