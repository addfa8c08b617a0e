// The dialogs of the host itself, which an analysis opens.

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>

#include "host/AnalysisDialog.h"
#include "host/AnalysisDoc.h"
#include "host/AnalysisSupport.h"
#include "platform/WindowMessages.h"
#include "workbench/dialogs/CaseSelectionDialog.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/dialogs/WeightDialog.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/ControlRows.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/ModalWork.h"
#include "workbench/hosting/NewTables.h"
#include "workbench/hosting/ScriptDesk.h"
#include "workbench/hosting/Surroundings.h"
#include "workbench/hosting/TableInUse.h"

using quillara::CaseChoice;
using quillara::DialogsOf;
using quillara::HostDialog;
using quillara::TableInUse;
using quillara::TableOf;
using quillara::WeightChoice;

namespace {

/// Shows what a dialog has to say as the analysis shows its messages.
HostDialog::Tell TellThrough(CAnalysisDoc* document) {
    return [&around = quillara::SurroundingsOf(document)](std::string_view text) {
        text == HostDialog::NoMemory ? around.SayMemoryLacked(text) : around.ShowMessage(text);
    };
}

/// The button whose command runs; 0 when none does.
int ButtonOf(const quillara::DialogState& dialogs) {
    const bool isCommand = dialogs.Command && dialogs.Command->Message == WindowMessage::Command;
    return isCommand ? CommandOf(dialogs.Command->CommandId) : 0;
}

bool IsConfirmed(CAnalysisDoc* document, HostDialog& dialog) {
    return quillara::RunModal(document, dialog.Shown()) == OkCommand;
}

std::string TextOrNothing(const char* text) {
    return text == nullptr ? "" : text;
}

std::vector<short> AllVariables(const TableInUse& data) {
    std::vector<short> numbers(data.Table().Variables.size());
    std::iota(numbers.begin(), numbers.end(), short{1});
    return numbers;
}

/// The numbers of a list that 0 ends, in which no variable stands more than twice.
std::vector<short> UpToZero(const short* list, const TableInUse& data) {
    return {list, std::find(list, list + 2 * data.Table().Variables.size(), short{0})};
}

void WriteList(const std::vector<short>& numbers, short* list, short* count) {
    std::copy(numbers.begin(), numbers.end(), list);
    *count = static_cast<short>(numbers.size());
}

/// Whether a dialog of two lists need not be shown, as nobody has asked for other variables: while documents are being
/// updated, and when a script has pressed a button that makes results. A script that means others answers beforehand.
bool StandsWithoutAsking(CAnalysisDoc* document, const quillara::VariableListsRequest& request) {
    if (document == nullptr || !quillara::AreWithinLimits(request)) {
        return false;
    }
    const quillara::DialogState& dialogs = DialogsOf(document);
    const bool isForScript = dialogs.AreLeftToScript() && quillara::TheScriptDesk().AnswersLeft() == 0 &&
                             quillara::MakesOutput(dialogs.Startup.get(), ButtonOf(dialogs));
    return document->UpdateCounter > 0 || isForScript;
}

/// The selection in force; nothing: all cases. One that no formula made shows as an empty formula, so that it isn't
/// lost without a word.
std::optional<std::string> PresentSelection(const TableInUse& data) {
    const bool selectsAll = data.Selection.empty() && data.SelectionFormula.empty();
    return selectsAll ? std::nullopt : std::optional(data.SelectionFormula);
}

}  // namespace

int CAnalysisSupport::DoubleVarListDialog(HWND /*owner*/, unsigned short /*mode*/, const char* title, short* preset,
                                          int lowest1, int highest1, int lowest2, int highest2, int highestTotal,
                                          short* list1, short* count1, short* list2, short* count2, const char* label1,
                                          const char* label2, unsigned short /*typeCount*/, int* /*types*/,
                                          int /*reserved1*/, int /*reserved2*/) {
    const TableInUse& data = TableOf(Document);
    const quillara::VariableListsRequest request{
        TextOrNothing(title),
        preset == nullptr ? AllVariables(data) : UpToZero(preset, data),
        {{{TextOrNothing(label1), lowest1, highest1, {list1, list1 + std::max<short>(*count1, 0)}},
          {TextOrNothing(label2), lowest2, highest2, {list2, list2 + std::max<short>(*count2, 0)}}}},
        highestTotal};
    if (StandsWithoutAsking(Document, request)) {
        return 1;
    }
    quillara::VariableListsDialog dialog(DialogsOf(Document).Queue, data.Table(), request, TellThrough(Document));
    if (!IsConfirmed(Document, dialog)) {
        return 0;
    }
    const auto [first, second] = dialog.Chosen();
    DialogsOf(Document).Chosen.Confirm(ButtonOf(DialogsOf(Document)), {first, second});
    WriteList(first, list1, count1);
    WriteList(second, list2, count2);
    return 1;
}

int CAnalysisDialog::DefineSelCond(int mode, HWND /*window*/) {
    DialogHost::Trace(*this, "DefineSelCond " + std::to_string(mode));
    CAnalysisDoc* document = DialogHost::DocumentOf(*this);
    TableInUse& data = TableOf(document);
    quillara::CaseSelectionDialog dialog(DialogsOf(document).Queue, data.Table(), PresentSelection(data),
                                         TellThrough(document));
    if (!IsConfirmed(document, dialog)) {
        return 0;
    }
    const CaseChoice& choice = dialog.Choice();
    data.Select(choice.Results, choice.Formula.value_or(""));
    Notice(document, choice.Notices);
    return 1;
}

int CAnalysisDialog::DefineWeight(int mode, HWND /*window*/) {
    DialogHost::Trace(*this, "DefineWeight " + std::to_string(mode));
    CAnalysisDoc* document = DialogHost::DocumentOf(*this);
    TableInUse& data = TableOf(document);
    quillara::WeightDialog dialog(DialogsOf(document).Queue, data.Table(), {data.WeightVariable, data.IsWeighted},
                                  TellThrough(document));
    if (!IsConfirmed(document, dialog)) {
        return 0;
    }
    const WeightChoice& choice = dialog.Choice();
    data.ChooseWeight(choice.Variable, choice.InForce);
    return 1;
}

int CAnalysisDialog::OpenOrvFile() {
    DialogHost::Trace(*this, "OpenOrvFile");
    CAnalysisDoc* document = DialogHost::DocumentOf(*this);
    quillara::OpenDataDialog dialog(DialogsOf(document).Queue, quillara::NewTablesOf(document).Finished(),
                                    TellThrough(document));
    if (!IsConfirmed(document, dialog)) {
        return 0;
    }
    TableOf(document).Exchange(dialog.Opened());
    for (const quillara::Remark& remark : dialog.Remarks()) {
        quillara::Notice(document, remark);
    }
    return 1;
}
