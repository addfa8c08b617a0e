#include "workbench/scripting/ListedSteps.h"

#include <algorithm>
#include <string>
#include <vector>

#include "host/AnalysisSupport.h"
#include "host/CaseConditions.h"
#include "resources/ControlIds.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/windows/Window.h"

namespace quillara {

const Variable& ListedSteps::VariableOf(short variable) const {
    return Document.Table().Variables[static_cast<std::size_t>(variable) - 1];
}

/// In the drill-down list; the number of rows without one.
std::ptrdiff_t ListedSteps::RowOf(short variable) const {
    const std::vector<std::string>& rows = Actions.At(DrillDownListControl).Rows;
    return std::ranges::find(rows, VariableOf(variable).Name) - rows.begin();
}

bool ListedSteps::CanGoDown(short variable) const {
    return RowOf(variable) < std::ssize(Actions.At(DrillDownListControl).Rows);
}

void ListedSteps::ClickDown(short variable) {
    if (!CanGoDown(variable)) {
        throw DataError("The variable " + Quoted(VariableOf(variable).Name) + " isn't in the list.");
    }
    Actions.ClickRow(DrillDownListControl, static_cast<int>(RowOf(variable)));
}

void ListedSteps::Down(short variable, const RowChooser& chooseRow) {
    const Variable& chosen = VariableOf(variable);
    ClickDown(variable);
    Actions.Press(DownButton, [&](Window& dialog) { AnswerWithCategory(dialog, chosen, chooseRow); });
}

/// The list of steps has a row for each condition.
void ListedSteps::Up(short variable) {
    std::vector<CaseCondition> steps;
    const bool areTold = Document.Analysis().FindStepConditions(steps);
    const auto step = std::ranges::find(steps, variable, &CaseCondition::Variable);
    if (!areTold || step == steps.end()) {
        throw DataError("There is no step on the variable " + Quoted(VariableOf(variable).Name) + " to undo.");
    }
    Actions.ClickRow(DrillUpListControl, static_cast<int>(step - steps.begin()));
    Actions.Press(UpButton);
}

}  // namespace quillara
