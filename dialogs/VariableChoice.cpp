#include "dialogs/VariableChoice.h"

#include <array>
#include <span>
#include <string>

#include "dialogs/DefineTask.h"
#include "dialogs/ShownAgain.h"
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
    int (*CountRecords)(const CDrillDown& analysis);
    bool FillsLists;  ///< the lists of the dialog show the records
};

int AskForDrillVariables(CDrillDown& analysis, HWND window) {
    const int variables = analysis.Table.Variables;
    return analysis.SetDDNVariable(window, 1, 0, variables, 0, variables, variables);
}

int AskForReviewVariables(CDrillDown& analysis, HWND window) {
    return analysis.SetRVVariable(window, 1, 0, analysis.Table.Variables);
}

int CountDrillRecords(const CDrillDown& analysis) {
    return analysis.GetDrillDownsSize() + analysis.GetDrillUpsSize();
}

int CountReviewRecords(const CDrillDown& analysis) {
    return analysis.GetDrillReviewsSize();
}

constexpr Choice DrillChoice{AskForDrillVariables, DrillCaptions, NoDrillVariablesText, CountDrillRecords, true};
constexpr Choice ReviewChoice{AskForReviewVariables, ReviewCaptions, NoReviewVariablesText, CountReviewRecords, false};

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

/// Whether a choice that gave nothing has taken the records all the same, because memory ran out behind it.
bool HasLostRecords(const CDrillDown& analysis, const Choice& choice, int recordsBefore) {
    const int records = choice.CountRecords(analysis);
    return records != recordsBefore || records != CountChosen(analysis, choice);
}

/// False when the user cancels or there is no memory.
bool ChooseSome(CDefineTask& task, const Choice& choice) {
    CDrillDown& analysis = *task.Analysis;
    const int recordsBefore = choice.CountRecords(analysis);
    bool hasEmptied = false;
    while (choice.Ask(analysis, task.Window) != 0) {
        if (CountChosen(analysis, choice) >= 1) {
            return true;
        }
        hasEmptied = true;
        const std::string text = analysis.GetResourceString(choice.NothingChosenText);
        analysis.dsplst(static_cast<int>(text.size()), text.c_str());
    }
    if (hasEmptied || HasLostRecords(analysis, choice, recordsBefore)) {
        // What an empty choice or one without memory has taken may not be offered any more.
        ShowChosenVariables(task);
        if (choice.FillsLists) {
            RefreshLists(task);
        }
        task.UpdateControls();
    }
    return false;
}

}  // namespace

int SelectDrillVariables(CDefineTask& task) {
    return ShownAgainOnFailure(task, [&] {
        if (!ChooseSome(task, DrillChoice)) {
            return 0;
        }
        ShowChosenVariables(task);  // the review variables are gone
        task.SelectCurrentDown();
        task.UpdateControls();
        return 1;
    });
}

int SelectReviewVariables(CDefineTask& task) {
    return ShownAgainOnFailure(task, [&] {
        if (!ChooseSome(task, ReviewChoice)) {
            return 0;
        }
        ShowChosen(task, ReviewCaptions);
        task.UpdateControls();
        return 1;
    });
}

void ShowChosenVariables(CDefineTask& task) {
    ShowChosen(task, AllCaptions);
}
