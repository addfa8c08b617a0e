#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/AnalysisDoc.h"
#include "host/AnalysisSupport.h"
#include "host/CaseBlocks.h"
#include "platform/CountedPointer.h"
#include "workbench/hosting/AnalysisServices.h"

namespace quillara {

struct AnalysisState;
class AnalysisObject;
class OpenDocuments;
class Window;
struct DataTable;

/// The host's owner of one analysis: binds it to a data table with its case selection and weight, runs its sequence,
/// answers its calls, and owns its startup dialog. The table doesn't change under it; the user may open another.
class AnalysisDocument : public CAnalysisDoc {
  public:
    /// The table outlives the document.
    explicit AnalysisDocument(const DataTable& table);
    /// Closes the analysis: tells it, then destroys its dialog and it, unless scripts hold the dialog: then both go
    /// with the last reference. Not while a command of the analysis runs.
    ~AnalysisDocument() override;

    /// Takes an analysis and becomes its document. An analysis taken earlier closes and is destroyed.
    void Adopt(std::unique_ptr<CAnalysisSupport> analysis);
    /// Runs the steps of the analysis's sequence from the first on; false when a step failed.
    bool RunSequence();
    /// The analysis that was adopted; there must be one.
    [[nodiscard]] CAnalysisSupport& Analysis();
    [[nodiscard]] bool HasAnalysis() const { return Owned != nullptr; }
    /// Whether it is the document of an analysis, which may have been destroyed.
    [[nodiscard]] bool Owns(const CAnalysisSupport& analysis) const { return Owned.get() == &analysis; }
    /// The window of the startup dialog; null before the sequence has run and once the dialog is closed.
    [[nodiscard]] Window* StartupWindow();
    /// Runs the messages that wait for its windows, and lets closed ones go, but not within a command. Throws what a
    /// script has thrown in a modal window since the last time.
    void RunMessages();

    [[nodiscard]] const DataTable& Table() const;
    /// Selects cases: one result per case (Use or Skip), or empty for all. Throws DataError when the number is another.
    void SetSelection(std::vector<CaseResult> results);
    /// Chooses the weight variable by its index in the table; nothing: no weight is in force.
    void SetWeight(std::optional<std::size_t> variable);
    /// How many threads its passes and plots take; 0, as at the start: as many as the machine has cores.
    void SetThreads(std::int32_t threads);
    /// Whether the analysis is offered the services for quick passes (the default) or reads one case at a time.
    void OfferCaseBlocks(bool offered);
    /// Whether what is done in its windows from now on is a script's; a person's at the start.
    void SetAutomated(bool automated);
    /// Closes its window and its object, as for scripts it ends now.
    void WithdrawFromScripts();
    /// The analysis as scripts see it; null without one.
    [[nodiscard]] CountedPointer<IDispatch> AutomationObject();
    /// Shares the life of the analysis.
    [[nodiscard]] std::shared_ptr<CAnalysisSupport> ShareAnalysis() const { return Owned; }

    /// The result documents of the analysis, and those that stand in windows of their own.
    [[nodiscard]] OpenDocuments& Documents();
    void RemoveFromAnalysisList(IDispatch* document) override;
    /// A user closes a data table that the analysis has saved: the recorder hears of it. The table can still be opened.
    void CloseData(const DataTable& table);

    /// Lets the n-th call of AllocMem from now on fail, counted from 1, and the ones behind it succeed; 0: none.
    void FailAllocation(int call);
    /// Calls of AllocMem since the last FailAllocation.
    [[nodiscard]] int AllocationCalls() const;
    /// Blocks from AllocMem that FreeMem has not taken back.
    [[nodiscard]] std::size_t LiveAllocations() const;

    /// The host's side of the analysis.
    [[nodiscard]] AnalysisState& State() { return *Host; }

    AnalysisServices Services;

  private:
    void Close();
    void EndDialog();

    std::unique_ptr<AnalysisState> Host;
    std::shared_ptr<CAnalysisSupport> Owned;
    CountedPointer<AnalysisObject> Object;  // null until somebody asks for it
};

}  // namespace quillara
