#include "workbench/exploration/ExplorationHistory.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "resources/ControlIds.h"
#include "workbench/exploration/Exploration.h"
#include "workbench/scripting/CategoryLookup.h"
#include "workbench/windows/Control.h"

namespace quillara {
namespace {

bool AreSameStep(const StepTaken& one, const StepTaken& other) {
    return one.Variable == other.Variable && one.Category == other.Category;
}

bool Has(const std::vector<StepTaken>& steps, const StepTaken& step) {
    return std::ranges::any_of(steps, [&](const StepTaken& each) { return AreSameStep(each, step); });
}

bool AreSame(const std::vector<StepTaken>& one, const std::vector<StepTaken>& other) {
    return std::ranges::equal(one, other, AreSameStep);
}

/// What can be or has been drilled on.
std::string VariablesOf(Exploration& exploration) {
    std::multiset<std::string> names;
    for (const StepTaken& step : exploration.Steps()) {
        names.insert(step.Variable);
    }
    std::ranges::copy(exploration.At(DrillDownListControl).Rows, std::inserter(names, names.end()));
    std::string text;
    for (const std::string& name : names) {
        text += name + '\n';
    }
    return text;
}

void TakeBack(Exploration& exploration, const std::vector<StepTaken>& steps) {
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        exploration.Up(step->Variable);
    }
}

void Take(Exploration& exploration, const std::vector<StepTaken>& steps) {
    for (const StepTaken& step : steps) {
        exploration.Down(step.Variable, step.Category);
    }
}

/// Those of one list that another hasn't.
std::vector<StepTaken> Without(const std::vector<StepTaken>& steps, const std::vector<StepTaken>& other) {
    std::vector<StepTaken> rest;
    std::ranges::copy_if(steps, std::back_inserter(rest), [&](const StepTaken& step) { return !Has(other, step); });
    return rest;
}

bool LeavesTheSame(const ExplorationHistory::State& target, Exploration& exploration) {
    const std::optional<SubsetSize> left = exploration.Remaining();
    return !target.Left || !left || target.Left->Cases == left->Cases;
}

/// How many of the first steps of a state are in force before all of its others that are.
std::size_t StandingSteps(const std::vector<StepTaken>& present, const std::vector<StepTaken>& target) {
    const std::vector<StepTaken> left = Without(present, Without(present, target));
    return static_cast<std::size_t>(std::ranges::mismatch(left, target, AreSameStep).in1 - left.begin());
}

void TakeAnew(Exploration& exploration, const std::vector<StepTaken>& target) {
    TakeBack(exploration, exploration.Steps());
    Take(exploration, target);
}

/// The order of the steps is that of the state: what would come before a step that is missing goes, and comes behind
/// it. The intervals of a variable may depend on the steps that were in force when it was drilled on: where this way
/// doesn't lead to the same cases, all steps are taken anew.
void Reach(Exploration& exploration, const ExplorationHistory::State& state) {
    const std::vector<StepTaken>& target = state.Steps;
    const std::vector<StepTaken> present = exploration.Steps();
    const auto standing = target.begin() + static_cast<std::ptrdiff_t>(StandingSteps(present, target));
    try {
        TakeBack(exploration, Without(present, {target.begin(), standing}));
        Take(exploration, {standing, target.end()});
    } catch (const ImpossibleStep&) {
        TakeAnew(exploration, target);
    }
    if (!LeavesTheSame(state, exploration)) {
        TakeAnew(exploration, target);
    }
}

}  // namespace

std::string ExplorationHistory::State::Text() const {
    std::string text;
    for (const StepTaken& step : Steps) {
        text += (text.empty() ? "" : ", ") + step.Condition();
    }
    return text.empty() ? "All cases" : text;
}

void ExplorationHistory::Follow(Exploration& exploration) {
    if (IsGoing || exploration.HasEnded() || exploration.IsBusy()) {
        return;
    }
    std::vector<StepTaken> steps = exploration.Steps();
    std::string variables = VariablesOf(exploration);
    if (variables != Variables || &exploration.Table() != Table) {
        Variables = std::move(variables);
        Table = &exploration.Table();
        Known.assign(1, State{std::move(steps), exploration.Remaining()});
        Now = 0;
    } else if (!AreSame(steps, Known[Now].Steps)) {
        Known.resize(Now + 1);
        Known.push_back(State{std::move(steps), exploration.Remaining()});
        ++Now;
    }
}

ExplorationHistory::Change ExplorationHistory::Between(std::size_t from, std::size_t to) const {
    const std::vector<StepTaken>& before = Known.at(from).Steps;
    const std::vector<StepTaken>& after = Known.at(to).Steps;
    return {Without(after, before), Without(before, after)};
}

/// States on the way aren't kept, but the one that a failure leaves.
void ExplorationHistory::Go(Exploration& exploration, const std::function<void()>& way) {
    IsGoing = true;
    try {
        way();
    } catch (...) {
        IsGoing = false;
        Follow(exploration);
        throw;
    }
    IsGoing = false;
}

void ExplorationHistory::BackTo(Exploration& exploration, std::size_t count) {
    std::vector<StepTaken> steps = exploration.Steps();
    steps.erase(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(std::min(count, steps.size())));
    Go(exploration, [&] { TakeBack(exploration, steps); });
    Follow(exploration);
}

void ExplorationHistory::GoTo(Exploration& exploration, std::size_t state) {
    const State target = Known.at(state);
    Go(exploration, [&] { Reach(exploration, target); });
    Now = state;
}

}  // namespace quillara
