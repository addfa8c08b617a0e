#include "workbench/recording/SessionRecorder.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "host/Brushing.h"
#include "host/OleConstant.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/AnalysisServices.h"
#include "workbench/hosting/ControlRows.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/recording/PageCommands.h"
#include "workbench/recording/PythonText.h"
#include "workbench/recording/RecordedMembers.h"

namespace quillara {
namespace {

constexpr std::array OptionBoxes{AutoUpdateBox,   ReviewCasewiseBox,   CasewiseBox,
                                 CountMissingBox, WeightedMomentsBox,  MedianQuartileRangeBox,
                                 MeanSEAndSDBox,  MeanSD196TimesSDBox, MeanSE196TimesSEBox};

constexpr bool IsCheckedAtFirst(int box) {
    return box == CountMissingBox || box == MeanSEAndSDBox;
}

bool HasHeight(const BrushRegion& bar) {
    return bar.Top != 0.0;
}

}  // namespace

// clang-format off
const std::array<SessionRecorder::CommandRow, 20> SessionRecorder::Commands{{
    {CancelCommand,          &SessionRecorder::WriteClosing},
    {SelectCasesButton,      &SessionRecorder::WriteAnswered},
    {WeightButton,           &SessionRecorder::WriteAnswered},
    {OpenDataButton,         &SessionRecorder::WriteOpened},
    {OrderButton,            &SessionRecorder::WriteAnswered},
    {DrillVariablesButton,   &SessionRecorder::WriteVariables},
    {ReviewVariablesButton,  &SessionRecorder::WriteVariables},
    {DrillDownListControl,   &SessionRecorder::WriteListClick},
    {DownButton,             &SessionRecorder::WriteNoStep},
    {BoundariesButton,       &SessionRecorder::TakeBoundaries},
    {BrushButton,            &SessionRecorder::WriteBrushing},
    {AutoUpdateBox,          &SessionRecorder::WriteBox},
    {ReviewCasewiseBox,      &SessionRecorder::WriteBox},
    {CasewiseBox,            &SessionRecorder::WriteBox},
    {CountMissingBox,        &SessionRecorder::WriteBox},
    {WeightedMomentsBox,     &SessionRecorder::WriteBox},
    {MedianQuartileRangeBox, &SessionRecorder::WriteBox},
    {MeanSEAndSDBox,         &SessionRecorder::WriteBox},
    {MeanSD196TimesSDBox,    &SessionRecorder::WriteBox},
    {MeanSE196TimesSEBox,    &SessionRecorder::WriteBox},
}};
// clang-format on

// What is told

void SessionRecorder::BeginCommand(CAnalysisDoc& document, int control) {
    Dialog = DialogsOf(&document).Startup.get();
    if (Dialog == nullptr || IsAside) {
        return;
    }
    Pending.Watch(*Dialog);
    if (!HasStarted) {
        Start();
    }
    const Control* pressed = Startup().Find(control);
    Now = {};
    Now.Control = control;
    Now.IsUsable = pressed != nullptr && pressed->Enabled;
    Now.IsVisible = pressed != nullptr && pressed->Visible;
    Now.Page = Page();
    Now.Variable = CurrentVariable();
    if (IsVerbatim) {
        Held.HoldCommand(control);
        return;
    }
    if (!LeavesListClicks(control)) {
        Script.Write(Pending.TakeListClicks());
    }
    if (!ActsOnPage(control)) {
        Script.Write(Pending.TakeStored(Now.Variable));
    }
}

void SessionRecorder::EndCommand(CAnalysisDoc& /*document*/, int control) {
    if (Dialog == nullptr || IsAside) {
        return;
    }
    TakeTable();
    if (IsVerbatim) {
        EndVerbatim();
        return;
    }
    const auto row = std::ranges::find(Commands, control, &CommandRow::Control);
    if (row != Commands.end()) {
        (this->*row->Write)();
    } else if (MakesOutput(Dialog, control)) {
        WriteResult();
    }
    if (Now.StepControl != 0) {
        EndStep();
    }
    Now = {};
}

/// A step has been told when nothing stood in its way any more: its move is done, whatever memory lacked for then.
void SessionRecorder::FailCommand(CAnalysisDoc& /*document*/, int /*control*/) {
    if (Dialog != nullptr && !IsAside && Now.StepControl != 0) {
        EndStep();
    }
    Now = {};
}

void SessionRecorder::EndStep() {
    Script.Write(AnswerLines());
    Script.Write("drill." + MemberOf(*Dialog, Now.StepControl) + "()");
    Pending.Read();
    Script.Drop();
    Pending.Settle(Page());
    if (Now.StepControl == DownButton) {
        Pending.SetVariable(CurrentVariable());
    }
}

void SessionRecorder::RecordSent(int control) {
    Now.AsksBoundaries = Now.AsksBoundaries || control == BoundariesButton;
}

void SessionRecorder::RecordCall(const Window& window, const WindowCall& call) {
    if (IsAside) {
        return;
    }
    if (window.Resource().Id != StartupDialog) {
        Calls.push_back(call);
        return;
    }
    const auto number = [&call](std::size_t place) {
        return static_cast<int>(std::get<double>(call.Arguments[place]));
    };
    const bool isDrag = call.Name == "drag";
    if (isDrag && (number(1) < 0 || number(1) == number(2))) {
        return;  // nothing is dragged
    }
    if (IsVerbatim) {
        Held.Hold(call);
    } else if (isDrag) {
        WriteDrag(call);
    }
}

void SessionRecorder::WriteDrag(const WindowCall& call) {
    const std::string current = CurrentVariable();
    Script.Write(Pending.TakeListClicks());
    Script.Write(Pending.TakeStored(current));
    Script.Write(Pending.TakeVariableIfOther(current));
    Script.Write("drill.window.drag(" + PythonArguments(call) + ")");
}

void SessionRecorder::RecordAnswer(Window& window) {
    if (IsAside) {
        return;
    }
    const int dialog = window.Resource().Id;
    Now.Answers.push_back({dialog, window.CloseResult() == OkCommand, std::exchange(Calls, {})});
    if (IsVerbatim) {
        Held.AddAnswer(Answers().back());
    }
    if (dialog == CategoryDialog && window.CloseResult() == OkCommand) {
        const Control& list = window.At(CategoryListControl);
        const ReportRow& row = list.ReportRows[static_cast<std::size_t>(list.Selected)];
        Now.Row = list.Selected;
        Now.RowName = row.Cells.front();
        Now.IsMissing = !row.Range.has_value();
    }
}

void SessionRecorder::RecordPick(const BrushingRun& run) {
    Now.HasPicked = true;
    const auto& bars = run.Regions.Regions();
    int bar = -1;
    const bool isBar = run.Regions.getSelected(bar);
    if (IsVerbatim) {
        const std::vector<WindowCall> pick{{"pick", {static_cast<double>(bar), static_cast<double>(run.Choice)}}};
        Held.AddAnswer(PythonAnswer(pick));
    } else if (isBar) {
        Now.Row = static_cast<int>(std::count_if(bars.begin(), bars.begin() + bar, HasHeight));
    }
}

void SessionRecorder::RecordStep(CAnalysisDoc& /*document*/, const std::vector<RecordedValue>& values, int control) {
    if (IsVerbatim || IsAside) {
        return;
    }
    if (Now.Control == BrushButton) {
        WriteBrushing();
    }
    control == DownButton ? WriteDown(values) : WriteUp(values);
    Now.StepControl = control;
    Now.Answers.clear();  // those that come now are for documents that are brought up to date
}

void SessionRecorder::RecordOutput(CAnalysisDoc& /*document*/, int control) {
    Now.HasOutput = control == Now.Control;
}

void SessionRecorder::RecordDocument(const ResultDocument& document) {
    const MadeDocument made{.Number = document.Number()};
    if (std::ranges::find(Now.Documents, made) == Now.Documents.end()) {
        Now.Documents.push_back(made);
    }
}

void SessionRecorder::RecordClose(const ResultDocument& document) {
    Close({.Number = document.Number()});
}

void SessionRecorder::RecordDataClose(const DataTable& table) {
    Close({.Table = &table});
}

/// The line of a command that runs is yet to be written.
void SessionRecorder::Close(const MadeDocument& document) {
    if (std::ranges::find(Now.Documents, document) != Now.Documents.end()) {
        Now.Closed.push_back(document);
    } else {
        Held.Write();
        Documents.Close(document);
    }
}

void SessionRecorder::RecordMessage(std::string_view /*text*/) {
    Now.HasMessage = true;
}

// What is known

Window& SessionRecorder::Startup() const {
    return *DialogHost::WindowOf(*Dialog);
}

/// Without a current variable what the page shows is of no variable.
ShownCategorization SessionRecorder::Page() const {
    ShownCategorization page = ShownCategorization::In(Startup());
    page.CanBeChanged = page.CanBeChanged && !CurrentVariable().empty();
    return page;
}

std::string SessionRecorder::CurrentVariable() const {
    const std::unique_ptr<COleAConstant> name(Dialog->RecordControlValue(DrillDownListControl));
    return name == nullptr ? "" : name->Value();
}

bool SessionRecorder::IsConfirmed(int dialog) const {
    return std::ranges::any_of(
        Now.Answers, [dialog](const ModalAnswer& answer) { return answer.Dialog == dialog && answer.IsConfirmed; });
}

bool SessionRecorder::HasAsked(int dialog) const {
    return std::ranges::find(Now.Answers, dialog, &ModalAnswer::Dialog) != Now.Answers.end();
}

void SessionRecorder::Start() {
    HasStarted = true;
    for (const int box : OptionBoxes) {
        Boxes[box] = Startup().At(box).Checked;
        if (Boxes[box] != IsCheckedAtFirst(box)) {
            WriteMember(box, Boxes[box] ? "1" : "0");
        }
    }
    Pending.Settle(Page());
}

}  // namespace quillara
