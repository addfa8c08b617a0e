#pragma once

#include "engine/Drill.h"
#include "engine/MomentTally.h"

namespace drilldown {

/// Writes what a pass has found of a variable into its record.
inline void StoreStatistics(Drill& record, const MomentStatistics& found) {
    record.Min = found.Min;
    record.Max = found.Max;
    record.Mean = found.Mean;
    record.SumSquares = found.SumSquares;
    record.MissingCount = found.MissingCount;
    record.MissingWeight = found.MissingWeight;
    record.ValidCount = found.ValidCount;
    record.ValidWeight = found.ValidWeight;
}

}  // namespace drilldown
