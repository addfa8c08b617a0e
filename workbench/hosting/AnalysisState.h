#pragma once

#include <exception>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "host/ActiveCommand.h"
#include "host/AnalysisDialog.h"
#include "host/CaseBlocks.h"
#include "host/Commons.h"
#include "host/ResultSubject.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/NewTables.h"
#include "workbench/hosting/SingleLabels.h"
#include "workbench/hosting/TableCaseBlocks.h"
#include "workbench/windows/MessageQueue.h"

/// The host's way into an analysis: its document and its sequence.
struct AnalysisBinding {
    static void Bind(CAnalysisSupport& analysis, CAnalysisDoc* document) { analysis.Document = document; }
    static const SequenceStep* Sequence(const CAnalysisSupport& analysis) { return analysis.Sequence; }
    static int SequenceRows(const CAnalysisSupport& analysis) { return analysis.SequenceRows; }
};

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

/// The cases that the plots of one command are made of.
struct KeptPlotRows {
    CaseFilter Filter = nullptr;  ///< null: none are kept
    std::uint64_t Command = 0;  ///< number of the command
    std::vector<std::uint32_t> Rows;
};

/// What the dialogs of an analysis stand on. Windows go before the queue does.
struct DialogState {
    MessageQueue Queue;
    std::unique_ptr<CAnalysisModelessDialog> Startup;  ///< null: no startup dialog, or it has ended
    std::optional<ActiveCommand> Command;  ///< the message of the startup dialog that runs
    bool IsAutomated = false;  ///< a script drives the analysis
    std::uint64_t CommandCount = 0;  ///< messages of dialogs so far, the one that runs included
    int ModalWindows = 0;  ///< that stand open
    std::exception_ptr Failure;  ///< of a script in a modal window; not yet told
    std::map<std::string, std::int32_t> Settings;  ///< those of a document without a store
};

/// All that a document keeps for its analysis: the host's side of CAnalysisSupport.
struct AnalysisState {
    AnalysisState(const DataTable& table, const AnalysisServices& services);
    AnalysisState(const AnalysisState&) = delete;
    AnalysisState& operator=(const AnalysisState&) = delete;
    ~AnalysisState();

    [[nodiscard]] const DataTable& Table() const { return *Input; }
    /// Exchanges the table, with all cases selected and no weight.
    void Exchange(std::shared_ptr<const DataTable> table);
    /// The variable of a number counted from 1; null when there is none.
    [[nodiscard]] const Variable* FindVariable(int number) const;
    /// The result of reading a case, numbered from 1, as far as the selection decides it.
    [[nodiscard]] CaseResult ResultOf(std::int32_t caseNumber) const;
    /// Whether the user asks to cancel now.
    [[nodiscard]] bool AskForBreak() const;
    void ReportProgress(std::int32_t done) const;
    /// The results of a case selection, one per case, or empty for all.
    void Select(std::vector<CaseResult> results);
    /// The variable that gives the weights, by its index; nothing: none is defined. One that is defined may be switched
    /// off.
    void ChooseWeight(std::optional<std::size_t> variable, bool isOn = true);
    /// Writes the fields of the commons that the host keeps up to date.
    void FillCommons() const;
    void Trace(std::string_view call) const;

    const AnalysisServices& Services;
    std::vector<CaseResult> Selection;  ///< one per case, or empty for all
    std::string SelectionFormula;  ///< the formula that made it, when a formula did
    std::optional<std::size_t> WeightVariable;  ///< index of the variable that is defined
    bool IsWeighted = false;  ///< the weight that is defined is switched on
    const double* Weights = nullptr;  ///< one per case, missing ones aren't positive; null: no weight is in force
    BoundCommons Commons;
    AllocationRecord Memory;
    ProgressState Progress;
    SingleLabelsOfTable Labels;
    bool BlocksOffered = true;
    TableCaseBlocks Blocks;
    NewTables Tables;  ///< data tables that are being written, and those finished
    OpenDocuments Documents;
    KeptPlotRows PlotRowsOfCommand;
    ResultSubject NextSubject;  ///< what the analysis has said of its next result
    CountedPointer<ResultDocument> LastRouted;  ///< the document that went its normal way last
    DialogState Dialogs;

  private:
    const DataTable* Input;
    std::shared_ptr<const DataTable> OwnedInput;  // keeps a table that the user has opened
    std::vector<double> CleanWeights;  // stands in for a weight column that can't be handed out as it is
};

/// The state of a document; without a document that of an empty table.
[[nodiscard]] AnalysisState& StateOf(CAnalysisDoc* document);

}  // namespace quillara
