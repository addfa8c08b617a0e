// Steps by name: each presses the buttons of the startup dialog.

#include <algorithm>

#include "resources/ControlIds.h"
#include "workbench/data/QuotedText.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/exploration/Exploration.h"
#include "workbench/exploration/StartupClicks.h"
#include "workbench/scripting/CategoryLookup.h"
#include "workbench/windows/Window.h"

namespace quillara {

/// A list that has been filled anew has no selected row; the commands that go by one would have no effect. Where the
/// analysis goes by a variable it stays that one.
void Exploration::SelectCurrentRow() {
    Window* startup = Document.StartupWindow();
    for (const int list : {DrillDownListControl, DrillUpListControl}) {
        if (startup != nullptr && startup->At(list).Selected < 0 && !startup->At(list).Rows.empty()) {
            startup->ClickRow(list, std::max(0, RowOf(list, CurrentVariable(list))));
            Document.RunMessages();
        }
    }
}

std::string Exploration::CurrentVariable(int list) {
    return CurrentVariableOf(Document, list);
}

bool Exploration::CanGoDown(const std::string& variable) {
    return RowOf(DrillDownListControl, variable) >= 0;
}

bool Exploration::CanGoUp(const std::string& variable) {
    return RowOf(DrillUpListControl, variable) >= 0;
}

void Exploration::ChooseDrillVariables(const VariableLists& variables) {
    Press(DrillVariablesButton,
          [&](Window& dialog) { ChooseVariables(dialog, variables.Categorical, variables.Continuous); });
}

void Exploration::Down(const std::string& variable, const RowChooser& chooseRow) {
    const int row = RowOf(DrillDownListControl, variable);
    if (row < 0) {
        throw ImpossibleStep("The variable " + Quoted(variable) + " isn't among those that can be drilled on.");
    }
    const Variable& chosen = Table().Variables[Table().IndexOf(variable)];
    ClickRow(DrillDownListControl, row);
    Press(DownButton, [&](Window& dialog) { AnswerWithCategory(dialog, chosen, chooseRow); });
}

void Exploration::Down(const std::string& variable, const std::string& category) {
    Down(variable, [&](const CategoryList& list) { return FindCategory(list, category); });
}

void Exploration::Up(const std::string& variable) {
    const int row = RowOf(DrillUpListControl, variable);
    if (row < 0) {
        throw ImpossibleStep("There is no step on the variable " + Quoted(variable) + " to undo.");
    }
    ClickRow(DrillUpListControl, row);
    Press(UpButton);
}

}  // namespace quillara
