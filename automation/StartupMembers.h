#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "automation/AutomationMember.h"
#include "automation/StartupInterface.h"
#include "resources/ControlIds.h"

// The members of the automation interfaces: the one list that calls by name, calls by number, type information and the
// startup dialog's own functions go by. Ids are scripted and never change.

namespace drilldown {

// clang-format off
inline constexpr std::array DialogMembers = [] {
    using I = IComQuillaraDialog;
    return std::array{
    //               Name                     Id  Control  Functions                                      Help                                   Result
    AutomationMember{"Name",                   0, 0,       {{Get<&I::get_Name>}},                        "",                                    "pName"},
    AutomationMember{"Application",            1, 0,       {{Get<&I::get_Application>}},                 "Returns application object",          "pApp"},
    AutomationMember{"Parent",                 2, 0,       {{Get<&I::get_Parent>}},                      "Returns the parent of the object",    "pApp"},
    AutomationMember{"OK",                     3, 0,       {{Method<&I::OK>}},                           "",                                    "pSuccess"},
    AutomationMember{"Cancel",                 4, 0,       {{Method<&I::Cancel>}},                       ""},
    AutomationMember{"ResultsSelection",       5, 0,       {{Put<&I::put_ResultsSelection>}},            ""},
    AutomationMember{"ResultsSelectionOption", 6, 0,       {{Put<&I::put_ResultsSelectionOption>}},      ""},
    AutomationMember{"ResultsVariables",       7, 0,       {{Put<&I::put_ResultsVariables>}},            ""},
    AutomationMember{"ResultsOption",          8, 0,       {{Put<&I::put_ResultsOption>}},               ""},
    AutomationMember{"ResultsCodes",           9, 0,       {{Put<&I::put_ResultsCodes>}},                ""},
    AutomationMember{"ResultsSaveFileName",   10, 0,       {{Put<&I::put_ResultsSaveFileName>}},         ""},
    AutomationMember{"ResultsValues",         11, 0,       {{Put<&I::put_ResultsValues>}},               ""},
    AutomationMember{"ResultsOutputFields",   12, 0,       {{Put<&I::put_ResultsOutputFields>}},         ""},
    };
}();

inline constexpr std::array StartupMembers = [] {
    using I = DDNStartup;
    return std::array{
    //               Name                       Id          Control                   Functions                                                                       Help
    AutomationMember{"Variables",               0x60030000, DrillVariablesButton,     {{Get<&I::get_Variables>, Put<&I::put_Variables>}},                             "Variables for drill-down"},
    AutomationMember{"DrillDownVariable",       0x60030002, 0,                        {{Get<&I::get_DrillDownVariable>, Put<&I::put_DrillDownVariable>}},             "Next variable for drill-down"},
    AutomationMember{"DrillUpVariable",         0x60030004, 0,                        {{Get<&I::get_DrillUpVariable>, Put<&I::put_DrillUpVariable>}},                 "Next Variable for drill-up (reversing drill-down operation)"},
    AutomationMember{"WeightedMoments",         0x60030006, WeightedMomentsBox,       {{Get<&I::get_WeightedMoments>, Put<&I::put_WeightedMoments>}},                 "Weighted moments (fractional weights)"},
    AutomationMember{"Summary",                 0x60030008, SummaryButton,            {{Get<&I::get_Summary>}},                                                       "Summary of drill-down operations"},
    AutomationMember{"Descriptives",            0x60030009, DescriptivesButton,       {{Get<&I::get_Descriptives>}},                                                  "Descriptive statistics for drill-down variables"},
    AutomationMember{"Frequencies",             0x6003000a, FrequenciesButton,        {{Get<&I::get_Frequencies>}},                                                   "Frequency tables for drill-down variables"},
    AutomationMember{"Histograms",              0x6003000b, HistogramsButton,         {{Get<&I::get_Histograms>}},                                                    "Histograms for current drill-down variable"},
    AutomationMember{"PieCharts",               0x6003000c, PieChartsButton,          {{Get<&I::get_PieCharts>}},                                                     "Pie charts; for drill-down variables"},
    AutomationMember{"StackedPlots",            0x6003000d, StackedPlotsButton,       {{Get<&I::get_StackedPlots>}},                                                  "Stacked bar plots; for drill-down variables"},
    AutomationMember{"Save",                    0x6003000e, SaveDataButton,           {{Get<&I::get_Save>}},                                                          "Save all selected variables, for the most current subset (after drill-down)"},
    AutomationMember{"AllDistinctValues",       0x6003000f, DistinctValuesRadio,      {{Get<&I::get_AllDistinctValues>, Put<&I::put_AllDistinctValues>}},             "Use All-distinct-values method of categorization"},
    AutomationMember{"NoOfExactIntervals",      0x60030011, ExactIntervalsRadio,      {{Get<&I::get_NoOfExactIntervals>, Put<&I::put_NoOfExactIntervals>}},           "Use Exact-intervals method of categorization"},
    AutomationMember{"ValueNoOfExactIntervals", 0x60030013, ExactCountField,          {{Get<&I::get_ValueNoOfExactIntervals>, Put<&I::put_ValueNoOfExactIntervals>}}, "Number of intervals, for exact-intervals method of categorization"},
    AutomationMember{"NeatIntervalsAppNo",      0x60030015, NeatIntervalsRadio,       {{Get<&I::get_NeatIntervalsAppNo>, Put<&I::put_NeatIntervalsAppNo>}},           "Use Neat-intervals method of categorization"},
    AutomationMember{"ValueNeatIntervalsAppNo", 0x60030017, NeatCountField,           {{Get<&I::get_ValueNeatIntervalsAppNo>, Put<&I::put_ValueNeatIntervalsAppNo>}}, "Number of neat intervals, for neat-intervals method of categorization"},
    AutomationMember{"StepSize",                0x60030019, StepIntervalsRadio,       {{Get<&I::get_StepSize>, Put<&I::put_StepSize>}},                               "Use Fixed-stepsize method of categorization"},
    AutomationMember{"ValueStepSize",           0x6003001b, StepSizeField,            {{Get<&I::get_ValueStepSize>, Put<&I::put_ValueStepSize>}},                     "Step size value, for fixed-stepsize method of categorization"},
    AutomationMember{"ValueStartingFrom",       0x6003001d, StepStartField,           {{Get<&I::get_ValueStartingFrom>, Put<&I::put_ValueStartingFrom>}},             "Lower boundary (start value) for fixed-stepsize method of categorization"},
    AutomationMember{"StartingAtMinimum",       0x6003001f, StartAtMinimumBox,        {{Get<&I::get_StartingAtMinimum>, Put<&I::put_StartingAtMinimum>}},             "Start categorization ('stepping') at minimum observed value"},
    AutomationMember{"IntegerCategories",       0x60030021, IntegerCategoriesRadio,   {{Get<&I::get_IntegerCategories>, Put<&I::put_IntegerCategories>}},             "Integer intervals; categorization method"},
    AutomationMember{"UserSpecifiedCategories", 0x60030023, UserIntervalsRadio,       {{Get<&I::get_UserSpecifiedCategories>, Put<&I::put_UserSpecifiedCategories>}}, "User specified categories; categorization method"},
    AutomationMember{"ReviewVariables",         0x60030025, ReviewVariablesButton,    {{Get<&I::get_ReviewVariables>, Put<&I::put_ReviewVariables>}},                 "Variables for review (for auxiliary summaries and graphs)"},
    AutomationMember{"ReviewDescriptives",      0x60030027, ReviewDescriptivesButton, {{Get<&I::get_ReviewDescriptives>}},                                            "Descriptive statistics for variables-for-review"},
    AutomationMember{"ReviewFrequencies",       0x60030028, ReviewFrequenciesButton,  {{Get<&I::get_ReviewFrequencies>}},                                             "Frequency tables; for variables-for-review"},
    AutomationMember{"ReviewBoxWhisker",        0x60030029, ReviewBoxWhiskerButton,   {{Get<&I::get_ReviewBoxWhisker>}},                                              "Box-whiskers plot; for variables-for-review"},
    AutomationMember{"ReviewHistograms",        0x6003002a, ReviewHistogramsButton,   {{Get<&I::get_ReviewHistograms>}},                                              "Histograms; for variables-for-review"},
    AutomationMember{"ReviewScatterplot",       0x6003002b, ReviewScatterplotButton,  {{Get<&I::get_ReviewScatterplot>}},                                             "Scatterplot matrix, for variables-for-review"},
    AutomationMember{"ReviewPieCharts",         0x6003002c, ReviewPieChartsButton,    {{Get<&I::get_ReviewPieCharts>}},                                               "Pie charts; for variables-for-review"},
    AutomationMember{"ReviewStackedPlots",      0x6003002d, ReviewStackedPlotsButton, {{Get<&I::get_ReviewStackedPlots>}},                                            "Stacked bar plots; for variables-for-review"},
    AutomationMember{"Review3DHistograms",      0x6003002e, Review3DHistogramsButton, {{Get<&I::get_Review3DHistograms>}},                                            "3D histograms; for variables-for-review"},
    AutomationMember{"StandAloneResults",       0x6003002f, AutoUpdateBox,            {{Get<&I::get_StandAloneResults>, Put<&I::put_StandAloneResults>}},             "Make results in stand-alone windows (for auto-updating)"},
    AutomationMember{"RVCasewiseDeletionOfMD",  0x60030031, ReviewCasewiseBox,        {{Get<&I::get_RVCasewiseDeletionOfMD>, Put<&I::put_RVCasewiseDeletionOfMD>}},   "Casewise (listwise) deletion of missing data for review variables"},
    AutomationMember{"CasewiseDeletionOfMD",    0x60030033, CasewiseBox,              {{Get<&I::get_CasewiseDeletionOfMD>, Put<&I::put_CasewiseDeletionOfMD>}},       "Casewise (listwise) deletion of missing data for analysis variables"},
    AutomationMember{"CountMD",                 0x60030035, CountMissingBox,          {{Get<&I::get_CountMD>, Put<&I::put_CountMD>}},                                 "Count drill-down variable missing data"},
    AutomationMember{"PlotMedianQuartileRange", 0x60030037, MedianQuartileRangeBox,   {{Get<&I::get_PlotMedianQuartileRange>, Put<&I::put_PlotMedianQuartileRange>}}, "Plot median, quartile, and range; in Box-Whiskers plots"},
    AutomationMember{"PlotMeanSEAndSD",         0x60030039, MeanSEAndSDBox,           {{Get<&I::get_PlotMeanSEAndSD>, Put<&I::put_PlotMeanSEAndSD>}},                 "Plot mean, standard error, standard deviation; in Box-Whiskers plots"},
    AutomationMember{"PlotMeanSD196TimesSD",    0x6003003b, MeanSD196TimesSDBox,      {{Get<&I::get_PlotMeanSD196TimesSD>, Put<&I::put_PlotMeanSD196TimesSD>}},       "Plot mean, standard deviation, 1.96*standard deviation; in Box-Whiskers plots"},
    AutomationMember{"PlotMeanSE196TimesSE",    0x6003003d, MeanSE196TimesSEBox,      {{Get<&I::get_PlotMeanSE196TimesSE>, Put<&I::put_PlotMeanSE196TimesSE>}},       "Plot mean, standard error, 1.96*standard error; in Box-Whiskers plots"},
    AutomationMember{"DrillDown",               0x6003003f, DownButton,               {{Method<&I::DrillDown>}},                                                      "Drill down on selected variable and category"},
    AutomationMember{"DrillUp",                 0x60030040, UpButton,                 {{Method<&I::DrillUp>}},                                                        "Drill up (undo previous drill-down operation) on current variable(category)"},
    AutomationMember{"CategorySelections",      0x60030041, 0,                        {{Get<&I::get_CategorySelections>, Put<&I::put_CategorySelections>}},           "Category selections of current drill-down variable"},
    AutomationMember{"DrillDownCategory",       0x60030043, 0,                        {{Get<&I::get_DrillDownCategory>, Put<&I::put_DrillDownCategory>}},             "Category for drilldown"},
    AutomationMember{"UserDefinedBoundaries",   0x60030045, 0,                        {{Get<&I::get_UserDefinedBoundaries>, Put<&I::put_UserDefinedBoundaries>}},     "User-defined boundaries"},
    };
}();
// clang-format on

/// The row of a member of the startup dialog; an unknown name doesn't compile.
[[nodiscard]] consteval const AutomationMember& Row(std::string_view name) {
    for (const AutomationMember& member : StartupMembers) {
        if (name == member.Name) {
            return member;
        }
    }
    throw "no such member";
}

/// Number of functions of some members.
template <std::size_t Count>
[[nodiscard]] consteval std::size_t FunctionsOf(const std::array<AutomationMember, Count>& members) {
    std::size_t functions = 0;
    for (const AutomationMember& member : members) {
        functions += static_cast<std::size_t>(
            std::ranges::count_if(member.Functions, [](const MemberFunction& each) { return each.Use != 0; }));
    }
    return functions;
}

/// Whether the ids run upward from a first one, those of a member with two functions by two.
template <std::size_t Count>
[[nodiscard]] consteval bool AreNumberedFrom(DISPID next, const std::array<AutomationMember, Count>& members) {
    for (const AutomationMember& member : members) {
        if (member.Id != next) {
            return false;
        }
        next += member.Functions[1].Use != 0 ? 2 : 1;
    }
    return true;
}

static_assert(AreNumberedFrom(0, DialogMembers) && AreNumberedFrom(0x60030000, StartupMembers));
static_assert(FunctionsOf(DialogMembers) == 13 && FunctionsOf(StartupMembers) == 71);

}  // namespace drilldown
