#include "workbench/command/GroupedSteps.h"

#include <algorithm>
#include <map>

#include "workbench/data/CategoryGroups.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

/// Goes through the steps in their order.
class StepGrouping {
  public:
    StepGrouping(DataTable& table, DrillOptions& options, const VariableChoice& variables)
        : Table(table), Options(options), Variables(variables) {}

    void Take(DrillStep& step) {
        if (!step.Category) {
            Leave(step);
            return;
        }
        const std::optional<std::size_t> index = Table.Find(step.Variable);
        if (!index) {
            return;  // that is told where the step is taken
        }
        const std::vector<std::string> categories = CategoriesIn(Table.Variables[*index], *step.Category);
        if (categories.size() > 1) {
            Group(step, *index, categories);
        } else {
            step.Category = categories.front();
        }
    }

  private:
    void Group(DrillStep& step, std::size_t index, const std::vector<std::string>& categories) {
        CheckIsCategorical(index);
        const CategoryGroup group = GroupOf(Table, Table.Variables[index], categories);
        if (!Table.Find(group.Grouping.Name)) {
            std::vector<Remark> unheard;  // the categories stand as they are in the data
            Derive(Table, group.Grouping, unheard);
            Options.Derived.push_back(group.Grouping);
        }
        InForce[step.Variable] = group.Grouping.Name;
        step = {group.Grouping.Name, group.Category};
    }

    void Leave(DrillStep& step) {
        const auto grouping = InForce.find(step.Variable);
        if (grouping != InForce.end()) {
            step.Variable = grouping->second;
            InForce.erase(grouping);
        }
    }

    void CheckIsCategorical(std::size_t index) const {
        const std::vector<short>& continuous = Variables.Drill.Continuous;
        if (std::ranges::find(continuous, static_cast<short>(index + 1)) != continuous.end()) {
            throw DataError("Several categories at once are those of categorical variables; " +
                            Quoted(Table.Variables[index].Name) +
                            " is continuous. Name it in --categorical, or make groups by --compute with cut or in.");
        }
    }

    DataTable& Table;
    DrillOptions& Options;
    const VariableChoice& Variables;
    std::map<std::string, std::string> InForce;  // the grouping that was drilled last, by its variable
};

}  // namespace

void GroupSteps(DataTable& table, DrillOptions& options, const VariableChoice& variables) {
    StepGrouping grouping(table, options, variables);
    for (DrillStep& step : options.Steps) {
        grouping.Take(step);
    }
}

}  // namespace quillara
