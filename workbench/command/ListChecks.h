#pragma once

#include "workbench/command/NamedVariables.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// Throws DataError for a text among the continuous variables, and for one among the categorical ones with more
/// different texts than an analysis takes as categories: it would cut their numbers into intervals.
void CheckTexts(const DataTable& table, const VariableChoice& variables);

}  // namespace quillara
