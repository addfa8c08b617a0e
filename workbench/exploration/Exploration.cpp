#include "workbench/exploration/Exploration.h"

#include <algorithm>
#include <utility>

#include "host/Brushing.h"
#include "resources/ControlIds.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/exploration/StartupClicks.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/hosting/StepHistory.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/hosting/WindowCalls.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

constexpr const char* PickCall = "pick";
constexpr const char* LeaveCall = "leave";
constexpr const char* BeginCall = "begin";
constexpr const char* NoMemory = "There is not enough memory for this analysis.";

/// Holds a value for the time of a block.
template <typename Value>
class Holding {
  public:
    Holding(Value& place, Value value) : Place(place), Before(std::exchange(place, value)) {}
    Holding(const Holding&) = delete;
    Holding& operator=(const Holding&) = delete;
    ~Holding() { Place = Before; }

  private:
    Value& Place;
    const Value Before;
};

/// An argument of a call that takes numbers; -1 for a text.
int NumberOf(const JournalEntry& entry, std::size_t argument) {
    const double* number =
        argument < entry.Call.Arguments.size() ? std::get_if<double>(&entry.Call.Arguments[argument]) : nullptr;
    return number == nullptr ? -1 : static_cast<int>(*number);
}

}  // namespace

Exploration::Exploration(std::shared_ptr<const DataTable> table, ScriptOpening opening, ExplorationListener& listener,
                         SettingsStore* settings)
    : Listener(listener),
      Tables{std::move(table)},
      Recorder(std::move(opening)),
      Library(AnalysisModule::DrillDownPath()),
      Document(*Tables.front()) {
    Document.Services = Services(settings);
    Document.Adopt(Library.NewAnalysis());
    if (!Document.RunSequence() || Document.StartupWindow() == nullptr) {
        throw DataError(NoMemory);
    }
    Recorder.Note({JournalEntry::NoDialog, {BeginCall, {At(AutoUpdateBox).Checked ? 1.0 : 0.0}}});
}

Exploration::~Exploration() = default;

AnalysisServices Exploration::Services(SettingsStore* settings) {
    AnalysisServices services;
    services.WorkIn = [this](Window& dialog) { return WorkIn(dialog); };
    services.Brush = [this](BrushingRun& run) { return Pick(run); };
    services.ShowMessage = [this](std::string_view text) {
        if (Again == nullptr) {
            Listener.ShowMessage(text);
        }
    };
    services.HearRemark = [this](const Remark& remark) { Listener.RemarkMade(remark); };
    services.MemoryLacked = [this] { LacksMemory = true; };
    services.TakeDocument = [this](ResultDocument& document) { Take(document, false); };
    services.HearStandAlone = [this](ResultDocument& document) { Take(document, true); };
    services.TakeData = [this](std::shared_ptr<const DataTable> made) {
        Tables.push_back(made);
        Listener.TableMade(std::move(made));
    };
    services.BreakFlag = &BreakFlag;
    services.ProgressStarted = [this](std::string_view text, std::int32_t total) { Listener.WorkBegan(text, total); };
    services.ProgressAdvanced = [this](std::int32_t done) { Listener.WorkAdvanced(done); };
    services.ProgressEnded = [this] { Listener.WorkEnded(); };
    services.Recorder = &Recorder;
    services.Settings = settings;
    return services;
}

std::shared_ptr<const DataTable> Exploration::SharedTable() {
    const std::shared_ptr<const DataTable>& opened = TableOf(&Document).OwnedTable();
    return opened == nullptr ? Tables.front() : opened;
}

std::vector<StepTaken> Exploration::Steps() {
    const std::vector<StepTaken>& taken = StepsOf(&Document).Taken();
    return StepsInForce(taken, taken.size());
}

std::optional<SubsetSize> Exploration::Selected() {
    return CountSelected(Document);
}

std::optional<SubsetSize> Exploration::Remaining() {
    return CountRemaining(Document);
}

std::optional<std::string> Exploration::WeightName() {
    const TableInUse& data = TableOf(&Document);
    if (!data.IsWeighted || !data.WeightVariable) {
        return std::nullopt;
    }
    return Table().Variables[*data.WeightVariable].Name;
}

void Exploration::Use(Window& window, const std::function<void(Window&)>& action) {
    if (std::ranges::find(Modal, &window) != Modal.end()) {
        action(window);  // the command that has opened it goes on by itself
    } else {
        Act([&] { action(window); });
    }
}

void Exploration::Press(int id) {
    Act([&] { ClickInStartup(Document, id); });
}

void Exploration::Press(int id, const Answer& answer) {
    Act([&] { ClickInStartup(Document, id); }, &answer);
    if (std::exchange(NextAnswer, nullptr) != nullptr) {
        throw DataError(NoMemory);  // the dialog hasn't been opened
    }
}

void Exploration::ClickRow(int list, int row) {
    Act([&] { Startup().ClickRow(list, row); });
}

void Exploration::TypeNumber(int field, double number) {
    Act([&] { Startup().TypeNumber(field, number); });
}

const Control& Exploration::At(int id) {
    DemandOpen();
    return Startup().At(id);
}

void Exploration::DemandOpen() {
    if (HasEnded()) {
        throw UsageError("The analysis has been left; open the data again to go on.");
    }
}

