#pragma once

#include <algorithm>

#include "engine/DrillDown.h"

namespace drilldown {

/// What sets apart the two graphs of a kind, that of the drill-down variables and that of the review variables.
struct GraphTwin {
    CDrillDown::DrillSet* CDrillDown::*Set;
    int TitleText;  ///< id of the first title line, or of its beginning
};

/// Recounts all variables when the counts of this one are stale. Sizes of graphs are taken behind that.
inline void RecountIfStale(CDrillDown& analysis, const Drill& record) {
    if (record.Isset == 0) {
        analysis.ReadBeforeDrill(0);  // after a cancel the counts are shown as they stand
    }
}

/// Shows a graph for each variable of the set, with fresh counts. `showOne(twin, record)` gives false when there is no
/// memory, which ends the walk. Gives 1 when the walk was finished, else 0.
// Intended: no message without memory and no refusal when no case remains, unlike in the descriptives; an empty subset
// depends on being shown as bars and slices of 0.
template <typename Show>
int ShowEach(CDrillDown& analysis, const GraphTwin& twin, Show showOne) {
    analysis.BringUpToDate();
    const CDrillDown::DrillSet& set = *(analysis.*twin.Set);
    const bool finished = std::all_of(set.begin(), set.end(), [&](const Drill& record) {
        RecountIfStale(analysis, record);
        return showOne(analysis, twin, record);
    });
    return finished ? 1 : 0;
}

}  // namespace drilldown
