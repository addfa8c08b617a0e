#include "dialogs/DefineTask.h"

#include <algorithm>
#include <array>
#include <type_traits>

#include "dialogs/Brush.h"
#include "dialogs/CategorizationPage.h"
#include "dialogs/DrillSteps.h"
#include "dialogs/HostCommands.h"
#include "dialogs/OptionBoxes.h"
#include "dialogs/ReorderDrillDown.h"
#include "dialogs/ReorderListBoxes.h"
#include "dialogs/ShownAgain.h"
#include "dialogs/VariableChoice.h"
#include "host/WindowServices.h"
#include "platform/ModuleInstance.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "resources/Dialogs.h"
#include "resources/StringTable.h"

using namespace drilldown;

namespace {

constexpr int ResultFieldAttribute = 1;  // of the host's colours
constexpr char AutoUpdateKeyword[] = "StandAloneResults";
constexpr std::int32_t Reserved = 0;

// Commands with steps of their own

template <int (*Select)(CDefineTask&)>
std::int64_t ChooseVariables(CDefineTask& task) {
    task.LockResults();
    Select(task);
    task.UnlockResults();
    return 0;
}

/// What stands on the Categorization page goes to the variable that was current until now.
std::int64_t ChangeDrillDownVariable(CDefineTask& task) {
    task.ApplyCategorization();
    task.SelectCurrentDown();
    task.UpdateControls();
    return 0;
}

std::int64_t ChangeDrillUpVariable(CDefineTask& task) {
    task.SelectCurrentUp();
    task.UpdateControls();
    return 0;
}

// Intended: nothing but the flag changes, unlike with the options that change counts; documents that stand alone stay
// so, and updates stop or go on.
std::int64_t ToggleAutoUpdate(CDefineTask& task) {
    task.Analysis->StandAloneResults = task.Analysis->StandAloneResults == 0 ? 1 : 0;
    return 0;
}

std::int64_t ChangeOrder(CDefineTask& task) {
    task.LockResults();
    ShownAgainOnFailure(task, [&] {
        ReorderDrillDown dialog(*task.Analysis);
        if (dialog.DoModal(task.Analysis->GetLibInstance()) == 1) {
            RefreshLists(task);
            task.SelectCurrentDown();
            task.UpdateControls();
        }
    });
    task.UnlockResults();
    return 1;
}

std::int64_t DrawBrushingGraph(CDefineTask& task) {
    if (!task.Analysis->DrillDowns->empty()) {
        task.Analysis->DDNGraphForBrushing(nullptr);
    }
    return 0;
}

template <CategorizationMethod Method>
std::int64_t Choose(CDefineTask& task) {
    return ChooseMethod(task, Method);
}

std::int64_t CloseDialog(CDefineTask& task) {
    task.EnableStartupMenus(1);
    task.Analysis->PutInitKeyword(0, AutoUpdateKeyword, &Reserved, &task.Analysis->StandAloneResults);
    task.ExitDialog(0, 1, 0);
    return 1;
}

struct CommandRow {
    int Id;
    std::int64_t (*Run)(CDefineTask& task);  ///< gives the result of the command
};

/// A button that makes a result.
/// Intended: review results and the saved data neither store the Categorization page nor test for records, unlike the
/// results of the drill variables; what they show doesn't depend on the page.
struct ResultRow {
    int Id;
    void (*Make)(CDrillDown& analysis, HWND window);
    CDrillDown::DrillSet* CDrillDown::*Records;  ///< the page is stored first, and these must be there; null: neither
};

/// Runs a result operation; what it gives isn't looked at.
template <auto Operation>
void Make(CDrillDown& analysis, HWND window) {
    if constexpr (std::is_invocable_v<decltype(Operation), CDrillDown&, HWND>) {
        (analysis.*Operation)(window);
    } else {
        (analysis.*Operation)(0, window);
    }
}

// clang-format off
constexpr std::array Commands{
    // Id                              Run
    CommandRow{CancelCommand,          CloseDialog},
    CommandRow{SelectCasesButton,      DefineCaseSelection},
    CommandRow{WeightButton,           DefineWeights},
    CommandRow{OpenDataButton,         OpenData},
    CommandRow{DrillVariablesButton,   ChooseVariables<SelectDrillVariables>},
    CommandRow{DrillDownListControl,   ChangeDrillDownVariable},
    CommandRow{DrillUpListControl,     ChangeDrillUpVariable},
    CommandRow{OrderButton,            ChangeOrder},
    CommandRow{DownButton,             DrillOneDown},
    CommandRow{UpButton,               DrillOneUp},
    CommandRow{DistinctValuesRadio,    Choose<DistinctValues>},
    CommandRow{ExactIntervalsRadio,    Choose<ExactIntervals>},
    CommandRow{NeatIntervalsRadio,     Choose<NeatIntervals>},
    CommandRow{StepIntervalsRadio,     Choose<StepIntervals>},
    CommandRow{IntegerCategoriesRadio, Choose<IntegerCategories>},
    CommandRow{UserIntervalsRadio,     Choose<UserIntervals>},
    CommandRow{StartAtMinimumBox,      ToggleStartAtMinimum},
    CommandRow{BoundariesButton,       EditBoundaries},
    CommandRow{ReviewVariablesButton,  ChooseVariables<SelectReviewVariables>},
    CommandRow{BrushButton,            Brush},
    CommandRow{AutoUpdateBox,          ToggleAutoUpdate},
    CommandRow{BrushingGraphCommand,   DrawBrushingGraph},
};

constexpr std::array ResultButtons{
    // Id                               Make                               Records
    ResultRow{SummaryButton,            Make<&CDrillDown::DDNSummary>,      &CDrillDown::DrillUps},
    ResultRow{DescriptivesButton,       Make<&CDrillDown::DDNDescriptive>,  &CDrillDown::DrillDowns},
    ResultRow{FrequenciesButton,        Make<&CDrillDown::DDNFrequency>,    &CDrillDown::DrillDowns},
    ResultRow{HistogramsButton,         Make<&CDrillDown::DDNHistograms>,   &CDrillDown::DrillDowns},
    ResultRow{ReviewDescriptivesButton, Make<&CDrillDown::RVSummary>,       nullptr},
    ResultRow{ReviewFrequenciesButton,  Make<&CDrillDown::RVFrequency>,     nullptr},
    ResultRow{ReviewHistogramsButton,   Make<&CDrillDown::RVHistograms>,    nullptr},
    ResultRow{ReviewBoxWhiskerButton,   Make<&CDrillDown::RVBoxWhiker>,     nullptr},
    ResultRow{SaveDataButton,           Make<&CDrillDown::DDNSaveData>,     nullptr},
    ResultRow{ReviewScatterplotButton,  Make<&CDrillDown::RVScatterPlot>,   nullptr},
    ResultRow{PieChartsButton,          Make<&CDrillDown::DDNPiecharts>,    &CDrillDown::DrillDowns},
    ResultRow{StackedPlotsButton,       Make<&CDrillDown::DDNStackedplots>, &CDrillDown::DrillDowns},
    ResultRow{ReviewPieChartsButton,    Make<&CDrillDown::RVPiecharts>,     nullptr},
    ResultRow{Review3DHistogramsButton, Make<&CDrillDown::RV3DHistograms>,  nullptr},
    ResultRow{ReviewStackedPlotsButton, Make<&CDrillDown::RVStackedplots>,  nullptr},
};
// clang-format on

template <typename Table>
constexpr bool IsAscending(const Table& table) {
    return std::ranges::adjacent_find(table, std::ranges::greater_equal{}, [](const auto& row) { return row.Id; }) ==
           table.end();
}

static_assert(IsAscending(Commands) && IsAscending(OptionBoxes) && IsAscending(ResultButtons));

/// The row of an id; null when there is none.
template <typename Table>
const typename Table::value_type* FindRow(const Table& table, int id) {
    const auto row = std::ranges::find(table, id, &Table::value_type::Id);
    return row == table.end() ? nullptr : &*row;
}

void ToggleOption(CDefineTask& task, const OptionBox& option) {
    std::int16_t& flag = task.Analysis->*option.Flag;
    flag = flag == 0 ? 1 : 0;
    if (!option.IsOfBoxPlots) {
        task.Analysis->DataChanged = 1;
        task.UpdateControls();
    }
}

void MakeResult(CDefineTask& task, const ResultRow& result) {
    CDrillDown& analysis = *task.Analysis;
    if (result.Records != nullptr) {
        task.ApplyCategorization();
        if ((analysis.*result.Records)->empty()) {
            return;
        }
    }
    result.Make(analysis, task.Window);
}

std::int64_t RunCommand(CDefineTask& task, int id) {
    if (const CommandRow* command = FindRow(Commands, id)) {
        return command->Run(task);
    }
    if (const OptionBox* option = FindRow(OptionBoxes, id)) {
        ToggleOption(task, *option);
    } else if (const ResultRow* result = FindRow(ResultButtons, id)) {
        MakeResult(task, *result);
    }
    return 0;
}

// Other messages

std::int64_t StartDialog(CDefineTask& task) {
    CDrillDown& analysis = *task.Analysis;
    task.AddDlgTabs(PageTabs, StartupTabs.data(), -1, analysis.GetLibInstance(), nullptr);
    task.InitOpeningDialog();
    (new CDrillReorderListBox(analysis))->AttachTo(task.GetDlgItem(task.Window, DrillDownListControl));
    (new CDrillUpReorderListBox(analysis))->AttachTo(task.GetDlgItem(task.Window, DrillUpListControl));
    analysis.GetInitKeyword(0, AutoUpdateKeyword, &Reserved, &analysis.StandAloneResults);
    task.CheckDlgButton(task.Window, AutoUpdateBox, analysis.StandAloneResults != 0);
    task.ShowBoxPlotOptions();
    task.SelectCurrentDown();
    task.UpdateControls();
    return 1;
}

constexpr bool IsColourQuery(unsigned message) {
    return message >= WindowMessage::ColourOfEdit && message <= WindowMessage::ColourOfStatic;
}

/// Whether a control shows results, in the host's colour for them.
constexpr bool ShowsResults(int id) {
    constexpr std::array controls{DrillDownListControl,    DrillUpListControl,      ReviewCategoricalCaption,
                                  DrillCategoricalCaption, ReviewContinuousCaption, DrillContinuousCaption};
    return std::ranges::find(controls, id) != controls.end();
}

}  // namespace

