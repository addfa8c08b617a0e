#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "host/CaseBlocks.h"
#include "workbench/command/Categorization.h"
#include "workbench/command/CategoryLookup.h"
#include "workbench/data/DataTable.h"
#include "workbench/support/AnalysisDoc.h"

namespace quillara {

/// What is in force while the cases are read.
struct CaseSettings {
    std::vector<CaseResult> Selection;  ///< one per case; empty: all cases
    std::optional<std::size_t> Weight;  ///< index of the weight variable; nothing: none
};

/// The check boxes of an analysis, by their numbers.
enum class OptionBox : int {
    WeightedMoments = 204,
    CasewiseDeletion = 9128,
    ReviewCasewiseDeletion = 9107,
    CountMissing = 9127,
};

/// Drives one analysis of the drill-down module without a screen: does what the commands of its dialog do, in their
/// order. Variables go by their numbers, from 1. Every operation that reads cases throws Interrupted when the user
/// asked to cancel; the driver is then of no more use.
class DrillDriver {
  public:
    /// Chooses the row of a category list that a step keeps. When it throws, no step is taken.
    using RowChooser = std::function<std::size_t(const CategoryList&)>;

    /// An analysis of a table, which outlives the driver. Of the services ChooseVariables is the driver's own matter.
    /// Throws DataError when the module can't be loaded or has no memory.
    DrillDriver(const DataTable& table, CaseSettings settings, AnalysisServices services);
    DrillDriver(const DrillDriver&) = delete;
    DrillDriver& operator=(const DrillDriver&) = delete;
    ~DrillDriver();

    /// Button 9050. `variables` names at least one.
    void ChooseDrillVariables(const VariableLists& variables);
    /// Button 9080. `variables` names at least one.
    void ChooseReviewVariables(const VariableLists& variables);
    /// Toggles a check box.
    void Press(OptionBox box);
    /// Sets how a continuous variable that can be drilled on is cut into categories; the same again changes nothing.
    void Categorize(short variable, const Categorization& chosen);

    /// Whether a step on the variable can be taken, or undone.
    [[nodiscard]] bool CanGoDown(short variable) const;
    [[nodiscard]] bool CanGoUp(short variable) const;
    /// Button 9056 on a variable that can be drilled on.
    void Down(short variable, const RowChooser& chooseRow);
    /// Button 9057 on a variable that has been drilled on.
    void Up(short variable);

    /// Whether the button of a result is enabled.
    [[nodiscard]] bool CanShow(int button) const;
    /// Presses it; its documents go to the services.
    void Show(int button);

  private:
    struct State;
    std::unique_ptr<State> Analysis;
};

}  // namespace quillara
