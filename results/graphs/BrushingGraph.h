#pragma once

#include "results/graphs/VariableBars.h"

/// The bars of the current drill-down variable, which the brushing graph shows and the regions of brushing follow. All
/// variables are recounted first when any drill-down variable is stale. No bars when there is no current variable.
[[nodiscard]] drilldown::VariableBars CurrentBars(CDrillDown& analysis);
