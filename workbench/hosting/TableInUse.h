#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/CaseBlocks.h"
#include "workbench/data/DataTable.h"
#include "workbench/hosting/BoundCommons.h"
#include "workbench/hosting/CaseRows.h"
#include "workbench/hosting/SingleLabels.h"

class CAnalysisDoc;

namespace quillara {

/// The table of an analysis, which of its cases are selected, what they weigh, and what the analysis sees of that in
/// the structures that it shares.
class TableInUse {
  public:
    explicit TableInUse(const DataTable& table) : Rows(table), Input(&table) {}

    [[nodiscard]] const DataTable& Table() const { return *Input; }
    /// The same, for who keeps it; null: the first one, which is its opener's.
    [[nodiscard]] const std::shared_ptr<const DataTable>& OwnedTable() const { return OwnedInput; }
    /// How many other tables have been opened since the first.
    [[nodiscard]] int OthersOpened() const { return Opened; }
    /// Exchanges the table, with all cases selected and no weight.
    void Exchange(std::shared_ptr<const DataTable> table);
    /// Shares structures with the analysis from now on, which makes room for the variables that they tell: those that
    /// may join the table are among them until TellVariables.
    void Share(const BoundCommons& commons);
    /// Tells the analysis how many variables there are.
    void TellVariables() const { Commons.Fill(*this); }
    /// Exchanges the table for the same with more variables; selection and weight stay. Throws DataError when the
    /// analysis has no room for them.
    void Extend(std::shared_ptr<const DataTable> longer);
    /// The variable of a number counted from 1; null when there is none.
    [[nodiscard]] const Variable* Find(int number) const;
    /// The result of reading a case, numbered from 1, as far as the selection decides it.
    [[nodiscard]] CaseResult ResultOf(std::int32_t caseNumber) const;
    /// Whether any case is selected.
    [[nodiscard]] bool HasCases() const;
    /// The results of a case selection, one per case, or empty for all; and the formula that made them, if one did.
    void Select(std::vector<CaseResult> results, std::string formula = {});
    /// The variable that gives the weights, by its index; nothing: none is defined. One that is defined may be switched
    /// off.
    void ChooseWeight(std::optional<std::size_t> variable, bool isOn = true);

    /// How many variables may join the table; to be set before the analysis shares its structures.
    std::size_t RoomForMore = 0;
    std::vector<CaseResult> Selection;  ///< one per case, or empty for all
    std::size_t SelectionMark = 0;  ///< the same for the same results, however they were made; 0: all cases
    std::string SelectionFormula;  ///< the formula that made it, when a formula did
    std::optional<std::size_t> WeightVariable;  ///< index of the variable that is defined
    bool IsWeighted = false;  ///< the weight that is defined is switched on
    Column Weights;  ///< one per case, missing ones aren't positive; empty: no weight is in force
    bool HasFractions = false;  ///< some of these have, of the cases that are selected
    CaseRows Rows;  ///< the cases of the table, whichever are selected
    std::function<void()> Changed;  ///< called when table, selection or weight have changed
    SingleLabelsOfTable Labels;
    BoundCommons Commons;

  private:
    void Take(std::shared_ptr<const DataTable> table);
    void TellChange() const;
    [[nodiscard]] bool FindFractions() const;
    [[nodiscard]] std::size_t MostVariables() const;

    const DataTable* Input;
    int Opened = 0;
    std::size_t Room = 0;  // variables that the analysis has room for
    std::shared_ptr<const DataTable> OwnedInput;  // keeps a table that the user has opened
};

/// That of a document; without a document an empty one.
[[nodiscard]] TableInUse& TableOf(CAnalysisDoc* document);

}  // namespace quillara
