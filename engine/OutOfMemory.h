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
/// Intended: told in a flag of its own, unlike a change of settings, which the first result takes as done with, also
/// when its pass fails; what a result has begun to show stays as it is to its end, and the next one reads again.
inline int ReportToBeReadAgain(CDrillDown& analysis) {
    analysis.ReadFailed = true;
    return ReportNotEnoughMemory(analysis);
}

}  // namespace drilldown
