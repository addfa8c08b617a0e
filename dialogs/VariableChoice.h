#pragma once

class CDefineTask;

// The choice of variables in the startup dialog. Each runs until the user has chosen at least one variable, and then
// shows the new state; 0 when the user cancels, else 1. An empty choice that is cancelled afterwards has its effect on
// the analysis all the same.

int SelectDrillVariables(CDefineTask& task);
/// Intended: leaves the current drill-down variable alone, unlike SelectDrillVariables; choosing what is reviewed
/// doesn't disturb a drill step that is being prepared.
int SelectReviewVariables(CDefineTask& task);

/// Writes the names of all chosen variables into the captions of the dialog.
void ShowChosenVariables(CDefineTask& task);
