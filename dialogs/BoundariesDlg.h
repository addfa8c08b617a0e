#pragma once

#include <cstdint>

#include "dialogs/ModalDialogs.h"

class CDrillDown;

/// Takes the user's upper boundaries for the intervals of the current drill-down variable. The edit box starts empty,
/// also where boundaries are known. OK stores the boundaries in the record and gives 1; 0 is a cancel, which changes
/// nothing.
class CBoundariesDlg : public CDrillDownModalDialog {
  public:
    /// A dialog without a window; the analysis outlives it.
    explicit CBoundariesDlg(CDrillDown& analysis);

    std::int64_t EventHandler(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam) override;

    /// Stores the boundaries that stand in the edit box and marks the counts of the record as stale. Gives their
    /// number; 0, and nothing is stored, when they are refused, which the user is told, or without memory, silently.
    int ParseBoundaries(HWND window);

    CDrillDown* Analysis;  ///< not owned

  private:
    std::int64_t OnCommand(HWND window, int command);
};
