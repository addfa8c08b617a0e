#include "engine/CasePass.h"

#include <algorithm>

#include "engine/MomentKernel.h"
#include "engine/ParallelParts.h"
#include "resources/StringTable.h"

using namespace drilldown;

namespace {

/// Rows counted at a time where the host has no whole columns.
constexpr std::size_t RowsOfBlock = 1024;
/// Threads beyond these gain nothing.
constexpr std::size_t MostThreads = 64;
/// Cases between two polls where nothing is counted.
constexpr std::int32_t CasesPassedOver = 1 << 20;

std::size_t RoomFor(const PassLayout& layout, const CaseSource& source) {
    // Where a record takes the values of several variables, their order within each case matters.
    if (layout.SharedTargets) {
        return 1;
    }
    return source.WholeColumns() != nullptr ? source.CasesBetweenPolls() : RowsOfBlock;
}

ParallelRuns* ThreadsFor(CDrillDown& analysis, const PassLayout& layout, const CaseSource& source) {
    return layout.SharedTargets || source.WholeColumns() == nullptr ? nullptr : analysis.GetParallelRuns();
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
      Source(analysis, Layout.Needed),
      Threads(ThreadsFor(analysis, Layout, Source)),
      RowsWorthSharing(Threads == nullptr ? 0 : static_cast<std::size_t>(std::max(Threads->CasesWorthSharing(), 0))),
      ThreadCount(
          Threads == nullptr ? 1 : std::min(static_cast<std::size_t>(std::max(Threads->Threads(), 1)), MostThreads)),
      Selection(analysis, rules.Filtered ? &Filter : nullptr, Layout, RoomFor(Layout, Source)),
      Columns(variables.size()),
      HasMemory(Filter && Source && Selection) {
    Casewise.reserve(PassSides);
    for (const PassLayout::Side& side : Layout.Sides) {
        if (side.Casewise) {
            Casewise.emplace_back(analysis, RoomFor(Layout, Source));
            HasMemory = HasMemory && Casewise.back();
        }
    }
    CategoryTallies.reserve(variables.size());
    const bool weighted = WeightRuleOf(analysis.CaseWeight, analysis.WeightedMoments) != WeightRule::None;
    for (std::size_t i = 0; i < variables.size(); ++i) {
        Columns[i].Missing = Layout.Missing[Layout.Columns[i]];
        TallyRoad road{{}, Columns[i].Missing, weighted, ThreadCount};
        if (Source.WholeColumns() != nullptr) {
            road.Whole = Source.WholeColumns()[Layout.Columns[i]];
        }
        CategoryTallies.emplace_back(analysis, variables[i].Feed, road, Layout.SharedTargets);
        HasMemory = HasMemory && CategoryTallies.back();
    }
    DivideWork();
}

CasePass::~CasePass() {
    Analysis.ddstop();
}

PassOutcome CasePass::Run() {
    Analysis.tdstar(Analysis.Table.Cases, Analysis.GetResourceString(ComputingText));
    CountBlocks();
    if (!Source.Cancelled()) {
        return PassOutcome::Completed;
    }
    Analysis.ddstop();
    return PassOutcome::Cancelled;
}

void CasePass::RunAgainUpTo(std::int32_t lastCase) {
    Source.ReadAgainUpTo(lastCase);
    CountBlocks();
}

bool CasePass::CountsNothing() const {
    return Columns.empty() && Rules.ValidVar == ValidVarRule::Untouched;
}

void CasePass::CountBlocks() {
    CaseColumns block;
    if (CountsNothing()) {
        while (Source.Next(block, CasesPassedOver)) {
        }
        return;
    }
    Selection.FindRemaining(Analysis, Source);
    while (Source.Next(block, Selection.BlockBehind(Source.CasesRead()))) {
        TallyBlock(block);
    }
    for (CategoryTally& tally : CategoryTallies) {
        tally.Finish();
    }
}

/// Shares out the work of a block. Moments come first: they take longest.
void CasePass::DivideWork() {
    Shares.clear();
    const bool apart = Layout.Sides[DrillSide].Casewise || Layout.Sides[ReviewSide].Casewise;
    if (Moments != nullptr && !apart) {
        DivideMoments(DrillSide, 0, Columns.size());
    } else if (Moments != nullptr) {
        for (const PassSide side : {DrillSide, ReviewSide}) {
            DivideMoments(side, Layout.Sides[side].First, Layout.Sides[side].Count);
        }
    }
    DivideCategories();
}

PassSide CasePass::SideOf(std::size_t variable) const {
    return variable < Layout.Sides[ReviewSide].First ? DrillSide : ReviewSide;
}

void CasePass::DivideCategories() {
    Ordered.clear();
    for (const PassSide side : {DrillSide, ReviewSide}) {
        DivideOrdered(side);
    }
    const std::size_t parts = ThreadCount > CategoryTallies.size() ? ThreadCount : 1;
    for (std::size_t i = 0; i < CategoryTallies.size(); ++i) {
        const CategoryTally& tally = CategoryTallies[i];
        const std::size_t taken = tally.TakesAnyOrder() ? parts : 1;
        for (std::size_t part = 0; part < taken && tally.IsNeeded() && !tally.IsByPlace(); ++part) {
            Shares.push_back({Share::Kind::Categories, SideOf(i), i, 1, part, taken});
        }
    }
}

/// Variables counted in the order of the cases go side by side, as many as gain from it, but in a group for each
/// thread.
void CasePass::DivideOrdered(PassSide side) {
    constexpr std::size_t smallest = 2;  // each of fewer takes longer
    const std::size_t first = Ordered.size();
    for (std::size_t i = 0; i < CategoryTallies.size(); ++i) {
        if (SideOf(i) == side && CategoryTallies[i].IsByPlace()) {
            Ordered.push_back(i);
        }
    }
    const std::size_t count = Ordered.size() - first;
    const std::size_t needed = (count + OrderedSumsLimit - 1) / OrderedSumsLimit;
    const std::size_t groups = std::max(needed, std::min(ThreadCount, count / smallest));
    for (std::size_t group = 0; group < groups; ++group) {
        const std::size_t begin = group * count / groups;
        const std::size_t end = (group + 1) * count / groups;
        Shares.push_back({Share::Kind::OrderedCategories, side, first + begin, end - begin});
    }
}

/// Several variables go together through the cases, but no fewer groups than threads have something to do.
void CasePass::DivideMoments(PassSide side, std::size_t first, std::size_t count) {
    constexpr std::size_t smallest = 4;  // fewer take as long together
    const std::size_t needed = (count + MomentLaneLimit - 1) / MomentLaneLimit;
    const std::size_t groups = std::max(needed, std::min(ThreadCount, count / smallest));
    for (std::size_t group = 0; group < groups; ++group) {
        const std::size_t begin = group * count / groups;
        const std::size_t end = (group + 1) * count / groups;
        Shares.push_back({Share::Kind::Moments, side, first + begin, end - begin});
    }
}

void CasePass::TallyBlock(const CaseColumns& block) {
    const WeightedRows remaining = Selection.Of(block);
    if (remaining.Count == 0) {
        return;
    }
    if (!Selection.HasExactSums() && !KeepsOrder) {
        KeepsOrder = true;
        std::ranges::for_each(CategoryTallies, &CategoryTally::KeepOrder);
        DivideWork();
    }
    for (std::size_t i = 0; i < Columns.size(); ++i) {
        Columns[i].Entries = block.Columns[Layout.Columns[i]];
    }
    if (Rules.ValidVar == ValidVarRule::RemainingCases) {
        Analysis.ValidVar += static_cast<std::int32_t>(remaining.Count);
    }
    ChooseSides(block, remaining);
    RunParts(remaining.Count < RowsWorthSharing ? nullptr : Threads, Shares.size(),
             [this](std::size_t share) { DoShare(Shares[share]); });
}

/// Sets the rows of each list, and counts those that are deleted for it.
void CasePass::ChooseSides(const CaseColumns& block, const WeightedRows& remaining) {
    std::size_t casewise = 0;
    for (const PassSide side : {DrillSide, ReviewSide}) {
        const PassLayout::Side& list = Layout.Sides[side];
        SideRows[side] = remaining;
        if (list.Casewise) {
            const CasewiseRows::Parts parts =
                Casewise[casewise++].Split(block, Layout, list.CasewiseColumns, remaining);
            SideRows[side] = parts.Kept;
            if (Moments != nullptr && DeletedCaseOf(Rules, side) == DeletedCase::Missing) {
                Moments->AddMissing(list.First, list.Count, parts.Deleted);
            }
        }
    }
    if (Rules.ValidVar == ValidVarRule::KeptCases) {
        Analysis.ValidVar += static_cast<std::int32_t>(SideRows[DrillSide].Count);
    }
}

void CasePass::DoShare(const Share& share) {
    const WeightedRows& rows = SideRows[share.Side];
    switch (share.What) {
        case Share::Kind::Moments:
            Moments->Add(share.First, std::span<const TallyColumn>(Columns).subspan(share.First, share.Count), rows);
            return;
        case Share::Kind::Categories:
            AddCategories(share, rows);
            return;
        case Share::Kind::OrderedCategories:
            AddInOrder(share, rows);
            return;
    }
}

void CasePass::AddCategories(const Share& share, const WeightedRows& rows) {
    const std::size_t begin = share.Part * rows.Count / share.Parts;
    const std::size_t end = (share.Part + 1) * rows.Count / share.Parts;
    CategoryTallies[share.First].Add(Columns[share.First], rows.Part(begin, end - begin), share.Part);
}

void CasePass::AddInOrder(const Share& share, const WeightedRows& rows) {
    std::array<OrderedSums, OrderedSumsLimit> sums{};
    std::array<IntervalPlaces, OrderedSumsLimit> places{};
    std::array<double, GatheredValuesLimit> ones{};
    ones.fill(1.0);
    for (std::size_t done = 0; done < rows.Count; done += GatheredValuesLimit) {
        const WeightedRows part = rows.Part(done, std::min(GatheredValuesLimit, rows.Count - done));
        for (std::size_t i = 0; i < share.Count; ++i) {
            const std::size_t variable = Ordered[share.First + i];
            sums[i] = CategoryTallies[variable].SumsOf(Columns[variable], part, places[i]);
        }
        drilldown::AddInOrder(std::span(sums).first(share.Count), part.Weights == nullptr ? ones.data() : part.Weights,
                              part.Count);
    }
}
