#pragma once

#include "host/AnalysisSupport.h"
#include "resources/StringTable.h"

/// Tells the user that a pass had no memory. Gives the result of the operation that failed, 0.
inline int ReportNotEnoughMemory(CAnalysisSupport& analysis) {
    analysis.dsplst(0, analysis.GetResourceString(NotEnoughMemoryText));
    return 0;
}
