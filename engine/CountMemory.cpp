#include "engine/CountMemory.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <iterator>
#include <new>
#include <optional>

#include "engine/CasePass.h"
#include "engine/DrillDown.h"
#include "engine/DrillFilter.h"

using namespace drilldown;

namespace {

bool HaveSameBits(double left, double right) {
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

/// Nothing when nothing may be remembered.
std::optional<CountingState> StateOf(CDrillDown& analysis) {
    const std::uint64_t revision = RevisionOf(analysis);
    const CompiledFilter filter(analysis);
    if (revision == 0 || !filter) {
        return std::nullopt;
    }
    CountingState state;
    state.Revision = revision;
    state.Steps.assign(filter.begin(), filter.end());
    state.Weighing = WeightRuleOf(analysis.CaseWeight, analysis.WeightedMoments);
    for (const PassSide side : {DrillSide, ReviewSide}) {
        const SelectionMembers& selection = Selections[side];
        state.Casewise[side] = analysis.*selection.CasewiseOption;
        for (const auto& list : {selection.CategoricalOf(analysis), selection.ContinuousOf(analysis)}) {
            state.Variables[side].insert(state.Variables[side].end(), list.begin(), list.end());
        }
    }
    return state;
}

/// The memory for the present state; null when nothing may be remembered.
CountMemory* MemoryFor(CDrillDown& analysis, std::span<const PassVariable> variables) {
    std::optional<CountingState> state = StateOf(analysis);
    if (!state || HasSharedTargets(variables)) {
        return nullptr;
    }
    if (analysis.Counted == nullptr) {
        analysis.Counted = std::make_unique<CountMemory>();
    }
    analysis.Counted->Enter(std::move(*state));
    return analysis.Counted.get();
}

}  // namespace

void CountMemory::Enter(CountingState state) {
    if (!(State == state)) {
        Records.clear();
        State = std::move(state);
    }
}

void CountMemory::Remember(const PassVariable& variable) {
    const Drill& record = *variable.Feed.Target;
    Counts counts{record.Method, {}};
    counts.Categories.reserve(record.CategorySet.size());
    for (const Categories& category : record.CategorySet) {
        counts.Categories.emplace_back(category.Upper, category.Count);
    }
    Records.insert_or_assign(Key(variable.Side, variable.VarNo), std::move(counts));
}

bool CountMemory::Knows(const PassVariable& variable) const {
    const auto known = Records.find(Key(variable.Side, variable.VarNo));
    if (known == Records.end() || variable.Feed.Target == nullptr ||
        known->second.Method != variable.Feed.Target->Method) {
        return false;
    }
    return std::ranges::equal(variable.Feed.Target->CategorySet, known->second.Categories,
                              [](const Categories& category, const std::pair<double, double>& counted) {
                                  return HaveSameBits(category.Upper, counted.first);
                              });
}

void CountMemory::Restore(const PassVariable& variable) const {
    auto counted = Records.at(Key(variable.Side, variable.VarNo)).Categories.begin();
    for (const Categories& category : variable.Feed.Target->CategorySet) {
        Editable(category).Count = (counted++)->second;
    }
}

std::uint64_t drilldown::RevisionOf(CDrillDown& analysis) {
    return analysis.GetTableColumns() == nullptr ? 0 : analysis.GetCaseRevision();
}

void drilldown::RememberCounts(CDrillDown& analysis, const CasePass& pass, std::span<const PassVariable> variables,
                               std::uint64_t revision) {
    if (RevisionOf(analysis) != revision) {
        return;
    }
    try {
        CountMemory* memory = MemoryFor(analysis, variables);
        for (std::size_t i = 0; i < variables.size() && memory != nullptr; ++i) {
            if (pass.CategoriesOf(i).WouldRecountAlike(RecountOf(variables[i].Side))) {
                memory->Remember(variables[i]);
            }
        }
    } catch (const std::bad_alloc&) {
        analysis.Counted.reset();
    }
}

std::vector<PassVariable> drilldown::TakeKnown(CDrillDown& analysis, std::vector<PassVariable>& variables) {
    try {
        const CountMemory* memory = MemoryFor(analysis, variables);
        const auto isNew = [&](const PassVariable& each) { return memory == nullptr || !memory->Knows(each); };
        std::vector<PassVariable> known;
        std::ranges::remove_copy_if(variables, std::back_inserter(known), isNew);
        std::erase_if(variables, std::not_fn(isNew));
        return known;
    } catch (const std::bad_alloc&) {
        analysis.Counted.reset();
        return {};
    }
}

void drilldown::RestoreCounts(const CDrillDown& analysis, std::span<const PassVariable> known) {
    for (const PassVariable& variable : known) {
        analysis.Counted->Restore(variable);
    }
}