void Exploration::Act(const std::function<void()>& action, const Answer* answer) {
    if (IsBusy()) {
        throw UsageError("Another command still runs; wait for its end, or cancel it.");
    }
    DemandOpen();
    {
        const Holding running(Running, true);
        NextAnswer = answer;
        BreakFlag = false;
        LacksMemory = false;
        action();
        Document.RunMessages();
        SelectCurrentRow();
    }
    Document.RunMessages();  // lets closed windows go now that nothing runs
    if (HasEnded()) {
        Document.Analysis().BeforeClose();
    }
    TellDocuments();
    Listener.Changed();
    if (LacksMemory) {
        throw DataError(NoMemory);
    }
}

bool Exploration::WorkIn(Window& dialog) {
    TellDocuments();
    Modal.push_back(&dialog);
    const std::unique_ptr<void, std::function<void(void*)>> leave(this, [this](void*) { Modal.pop_back(); });
    const Answer* answer = std::exchange(NextAnswer, nullptr);
    if (answer == nullptr && Again != nullptr) {
        return WorkAgain(dialog);
    }
    if (answer == nullptr) {
        Listener.Changed();
        return Listener.WorkIn(dialog);
    }
    (*answer)(dialog);
    if (!dialog.IsClosed()) {
        throw DataError("The dialog " + Quoted(dialog.Resource().Title) + " doesn't accept what was entered.");
    }
    return true;
}

bool Exploration::WorkAgain(Window& dialog) {
    while (!dialog.IsClosed() && !Again->empty() && Again->front().Dialog == dialog.Resource().Id) {
        const WindowCall& call = Again->front().Call;
        *Again = Again->subspan(1);
        RunWindowCall(dialog, call);
    }
    return dialog.IsClosed();
}

bool Exploration::Pick(BrushingRun& run) {
    TellDocuments();
    if (Again == nullptr) {
        Listener.Changed();
    }
    const Holding picks(Picks, true);
    const bool isPicked = Again != nullptr ? PickAgain(run) : Listener.Pick(run);
    if (!isPicked) {
        Recorder.Note({JournalEntry::NoDialog, {LeaveCall, {}}});
    }
    return isPicked;
}

/// Documents may have been closed meanwhile. A session that was kept while bars were picked ends there: that is left.
bool Exploration::PickAgain(BrushingRun& run) {
    while (!Again->empty() && Again->front().Call.Name == JournalEntry::CloseCall) {
        const JournalEntry& entry = Again->front();
        *Again = Again->subspan(1);
        DoAgain(entry);
    }
    if (!Again->empty() && Again->front().Call.Name == LeaveCall) {
        *Again = Again->subspan(1);
        return false;
    }
    if (Again->empty() || Again->front().Call.Name != PickCall) {
        return false;
    }
    run.Regions.setSelected(NumberOf(Again->front(), 0));
    run.Choice = NumberOf(Again->front(), 1);
    *Again = Again->subspan(1);
    return true;
}

void Exploration::DoAgain(const JournalEntry& entry) {
    if (entry.Dialog == StartupDialog) {
        Use(Startup(), [&](Window& window) { RunWindowCall(window, entry.Call); });
    } else if (entry.Call.Name == BeginCall) {
        BeginAs(NumberOf(entry, 0) == 1);
    } else if (entry.Call.Name == JournalEntry::CloseCall &&
               static_cast<std::size_t>(NumberOf(entry, 0)) < Shown.size()) {
        Close(*Shown[static_cast<std::size_t>(NumberOf(entry, 0))]);
    }
}

/// The box is set from what the user has left it as last, which is another by now.
void Exploration::BeginAs(bool isUpdating) {
    if (At(AutoUpdateBox).Checked != isUpdating) {
        Press(AutoUpdateBox);
    }
}

/// Behind the end of the startup dialog windows are closed yet.
void Exploration::Replay(const std::vector<JournalEntry>& entries) {
    std::span<const JournalEntry> rest(entries);
    const Holding again(Again, &rest);
    while (!rest.empty() && !(HasEnded() && rest.front().Dialog != JournalEntry::NoDialog)) {
        const JournalEntry& entry = rest.front();
        rest = rest.subspan(1);
        DoAgain(entry);
    }
}

std::string Exploration::VariableAt(int list, int row) {
    const std::vector<std::string>& rows = At(list).Rows;
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size()) {
        return {};
    }
    const std::vector<StepTaken> steps = Steps();
    const auto step =
        std::ranges::find_if(steps, [&](const StepTaken& each) { return RowOf(list, each.Variable) == row; });
    return list == DrillUpListControl && step != steps.end() ? step->Variable : rows[static_cast<std::size_t>(row)];
}

/// A row of the second list bears the category behind the name, in brackets.
int Exploration::RowOf(int list, const std::string& variable) {
    const std::vector<std::string>& rows = At(list).Rows;
    const auto names = [&](const std::string& row) {
        return row == variable || (list == DrillUpListControl && row.starts_with(variable + " ("));
    };
    const auto row = std::ranges::find_if(rows, names);
    return row == rows.end() ? -1 : static_cast<int>(row - rows.begin());
}

}  // namespace quillara
