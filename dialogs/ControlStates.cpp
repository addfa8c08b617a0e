// What of the startup dialog is enabled, checked and current, all computed from the state of the analysis.

#include <array>
#include <cstddef>
#include <new>

#include "dialogs/DefineTask.h"
#include "dialogs/OptionBoxes.h"
#include "dialogs/ShownAgain.h"
#include "dialogs/VariableChoice.h"
#include "host/WindowServices.h"
#include "resources/ControlIds.h"

using namespace drilldown;

namespace {

/// What the analysis offers; each enables some controls.
enum Fact : std::uint8_t {
    Always,
    AnyDown,  ///< a variable to drill on
    TwoDown,
    AnyUp,  ///< a step to undo
    AnyStatistics,  ///< a continuous variable to drill on, and no step on Missing
    AnyVariable,
    AnyReview,
    ContinuousReview,
    TwoContinuousReviews,
    NoStep,
    NoStepAndWeight,
    NoStepAndDown,
    FactCount,
};

struct EnableRow {
    int Control;
    Fact When;
};

// clang-format off
constexpr std::array EnableTable{
    // Control                          When
    EnableRow{DrillDownListControl,     AnyDown},
    EnableRow{BrushButton,              AnyDown},
    EnableRow{DownButton,               AnyDown},
    EnableRow{DrillUpListControl,       AnyUp},
    EnableRow{UpButton,                 AnyUp},
    EnableRow{OrderButton,              TwoDown},
    EnableRow{BoxWhiskerGroup,          ContinuousReview},
    EnableRow{MedianQuartileRangeBox,   ContinuousReview},
    EnableRow{MeanSEAndSDBox,           ContinuousReview},
    EnableRow{MeanSD196TimesSDBox,      ContinuousReview},
    EnableRow{MeanSE196TimesSEBox,      ContinuousReview},
    EnableRow{SummaryButton,            AnyUp},
    EnableRow{DescriptivesButton,       AnyStatistics},
    EnableRow{FrequenciesButton,        AnyDown},
    EnableRow{StatisticsGroup,          AnyDown},
    EnableRow{PieChartsButton,          AnyDown},
    EnableRow{HistogramsButton,         AnyDown},
    EnableRow{SaveDataButton,           AnyVariable},
    EnableRow{ReviewDescriptivesButton, ContinuousReview},
    EnableRow{ReviewFrequenciesButton,  AnyReview},
    EnableRow{ReviewHistogramsButton,   AnyReview},
    EnableRow{ReviewPieChartsButton,    AnyReview},
    EnableRow{Review3DHistogramsButton, AnyReview},
    EnableRow{ReviewBoxWhiskerButton,   ContinuousReview},
    EnableRow{ReviewScatterplotButton,  TwoContinuousReviews},
    EnableRow{OpenDataButton,           NoStep},
    EnableRow{SelectCasesButton,        NoStep},
    EnableRow{WeightButton,             NoStep},
    EnableRow{WeightedMomentsBox,       NoStepAndWeight},
    EnableRow{CasewiseBox,              NoStep},
    EnableRow{CountMissingBox,          NoStepAndDown},
    EnableRow{ReviewVariablesButton,    Always},
    EnableRow{ReviewCategoricalLabel,   Always},
    EnableRow{ReviewCategoricalCaption, Always},
    EnableRow{ReviewContinuousLabel,    Always},
    EnableRow{ReviewContinuousCaption,  Always},
};
// clang-format on

using Facts = std::array<bool, FactCount>;

Facts FactsOf(const CDrillDown& analysis) {
    const int downs = analysis.GetDrillDownsSize();
    const int ups = analysis.GetDrillUpsSize();
    const int continuousReviews = analysis.GetNoRVContinuous();
    const bool weighted = analysis.CaseWeight.Variable != 0;
    Facts facts{};
    facts[Always] = true;
    facts[AnyDown] = downs >= 1;
    facts[TwoDown] = downs >= 2;
    facts[AnyUp] = ups >= 1;
    facts[AnyStatistics] = analysis.GetDrillDownsContSize() >= 1 && analysis.NoMissingDrill() != 0;
    facts[AnyVariable] = downs + ups >= 1;
    facts[AnyReview] = analysis.GetNoRVCategorical() + continuousReviews >= 1;
    facts[ContinuousReview] = continuousReviews >= 1;
    facts[TwoContinuousReviews] = continuousReviews >= 2;
    facts[NoStep] = ups == 0;
    facts[NoStepAndWeight] = ups == 0 && weighted;
    facts[NoStepAndDown] = ups == 0 && downs != 0;
    return facts;
}

/// The VarNo at the selected row of a list; `otherwise` when none is selected or the set has no such row.
std::int16_t VariableAtSelectedRow(CDefineTask& task, int list, const CDrillDown::DrillSet& set,
                                   std::int16_t otherwise) {
    const int row = GetListSelection(task.GetDlgItem(task.Window, list));
    int place = 0;
    for (const Drill& record : set) {
        if (place++ == row) {
            return record.VarNo;
        }
    }
    return otherwise;
}

}  // namespace

// Intended: forgets the chosen category, unlike SelectCurrentUp; a category belongs to one drill-down variable.
void CDefineTask::SelectCurrentDown() {
    Analysis->CurrentDown =
        VariableAtSelectedRow(*this, DrillDownListControl, *Analysis->DrillDowns, Analysis->CurrentDown);
    Analysis->Selected = -1;
}

void CDefineTask::SelectCurrentUp() {
    Analysis->CurrentUp = VariableAtSelectedRow(*this, DrillUpListControl, *Analysis->DrillUps, Analysis->CurrentUp);
}

void CDefineTask::ShowBoxPlotOptions() {
    for (const OptionBox& box : OptionBoxes) {
        if (box.IsOfBoxPlots) {
            CheckDlgButton(Window, box.Id, Analysis->*box.Flag == 1);
        }
    }
}

void CDefineTask::UpdateControls() {
    const Facts facts = FactsOf(*Analysis);
    for (const EnableRow& row : EnableTable) {
        EnableWindow(Window, row.Control, facts[row.When]);
    }
    for (const int hidden : {StackedPlotsButton, ReviewStackedPlotsButton}) {
        ShowWindow(Window, hidden, false);
    }
    for (const OptionBox& box : OptionBoxes) {
        if (facts[box.IsOfBoxPlots ? ContinuousReview : Always]) {
            CheckDlgButton(Window, box.Id, Analysis->*box.Flag == 1);
        }
    }
    EnableCategorizationMethods(facts[AnyDown]);
    ShowCategorization();
    EnableStartupMenus(facts[AnyUp] ? 1 : 0);
}

void RefreshLists(CDefineTask& task) {
    if (task.Analysis->RefreshListBoxes(task.Window) == 0) {
        throw std::bad_alloc();
    }
}

void ShowSets(CDefineTask& task) {
    ShowChosenVariables(task);
    RefreshLists(task);
    task.SelectCurrentDown();
    task.SelectCurrentUp();
    task.UpdateControls();
}
