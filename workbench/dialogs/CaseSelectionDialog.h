#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/CaseBlocks.h"
#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"
#include "workbench/dialogs/HostDialog.h"

namespace quillara {

/// The cases that an analysis is to use.
struct CaseChoice {
    std::optional<std::string> Formula;  ///< nothing: all cases
    std::vector<Remark> Notices{};  ///< about the formula
    std::vector<CaseResult> Results;  ///< what the formula makes of each case; empty without one
};

/// Lets the user select cases by a formula.
class CaseSelectionDialog : public HostDialog {
  public:
    enum Id : int {
        AllCases = 10,  ///< radio button
        SelectedCases = 11,  ///< radio button; the formula counts
        Formula = 12,  ///< edit of several lines
        Examples = 13,  ///< formulas of the table's own variables
    };

    /// `formula` is the selection at the start; nothing: all cases. The table outlives the dialog.
    CaseSelectionDialog(MessageQueue& queue, const DataTable& table, const std::optional<std::string>& formula,
                        Tell tell);

    [[nodiscard]] const DataTable& Data() const { return Table; }
    /// What the user has confirmed.
    [[nodiscard]] const CaseChoice& Choice() const { return Chosen; }

  protected:
    void Accept() override;
    void Update() override;

  private:
    const DataTable& Table;
    CaseChoice Chosen;
};

}  // namespace quillara
