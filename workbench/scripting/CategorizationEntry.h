#pragma once

#include <optional>

#include "workbench/scripting/CategorizationOption.h"
#include "workbench/scripting/DialogActions.h"

namespace quillara {

/// Enters a categorization on the Categorization page, for the variable whose row is selected in the drill-down list.
/// Boundaries take effect at once; the rest does when a row of that list is clicked, or at the next step or result.
/// Throws DataError when the boundaries aren't accepted.
void EnterCategorization(DialogActions& dialogs, const Categorization& chosen);

/// What the page shows of the variable whose row is selected, boundaries with the digits that their dialog shows.
/// Nothing for one that can't be categorized.
[[nodiscard]] std::optional<Categorization> ReadCategorization(DialogActions& dialogs);

}  // namespace quillara
