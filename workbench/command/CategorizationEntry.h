#pragma once

#include "workbench/command/CategorizationOption.h"
#include "workbench/command/DialogSession.h"

namespace quillara {

/// Enters a categorization on the Categorization page, for the variable whose row is selected in the drill-down list.
/// Boundaries take effect at once; the rest does when a row of that list is clicked, or at the next step or result.
/// Throws DataError when the boundaries aren't accepted.
void EnterCategorization(DialogSession& dialogs, const Categorization& chosen);

}  // namespace quillara
