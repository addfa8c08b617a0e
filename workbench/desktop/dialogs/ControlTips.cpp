#include "workbench/desktop/dialogs/ControlTips.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "workbench/dialogs/CaseSelectionDialog.h"
#include "workbench/dialogs/DialogIds.h"
#include "workbench/dialogs/OpenDataDialog.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/dialogs/WeightDialog.h"

namespace quillara {
namespace {

struct TipRow {
    int Dialog;
    int Control;
    const char* Name;
    const char* Tip;
};

constexpr const char* Context = "quillara::ControlTips";

#define TIP(text) QT_TRANSLATE_NOOP("quillara::ControlTips", text)

// clang-format off
constexpr std::array Tips{
    // Dialog                      Control                   Name                              Tip
    TipRow{StartupDialog,          DrillVariablesButton,     "",                               TIP("Chooses the variables to drill down on")},
    TipRow{StartupDialog,          DrillCategoricalCaption,  TIP("Categorical drill variables"), TIP("The categorical drill variables")},
    TipRow{StartupDialog,          DrillContinuousCaption,   TIP("Continuous drill variables"),  TIP("The continuous drill variables")},
    TipRow{StartupDialog,          DrillDownListControl,     TIP("Drill-down variables"),      TIP("The variables that can still be drilled down on. Drag a row, or press Alt with an arrow key, to change their order")},
    TipRow{StartupDialog,          DrillUpListControl,       TIP("Drill-up variables"),        TIP("The steps taken. Drag a row, or press Alt with an arrow key, to change their order")},
    TipRow{StartupDialog,          DownButton,               TIP("Drill down"),                TIP("Keeps the cases of one category of the selected drill-down variable")},
    TipRow{StartupDialog,          UpButton,                 TIP("Drill up"),                  TIP("Takes the selected step back")},
    TipRow{StartupDialog,          BrushButton,              "",                               TIP("Drills down by a click on a bar of a histogram of the selected variable")},
    TipRow{StartupDialog,          OrderButton,              "",                               TIP("Puts the drill-down variables in a new order")},
    TipRow{StartupDialog,          AutoUpdateBox,            "",                               TIP("Results stay in windows of their own, and are brought up to date after each step")},
    TipRow{StartupDialog,          CasewiseBox,              "",                               TIP("Leaves out cases in which any drill variable is missing. Only while no step is taken")},
    TipRow{StartupDialog,          CancelCommand,            "",                               TIP("Ends the analysis")},
    TipRow{StartupDialog,          SelectCasesButton,        TIP("Select cases"),              TIP("Selects the cases to analyse by a formula. Only while no step is taken")},
    TipRow{StartupDialog,          WeightButton,             TIP("Weight"),                    TIP("Chooses the variable that weights the cases. Only while no step is taken")},
    TipRow{StartupDialog,          OpenDataButton,           "",                               TIP("Opens another data file. Only while no step is taken")},
    TipRow{StartupDialog,          OptionsButton,            "",                               TIP("Preferences of the program")},
    TipRow{StartupDialog,          WeightedMomentsBox,       "",                               TIP("Means and deviations take the weights into account. Only with a weight, and while no step is taken")},
    TipRow{StartupDialog,          PageTabs,                 TIP("Results and options"),       TIP("Results and options")},
    TipRow{StartupDialog,          SummaryButton,            "",                               TIP("A table of the steps taken and the cases that they leave")},
    TipRow{StartupDialog,          FrequenciesButton,        "",                               TIP("Counts of each drill-down variable among the cases that are left")},
    TipRow{StartupDialog,          HistogramsButton,         "",                               TIP("A histogram of each drill-down variable")},
    TipRow{StartupDialog,          PieChartsButton,          "",                               TIP("A pie chart of each drill-down variable")},
    TipRow{StartupDialog,          StackedPlotsButton,       "",                               TIP("Bars of each drill-down variable, stacked")},
    TipRow{StartupDialog,          DescriptivesButton,       "",                               TIP("Means, deviations and ranges of the continuous drill variables")},
    TipRow{StartupDialog,          SaveDataButton,           "",                               TIP("Makes a data table of the cases that are left")},
    TipRow{StartupDialog,          DistinctValuesRadio,      "",                               TIP("Each value is a category")},
    TipRow{StartupDialog,          ExactIntervalsRadio,      "",                               TIP("So many intervals of the same width, from the smallest value to the largest")},
    TipRow{StartupDialog,          ExactCountField,          TIP("Number of exact intervals"), TIP("How many intervals: 2 to 999")},
    TipRow{StartupDialog,          NeatIntervalsRadio,       "",                               TIP("About so many intervals with round bounds")},
    TipRow{StartupDialog,          NeatCountField,           TIP("Approximate number of neat intervals"), TIP("About how many intervals: 2 to 999")},
    TipRow{StartupDialog,          StepIntervalsRadio,       "",                               TIP("Intervals of a given width")},
    TipRow{StartupDialog,          StepSizeField,            TIP("Step size"),                 TIP("The width of an interval")},
    TipRow{StartupDialog,          StepStartField,           TIP("Starting at"),               TIP("Where the first interval begins")},
    TipRow{StartupDialog,          StartAtMinimumBox,        "",                               TIP("The first interval begins at the smallest value")},
    TipRow{StartupDialog,          IntegerCategoriesRadio,   "",                               TIP("Each whole number is a category")},
    TipRow{StartupDialog,          UserIntervalsRadio,       "",                               TIP("Intervals with bounds of your own")},
    TipRow{StartupDialog,          BoundariesButton,         TIP("Boundaries"),                TIP("Gives the bounds of the intervals")},
    TipRow{StartupDialog,          ReviewVariablesButton,    "",                               TIP("Chooses the variables to review beside the drill variables")},
    TipRow{StartupDialog,          ReviewCategoricalCaption, TIP("Categorical review variables"), TIP("The categorical review variables")},
    TipRow{StartupDialog,          ReviewContinuousCaption,  TIP("Continuous review variables"),  TIP("The continuous review variables")},
    TipRow{StartupDialog,          ReviewCasewiseBox,        "",                               TIP("Leaves out cases in which any review variable is missing")},
    TipRow{StartupDialog,          ReviewFrequenciesButton,  "",                               TIP("Counts of each review variable among the cases that are left")},
    TipRow{StartupDialog,          ReviewDescriptivesButton, "",                               TIP("Means, deviations and ranges of the review variables")},
    TipRow{StartupDialog,          ReviewHistogramsButton,   "",                               TIP("A histogram of each review variable")},
    TipRow{StartupDialog,          Review3DHistogramsButton, "",                               TIP("Counts of pairs of review variables")},
    TipRow{StartupDialog,          ReviewPieChartsButton,    "",                               TIP("A pie chart of each review variable")},
    TipRow{StartupDialog,          ReviewStackedPlotsButton, "",                               TIP("Bars of each review variable, stacked")},
    TipRow{StartupDialog,          ReviewScatterplotButton,  "",                               TIP("Each continuous review variable against each other one")},
    TipRow{StartupDialog,          ReviewBoxWhiskerButton,   "",                               TIP("Box plots of the continuous review variables")},
    TipRow{StartupDialog,          CountMissingBox,          "",                               TIP("Missing data are a category of their own, which can be drilled down on. Only while no step is taken")},
    TipRow{StartupDialog,          MedianQuartileRangeBox,   "",                               TIP("Box plots of median, quartiles and range")},
    TipRow{StartupDialog,          MeanSEAndSDBox,           "",                               TIP("Box plots of mean, standard error and standard deviation")},
    TipRow{StartupDialog,          MeanSD196TimesSDBox,      "",                               TIP("Box plots of mean, standard deviation and 1.96 standard deviations")},
    TipRow{StartupDialog,          MeanSE196TimesSEBox,      "",                               TIP("Box plots of mean, standard error and 1.96 standard errors")},
    TipRow{CategoryDialog,         CategoryVariableCaption,  TIP("Variable"),                  TIP("The variable that is drilled down on")},
    TipRow{CategoryDialog,         CategoryListControl,      TIP("Categories"),                TIP("The category whose cases are kept. A double click takes it at once")},
    TipRow{OrderDialog,            CurrentOrderList,         TIP("Current order"),             TIP("The variables that have no new place yet")},
    TipRow{OrderDialog,            NewOrderList,             TIP("New order"),                 TIP("The variables in their new order; those without a place follow them")},
    TipRow{OrderDialog,            PlaceButton,              TIP("Place next"),                TIP("Gives the selected variable the next place")},
    TipRow{OrderDialog,            TakeBackButton,           TIP("Take back"),                 TIP("Takes the selected variable out of the new order")},
    TipRow{BoundariesDialog,       BoundariesEdit,           TIP("Boundaries"),                TIP("Rising numbers with blanks or ; between them")},
    TipRow{BoundariesDialog,       BoundariesVariableCaption, TIP("Variable"),                 TIP("The variable that the boundaries are for")},
    TipRow{VariableListsDialogId,  VariableListsDialog::AvailableList,  TIP("Variables to choose from"), TIP("A double click, Insert or dragging adds what is selected to a list")},
    TipRow{VariableListsDialogId,  VariableListsDialog::FirstList,      TIP("First list"),     TIP("A double click, Delete or dragging takes what is selected out")},
    TipRow{VariableListsDialogId,  VariableListsDialog::SecondList,     TIP("Second list"),    TIP("A double click, Delete or dragging takes what is selected out")},
    TipRow{VariableListsDialogId,  VariableListsDialog::AddToFirst,     TIP("Add to the first list"),       TIP("Adds the selected variables to the first list")},
    TipRow{VariableListsDialogId,  VariableListsDialog::TakeFromFirst,  TIP("Remove from the first list"),  TIP("Takes the selected variables out of the first list")},
    TipRow{VariableListsDialogId,  VariableListsDialog::AddToSecond,    TIP("Add to the second list"),      TIP("Adds the selected variables to the second list")},
    TipRow{VariableListsDialogId,  VariableListsDialog::TakeFromSecond, TIP("Remove from the second list"), TIP("Takes the selected variables out of the second list")},
    TipRow{CaseSelectionDialogId,  CaseSelectionDialog::AllCases,       "",                    TIP("Every case of the table is analysed")},
    TipRow{CaseSelectionDialogId,  CaseSelectionDialog::SelectedCases,  "",                    TIP("Only the cases for which the formula holds are analysed")},
    TipRow{CaseSelectionDialogId,  CaseSelectionDialog::Formula,        TIP("Formula"),        TIP("Names of variables and their labels are offered while you type, and by Ctrl-Space")},
    TipRow{WeightDialogId,         WeightDialog::NoWeight,              "",                    TIP("Each case counts once")},
    TipRow{WeightDialogId,         WeightDialog::VariableList,          TIP("Weight variable"), TIP("The variable whose value a case counts with")},
    TipRow{OpenDataDialogId,       OpenDataDialog::FromFile,            "",                    TIP("Opens a file")},
    TipRow{OpenDataDialogId,       OpenDataDialog::Path,                TIP("Path of the data file"), TIP("The path of a data file")},
    TipRow{OpenDataDialogId,       OpenDataDialog::FromRun,             "",                    TIP("Opens a table that was made here and need not be saved")},
    TipRow{OpenDataDialogId,       OpenDataDialog::TableList,           TIP("Tables made in this session"), TIP("The tables made in this session, the newest last")},
};

/// Of the buttons that every modal dialog has.
constexpr std::array Common{
    TipRow{0, OkCommand,     "", TIP("Takes what is chosen here")},
    TipRow{0, CancelCommand, "", TIP("Leaves everything as it is")},
};
// clang-format on

#undef TIP

QString Translated(const char* text) {
    return *text == '\0' ? QString() : QCoreApplication::translate(Context, text);
}

}  // namespace

ControlTip TipOf(int dialog, int control) {
    const auto* const row = std::ranges::find_if(
        Tips, [=](const TipRow& each) { return each.Dialog == dialog && each.Control == control; });
    if (row != Tips.end()) {
        return {Translated(row->Name), Translated(row->Tip)};
    }
    const auto* const common = std::ranges::find(Common, control, &TipRow::Control);
    return common == Common.end() ? ControlTip{} : ControlTip{{}, Translated(common->Tip)};
}

}  // namespace quillara
