#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "engine/CaseSource.h"
#include "engine/CasewiseRows.h"
#include "engine/CategoryTally.h"
#include "engine/DrillDown.h"
#include "engine/DrillFilter.h"
#include "engine/MomentTally.h"
#include "engine/PassLayout.h"
#include "engine/PassRules.h"
#include "engine/RowSelection.h"
#include "host/ParallelRuns.h"

namespace drilldown {

enum class PassOutcome : std::uint8_t { Completed, Cancelled };

/// One pass over the cases of the table: decides for each case whether it takes part, with which weight and for which
/// list, and feeds the values to the tallies of the variables. Statistics stay in the moment tally until its owner
/// stores them; categories are counted in the records when the pass has ended, if not before. A cancelled pass has
/// counted the cases before the cancel. Nothing is allocated per case. Variables, and rows where their order makes no
/// difference, are counted by the host's threads at once where it offers some.
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
    /// Counts so many cases that another pass over whole columns has read, without progress and polls.
    void RunAgainUpTo(std::int32_t lastCase);
    [[nodiscard]] std::int32_t CasesRead() const noexcept { return Source.CasesRead(); }
    /// Whether the host gave whole columns, so that a part of the cases can be read again.
    [[nodiscard]] bool CanRunAgain() const noexcept { return Source.WholeColumns() != nullptr; }
    /// The tally of a variable, by its place among them.
    [[nodiscard]] const CategoryTally& CategoriesOf(std::size_t variable) const { return CategoryTallies[variable]; }

  private:
    /// What one thread does with a block: the moments of some variables, the categories of one in some rows, or those
    /// of some in the order of the cases.
    struct Share {
        enum class Kind : std::uint8_t { Moments, Categories, OrderedCategories };
        Kind What = Kind::Moments;
        PassSide Side = DrillSide;
        std::size_t First = 0;  ///< place of the first variable; among the ordered ones
        std::size_t Count = 0;  ///< number of variables
        std::size_t Part = 0;  ///< of the rows, of so many
        std::size_t Parts = 1;
    };

    void DivideWork();
    void DivideMoments(PassSide side, std::size_t first, std::size_t count);
    void CountBlocks();
    [[nodiscard]] bool CountsNothing() const;
    void TallyBlock(const CaseColumns& block);
    void ChooseSides(const CaseColumns& block, const WeightedRows& remaining);
    void DivideCategories();
    void DivideOrdered(PassSide side);
    [[nodiscard]] PassSide SideOf(std::size_t variable) const;
    void DoShare(const Share& share);
    void AddCategories(const Share& share, const WeightedRows& rows);
    void AddInOrder(const Share& share, const WeightedRows& rows);

    CDrillDown& Analysis;
    const PassRules& Rules;
    MomentTally* Moments;
    CompiledFilter Filter;
    PassLayout Layout;
    CaseSource Source;
    ParallelRuns* Threads;  // null where everything is done one after another
    std::size_t RowsWorthSharing;
    std::size_t ThreadCount;
    RowSelection Selection;
    std::vector<CasewiseRows> Casewise;  // of each side that has the test, in their order
    std::vector<CategoryTally> CategoryTallies;
    std::vector<std::size_t> Ordered;  // variables that are counted in the order of the cases, those of a side together
    bool KeepsOrder = false;  // sums of weights are rounded
    std::vector<Share> Shares;  // the longest first
    std::array<WeightedRows, PassSides> SideRows;  // of the present block
    std::vector<TallyColumn> Columns;  // of the variables of the pass in the present block
    bool HasMemory;
};

}  // namespace drilldown
