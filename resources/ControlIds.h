#pragma once

// Ids of dialogs and controls. Ids are stored, scripted and shown to hosts; they never change.

/// Dialogs and the pages of the startup dialog.
enum DialogId : int {
    StartupDialog = 4813,
    QuickPage = 4814,
    CategorizationPage = 4815,
    ReviewPage = 4816,
    OptionsPage = 4817,
    CategoryDialog = 4818,
    OrderDialog = 4819,
    BoundariesDialog = 4820,
};

/// Controls of the startup dialog and its pages.
enum StartupControl : int {
    PageTabs = 200,
    SelectCasesButton = 201,
    WeightButton = 202,
    OpenDataButton = 203,
    WeightedMomentsBox = 204,
    DrillVariablesButton = 9050,
    ReviewCategoricalCaption = 9051,
    DrillCategoricalCaption = 9052,
    DrillDownListControl = 9053,  ///< drill-down variables
    DrillUpListControl = 9054,  ///< drill-up variables
    OrderButton = 9055,
    DownButton = 9056,
    UpButton = 9057,
    SummaryButton = 9058,
    DescriptivesButton = 9059,
    FrequenciesButton = 9060,
    HistogramsButton = 9061,
    DistinctValuesRadio = 9064,  ///< the first of six, in the order of the methods
    ExactIntervalsRadio = 9065,
    NeatIntervalsRadio = 9066,
    StepIntervalsRadio = 9067,
    IntegerCategoriesRadio = 9068,
    UserIntervalsRadio = 9069,
    ExactCountField = 9070,
    NeatCountField = 9071,
    StepSizeField = 9072,
    StepStartField = 9073,
    OrLabel = 9074,
    StartAtMinimumBox = 9075,
    BoundariesButton = 9077,
    StartingAtLabel = 9078,
    CategorizationGroup = 9079,
    ReviewVariablesButton = 9080,
    ReviewDescriptivesButton = 9081,
    ReviewFrequenciesButton = 9082,
    ReviewHistogramsButton = 9083,
    ReviewBoxWhiskerButton = 9084,
    DrillContinuousCaption = 9085,
    SaveDataButton = 9086,
    ReviewScatterplotButton = 9100,
    BrushButton = 9103,
    AutoUpdateBox = 9106,  ///< stands on the dialog and on the Options page; one option
    ReviewCasewiseBox = 9107,
    DrillOperationsGroup = 9108,
    ReviewCategoricalLabel = 9109,
    ReviewContinuousLabel = 9110,
    BrushingGraphCommand = 9111,  ///< no control bears it
    StatisticsGroup = 9112,
    ReviewContinuousCaption = 9113,
    MedianQuartileRangeBox = 9114,
    MeanSEAndSDBox = 9115,
    MeanSD196TimesSDBox = 9116,
    MeanSE196TimesSEBox = 9117,
    BoxWhiskerGroup = 9118,
    PieChartsButton = 9119,
    StackedPlotsButton = 9121,
    ReviewPieChartsButton = 9122,
    Review3DHistogramsButton = 9123,
    ReviewStackedPlotsButton = 9124,
    DrillVariablesGroup = 9126,
    CountMissingBox = 9127,
    CasewiseBox = 9128,
    OptionsButton = 10710,
};

/// Controls of the category dialog.
enum CategoryControl : int {
    CategoryVariableCaption = 9088,
    CategoryListControl = 9102,
};

/// Controls of the drill order dialog.
enum OrderControl : int {
    CurrentOrderList = 9089,
    NewOrderList = 9090,
    PlaceButton = 9091,  ///< ">>"
    TakeBackButton = 9092,  ///< "<<"
};

/// Controls of the boundaries dialog.
enum BoundariesControl : int {
    BoundariesEdit = 9093,
    BoundariesLabel = 9094,
    FirstBoundariesHelp = 9095,  ///< the first of five lines of help
    BoundariesVariableCaption = 9101,
};
