#pragma once

#include <span>

#include "engine/CaseSource.h"
#include "engine/HostBuffer.h"
#include "engine/PassLayout.h"
#include "engine/RowSelection.h"
#include "engine/TallyRows.h"

namespace drilldown {

/// Sorts the rows of a block into those that a list keeps and those that it deletes for missing data.
class CasewiseRows {
  public:
    /// Blocks have at most `room` rows.
    CasewiseRows(CAnalysisSupport& host, std::size_t room)
        : Kept(host, room), Deleted(host, room), IsMissing(host, room) {}

    /// False when there was no memory.
    explicit operator bool() const noexcept { return Kept && Deleted && IsMissing; }
    struct Parts {
        WeightedRows Kept;
        WeightedRows Deleted;
    };
    /// Deleted are rows in which one of `columns` is missing. Valid until the next call.
    [[nodiscard]] Parts Split(const CaseColumns& block, const PassLayout& layout, std::span<const std::size_t> columns,
                              const WeightedRows& rows) const;

  private:
    RowList Kept;
    RowList Deleted;
    HostBuffer<bool> IsMissing;
};

}  // namespace drilldown
