#pragma once

#include <string>

namespace quillara {

class AnalysisDocument;

/// The variable that the analysis goes by in one of the two lists of the startup dialog, whether or not its row is
/// selected; empty: there is none. The dialog is open.
[[nodiscard]] std::string CurrentVariableOf(AnalysisDocument& document, int list);

/// Clicks a button, a check box or a radio button of the startup dialog, which is open. Before brushing what stands on
/// the Categorization page is stored, as by a click on the selected row; boundaries that are lacking are asked for
/// first, by their button, and without them nothing more is done.
void ClickInStartup(AnalysisDocument& document, int id);

}  // namespace quillara
