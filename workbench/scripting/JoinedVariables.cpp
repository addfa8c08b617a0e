#include "workbench/scripting/JoinedVariables.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/AnalysisSupport.h"
#include "host/CaseConditions.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/StepHistory.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/scripting/CategorizationEntry.h"
#include "workbench/scripting/ListedSteps.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

TwoLists DrillVariablesOf(AnalysisDocument& document) {
    return DialogsOf(&document).Chosen.Of(DrillVariablesButton);
}

bool Holds(const std::vector<short>& list, short variable) {
    return std::ranges::find(list, variable) != list.end();
}

/// A value in the middle of a range.
double ValueIn(const RowRange& range) {
    if (range.HasUpper && std::isfinite(range.Upper)) {
        return range.Upper;
    }
    if (range.HasLower && std::isfinite(range.Lower)) {
        return range.Lower;
    }
    if (std::isfinite(range.Lower) && std::isfinite(range.Upper)) {
        return range.Lower + (range.Upper - range.Lower) / 2;
    }
    return std::isfinite(range.Lower) ? range.Lower + std::abs(range.Lower) + 1.0 : range.Upper;
}

/// The row that a step kept; the one of the missing data, which has no range, when it is no other.
std::size_t RowMeeting(const CategoryList& list, const CaseCondition& condition) {
    const auto meets = [&condition](const CategoryRow& row) {
        return row.Range && condition.IsMetBy(ValueIn(*row.Range));
    };
    auto found = std::ranges::find_if(list.Rows, meets);
    found =
        found != list.Rows.end() ? found : std::ranges::find_if(list.Rows, [](const auto& row) { return !row.Range; });
    if (found == list.Rows.end()) {
        throw DataError("The step on " + Quoted(list.Variable) + " can't be taken again.");
    }
    return static_cast<std::size_t>(found - list.Rows.begin());
}

/// One analysis while its drill variables are chosen anew.
class NewChoice {
  public:
    NewChoice(DialogActions& actions, AnalysisDocument& document)
        : Actions(actions), Document(document), List(actions, document) {}

    /// The newest first. Throws DataError unless the analysis tells each.
    void UndoSteps() {
        const std::size_t steps = Actions.At(DrillUpListControl).Rows.size();
        if (!Document.Analysis().FindStepConditions(Steps) || Steps.size() != steps) {
            throw DataError("The analysis doesn't tell its steps, so that they can't be taken again.");
        }
        for (std::size_t i = 0; i < steps; ++i) {
            Actions.ClickRow(DrillUpListControl, 0);
            Actions.Press(UpButton);
        }
    }

    void NotePages(const std::map<short, Categorization>& entered) {
        const std::vector<short> continuous = DrillVariablesOf(Document)[1];
        for (const short variable : continuous) {
            List.ClickDown(variable);
            const std::optional<Categorization> shown = ReadCategorization(Actions);
            const auto known = entered.find(variable);
            const bool isKnown = shown && known != entered.end() && known->second.Method == shown->Method;
            if (shown) {
                Pages.emplace_back(variable, isKnown ? known->second : *shown);
            }
        }
    }

    /// A choice of drill variables drops the review variables.
    void Choose(short variable) {
        TwoLists lists = DrillVariablesOf(Document);
        const TwoLists reviews = DialogsOf(&Document).Chosen.Of(ReviewVariablesButton);
        lists[0].push_back(variable);
        Actions.Press(DrillVariablesButton, [&lists](Window& dialog) { ChooseVariables(dialog, lists[0], lists[1]); });
        if (!reviews[0].empty() || !reviews[1].empty()) {
            Actions.Press(ReviewVariablesButton,
                          [&reviews](Window& dialog) { ChooseVariables(dialog, reviews[0], reviews[1]); });
        }
    }

    void EnterPages() {
        for (const auto& [variable, how] : Pages) {
            List.ClickDown(variable);
            EnterCategorization(Actions, how);
            List.ClickDown(variable);
        }
    }

    void TakeSteps() {
        for (auto step = Steps.rbegin(); step != Steps.rend(); ++step) {
            List.Down(step->Variable, [&](const CategoryList& list) { return RowMeeting(list, *step); });
        }
    }

  private:
    DialogActions& Actions;
    AnalysisDocument& Document;
    ListedSteps List;
    std::vector<CaseCondition> Steps;  // the newest first
    std::vector<std::pair<short, Categorization>> Pages;
};

}  // namespace

void ExtendTable(AnalysisDocument& document, const DerivedVariable& derived) {
    TableInUse& data = TableOf(&document);
    auto longer = std::make_shared<DataTable>(data.Table());
    std::vector<Remark> unheard;
    Derive(*longer, derived, unheard);
    data.Extend(std::move(longer));
}

bool IsContinuousDrillVariable(AnalysisDocument& document, short variable) {
    return Holds(DrillVariablesOf(document)[1], variable);
}

bool IsDrillVariable(AnalysisDocument& document, short variable) {
    return Holds(DrillVariablesOf(document)[0], variable) || IsContinuousDrillVariable(document, variable);
}

void JoinDrillVariables(DialogActions& actions, AnalysisDocument& document, short variable,
                        const std::map<short, Categorization>& entered) {
    const StepsAside aside(document);
    NewChoice choice(actions, document);
    choice.UndoSteps();
    choice.NotePages(entered);
    choice.Choose(variable);
    choice.EnterPages();
    choice.TakeSteps();
}

}  // namespace quillara
