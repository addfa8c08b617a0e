#include "workbench/command/DrillSession.h"

#include <algorithm>
#include <utility>

#include "resources/ControlIds.h"
#include "workbench/data/Errors.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/scripting/CategorizationEntry.h"

namespace quillara {
namespace {

int RowOf(const std::vector<short>& list, short variable) {
    return static_cast<int>(std::ranges::find(list, variable) - list.begin());
}

/// A step, either way, moves its variable to the head of the other list.
void MoveToHead(std::vector<short>& from, std::vector<short>& to, short variable) {
    std::erase(from, variable);
    to.insert(to.begin(), variable);
}

DialogSession::Answer AnswerWith(const VariableLists& variables) {
    return [&variables](Window& dialog) { ChooseVariables(dialog, variables.Categorical, variables.Continuous); };
}

/// A choice of variables for which there wasn't the memory leaves the buttons that need them disabled.
void RequireEnabled(DialogSession& dialogs, int button) {
    if (!dialogs.At(button).Enabled) {
        throw DataError("There is not enough memory for these variables.");
    }
}

}  // namespace

DrillSession::DrillSession(const DataTable& table, CaseSettings settings, AnalysisServices services)
    : Table(table), Dialogs(table, std::move(settings), std::move(services)) {}

void DrillSession::ChooseDrillVariables(const VariableLists& variables) {
    Dialogs.Press(DrillVariablesButton, AnswerWith(variables));
    RequireEnabled(Dialogs, DownButton);
    Downs = variables.Categorical;
    Downs.insert(Downs.end(), variables.Continuous.begin(), variables.Continuous.end());
    Ups.clear();
}

void DrillSession::ChooseReviewVariables(const VariableLists& variables) {
    Dialogs.Press(ReviewVariablesButton, AnswerWith(variables));
    RequireEnabled(Dialogs, ReviewFrequenciesButton);
}

/// Some of these boxes are disabled as long as they would change nothing, but can be set beforehand all the same.
void DrillSession::Toggle(int box) {
    Dialogs.Command(box);
}

/// The second click on the row has the page applied.
void DrillSession::Categorize(short variable, const Categorization& chosen) {
    ClickDown(variable);
    EnterCategorization(Dialogs, chosen);
    ClickDown(variable);
}

bool DrillSession::CanGoDown(short variable) const {
    return std::ranges::find(Downs, variable) != Downs.end();
}

bool DrillSession::CanGoUp(short variable) const {
    return std::ranges::find(Ups, variable) != Ups.end();
}

void DrillSession::Down(short variable, const RowChooser& chooseRow) {
    const Variable& chosen = Table.Variables[static_cast<std::size_t>(variable) - 1];
    ClickDown(variable);
    Dialogs.Press(DownButton, [&](Window& dialog) { AnswerWithCategory(dialog, chosen, chooseRow); });
    MoveToHead(Downs, Ups, variable);
}

void DrillSession::Up(short variable) {
    Dialogs.ClickRow(DrillUpListControl, RowOf(Ups, variable));
    Dialogs.Press(UpButton);
    MoveToHead(Ups, Downs, variable);
}

bool DrillSession::CanPress(int button) {
    return Dialogs.At(button).Enabled;
}

void DrillSession::Press(int button) {
    Dialogs.Press(button);
}

void DrillSession::PressHidden(int button) {
    Dialogs.Command(button);
}

void DrillSession::Show3DHistograms(const std::vector<short>& horizontal, const std::vector<short>& vertical) {
    Dialogs.Press(Review3DHistogramsButton, [&](Window& dialog) { ChooseVariables(dialog, horizontal, vertical); });
}

void DrillSession::ClickDown(short variable) {
    Dialogs.ClickRow(DrillDownListControl, RowOf(Downs, variable));
}

}  // namespace quillara
