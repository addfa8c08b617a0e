#pragma once

#include "host/ControlTable.h"

class CAnalysisDialog;

namespace quillara {

/// The row of a control in the control table of a dialog; null without a dialog, a table or a row.
[[nodiscard]] const ControlRow* RowOf(const CAnalysisDialog* dialog, int control);
/// Whether a control is a button that makes results.
[[nodiscard]] bool MakesOutput(const CAnalysisDialog* dialog, int control);
/// Whether it is a button that opens the selection of variables.
[[nodiscard]] bool ChoosesVariables(const CAnalysisDialog* dialog, int control);

}  // namespace quillara
