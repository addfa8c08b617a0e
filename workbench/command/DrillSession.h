#pragma once

#include <cstddef>
#include <vector>

#include "workbench/command/DialogSession.h"
#include "workbench/command/NamedVariables.h"
#include "workbench/scripting/CategorizationOption.h"
#include "workbench/scripting/CategoryAnswer.h"
#include "workbench/scripting/GroupWalk.h"

namespace quillara {

/// One drill through the dialogs of its analysis. Variables go by their numbers, from 1; a list of the dialog may show
/// several of them by the same text.
class DrillSession final : public StepTaker {
  public:
    /// As DialogSession.
    DrillSession(const DataTable& table, CaseSettings settings, AnalysisServices services);

    /// `variables` names at least one. Throws DataError when the analysis has no memory for them.
    void ChooseDrillVariables(const VariableLists& variables);
    void ChooseReviewVariables(const VariableLists& variables);
    /// Toggles a check box that changes how cases are read, by its control id.
    void Toggle(int box);
    /// Sets how a continuous variable that can be drilled on is cut into categories; the same again changes nothing.
    void Categorize(short variable, const Categorization& chosen);

    /// Whether a step on the variable can be taken, or undone.
    [[nodiscard]] bool CanGoDown(short variable) const override;
    [[nodiscard]] bool CanGoUp(short variable) const;
    /// Takes a step on a variable that can be drilled on.
    void Down(short variable, const RowChooser& chooseRow) override;
    /// Undoes the step on a variable that has been drilled on.
    void Up(short variable) override;

    /// Whether a button of the startup dialog is enabled.
    [[nodiscard]] bool CanPress(int button);
    /// Presses it; what it makes goes to the services.
    void Press(int button);
    /// Runs the command of a button that is hidden.
    void PressHidden(int button);
    /// Makes the 3D histograms of review variables, each of the first with each of the second.
    void Show3DHistograms(const std::vector<short>& horizontal, const std::vector<short>& vertical);
    /// The analysis itself, for what the host computes.
    [[nodiscard]] AnalysisDocument& Analysed() { return Dialogs.Analysed(); }

  private:
    void ClickDown(short variable);

    const DataTable& Table;
    DialogSession Dialogs;
    std::vector<short> Downs;  // the variables of the two lists, row by row
    std::vector<short> Ups;
};

}  // namespace quillara
