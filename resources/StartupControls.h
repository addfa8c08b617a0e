#pragma once

#include <array>

#include "host/ControlTable.h"
#include "resources/ControlIds.h"

// What the controls of the startup dialog are to scripts and recorders. Three group boxes carry the values that have no
// control of their own; the two lists stand for the current variables.

// clang-format off
inline constexpr std::array StartupControls{
    //         Control                   Class              Mode      Value         RecordingId, IsProperty, Reserved  Member
    ControlRow{DrillVariablesButton,     VariablesButton,   HasValue, IntegerValue, 41114, 1, {}},  // Variables
    ControlRow{DrillDownListControl,     ValueControl,      HasValue, TextValue,    41115, 1, {}},  // DrillDownVariable
    ControlRow{DrillUpListControl,       ValueControl,      HasValue, TextValue,    41116, 1, {}},  // DrillUpVariable
    ControlRow{WeightedMomentsBox,       ValueControl,      HasValue, IntegerValue, 41117, 1, {}},  // WeightedMoments
    ControlRow{SummaryButton,            SpreadsheetButton, Acts,     IntegerValue, 41118, 1, {}},  // Summary
    ControlRow{DescriptivesButton,       SpreadsheetButton, Acts,     IntegerValue, 41119, 1, {}},  // Descriptives
    ControlRow{FrequenciesButton,        SpreadsheetButton, Acts,     IntegerValue, 41120, 1, {}},  // Frequencies
    ControlRow{PieChartsButton,          GraphButton,       Acts,     IntegerValue, 41151, 1, {}},  // PieCharts
    ControlRow{StackedPlotsButton,       GraphButton,       Acts,     IntegerValue, 41152, 1, {}},  // StackedPlots
    ControlRow{HistogramsButton,         GraphButton,       Acts,     IntegerValue, 41121, 1, {}},  // Histograms
    ControlRow{SaveDataButton,           DataButton,        Acts,     IntegerValue, 41122, 1, {}},  // Save
    ControlRow{DistinctValuesRadio,      ValueControl,      HasValue, IntegerValue, 41123, 1, {}},  // AllDistinctValues
    ControlRow{ExactIntervalsRadio,      ValueControl,      HasValue, IntegerValue, 41124, 1, {}},  // NoOfExactIntervals
    ControlRow{ExactCountField,          ValueControl,      HasValue, IntegerValue, 41125, 1, {}},  // ValueNoOfExactIntervals
    ControlRow{NeatIntervalsRadio,       ValueControl,      HasValue, IntegerValue, 41126, 1, {}},  // NeatIntervalsAppNo
    ControlRow{NeatCountField,           ValueControl,      HasValue, IntegerValue, 41127, 1, {}},  // ValueNeatIntervalsAppNo
    ControlRow{StepIntervalsRadio,       ValueControl,      HasValue, IntegerValue, 41128, 1, {}},  // StepSize
    ControlRow{StepSizeField,            ValueControl,      HasValue, RealValue,    41129, 1, {}},  // ValueStepSize
    ControlRow{StepStartField,           ValueControl,      HasValue, RealValue,    41130, 1, {}},  // ValueStartingFrom
    ControlRow{StartAtMinimumBox,        ValueControl,      HasValue, IntegerValue, 41131, 1, {}},  // StartingAtMinimum
    ControlRow{IntegerCategoriesRadio,   ValueControl,      HasValue, IntegerValue, 41132, 1, {}},  // IntegerCategories
    ControlRow{UserIntervalsRadio,       ValueControl,      HasValue, IntegerValue, 41133, 1, {}},  // UserSpecifiedCategories
    ControlRow{ReviewVariablesButton,    VariablesButton,   HasValue, IntegerValue, 41134, 1, {}},  // ReviewVariables
    ControlRow{ReviewDescriptivesButton, SpreadsheetButton, Acts,     IntegerValue, 41135, 1, {}},  // ReviewDescriptives
    ControlRow{ReviewFrequenciesButton,  SpreadsheetButton, Acts,     IntegerValue, 41136, 1, {}},  // ReviewFrequencies
    ControlRow{ReviewBoxWhiskerButton,   GraphButton,       Acts,     IntegerValue, 41137, 1, {}},  // ReviewBoxWhisker
    ControlRow{ReviewHistogramsButton,   GraphButton,       Acts,     IntegerValue, 41138, 1, {}},  // ReviewHistograms
    ControlRow{ReviewScatterplotButton,  GraphButton,       Acts,     IntegerValue, 41139, 1, {}},  // ReviewScatterplot
    ControlRow{ReviewPieChartsButton,    GraphButton,       Acts,     IntegerValue, 41148, 1, {}},  // ReviewPieCharts
    ControlRow{ReviewStackedPlotsButton, GraphButton,       Acts,     IntegerValue, 41149, 1, {}},  // ReviewStackedPlots
    ControlRow{Review3DHistogramsButton, GraphButton,       Acts,     IntegerValue, 41150, 1, {}},  // Review3DHistograms
    ControlRow{StatisticsGroup,          ValueControl,      HasValue, TextValue,    41145, 1, {}},  // UserDefinedBoundaries
    ControlRow{DrillVariablesGroup,      ValueControl,      HasValue, TextValue,    41144, 1, {}},  // CategorySelections
    ControlRow{DrillOperationsGroup,     ValueControl,      HasValue, TextValue,    41143, 1, {}},  // DrillDownCategory
    ControlRow{AutoUpdateBox,            ValueControl,      HasValue, IntegerValue, 41140, 1, {}},  // StandAloneResults
    ControlRow{ReviewCasewiseBox,        ValueControl,      HasValue, IntegerValue, 41141, 1, {}},  // RVCasewiseDeletionOfMD
    ControlRow{CasewiseBox,              ValueControl,      HasValue, IntegerValue, 41142, 1, {}},  // CasewiseDeletionOfMD
    ControlRow{CountMissingBox,          ValueControl,      HasValue, IntegerValue, 41153, 1, {}},  // CountMD
    ControlRow{MedianQuartileRangeBox,   ValueControl,      HasValue, IntegerValue, 22939, 1, {}},  // PlotMedianQuartileRange
    ControlRow{MeanSEAndSDBox,           ValueControl,      HasValue, IntegerValue, 22940, 1, {}},  // PlotMeanSEAndSD
    ControlRow{MeanSD196TimesSDBox,      ValueControl,      HasValue, IntegerValue, 22941, 1, {}},  // PlotMeanSD196TimesSD
    ControlRow{MeanSE196TimesSEBox,      ValueControl,      HasValue, IntegerValue, 22942, 1, {}},  // PlotMeanSE196TimesSE
    ControlRow{DownButton,               ValueControl,      Acts,     MethodValue,  41146, 0, {}},  // DrillDown
    ControlRow{UpButton,                 ValueControl,      Acts,     MethodValue,  41147, 0, {}},  // DrillUp
    ControlRow{0,                        ValueControl,      0,        0,            0,     1, {}},
};
// clang-format on
