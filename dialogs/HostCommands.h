#pragma once

#include <cstdint>

class CDefineTask;

// Commands of the startup dialog that open a dialog of the host. Each gives the result of its command.

/// Case selection. Intended: the counts are read again whatever the user did there, unlike after the weight dialog;
/// the analysis doesn't see the selection.
std::int64_t DefineCaseSelection(CDefineTask& task);

/// Weights: the counts are read again when the weight variable or its switch has changed.
std::int64_t DefineWeights(CDefineTask& task);

/// Another data file, with which the analysis starts anew.
std::int64_t OpenData(CDefineTask& task);
