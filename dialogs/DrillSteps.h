#pragma once

#include <cstdint>
#include <functional>

#include "engine/DrillDown.h"

class CDefineTask;

// The drill steps of the startup dialog, as commands: each gives the result of its command.

inline constexpr int DialogStep = 101;  ///< the dialog's step in the sequence table, for records
inline constexpr int RecordKind = 3;

/// Runs a step. When memory fails on the way, documents, lists and controls are brought to the sets as they are then;
/// the failure goes on.
void TakeStep(CDefineTask& task, const std::function<void()>& step);

/// Moves a record from one set to the other, refills the lists, shows what is to be shown before the counts, and reads
/// the counts.
void MoveAndRead(CDefineTask& task, int (CDrillDown::*move)(), void (*showBefore)(CDefineTask&));

/// Whether user-specified categories are chosen on the page and have no boundaries yet.
bool LacksBoundaries(CDefineTask& task);

/// Down: asks for a category of the current drill-down variable and takes the step. Nothing but the categorization and
/// the counts has changed when the user cancels. While user-specified categories have no boundaries it takes no step
/// but has the boundaries asked for, and gives 1.
std::int64_t DrillOneDown(CDefineTask& task);

/// Up: undoes the step that is selected in the drill-up list; nothing without a selection.
std::int64_t DrillOneUp(CDefineTask& task);
