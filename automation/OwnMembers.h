#pragma once

#include <string>

#include "platform/Automation.h"

class CDefineTask;

// The members of the startup dialog that no control stands for: the current variables, the category and the boundaries.
// Each works on an open dialog, gives a status, and may throw without memory. A text that a member takes begins with a
// token: a number, or a bare or quoted text.

namespace drilldown {

// The variable for the next step down, or up. E_FAIL while there is no variable to choose from.

HRESULT ReadDrillDownVariable(CDefineTask& task, std::string& text);
HRESULT ReadDrillUpVariable(CDefineTask& task, std::string& text);

/// Makes a variable the current one, by number or by the beginning of its name. A number from 1 to 32,767 is taken
/// whether or not it is a drill variable; of a name that none has, E_FAIL.
HRESULT WriteDrillDownVariable(CDefineTask& task, const VARIANT& value);
/// The same among the variables that were drilled on.
HRESULT WriteDrillUpVariable(CDefineTask& task, const VARIANT& value);

// The category for the next step down. E_FAIL while none is chosen.

/// The name of a distinct value; under other methods the number chosen; Missing for what has no name.
HRESULT ReadDrillDownCategory(CDefineTask& task, std::string& text);
/// Chooses a category: a row by its number, one by its name, that of missing data, or the first by an empty text.
HRESULT WriteDrillDownCategory(CDefineTask& task, const VARIANT& value);
/// All categories that can be chosen: "0 Female | 1 Male".
HRESULT ReadCategorySelections(CDefineTask& task, std::string& text);
/// Changes nothing: a recorded script writes back what it has read.
HRESULT WriteCategorySelections(CDefineTask& task, const VARIANT& value);

// The boundaries of user-specified categories.

/// " 18 25.5": each behind a blank. E_FAIL without boundaries, and under another method.
HRESULT ReadUserDefinedBoundaries(CDefineTask& task, std::string& text);
/// Stores a list of numbers; E_FAIL, and nothing stored, when it is none or too long.
HRESULT WriteUserDefinedBoundaries(CDefineTask& task, const VARIANT& value);

/// Takes the blanks at the ends of a text that a script has written, and expands it when it is a key.
void CleanText(CDefineTask& task, std::string& text);

/// Whether two texts are the same but for the case of their letters from A to Z.
bool EqualButForCase(const std::string& left, const std::string& right);

}  // namespace drilldown
