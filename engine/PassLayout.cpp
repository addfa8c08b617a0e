#include "engine/PassLayout.h"

#include <algorithm>
#include <set>

using namespace drilldown;

bool drilldown::HasSharedTargets(std::span<const PassVariable> variables) {
    std::set<const Drill*> targets;
    return std::any_of(variables.begin(), variables.end(), [&](const PassVariable& variable) {
        const CategoryFeed& feed = variable.Feed;
        return feed.Counting != CategoryCounting::None && feed.Target != nullptr &&
               (feed.Feeder != feed.Target || !targets.insert(feed.Target).second);
    });
}

PassLayout::PassLayout(CDrillDown& analysis, const PassRules& rules, std::span<const PassVariable> variables,
                       const CompiledFilter& filter)
    : SharedTargets(HasSharedTargets(variables)) {
    for (const PassVariable& variable : variables) {
        Columns.push_back(ColumnOf(analysis, variable.VarNo));
    }
    if (rules.Filtered) {
        for (const CaseCondition& condition : filter) {
            FilterColumns.push_back(ColumnOf(analysis, condition.Variable));
        }
    }
    PlaceSides(variables);
    CollectCasewise(analysis, rules);
}

std::size_t PassLayout::ColumnOf(CDrillDown& analysis, std::int16_t var) {
    const auto place = static_cast<std::size_t>(var);
    if (place >= ColumnsByVariable.size()) {
        ColumnsByVariable.resize(place + 1, NoColumn);
    }
    std::size_t& column = ColumnsByVariable[place];
    if (column == NoColumn) {
        // A missing code doesn't change during a pass, so it is asked for once and not for every value.
        double code = 0.0;
        analysis.getmd5(var, &code);
        column = Needed.size();
        Needed.push_back(var);
        Missing.push_back(RangeNearlyEqualTo(code));
    }
    return column;
}

void PassLayout::PlaceSides(std::span<const PassVariable> variables) {
    const auto drills = std::count_if(variables.begin(), variables.end(),
                                      [](const PassVariable& variable) { return variable.Side == DrillSide; });
    Sides[DrillSide].Count = static_cast<std::size_t>(drills);
    Sides[ReviewSide].First = static_cast<std::size_t>(drills);
    Sides[ReviewSide].Count = variables.size() - static_cast<std::size_t>(drills);
}

void PassLayout::CollectCasewise(CDrillDown& analysis, const PassRules& rules) {
    for (const PassSide side : {DrillSide, ReviewSide}) {
        const SelectionMembers& selection = Selections[side];
        Sides[side].Casewise = Sides[side].Count > 0 &&
                               (rules.Casewise == CasewiseTest::Always || analysis.*selection.CasewiseOption == 1);
        if (!Sides[side].Casewise) {
            continue;
        }
        // The lists are tested and not the records, so that a variable drilled on still deletes cases.
        for (const auto& list : {selection.CategoricalOf(analysis), selection.ContinuousOf(analysis)}) {
            for (const std::int16_t var : list) {
                Sides[side].CasewiseColumns.push_back(ColumnOf(analysis, var));
            }
        }
    }
}
