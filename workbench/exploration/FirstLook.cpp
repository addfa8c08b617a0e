#include "workbench/exploration/FirstLook.h"

#include <optional>

#include "resources/ControlIds.h"
#include "workbench/data/DefaultChoice.h"
#include "workbench/exploration/Exploration.h"
#include "workbench/windows/Control.h"

namespace quillara {
namespace {

constexpr std::size_t MostCharts = 24;  // that a person takes in at once

}  // namespace

std::size_t ExploreAll(Exploration& exploration) {
    const VariableChoice choice = ChooseByContent(exploration.Table());
    const VariableLists& variables = choice.Drill;
    if (std::optional<Remark> left = RemarkOnLeftOut(exploration.Table(), choice)) {
        left->Advice = "Take them as categorical variables under Drill variables, with up to 2,047 values each.";
        exploration.Note(*left);
    }
    if (variables.Count() == 0) {
        return 0;
    }
    exploration.ChooseDrillVariables(variables);
    if (!exploration.At(AutoUpdateBox).Checked) {
        exploration.Press(AutoUpdateBox);
    }
    if (variables.Count() <= MostCharts) {
        exploration.Press(HistogramsButton);
    }
    return variables.Count();
}

}  // namespace quillara
