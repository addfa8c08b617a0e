#pragma once

// Ids of the controls that the analysis itself addresses. Ids are stored, scripted and shown to hosts; they never
// change.

/// Controls of the startup dialog.
enum StartupControl : int {
    DrillDownListControl = 9053,  ///< drill-down variables
    DrillUpListControl = 9054,  ///< drill-up variables
    BrushButton = 9103,
};
