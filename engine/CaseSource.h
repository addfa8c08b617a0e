#pragma once

#include <cstdint>
#include <span>

#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "host/CaseBlocks.h"
#include "host/TableColumns.h"

namespace drilldown {

/// Consecutive cases of the variables of a pass, as columns that begin with the first of them. Valid until the next
/// block is read.
struct CaseColumns {
    std::int32_t Count = 0;
    std::int32_t First = -1;  ///< cases of the table before the block; -1: cases may be left out between
    const CaseResult* Results = nullptr;  ///< Use or Skip per case; null: every case is Use
    TableColumn Weights;  ///< stored weights; Entries null: no weight is in force
    const TableColumn* Columns = nullptr;  ///< one per variable asked for
};

/// The cases of the table in order, for one pass: from the host's whole columns, else from its blocks, else gathered
/// case by case through ReadCase. All end the same way, with the case before which the user cancelled.
class CaseSource {
  public:
    /// `variables` are the ones that the pass needs; they outlive the source.
    CaseSource(CDrillDown& analysis, std::span<const std::int16_t> variables);

    /// False when there was no memory.
    explicit operator bool() const noexcept { return HasMemory; }
    /// The whole columns, one per variable asked for; null where the host has none. Blocks may be long where it has.
    [[nodiscard]] const TableColumn* WholeColumns() const noexcept { return Table == nullptr ? nullptr : Whole.data(); }
    /// How many cases the host wants counted at a time, the same for the whole pass; where it has whole columns.
    [[nodiscard]] std::size_t CasesBetweenPolls() const noexcept { return static_cast<std::size_t>(CasesAtATime); }
    /// Whether blocks know which cases of the table they hold.
    [[nodiscard]] bool NumbersCases() const noexcept { return Table != nullptr || Blocks != nullptr; }
    /// Cases read so far.
    [[nodiscard]] std::int32_t CasesRead() const noexcept { return NextCase - 1; }
    /// Ends the pass behind a case, without polls and progress: for cases of whole columns that were read before.
    void ReadAgainUpTo(std::int32_t lastCase);
    /// Reads the next cases, `most` or fewer; false when there are none left or the user has cancelled.
    bool Next(CaseColumns& block, std::int32_t most);
    [[nodiscard]] bool Cancelled() const noexcept { return Stopped; }

  private:
    TableColumns* FindWholeColumns();
    [[nodiscard]] std::size_t GatheredRoom(std::size_t columns) const;
    void NextFromTable(CaseColumns& block, std::int32_t count);
    void NextFromBlocks(CaseColumns& block, std::int32_t count);
    void NextFromCases(CaseColumns& block, std::int32_t count);
    bool GatherCase(std::int32_t row);

    CDrillDown& Analysis;
    std::span<const std::int16_t> Variables;
    std::int32_t LastCase;
    std::int32_t NextCase = 1;
    bool Stopped = false;
    bool IsRepeated = false;
    HostBuffer<TableColumn> Columns;  // of the present block
    HostBuffer<TableColumn> Whole;  // of the table
    TableColumn WholeWeights;
    TableColumns* Table;  // null when the host can't give all of them
    std::int32_t CasesAtATime;  // as the host says once for the pass
    CaseBlocks* Blocks;  // null when not needed
    HostBuffer<const double*> BlockColumns;
    HostBuffer<double> CaseBuffer;  // one case, indexed by variable number
    HostBuffer<double> Gathered;  // the columns of a block that is gathered case by case
    HostBuffer<double> GatheredWeights;
    bool HasMemory;
};

}  // namespace drilldown
