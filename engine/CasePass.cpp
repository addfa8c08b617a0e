#include "engine/CasePass.h"

#include <algorithm>

#include "resources/StringTable.h"

using namespace drilldown;

namespace {

/// Cases read at a time; the columns of a dozen variables stay in the second cache.
constexpr std::int32_t BlockSize = 1024;

/// Where a record takes the values of several variables, their order within each case matters.
std::int32_t BlockSizeFor(const PassLayout& layout) {
    return layout.SharedTargets ? 1 : BlockSize;
}

DeletedCase DeletedCaseOf(const PassRules& rules, PassSide side) {
    return side == DrillSide ? rules.DrillDeleted : rules.ReviewDeleted;
}

}  // namespace

CasePass::CasePass(CDrillDown& analysis, const PassRules& rules, std::span<const PassVariable> variables,
                   MomentTally* moments)
    : Analysis(analysis),
      Rules(rules),
      Moments(moments),
      Filter(analysis),
      Layout(analysis, rules, variables, Filter),
      Weighing(WeightRuleOf(analysis.CaseWeight, analysis.WeightedMoments)),
      Source(analysis, Layout.Needed, BlockSizeFor(Layout)),
      Remaining(analysis, BlockSize),
      Kept(analysis, BlockSize),
      Deleted(analysis, BlockSize),
      Columns(variables.size()),
      HasMemory(Filter && Source && Remaining && Kept && Deleted) {
    CategoryTallies.reserve(variables.size());
    for (std::size_t i = 0; i < variables.size(); ++i) {
        CategoryTallies.emplace_back(analysis, variables[i].Feed, Layout.SharedTargets);
        Columns[i].Missing = Layout.Missing[Layout.Columns[i]];
        HasMemory = HasMemory && CategoryTallies.back();
    }
}

CasePass::~CasePass() {
    Analysis.ddstop();
}

PassOutcome CasePass::Run() {
    Analysis.tdstar(Analysis.Table.Cases, Analysis.GetResourceString(ComputingText));
    CaseColumns block;
    while (Source.Next(block)) {
        TallyBlock(block);
    }
    if (!Source.Cancelled()) {
        return PassOutcome::Completed;
    }
    Analysis.ddstop();
    return PassOutcome::Cancelled;
}

void CasePass::TallyBlock(const CaseColumns& block) {
    const std::size_t weighed = WeighRows(block);
    const WeightedRows remaining = Remaining.First(Rules.Filtered ? FilterRows(block, weighed) : weighed);
    for (std::size_t i = 0; i < Columns.size(); ++i) {
        Columns[i].Entries.Entries = block.Columns[Layout.Columns[i]];
    }
    if (Rules.ValidVar == ValidVarRule::RemainingCases) {
        Analysis.ValidVar += static_cast<std::int32_t>(remaining.Count);
    }
    for (const PassSide side : {DrillSide, ReviewSide}) {
        TallySide(block, side, remaining);
    }
}

/// Lists the cases of the selection that have a positive weight.
std::size_t CasePass::WeighRows(const CaseColumns& block) const {
    std::size_t count = 0;
    const bool unweighted = Weighing == WeightRule::None || block.Weights == nullptr;
    for (std::int32_t row = 0; row < block.Count; ++row) {
        const double weight = unweighted ? 1.0 : CountingWeight(Weighing, block.Weights[row]);
        const bool used = block.Results == nullptr || block.Results[row] == CaseResult::Use;
        Remaining.Set(count, row, weight);
        count += used && IsPositiveWeight(weight) ? 1 : 0;
    }
    return count;
}

/// Keeps the listed cases that pass every condition.
std::size_t CasePass::FilterRows(const CaseColumns& block, std::size_t count) const {
    std::size_t step = 0;
    for (const CaseCondition& condition : Filter) {
        const double* values = block.Columns[Layout.FilterColumns[step++]];
        std::size_t kept = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::int32_t row = Remaining.Rows[i];
            Remaining.Set(kept, row, Remaining.Weights[i]);
            kept += condition.IsMetBy(values[row]) ? 1 : 0;
        }
        count = kept;
    }
    return count;
}

/// Sorts cases into those that a list keeps and those that it deletes for missing data. Gives the number kept.
std::size_t CasePass::KeepCasewise(const CaseColumns& block, PassSide side, const WeightedRows& rows) const {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < rows.Count; ++i) {
        const std::int32_t row = rows.Rows[i];
        const auto& columns = Layout.Sides[side].CasewiseColumns;
        const bool missing = std::any_of(columns.begin(), columns.end(), [&](std::size_t column) {
            return Layout.Missing[column].Contains(block.Columns[column][row]);
        });
        (missing ? Deleted : Kept).Set(missing ? i - kept : kept, row, rows.Weights[i]);
        kept += missing ? 0 : 1;
    }
    return kept;
}

void CasePass::TallySide(const CaseColumns& block, PassSide side, const WeightedRows& remaining) {
    const PassLayout::Side& list = Layout.Sides[side];
    std::size_t kept = remaining.Count;
    if (list.Casewise) {
        kept = KeepCasewise(block, side, remaining);
        if (Moments != nullptr && DeletedCaseOf(Rules, side) == DeletedCase::Missing) {
            Moments->AddMissing(list.First, list.Count, Deleted.First(remaining.Count - kept));
        }
    }
    if (side == DrillSide && Rules.ValidVar == ValidVarRule::KeptCases) {
        Analysis.ValidVar += static_cast<std::int32_t>(kept);
    }
    TallyRows(list, list.Casewise ? Kept.First(kept) : remaining);
}

void CasePass::TallyRows(const PassLayout::Side& side, const WeightedRows& rows) {
    if (Moments != nullptr) {
        Moments->Add(side.First, std::span<const TallyColumn>(Columns).subspan(side.First, side.Count), rows);
    }
    for (std::size_t i = side.First; i < side.First + side.Count; ++i) {
        CategoryTallies[i].Add(Columns[i], rows);
    }
}
