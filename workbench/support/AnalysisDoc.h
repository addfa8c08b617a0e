#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/AnalysisSupport.h"
#include "host/CaseBlocks.h"
#include "workbench/data/DataTable.h"
#include "workbench/documents/SpreadsheetDocument.h"

namespace quillara {

/// What a two-list variable dialog asks.
struct VariableListRequest {
    std::string Title;
    std::string Label1;
    std::string Label2;
};

/// The answer to it: numbers of variables, from 1.
struct VariableLists {
    std::vector<short> First;
    std::vector<short> Second;
};

/// What an analysis asks of the people and programs around it. Members left empty have the quiet outcome.
struct AnalysisServices {
    /// Answers the two-list dialog; nothing for Cancel, which is also the answer without this service.
    std::function<std::optional<VariableLists>(const VariableListRequest&)> ChooseVariables;
    /// Shows a message.
    std::function<void(std::string_view)> ShowMessage;
    /// Takes a finished spreadsheet. The analysis is in the midst of its result: this may neither call back into it nor
    /// throw.
    std::function<void(SpreadsheetDocument)> TakeSpreadsheet;
    /// Whether the user asked to cancel; asked once per case that is used.
    std::function<bool()> BreakRequested;
    /// The same as a flag, for hosts that cancel from elsewhere: looked at once per case read singly and once per
    /// block. Outlives the document; null: none.
    const std::atomic<bool>* BreakFlag = nullptr;
    /// Progress of a pass: started with a text and a total, told how many cases are done, ended.
    std::function<void(std::string_view text, std::int32_t total)> ProgressStarted;
    std::function<void(std::int32_t done)> ProgressAdvanced;
    std::function<void()> ProgressEnded;
};

struct AnalysisState;

}  // namespace quillara

/// The host's owner of one analysis: binds it to a data table with its case selection and weight, runs its sequence,
/// and answers its calls. The table outlives the document and doesn't change under it.
class CAnalysisDoc {
  public:
    explicit CAnalysisDoc(const quillara::DataTable& table);
    CAnalysisDoc(const CAnalysisDoc&) = delete;
    CAnalysisDoc& operator=(const CAnalysisDoc&) = delete;
    /// Tells the analysis that it closes, then destroys it.
    ~CAnalysisDoc();

    /// Takes an analysis and becomes its document. An analysis taken earlier closes and is destroyed.
    void Adopt(std::unique_ptr<CAnalysisSupport> analysis);
    /// Runs the steps of the analysis's sequence from the first on; false when a step failed.
    bool RunSequence();
    /// The analysis that was adopted; there must be one.
    [[nodiscard]] CAnalysisSupport& Analysis();

    /// Selects cases: one result per case (Use or Skip), or empty for all. Throws DataError when the number is another.
    void SetSelection(std::vector<CaseResult> results);
    /// Chooses the weight variable by its index in the table; nothing: no weight is in force.
    void SetWeight(std::optional<std::size_t> variable);
    /// Whether the analysis is offered columns (the default) or reads one case at a time.
    void OfferCaseBlocks(bool offered);
    /// Lets the n-th call of AllocMem from now on fail, counted from 1, and the ones behind it succeed; 0: none.
    void FailAllocation(int call);
    /// Calls of AllocMem since the last FailAllocation.
    [[nodiscard]] int AllocationCalls() const;
    /// Blocks from AllocMem that FreeMem has not taken back.
    [[nodiscard]] std::size_t LiveAllocations() const;

    quillara::AnalysisServices Services;

  private:
    friend class CAnalysisSupport;  // its calls are answered from here

    /// The state of a document; without a document that of an empty table.
    static quillara::AnalysisState& StateOf(CAnalysisDoc* document);
    void Close();

    std::unique_ptr<quillara::AnalysisState> Host;
    std::unique_ptr<CAnalysisSupport> Owned;
};
