#pragma once

#include <span>
#include <string>

#include "host/CaseBlocks.h"
#include "workbench/data/DataTable.h"
#include "workbench/scripting/CategorizationOption.h"

namespace quillara {

class AnalysisDocument;

/// A categorization as an analysis takes it for a variable: periods of the calendar become steps or bounds from the
/// range of its dates in the selected cases (`selection` has an entry for each case, or none). Bounds are upper ones:
/// those of months are last days of months. Throws DataError when dates or times are given for a variable that holds
/// none, and when there are more periods than intervals can be made.
[[nodiscard]] Categorization InData(const Categorization& chosen, const Variable& variable,
                                    std::span<const CaseResult> selection);

/// Remarks on a categorization that can be chosen for a variable and doesn't come to what it says.
void NoticeCategorization(AnalysisDocument& document, const Categorization& chosen, const Variable& variable);

}  // namespace quillara
