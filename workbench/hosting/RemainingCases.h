#pragma once

#include "workbench/data/RowSet.h"

namespace quillara {

class AnalysisDocument;

/// The cases of the selection that the steps in force leave, by the filter of the analysis itself; until the next
/// step or pass. Null when the analysis doesn't tell its steps or there is no memory.
[[nodiscard]] const RowSet* RemainingCases(AnalysisDocument& document);

}  // namespace quillara
