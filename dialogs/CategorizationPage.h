#pragma once

#include <cstdint>

class CDefineTask;

// Clicks on the Categorization page, as commands of the startup dialog: each gives the result of its command. They
// change the page and the scratch values only; what stands there is stored by ApplyCategorization.

/// A radio button: the method (a CategorizationMethod) is chosen, and its inputs show their resting values.
std::int64_t ChooseMethod(CDefineTask& task, std::int16_t method);

/// "at minimum": whether steps start at the smallest value or at one that is given.
std::int64_t ToggleStartAtMinimum(CDefineTask& task);

/// The boundaries button: takes the user's boundaries for the selected variable.
std::int64_t EditBoundaries(CDefineTask& task);
