#pragma once

#include <cstddef>
#include <list>
#include <span>
#include <vector>

#include "host/CaseBlocks.h"
#include "host/CaseConditions.h"
#include "workbench/data/DataTable.h"
#include "workbench/data/RowSet.h"

namespace quillara {

/// The cases of a table that meet a condition. A variable that the table doesn't have is 0 everywhere.
[[nodiscard]] RowSet CasesThatMeet(const DataTable& table, const CaseCondition& condition);

/// Finds the cases that meet conditions. What it finds for a condition it keeps, so that steps which come and go cost
/// no reading of a column; of conditions long unused it forgets as many as it must to stay within a bound of memory.
class ConditionIndex {
  public:
    explicit ConditionIndex(std::size_t mostBytes = std::size_t{256} << 20) : MostBytes(mostBytes) {}

    /// The cases of a selection (empty: all) that meet all conditions. Stands until the next call. Between calls of
    /// Forget table and selection are the same.
    [[nodiscard]] const RowSet& Find(const DataTable& table, std::span<const CaseResult> selection,
                                     std::span<const CaseCondition> conditions);
    /// Table or selection have changed.
    void Forget();

    /// Columns read so far to find the cases of a condition.
    [[nodiscard]] std::size_t Reads() const { return ReadCount; }

  private:
    struct Entry {
        CaseCondition Condition;
        RowSet Cases;
    };

    const RowSet& CasesOf(const DataTable& table, const CaseCondition& condition);
    void MakeRoom(std::size_t bytes);

    std::size_t MostBytes;
    std::size_t ReadCount = 0;
    std::list<Entry> Known;  // the one used last at the front
    bool IsSelectionKnown = false;
    RowSet Selected;
    std::vector<CaseCondition> Joined;  // the conditions of Found
    bool IsFound = false;
    RowSet Found;
};

}  // namespace quillara
