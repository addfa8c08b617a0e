// What sessions are written as.

#include "workbench/recording/SessionRecorder.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "host/ControlTable.h"
#include "host/OleConstant.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "workbench/dialogs/DialogIds.h"
#include "workbench/hosting/ControlRows.h"
#include "workbench/hosting/ControlValues.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/LongTexts.h"
#include "workbench/hosting/NewTables.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/hosting/VariableNotation.h"
#include "workbench/recording/PageCommands.h"
#include "workbench/recording/PythonText.h"
#include "workbench/recording/RecordedMembers.h"
#include "workbench/recording/RecordedVariables.h"

namespace quillara {
namespace {

using Storing = PendingCategorization::Storing;

/// Commands that read cases, or have them read, whatever is answered.
constexpr bool ReadsUnasked(int control) {
    return control != OrderButton && control != WeightButton && control != OpenDataButton;
}

bool HaveCommon(const TwoLists& lists) {
    return std::ranges::any_of(
        lists[0], [&lists](short variable) { return std::ranges::find(lists[1], variable) != lists[1].end(); });
}

/// `table.drill` refuses them among the continuous variables, unlike the member.
bool HoldTexts(const DataTable& table, const std::vector<short>& list) {
    return std::ranges::any_of(list, [&table](short number) {
        return table.Variables[static_cast<std::size_t>(number) - 1].Kind == ValueKind::Text;
    });
}

/// As `table.drill` takes a list: a text where its names need no quotes, else a list of names, or of numbers where a
/// name means another variable.
std::string PythonVariables(const DataTable& table, const std::vector<short>& list) {
    const std::string text = TextOfLists(table, {list, {}});
    if (text.find('"') == std::string::npos) {
        return PythonText(text);
    }
    std::string items;
    for (const short number : list) {
        const std::string& name = table.Variables[static_cast<std::size_t>(number) - 1].Name;
        const bool isMeant = table.Find(name) == static_cast<std::size_t>(number) - 1;
        items += (items.empty() ? "" : ", ") + (isMeant ? PythonText(name) : std::to_string(number));
    }
    return "[" + items + "]";
}

std::string NamesOf(const DataTable& table, const std::vector<short>& list) {
    std::string names;
    for (const short number : list) {
        names += (names.empty() ? "" : ", ") + table.Variables[static_cast<std::size_t>(number) - 1].Name;
    }
    return names;
}

std::string ValueIn(const std::vector<RecordedValue>& values, int control) {
    const auto value = std::ranges::find(values, control, [](const RecordedValue& each) { return each.Row->Control; });
    return value == values.end() ? "" : value->Text;
}

}  // namespace

// What is written

void SessionRecorder::WriteMember(int control, const std::string& value) {
    Script.Write("drill." + MemberOf(*Dialog, control) + " = " + value);
}

std::vector<std::string> SessionRecorder::Answers() const {
    std::vector<std::string> answers;
    for (const ModalAnswer& answer : Now.Answers) {
        const std::vector<WindowCall> closing{{"close", {}}};
        answers.push_back(PythonAnswer(answer.IsConfirmed ? answer.Calls : closing));
    }
    return answers;
}

std::vector<std::string> SessionRecorder::AnswerLines() const {
    std::vector<std::string> lines = Answers();
    for (std::string& line : lines) {
        line = "drill.Application.Answer(" + line + ")";
    }
    if (lines.size() == 1 && Now.Control == Review3DHistogramsButton && Now.Answers.back().IsConfirmed) {
        lines.back() += PairsComment();
    }
    return lines;
}

/// What the rows of two lists stand for.
std::string SessionRecorder::PairsComment() const {
    const TwoLists lists = ListsChosen();
    const DataTable& table = TableOf(DialogHost::DocumentOf(*Dialog)).Table();
    return PythonComment(NamesOf(table, lists[0]) + " by " + NamesOf(table, lists[1]));
}

void SessionRecorder::WriteDown(const std::vector<RecordedValue>& values) {
    const std::string variable = ValueIn(values, DrillDownListControl);
    Script.Write(Pending.TakeListClicksBefore(variable, Now.Page));
    Script.Write(Pending.TakeVariable(variable));
    Script.Write(Pending.TakePage(Now.Page, variable, Storing::AndReading));
    WriteCategory(values);
}

void SessionRecorder::WriteCategory(const std::vector<RecordedValue>& values) {
    const std::string read = ValueIn(values, DrillOperationsGroup);
    const ChosenCategory chosen{Now.Row, Now.RowName, Now.IsMissing, read, ValueIn(values, DrillVariablesGroup)};
    const auto token = CategoryToken(chosen);
    if (token && !Pending.AreUnread(ValueIn(values, DrillDownListControl))) {
        WriteMember(DrillOperationsGroup, PythonText(*token));
    } else if (const auto place = PlaceOf(chosen, Now.Page.Method > 0)) {
        WriteMember(DrillOperationsGroup, std::to_string(*place) + PythonComment(Replace8CharGrow(Now.RowName)));
    } else {
        WriteMember(DrillOperationsGroup, PythonText(AsToken(read)));
    }
}

void SessionRecorder::WriteUp(const std::vector<RecordedValue>& values) {
    const std::string variable = ValueIn(values, DrillUpListControl);
    Script.Write(Pending.TakeStored(Now.Variable));
    WriteMember(DrillUpListControl, PythonVariable(*Dialog, DrillUpListControl, variable));
}

void SessionRecorder::WriteListClick() {
    if (Pending.IsNeeded(Now.Page)) {
        if (Pending.HasClickOf(Now.Variable)) {
            Script.Write(Pending.TakeListClicks());
        }
        Pending.StoreByClick(Now.Page, Now.Variable, Startup().At(DrillDownListControl).Selected);
    }
    Pending.Settle(Page());
}

/// The page has been stored all the same, and the cases may have been read.
void SessionRecorder::WriteNoStep() {
    if (Now.StepControl != 0) {
        return;
    }
    Script.Write(Pending.TakeListClicks());
    if (HasAsked(CategoryDialog)) {
        OfferCommand();
        Pending.Store(Now.Page);
    }
}

void SessionRecorder::TakeBoundaries() {
    if (!IsConfirmed(BoundariesDialog)) {
        return;
    }
    std::string typed;
    for (const WindowCall& call : Now.Answers.back().Calls) {
        typed = call.Name == "text" ? std::get<std::string>(call.Arguments[1]) : typed;
    }
    const std::unique_ptr<COleAConstant> read(Dialog->RecordControlValue(StatisticsGroup));
    Pending.TakeBoundaries(typed, read == nullptr ? "" : read->Value(), Now.Page);
}

/// A choice of no variable is asked again; cancelled then, it leaves none.
TwoLists SessionRecorder::ListsChosen() const {
    return Now.Answers.back().IsConfirmed ? DialogsOf(DialogHost::DocumentOf(*Dialog)).Chosen.Of(Now.Control)
                                          : TwoLists();
}

void SessionRecorder::WriteVariables() {
    if (std::ranges::none_of(Now.Answers, &ModalAnswer::IsConfirmed)) {
        return;
    }
    const TwoLists lists = ListsChosen();
    const bool areEmpty = lists[0].empty() && lists[1].empty();
    const std::string both = areEmpty ? "" : RecordedValueOf(*Dialog, Now.Control).value_or("");
    const DataTable& table = TableOf(DialogHost::DocumentOf(*Dialog)).Table();
    Script.Accept();
    if (both.empty()) {
        WriteAnswered();
    } else if (Now.Control == DrillVariablesButton && !HaveCommon(lists) && !HoldTexts(table, lists[1])) {
        Script.ChooseVariables(PythonVariables(table, lists[0]),
                               lists[1].empty() ? "" : PythonVariables(table, lists[1]), both);
    } else {
        WriteMember(Now.Control, PythonText(both));
    }
    Pending.Settle(Page());
    if (Now.Control == DrillVariablesButton) {
        ChangeMode(HaveCommon(lists));
        Pending.Read();  // a choice reads the values of its variables
    }
}

/// A command whose dialog was cancelled has changed nothing but when cases are read.
void SessionRecorder::WriteAnswered() {
    if (std::ranges::none_of(Now.Answers, &ModalAnswer::IsConfirmed)) {
        if (ReadsUnasked(Now.Control)) {
            OfferCommand();
        }
        return;
    }
    Script.Write(AnswerLines());
    WriteMaking(CallLine());
    Pending.Unsettle();
    if (Now.Control == OrderButton) {
        Pending.Settle(Page());
    }
}

/// A command that has shown nothing may have read cases, or have them read once more; that matters until the next step
/// for reviews, where another choice of variables forgets that they are to be read, and for a variable that stands in
/// both lists, of which passes know one.
void SessionRecorder::OfferCommand() {
    PendingCategorization after = Pending;
    Script.Offer(after.TakePage(Now.Page, Now.Variable, Storing::AndReading));
    Script.Offer(after.TakeVariableIfOther(Now.Variable));
    Script.Offer(AnswerLines());
    Script.Offer({CallLine()});
    Pending.SetVariable("");  // not known: it depends on whether the lines matter
}

void SessionRecorder::WriteOpened() {
    WriteAnswered();
    if (IsConfirmed(OpenDataDialogId)) {
        TakeNewData();
    }
}

void SessionRecorder::TakeNewData() {
    for (auto& [box, isChecked] : Boxes) {
        isChecked = Startup().At(box).Checked;
    }
    Pending.SetVariable("");
    Pending.Settle(Page());
    Pending.Unsettle();
}

void SessionRecorder::WriteBox() {
    Pending.Unsettle();
    bool& isChecked = Boxes[Now.Control];
    isChecked = !isChecked;
    if (Now.IsUsable) {
        WriteMember(Now.Control, isChecked ? "1" : "0");
    } else {
        Script.Write("drill.window.command(" + std::to_string(Now.Control) + ")");
    }
}

/// A cycle of brushing draws its graph; the step that is picked in it is written as a step. A graph that stands alone
/// goes as the brushing ends, unless boundaries have to be given first.
void SessionRecorder::WriteBrushing() {
    if (std::exchange(Now.HasBrushed, true)) {
        return;
    }
    const bool asksBoundaries = HasAsked(BoundariesDialog);
    if (Now.AsksBoundaries && !asksBoundaries) {
        WriteVainBrushing();
        return;
    }
    if (!asksBoundaries && Boxes[AutoUpdateBox] && !HasBrushingGraph) {
        if (!Now.HasPicked) {
            OfferCommand();
        }
        Pending.Store(Now.Page);
        return;
    }
    Script.Write(Pending.TakeStored(Now.Variable));  // the graph is drawn before the page is stored
    if (asksBoundaries) {
        Script.Write(Pending.TakeRowClick(Now.Variable));  // they are asked for a selected row
    }
    Script.Write(Pending.TakePage(Now.Page, Now.Variable, Storing::AndReading));
    Script.Write(Pending.TakeVariableIfOther(Now.Variable));
    Script.Write(AnswerLines());
    WriteMaking(CallLine());
    HasBrushingGraph = asksBoundaries && Boxes[AutoUpdateBox];
    if (asksBoundaries) {
        Pending.Settle(Page());
    }
}

/// Boundaries lack, and no row is selected for which they could be given: the graph is all that comes of it, and the
/// page is shown anew, as the session hasn't stored it.
void SessionRecorder::WriteVainBrushing() {
    Script.Write(Pending.TakeStored(Now.Variable));
    PendingCategorization shown = Pending;
    Script.Write(shown.TakePage(Now.Page, Now.Variable, Storing::Alone));
    Script.Write(shown.TakeVariableIfOther(Now.Variable));
    WriteMaking(CallLine());
    Script.Write(Pending.TakeVariable(Now.Variable));
    HasBrushingGraph = Boxes[AutoUpdateBox];
}

void SessionRecorder::WriteClosing() {
    Script.Write("drill.close()");
    Dialog = nullptr;
}

void SessionRecorder::WriteResult() {
    const bool storesPage = StoresPage(Now.Control);
    if (!Now.HasOutput && Now.HasMessage) {
        WriteVainPress();
        return;
    }
    if (!Now.HasOutput) {
        WriteAnswered();
        if (storesPage) {
            Pending.Store(Now.Page);
        }
        return;
    }
    if (storesPage) {
        Script.Write(Pending.TakePage(Now.Page, Now.Variable, Storing::AndReading));
    } else if (Now.Control != SaveDataButton) {
        Script.Accept();  // categories of reviews are others once they have been read twice
    }
    Script.Write(AnswerLines());
    if (!Now.IsUsable) {
        WriteMaking(CallLine());
        return;
    }
    if (Now.Control != SummaryButton) {
        Pending.Read();
    }
    WriteMaking("drill." + MemberOf(*Dialog, Now.Control), Script.NameResult(DocumentsName()));
}

/// A press that has only given a message: its member would fail, and the message is the script's too.
void SessionRecorder::WriteVainPress() {
    if (StoresPage(Now.Control)) {
        Script.Write(Pending.TakePage(Now.Page, Now.Variable, Storing::Alone));
    }
    Script.Write(AnswerLines());
    Script.Write(CallLine());
}

/// Presses the control as the session has, or runs its command where nobody can press it.
std::string SessionRecorder::CallLine() const {
    const bool canBeClicked = Now.IsUsable && Now.IsVisible;
    return std::string("drill.window.") + (canBeClicked ? "click(" : "command(") + std::to_string(Now.Control) + ")";
}

/// What a script calls the documents of the command.
std::string SessionRecorder::DocumentsName() const {
    const std::string name = ResultNameOf(MemberOf(*Dialog, Now.Control));
    return !name.empty() ? name : Now.Control == BrushButton ? "brushing_graph" : "made";
}

/// Writes the line that makes the documents of the command, and that some of them have been closed meanwhile.
void SessionRecorder::WriteMaking(const std::string& line, const std::string& result) {
    RecordedScript::Line& written = Script.Write(line);
    written.Result = result;
    Documents.Enter(written, DocumentsName(), std::exchange(Now.Documents, {}), Boxes[AutoUpdateBox]);
    for (const MadeDocument& document : std::exchange(Now.Closed, {})) {
        Documents.Close(document);
    }
}

void SessionRecorder::TakeTable() {
    const auto& tables = NewTablesOf(DialogHost::DocumentOf(*Dialog)).Finished();
    if (Now.Control == SaveDataButton && Now.HasOutput && !tables.empty()) {
        Now.Documents.push_back({.Table = tables.back().get()});
    }
}

// Word for word

std::string SessionRecorder::Text() {
    Held.Write();
    Script.Write(Pending.TakeListClicks());
    return Script.Text();
}

void SessionRecorder::RecordLine(const std::string& line) {
    Held.Write();
    Script.Write(line);
}

/// Before the lines of a command that runs.
void SessionRecorder::RecordRemark(const Remark& remark) {
    Script.Write("drill.remark(" + PythonText(remark.Code) + ", " + PythonText(remark.Text) +
                 (remark.Advice.empty() ? "" : ", " + PythonText(remark.Advice)) + ")");
}

void SessionRecorder::BeginAside(const std::string& line) {
    Held.Write();
    Script.Accept();
    Script.Write(Pending.TakeListClicks());
    if (Dialog != nullptr) {
        Script.Write(Pending.TakeStored(CurrentVariable()));
    }
    Script.Write(line);
    IsAside = true;
}

void SessionRecorder::EndAside() {
    IsAside = false;
    if (Dialog != nullptr) {
        Pending.Read();
        Pending.Settle(Page());
        Pending.SetVariable(CurrentVariable());
    }
}

void SessionRecorder::BeginHere() {
    Held.Write();
    Script.Write(Pending.TakeListClicks());
    Documents.CloseRouted();
    Script.Write("# The recording begins here.");
}

void SessionRecorder::EndVerbatim() {
    if (const auto box = Boxes.find(Now.Control); box != Boxes.end()) {
        box->second = !box->second;
    }
    Held.AddDocuments(std::exchange(Now.Documents, {}), DocumentsName(), Boxes[AutoUpdateBox]);
    if (Now.HasOutput && Now.IsUsable && MakesOutput(Dialog, Now.Control)) {
        Held.Replace("drill." + MemberOf(*Dialog, Now.Control), Script.NameResult(DocumentsName()));
    }
    for (const MadeDocument& document : std::exchange(Now.Closed, {})) {
        Close(document);
    }
    if (Now.Control == DrillVariablesButton && IsConfirmed(VariableListsDialogId)) {
        ChangeMode(HaveCommon(ListsChosen()));
        Pending.Read();
    } else if (Now.Control == OpenDataButton && IsConfirmed(OpenDataDialogId)) {
        ChangeMode(false);
        TakeNewData();
    } else if (Now.Control == CancelCommand) {
        Dialog = nullptr;
    }
    Now = {};
}

void SessionRecorder::ChangeMode(bool hasDoubles) {
    Held.Write();
    const std::string variable = CurrentVariable();
    if (hasDoubles && !IsVerbatim) {
        Script.Write(Pending.TakeVariableIfOther(variable));
    }
    IsVerbatim = hasDoubles;
    Pending.SetVariable(variable);
    Pending.Settle(Page());
}

}  // namespace quillara
