#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "host/CaseBlocks.h"
#include "host/Commons.h"
#include "workbench/support/AnalysisDoc.h"
#include "workbench/support/TableCaseBlocks.h"

namespace quillara {

/// The structures that an analysis shares with its document; null until it binds them.
struct BoundCommons {
    OrvTag* Table = nullptr;
    Orv88Tag* Names = nullptr;
    Wght_com* Weight = nullptr;
};

/// What has been allocated for an analysis, and which allocation is to fail.
struct AllocationRecord {
    std::unordered_set<void*> Live;
    int Calls = 0;
    int FailingCall = 0;  ///< counted from 1; 0: none
};

/// The display of a pass that runs.
struct ProgressState {
    std::string Text;
    bool Running = false;
};

/// All that a document keeps for its analysis: the host's side of CAnalysisSupport.
struct AnalysisState {
    AnalysisState(const DataTable& table, const AnalysisServices& services);
    AnalysisState(const AnalysisState&) = delete;
    AnalysisState& operator=(const AnalysisState&) = delete;

    /// The variable of a number counted from 1; null when there is none.
    [[nodiscard]] const Variable* FindVariable(int number) const;
    /// The result of reading a case, numbered from 1, as far as the selection decides it.
    [[nodiscard]] CaseResult ResultOf(std::int32_t caseNumber) const;
    /// Whether the user asks to cancel now.
    [[nodiscard]] bool AskForBreak() const;
    void ReportProgress(std::int32_t done) const;
    /// The variable that gives the weights; null: no weight is in force.
    void ChooseWeight(const Variable* variable);
    /// Writes the fields of the commons that the host keeps up to date.
    void FillCommons() const;

    const DataTable& Table;
    const AnalysisServices& Services;
    std::vector<CaseResult> Selection;  ///< one per case, or empty for all
    const double* Weights = nullptr;  ///< one per case, missing ones aren't positive; null: no weight is in force
    BoundCommons Commons;
    AllocationRecord Memory;
    ProgressState Progress;
    bool BlocksOffered = true;
    TableCaseBlocks Blocks;

  private:
    std::vector<double> CleanWeights;  // stands in for a weight column that can't be handed out as it is
};

}  // namespace quillara
