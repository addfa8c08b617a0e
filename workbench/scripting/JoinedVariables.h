#pragma once

#include <cstddef>
#include <map>

#include "workbench/data/DerivedVariables.h"
#include "workbench/scripting/CategorizationOption.h"
#include "workbench/scripting/DialogActions.h"

namespace quillara {

class AnalysisDocument;

/// Adds a derived variable to the table of an analysis; selection, weight and steps stay. Throws as Derive.
void ExtendTable(AnalysisDocument& document, const DerivedVariable& derived);

/// Whether a variable, by its number from 1, is among the continuous drill variables, or among any.
[[nodiscard]] bool IsContinuousDrillVariable(AnalysisDocument& document, short variable);
[[nodiscard]] bool IsDrillVariable(AnalysisDocument& document, short variable);

/// Makes a variable a categorical drill variable of an analysis that goes on. A new choice of variables begins the
/// exploration anew; so all steps are undone before it and taken again behind it, with the categorizations as they
/// were: as `entered` says of variables whose page still shows that method, else as the page shows them. The analysis
/// has taken no step then as far as its history goes. Throws DataError when a step can't be taken again.
void JoinDrillVariables(DialogActions& actions, AnalysisDocument& document, short variable,
                        const std::map<short, Categorization>& entered);

}  // namespace quillara
