#include "dialogs/VariableChoice.h"

#include <array>
#include <span>
#include <string>

#include "dialogs/DefineTask.h"
#include "resources/ControlIds.h"
#include "resources/StringTable.h"

namespace {

/// A static control and the list of variables that it shows.
struct CaptionRow {
    int Control;
    std::int16_t CDrillDown::*Count;
    std::int16_t* CDrillDown::*Variables;
};

// clang-format off
constexpr std::array<CaptionRow, 4> Captions{{
    // Control                 Count                         Variables
    {DrillCategoricalCaption,  &CDrillDown::NoCategorical,   &CDrillDown::Categorical},
    {DrillContinuousCaption,   &CDrillDown::NoContinuous,    &CDrillDown::Continuous},
    {ReviewCategoricalCaption, &CDrillDown::NoRVCategorical, &CDrillDown::RVCategorical},
    {ReviewContinuousCaption,  &CDrillDown::NoRVContinuous,  &CDrillDown::RVContinuous},
}};
// clang-format on

constexpr std::span<const CaptionRow> AllCaptions{Captions};
constexpr std::span<const CaptionRow> DrillCaptions = AllCaptions.first(2);
constexpr std::span<const CaptionRow> ReviewCaptions = AllCaptions.last(2);

/// What sets the two choices apart.
struct Choice {
    int (*Ask)(CDrillDown& analysis, HWND window);  ///< one round of the dialog; 0: cancelled
    std::span<const CaptionRow> Lists;
    int NothingChosenText;
};

int AskForDrillVariables(CDrillDown& analysis, HWND window) {
    const int variables = analysis.Table.Variables;
    return analysis.SetDDNVariable(window, 1, 0, variables, 0, variables, variables);
}

int AskForReviewVariables(CDrillDown& analysis, HWND window) {
    return analysis.SetRVVariable(window, 1, 0, analysis.Table.Variables);
}

constexpr Choice DrillChoice{AskForDrillVariables, DrillCaptions, NoDrillVariablesText};
constexpr Choice ReviewChoice{AskForReviewVariables, ReviewCaptions, NoReviewVariablesText};

int CountChosen(const CDrillDown& analysis, const Choice& choice) {
    int count = 0;
    for (const CaptionRow& list : choice.Lists) {
        count += analysis.*list.Count;
    }
    return count;
}

void ShowChosen(CDefineTask& task, std::span<const CaptionRow> captions) {
    const CDrillDown& analysis = *task.Analysis;
    for (const CaptionRow& row : captions) {
        task.WriteVarListToCaption(task.Window, row.Control, analysis.*row.Count, analysis.*row.Variables);
    }
}

/// False when the user cancels.
bool ChooseSome(CDefineTask& task, const Choice& choice) {
    CDrillDown& analysis = *task.Analysis;
    bool hasEmptied = false;
    while (choice.Ask(analysis, task.Window) != 0) {
        if (CountChosen(analysis, choice) >= 1) {
            return true;
        }
        hasEmptied = true;
        const std::string text = analysis.GetResourceString(choice.NothingChosenText);
        analysis.dsplst(static_cast<int>(text.size()), text.c_str());
    }
    if (hasEmptied) {
        // The empty choice has taken the variables, and the dialog must not offer what is gone.
        ShowChosenVariables(task);
        task.UpdateControls();
    }
    return false;
}

}  // namespace

int SelectDrillVariables(CDefineTask& task) {
    if (!ChooseSome(task, DrillChoice)) {
        return 0;
    }
    ShowChosenVariables(task);  // the review variables are gone
    task.SelectCurrentDown();
    task.UpdateControls();
    return 1;
}

int SelectReviewVariables(CDefineTask& task) {
    if (!ChooseSome(task, ReviewChoice)) {
        return 0;
    }
    ShowChosen(task, ReviewCaptions);
    task.UpdateControls();
    return 1;
}

void ShowChosenVariables(CDefineTask& task) {
    ShowChosen(task, AllCaptions);
}
