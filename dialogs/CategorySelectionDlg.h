#pragma once

#include <cstdint>
#include <memory>

#include "dialogs/ModalDialogs.h"
#include "host/ListControls.h"

class CDrillDown;

/// Asks which category of the current drill-down variable the next drill step keeps. The list shows the categories that
/// count, in the order of their set, and behind them the missing data. OK stores the row chosen in Selected of the
/// analysis and gives 1; 0 is a cancel, which changes nothing.
class CategorySelectionDlg : public CDrillDownModalDialog {
  public:
    /// A dialog without a window; the analysis outlives it.
    explicit CategorySelectionDlg(CDrillDown& analysis);

    std::int64_t EventHandler(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam) override;

    std::int32_t CategoryRow = -1;  ///< row last reported by the list; -1: none
    CDrillDown* Analysis;  ///< not owned
    std::unique_ptr<CListCtrl> List;  ///< steers the list of categories

  private:
    void Start(HWND window);
    /// Shows the variable and its categories; without memory, neither.
    void ShowCategories(HWND window);
    std::int64_t OnList(const ListNotification& event);
    std::int64_t OnCommand(int command);
    /// Ends the dialog with the row chosen; without one it stays open.
    std::int64_t Accept();
};
