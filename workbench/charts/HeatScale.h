#pragma once

#include <vector>

#include "workbench/charts/NumberAxis.h"

namespace quillara {

/// Which place of a range of colours, from 0 (faint) to 1 (strong), stands for a count above 0. Counts of one magnitude
/// are shown in proportion; where one of them would flatten the rest, in proportion to their logarithms.
class HeatScale {
  public:
    explicit HeatScale(const std::vector<double>& counts);

    [[nodiscard]] double ShareOf(double count) const;
    [[nodiscard]] bool IsLogarithmic() const { return Logarithmic; }
    /// Round counts with their texts, between the lowest and the highest of the scale.
    [[nodiscard]] std::vector<AxisMark> Marks() const;
    /// The count at a share of the scale's length, and its share of the colours.
    [[nodiscard]] double PlaceOf(double count) const;
    [[nodiscard]] static double ColorAt(double place);

  private:
    double Low = 0.0;
    double High = 1.0;
    bool Logarithmic = false;
};

}  // namespace quillara
