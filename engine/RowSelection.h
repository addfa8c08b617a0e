#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "engine/CaseDecisions.h"
#include "engine/CaseSource.h"
#include "engine/DrillFilter.h"
#include "engine/PassLayout.h"
#include "engine/TallyRows.h"
#include "engine/WideRows.h"
#include "host/CaseConditions.h"

namespace drilldown {

/// Rows of a block and their weights, in memory of the host.
struct RowList {
    RowList(CAnalysisSupport& host, std::size_t size) : Rows(host, size + WideSlack), Weights(host, size + WideSlack) {}
    explicit operator bool() const noexcept { return Rows && Weights; }

    HostBuffer<std::int32_t> Rows;
    HostBuffer<double> Weights;
};

/// Chooses the rows of a block that take part in a pass: the cases of the selection that remain under the steps and
/// have a positive weight. Which remain is the host's answer where it offers one, else each case is tested.
class RowSelection {
  public:
    /// `filter` null: the steps play no part. Blocks have at most `room` rows that remain. All outlive it.
    RowSelection(CDrillDown& analysis, const CompiledFilter* filter, const PassLayout& layout, std::size_t room);

    /// False when there was no memory.
    explicit operator bool() const noexcept { return static_cast<bool>(Remaining); }
    /// Asks the host which cases remain; to be called once, before the first block.
    void FindRemaining(CDrillDown& analysis, const CaseSource& source);
    /// How many cases behind so many the next block may have.
    [[nodiscard]] std::int32_t BlockBehind(std::int32_t cases) const;
    /// The rows of a block; valid until the next call.
    WeightedRows Of(const CaseColumns& block);
    /// Whether all weights so far were whole and their sum so small that every order of adding them gives the same.
    [[nodiscard]] bool HasExactSums() const noexcept { return SumsAreExact; }

  private:
    [[nodiscard]] WeightedRows RowsInSubset(const CaseColumns& block) const;
    [[nodiscard]] WeightedRows RowsBySelection(const CaseColumns& block) const;
    [[nodiscard]] WeightedRows Thinned(const TableColumn& column, const CaseCondition& condition,
                                       const WeightedRows& rows) const;
    WeightedRows Weighed(const CaseColumns& block, const WeightedRows& rows);
    void NoteSums(std::size_t count);
    /// As a list, or as rows without gaps when that is what they are.
    [[nodiscard]] WeightedRows Listed(std::size_t count, const CaseColumns& block) const;

    const CompiledFilter* Filter;
    const PassLayout& Layout;
    WeightRule Weighing;
    std::int32_t Room;
    RowList Remaining;
    std::optional<CaseSubset> Subset;  // nothing: the module tests the cases itself
    double SumOfWeights = 0.0;
    bool SumsAreExact = true;
};

}  // namespace drilldown
