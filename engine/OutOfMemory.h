#pragma once

#include "engine/DrillDown.h"
#include "resources/StringTable.h"

namespace drilldown {

/// Tells the user that a pass had no memory. Gives the result of the operation that failed, 0.
inline int ReportNotEnoughMemory(CAnalysisSupport& analysis) {
    analysis.dsplst(0, analysis.GetResourceString(NotEnoughMemoryText));
    return 0;
}

/// The same for a pass that should have made statistics: until one has, they are those of other cases.
inline int ReportToBeReadAgain(CDrillDown& analysis) {
    analysis.DataChanged = 1;
    return ReportNotEnoughMemory(analysis);
}

}  // namespace drilldown
