#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "workbench/hosting/AllocationRecord.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/BoundCommons.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/NewTables.h"
#include "workbench/hosting/RoutedResults.h"
#include "workbench/hosting/TableCaseBlocks.h"
#include "workbench/hosting/TableInUse.h"

/// The host's way into an analysis: its document and its sequence.
struct AnalysisBinding {
    static void Bind(CAnalysisSupport& analysis, CAnalysisDoc* document) { analysis.Document = document; }
    static const SequenceStep* Sequence(const CAnalysisSupport& analysis) { return analysis.Sequence; }
    static int SequenceRows(const CAnalysisSupport& analysis) { return analysis.SequenceRows; }
};

namespace quillara {

/// The display of a pass that runs.
struct ProgressState {
    std::string Text;
    bool Running = false;
};

/// All that a document keeps for its analysis, a part for each family of the calls of CAnalysisSupport; who serves one
/// family takes its part.
struct AnalysisState {
    AnalysisState(const DataTable& table, const AnalysisServices& services);
    AnalysisState(const AnalysisState&) = delete;
    AnalysisState& operator=(const AnalysisState&) = delete;
    ~AnalysisState();

    [[nodiscard]] const DataTable& Table() const { return Data.Table(); }

    // What concerns several parts

    /// Exchanges the table, with all cases selected and no weight.
    void Exchange(std::shared_ptr<const DataTable> table);
    /// As TableInUse does it; the analysis sees it in what it shares.
    void ChooseWeight(std::optional<std::size_t> variable, bool isOn = true);
    /// Whether the user asks to cancel now.
    [[nodiscard]] bool AskForBreak() const;
    void ReportProgress(std::int32_t done) const;
    void Trace(std::string_view call) const;

    const AnalysisServices& Services;
    TableInUse Data;
    BoundCommons Commons;
    AllocationRecord Memory;
    ProgressState Progress;
    bool BlocksOffered = true;
    TableCaseBlocks Blocks;
    NewTables Tables;  ///< data tables that are being written, and those finished
    RoutedResults Results;
    DialogState Dialogs;
    std::map<std::string, std::int32_t> Settings;  ///< of a document without a store
};

/// The state of a document; without a document that of an empty table.
[[nodiscard]] AnalysisState& StateOf(CAnalysisDoc* document);

}  // namespace quillara
