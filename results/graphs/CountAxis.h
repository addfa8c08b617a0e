#pragma once

#include <cstdint>

class CChartBuilder;

/// The top of a count axis for a highest bar: the next of 1, 2, 5, 10, 20, 50, ... above it, where a bar within 15
/// units in the last place of such a number has reached it. Below 1.0 the number is cut to a whole one, so 0 for a bar
/// below 0.5. A negative or nearly zero bar gives 1. The axis ends at 2,000,000,000.
[[nodiscard]] std::int32_t NiceAxisMax(double highest);

/// Gives the y axis of a chart its top, step and labels for a highest bar.
void FillCountAxis(CChartBuilder& chart, double highest);
