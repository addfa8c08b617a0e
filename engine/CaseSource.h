#pragma once

#include <cstdint>
#include <span>

#include "engine/DrillDown.h"
#include "engine/HostBuffer.h"
#include "host/CaseBlocks.h"

namespace drilldown {

/// Consecutive cases of the variables of a pass, as columns. Valid until the next block is read.
struct CaseColumns {
    std::int32_t Count = 0;
    const CaseResult* Results = nullptr;  ///< Use or Skip per case; null: every case is Use
    const double* Weights = nullptr;  ///< stored weight per case; null: no weight is in force
    const double* const* Columns = nullptr;  ///< one column per variable asked for
};

/// The cases of the table in order, for one pass: from the host's columns where it offers them, else gathered case by
/// case through ReadCase. Both end the same way, with the case before which the user cancelled.
class CaseSource {
  public:
    /// `variables` are the ones that the pass needs; they outlive the source. A block has at most `blockSize` cases.
    CaseSource(CDrillDown& analysis, std::span<const std::int16_t> variables, std::int32_t blockSize);

    /// False when there was no memory.
    explicit operator bool() const noexcept { return HasMemory; }
    /// Reads the next cases; false when there are none left or the user has cancelled.
    bool Next(CaseColumns& block);
    [[nodiscard]] bool Cancelled() const noexcept { return Stopped; }

  private:
    bool NextFromColumns(CaseColumns& block);
    bool NextFromCases(CaseColumns& block);
    bool GatherCase(std::int32_t row);

    CDrillDown& Analysis;
    std::span<const std::int16_t> Variables;
    std::int32_t BlockSize;
    CaseBlocks* Blocks;
    std::int32_t NextCase = 1;
    bool Stopped = false;
    HostBuffer<double> CaseBuffer;  // one case, indexed by variable number
    HostBuffer<double> Gathered;  // the columns of a block that is gathered case by case
    HostBuffer<double> GatheredWeights;
    HostBuffer<const double*> Columns;
    bool HasMemory;
};

}  // namespace drilldown
