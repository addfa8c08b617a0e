#pragma once

#include "workbench/scripting/DialogActions.h"
#include "workbench/scripting/GroupWalk.h"

namespace quillara {

/// Takes steps in the startup dialog of an analysis as a person does: clicks the row of a variable, then a button.
class ListedSteps final : public StepTaker {
  public:
    /// Both outlive it.
    ListedSteps(DialogActions& actions, AnalysisDocument& document) : Actions(actions), Document(document) {}

    [[nodiscard]] bool CanGoDown(short variable) const override;
    void Down(short variable, const RowChooser& chooseRow) override;
    /// Throws DataError when there is no step on the variable, or the analysis doesn't tell its steps.
    void Up(short variable) override;
    /// Makes the variable the current one. Throws DataError when it isn't in the drill-down list.
    void ClickDown(short variable);

  private:
    [[nodiscard]] const Variable& VariableOf(short variable) const;
    [[nodiscard]] std::ptrdiff_t RowOf(short variable) const;

    DialogActions& Actions;
    AnalysisDocument& Document;
};

}  // namespace quillara
