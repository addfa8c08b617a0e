#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/CaseDecisions.h"
#include "engine/CaseSource.h"
#include "engine/CategoryTally.h"
#include "engine/DrillDown.h"
#include "engine/DrillFilter.h"
#include "engine/HostBuffer.h"
#include "engine/MomentTally.h"
#include "engine/PassLayout.h"
#include "engine/PassRules.h"

namespace drilldown {

enum class PassOutcome : std::uint8_t { Completed, Cancelled };

/// One pass over the cases of the table: decides for each case whether it takes part, with which weight and for which
/// list, and feeds the values to the tallies of the variables. Categories are counted in the records as the pass goes;
/// statistics stay in the moment tally until its owner stores them. A cancelled pass has counted the cases before the
/// cancel. Nothing is allocated per case.
class CasePass {
  public:
    /// `variables` are those of the drill side, then those of the review side; `moments`, null for none, has as
    /// many in the same order. Both outlive the pass.
    CasePass(CDrillDown& analysis, const PassRules& rules, std::span<const PassVariable> variables,
             MomentTally* moments);

    CasePass(const CasePass&) = delete;
    CasePass& operator=(const CasePass&) = delete;
    /// Ends the progress display: naming and building of categories belong to the pass.
    ~CasePass();

    /// False when there was no memory; the pass may not be run then.
    explicit operator bool() const noexcept { return HasMemory; }
    /// Starts the progress display; a cancel ends it at once.
    [[nodiscard]] PassOutcome Run();

  private:
    /// Rows of a block with their weights, in memory of the host.
    struct RowList {
        RowList(CAnalysisSupport& host, std::size_t size) : Rows(host, size), Weights(host, size) {}
        explicit operator bool() const noexcept { return Rows && Weights; }
        void Set(std::size_t place, std::int32_t row, double weight) const {
            Rows[place] = row;
            Weights[place] = weight;
        }
        [[nodiscard]] WeightedRows First(std::size_t count) const { return {Rows.data(), Weights.data(), count}; }

        HostBuffer<std::int32_t> Rows;
        HostBuffer<double> Weights;
    };

    void TallyBlock(const CaseColumns& block);
    std::size_t WeighRows(const CaseColumns& block) const;
    std::size_t FilterRows(const CaseColumns& block, std::size_t count) const;
    std::size_t KeepCasewise(const CaseColumns& block, PassSide side, const WeightedRows& rows) const;
    void TallySide(const CaseColumns& block, PassSide side, const WeightedRows& remaining);
    void TallyRows(const PassLayout::Side& side, const WeightedRows& rows);

    CDrillDown& Analysis;
    const PassRules& Rules;
    MomentTally* Moments;
    CompiledFilter Filter;
    PassLayout Layout;
    WeightRule Weighing;
    CaseSource Source;
    RowList Remaining;
    RowList Kept;
    RowList Deleted;
    std::vector<CategoryTally> CategoryTallies;
    std::vector<TallyColumn> Columns;  // of the variables of the pass in the present block
    bool HasMemory;
};

}  // namespace drilldown
