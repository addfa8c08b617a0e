#pragma once

#include <cstdint>

#include "dialogs/ModalDialogs.h"
#include "engine/HostBuffer.h"

class CDrillDown;

/// Lets the user build a new order of the drill-down variables item by item, from a list of the present order to a list
/// of the new one. OK puts the placed variables first, the others behind them in their present order, and gives 1; 0 is
/// a cancel, which changes nothing.
class ReorderDrillDown : public CDrillDownModalDialog {
  public:
    /// A dialog without a window, with no variable placed; the analysis outlives it. Without memory for the map the
    /// user is told so when the dialog starts, which then ends at once with 0.
    explicit ReorderDrillDown(CDrillDown& analysis);

    std::int64_t EventHandler(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam) override;

    CDrillDown* Analysis;  ///< not owned
    drilldown::HostBuffer<std::int32_t> OrderMap;  ///< new place of each variable, -1: not placed
    std::int32_t OrderCount;  ///< entries of OrderMap: one for each variable, in its present order
    std::int32_t OrderAssigned = 0;  ///< entries that are placed; their places are 0 .. OrderAssigned - 1

  private:
    std::int64_t Start(HWND window);
    std::int64_t OnCommand(HWND window, int command);
    /// Places the selected variable of the present order at the end of the new one.
    void Place(HWND window);
    /// Takes the selected variable of the new order back.
    void TakeBack(HWND window);
};
