#pragma once

#include "workbench/command/DrillOptions.h"
#include "workbench/command/NamedVariables.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// Puts a step on a derived grouping variable in place of each step on several categories of a variable, and adds the
/// grouping to the table and to what is derived; a step up from the variable leaves its grouping then. `variables` are
/// those of the drill without groupings. Throws DataError when there are no such categories or the variable is
/// continuous.
void GroupSteps(DataTable& table, DrillOptions& options, const VariableChoice& variables);

}  // namespace quillara
