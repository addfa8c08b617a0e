#pragma once

#include <cstdint>

#include "engine/DrillDown.h"
#include "host/ListControls.h"

namespace drilldown {

/// What sets the two lists of the startup dialog apart.
struct ReorderedSet {
    CDrillDown::DrillSet* CDrillDown::*Set;  ///< the records that the rows show
    int (CDrillDown::*Reorder)(const std::int32_t* request, int entries, int placed);
};

/// A list box of records that the user reorders by dragging a row. The set follows at once; nothing else is told of it.
/// Made on the heap and attached to its control, it deletes itself at the end of the control's window.
class DrillSetListBox : public CReorderListBox {
  public:
    /// Steers this list box from now on.
    void AttachTo(HWND listBox);
    void EndOfWindow() override;
    /// Moves the selected row, and its record, so that it stands before row `target`, from 0 to the number of rows, and
    /// selects it there. Nothing changes without a selection, for a row that would stay, and without memory, which the
    /// user is told.
    void MoveSelectionTo(int target) override;

  protected:
    DrillSetListBox(CDrillDown& analysis, const ReorderedSet& reordered);

  private:
    CDrillDown& Analysis;
    const ReorderedSet& Reordered;
    HWND ListHandle = nullptr;  ///< the control that it was attached to
};

}  // namespace drilldown

/// The list of the drill-down variables.
class CDrillReorderListBox : public drilldown::DrillSetListBox {
  public:
    /// The analysis outlives it.
    explicit CDrillReorderListBox(CDrillDown& analysis);
};

/// The list of the drill-up variables, newest step first.
class CDrillUpReorderListBox : public drilldown::DrillSetListBox {
  public:
    /// The analysis outlives it.
    explicit CDrillUpReorderListBox(CDrillDown& analysis);
};
