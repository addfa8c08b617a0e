#pragma once

#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/RowSet.h"
#include "workbench/documents/SpreadsheetDocument.h"
#include "workbench/plots/CaseColumns.h"

namespace quillara {

/// How weights count.
enum class WeightCounting { AsTheyAre, RoundedToWhole };

/// How many of some cases lack a value of a variable for each reason, and without one; each that a case has. Empty for
/// a variable whose missing data isn't told apart.
[[nodiscard]] std::vector<MissingCount> CountReasons(const Variable& variable, const RowSet& rows,
                                                     const CaseWeights& weights, WeightCounting counting);

}  // namespace quillara
