// The dialogs of the host itself, which an analysis opens.

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>

#include "host/AnalysisDialog.h"
#include "host/AnalysisSupport.h"
#include "platform/WindowMessages.h"
#include "workbench/dialogs/CaseSelectionDialog.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/dialogs/WeightDialog.h"
#include "workbench/hosting/AnalysisState.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/MemoryMessages.h"
#include "workbench/hosting/ModalWork.h"

using quillara::AnalysisState;
using quillara::CaseChoice;
using quillara::HostDialog;
using quillara::WeightChoice;

namespace {

/// Shows what a dialog has to say as the analysis shows its messages.
HostDialog::Tell TellThrough(const AnalysisState& state) {
    return [&state](std::string_view text) {
        if (text == HostDialog::NoMemory) {
            quillara::SayMemoryLacked(state, text);
        } else if (state.Services.ShowMessage) {
            state.Services.ShowMessage(text);
        }
    };
}

bool IsConfirmed(AnalysisState& state, HostDialog& dialog) {
    return RunModal(state, dialog.Shown()) == OkCommand;
}

std::string TextOrNothing(const char* text) {
    return text == nullptr ? "" : text;
}

std::vector<short> AllVariables(const AnalysisState& state) {
    std::vector<short> numbers(state.Table().Variables.size());
    std::iota(numbers.begin(), numbers.end(), short{1});
    return numbers;
}

/// The numbers of a list that 0 ends, in which no variable stands more than twice.
std::vector<short> UpToZero(const short* list, const AnalysisState& state) {
    return {list, std::find(list, list + 2 * state.Table().Variables.size(), short{0})};
}

void WriteList(const std::vector<short>& numbers, short* list, short* count) {
    std::copy(numbers.begin(), numbers.end(), list);
    *count = static_cast<short>(numbers.size());
}

/// The selection in force; nothing: all cases. One that no formula made shows as an empty formula, so that it isn't
/// lost without a word.
std::optional<std::string> PresentSelection(const AnalysisState& state) {
    const bool selectsAll = state.Data.Selection.empty() && state.Data.SelectionFormula.empty();
    return selectsAll ? std::nullopt : std::optional(state.Data.SelectionFormula);
}

}  // namespace

int CAnalysisSupport::DoubleVarListDialog(HWND /*owner*/, unsigned short /*mode*/, const char* title, short* preset,
                                          int lowest1, int highest1, int lowest2, int highest2, int highestTotal,
                                          short* list1, short* count1, short* list2, short* count2, const char* label1,
                                          const char* label2, unsigned short /*typeCount*/, int* /*types*/,
                                          int /*reserved1*/, int /*reserved2*/) {
    AnalysisState& state = quillara::StateOf(Document);
    const quillara::VariableListsRequest request{
        TextOrNothing(title),
        preset == nullptr ? AllVariables(state) : UpToZero(preset, state),
        {{{TextOrNothing(label1), lowest1, highest1, {list1, list1 + std::max<short>(*count1, 0)}},
          {TextOrNothing(label2), lowest2, highest2, {list2, list2 + std::max<short>(*count2, 0)}}}},
        highestTotal};
    const bool updatesDocuments = Document->UpdateCounter > 0;
    if (updatesDocuments && quillara::AreWithinLimits(request)) {
        return 1;  // nobody has asked for other variables
    }
    quillara::VariableListsDialog dialog(state.Dialogs.Queue, state.Table(), request, TellThrough(state));
    if (!IsConfirmed(state, dialog)) {
        return 0;
    }
    const auto [first, second] = dialog.Chosen();
    WriteList(first, list1, count1);
    WriteList(second, list2, count2);
    return 1;
}

int CAnalysisDialog::DefineSelCond(int mode, HWND /*window*/) {
    DialogHost::Trace(*this, "DefineSelCond " + std::to_string(mode));
    AnalysisState& state = DialogHost::StateOf(*this);
    quillara::CaseSelectionDialog dialog(state.Dialogs.Queue, state.Table(), PresentSelection(state),
                                         TellThrough(state));
    if (!IsConfirmed(state, dialog)) {
        return 0;
    }
    const CaseChoice& choice = dialog.Choice();
    state.Data.Select(choice.Results, choice.Formula.value_or(""));
    return 1;
}

int CAnalysisDialog::DefineWeight(int mode, HWND /*window*/) {
    DialogHost::Trace(*this, "DefineWeight " + std::to_string(mode));
    AnalysisState& state = DialogHost::StateOf(*this);
    quillara::WeightDialog dialog(state.Dialogs.Queue, state.Table(),
                                  {state.Data.WeightVariable, state.Data.IsWeighted}, TellThrough(state));
    if (!IsConfirmed(state, dialog)) {
        return 0;
    }
    const WeightChoice& choice = dialog.Choice();
    state.ChooseWeight(choice.Variable, choice.InForce);
    return 1;
}

int CAnalysisDialog::OpenOrvFile() {
    DialogHost::Trace(*this, "OpenOrvFile");
    AnalysisState& state = DialogHost::StateOf(*this);
    quillara::OpenDataDialog dialog(state.Dialogs.Queue, state.Tables.Finished(), TellThrough(state));
    if (!IsConfirmed(state, dialog)) {
        return 0;
    }
    state.Exchange(dialog.Opened());
    return 1;
}