CDefineTask::CDefineTask(CDrillDown& analysis)
    : CDrillDownModelessDialog(analysis, StartupDialog, nullptr),
      CComDefineTask(*this, analysis),
      Analysis(&analysis) {}

const MessageMap* CDefineTask::GetMessageMap() const {
    return CDrillDownModelessDialog::GetMessageMap();
}

void CDefineTask::DoDataExchange(DataExchange* exchange) {
    CDrillDownModelessDialog::DoDataExchange(exchange);
}

IUnknown* CDefineTask::GetUnknown() {
    return static_cast<DDNStartup*>(this);
}

std::int64_t CDefineTask::EventHandler(HWND window, unsigned message, std::uint64_t wParam, std::int64_t lParam) {
    Window = window;
    if (const short taken = IsResultsMsg(window, message, wParam, lParam); taken != 0) {
        return taken;
    }
    if (IsColourQuery(message)) {
        const bool shows = ShowsResults(GetDlgCtrlID(reinterpret_cast<HWND>(lParam)));
        return shows ? HandleWM_CTLCOLOR(window, wParam, lParam, RGBAttrType(ResultFieldAttribute)) : 0;
    }
    if (message == WindowMessage::InitDialog) {
        return StartDialog(*this);
    }
    return message == WindowMessage::Command ? RunCommand(*this, CommandOf(wParam)) : 0;
}

std::string CDefineTask::GetDialogDescription() {
    return Analysis->GetResourceString(DialogDescriptionText);
}
