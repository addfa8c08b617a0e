#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Automation.h"
#include "platform/CountedPointer.h"
#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"
#include "workbench/documents/StepTaken.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisModule.h"
#include "workbench/scripting/CategorizationOption.h"
#include "workbench/scripting/CategoryAnswer.h"
#include "workbench/scripting/ScriptOutputs.h"
#include "workbench/scripting/SubsetStatistics.h"

class CAnalysisModelessDialog;

namespace quillara {

/// Which cases an analysis is to use, and what they weigh.
struct CasesInForce {
    std::string Formula;  ///< of the selection; empty: all cases
    std::optional<std::size_t> Weight;  ///< index of the weight variable; nothing: none
    std::vector<Remark> Notices{};  ///< about formulas of the table
    std::vector<Remark> OnReading{};  ///< about its file; told already
};

/// The cases that the steps in force leave.
struct RemainingSubset {
    SubsetSize Left;
    std::int32_t Of = 0;  ///< the cases before the first step
    std::vector<StepTaken> Steps;  ///< in force, in the order in which they were taken
};

/// A drill-down analysis that a script begins and ends. Without an answer of the script (ScriptDesk) its dialogs are
/// cancelled; its messages are kept there. What the script holds of it lives on behind its end.
class ScriptedAnalysis {
  public:
    /// Opens the startup dialog; nothing is chosen yet. A pass ends as cancelled once the flag is set, which outlives
    /// the analysis. Throws DataError when there is no module or no memory, and as SelectCases.
    ScriptedAnalysis(std::shared_ptr<const DataTable> table, const CasesInForce& cases,
                     const std::atomic<bool>& cancelled);
    ScriptedAnalysis(const ScriptedAnalysis&) = delete;
    ScriptedAnalysis& operator=(const ScriptedAnalysis&) = delete;
    ~ScriptedAnalysis();

    /// The startup dialog as scripts see it, and the analysis; null once closed.
    [[nodiscard]] CountedPointer<IDispatch> Dialog();
    [[nodiscard]] CountedPointer<IDispatch> Analysis();
    /// Presses the button for a step on the current drill-down variable, which is this one by its number from 1, and
    /// chooses the category from the dialog that opens, as FindCategory finds it. Throws DataError when no step can be
    /// taken or there is no such category, and as ActForScript.
    void Down(std::size_t variable, const std::string& category);
    /// The tables of groups by these variables (GroupWalk.h), which are kept with the results. Throws as Down.
    [[nodiscard]] std::vector<SpreadsheetDocument> Each(const std::vector<std::string>& variables);
    /// Keeps what the host has made with the results, under the name of a result.
    void Keep(const std::vector<DocumentContent>& documents, const std::string& result);
    /// A categorization by a method as ParseCategorization reads it, in the cases of the selection. Throws UsageError,
    /// and DataError as InData.
    [[nodiscard]] Cut CutBy(std::size_t variable, const std::string& method);
    /// Brings some categories of a variable, by its number from 1, together as a category of a derived drill variable,
    /// which joins those of the analysis unless it is one already; steps in force stay. Throws DataError when the
    /// variable has no such categories, is no drill variable or is continuous, and as ActForScript.
    struct Grouped {
        std::size_t Variable = 0;  ///< number of the derived one
        std::string Category;
    };
    [[nodiscard]] Grouped Group(std::size_t variable, const std::vector<std::string>& categories);
    /// The names of the variables of its table.
    [[nodiscard]] std::vector<std::string> Names();
    /// The analysis as the host sees it, for what the host computes. Throws as Down once it is closed.
    [[nodiscard]] AnalysisDocument& Analysed();
    /// Stores what the Categorization page shows for the current drill-down variable, as the choice of another one in
    /// the list does.
    void StorePage();
    /// Categorizes the drill-down variable whose row is selected, which is this one by its number from 1, by a method
    /// as ParseCategorization reads it, and stores it. Throws UsageError when the method can't be read, DataError when
    /// the variable can't be categorized so, and as ActForScript.
    void Categorize(std::size_t variable, const std::string& method);
    /// The drill-up list: the variables of the steps that are in force as it shows them. Throws as ActForScript once
    /// closed.
    [[nodiscard]] std::vector<std::string> Steps() const;
    /// What remains now. Nothing once it has closed, and when the analysis doesn't tell its steps.
    [[nodiscard]] std::optional<RemainingSubset> Subset();
    /// The cases before the first step, then behind each step, up and down; nothing where they weren't counted. Throws
    /// as Analysed.
    [[nodiscard]] std::vector<std::optional<std::int32_t>> Sizes();
    /// Closes the analysis with its windows; from within a command of it, at the end of that.
    void Close();

  private:
    /// What lives as long as the analysis.
    struct Whole {
        explicit Whole(std::shared_ptr<const DataTable> table);

        std::shared_ptr<const DataTable> Table;
        AnalysisModule Library;
        AnalysisDocument Document;
    };

    [[nodiscard]] CAnalysisModelessDialog* StartupDialog() const;
    void StepDown(std::size_t variable, const RowChooser& chooseRow);
    [[nodiscard]] CAnalysisModelessDialog& OpenDialog() const;

    std::shared_ptr<Whole> Held;  // null once closed
    std::map<short, Categorization> Entered;  // by the number of the variable, the last one of each
    std::shared_ptr<ScriptOutputs> Kept;  // null: its results aren't kept
};

}  // namespace quillara
