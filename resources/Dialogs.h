#pragma once

#include <array>
#include <span>

#include "platform/DialogResource.h"
#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"

// The module's dialogs and pages, in dialog units of "MS Shell Dlg" 8. Captions stand as hosts get them: a leading mark
// (! and three digits, h, j, e or a back-quote) is the host's to read.

// clang-format off
namespace DialogControls {

using enum ControlKind;

inline constexpr ControlResource StartupControls[] = {
    // Id                     Kind        Caption                        x    y    w    h
    {DrillVariablesButton,    Button,     "hDrill &variables",        {  4,  42,  74,  14}},
    {DrillDownListControl,    ListBox,    "",                         {  4,  72,  74,  48}},
    {DrillUpListControl,      ListBox,    "",                         {  4, 136,  74,  48}},
    {DownButton,              Button,     "!372Dow&n",                { 85,  54,  42,  14}},
    {BrushButton,             Button,     "!664&Brush",               {130,  54,  43,  14}},
    {UpButton,                Button,     "!373&Up",                  { 85,  72,  42,  14}},
    {OrderButton,             Button,     "j&Order",                  {130,  72,  43,  14}},
    {AutoUpdateBox,           CheckBox,   "Auto-u&pdate all results", { 85,  90,  84,   9}},
    {CasewiseBox,             CheckBox,   "MD casewise &deletion",    { 85, 103,  84,   9}},
    {CancelCommand,           Button,     "Cancel",                   { 84, 121,  90,  14}},
    {SelectCasesButton,       Button,     "!246&s",                   { 84, 139,  29,  14}},
    {WeightButton,            Button,     "!247&w",                   { 84, 157,  29,  14}},
    {OpenDataButton,          Button,     "`Open D&ata",              {115, 157,  59,  14}},
    {OptionsButton,           Button,     "Options",                  {115, 139,  59,  14}},
    {WeightedMomentsBox,      CheckBox,   "Wei&ghted moments",        { 86, 175,  76,   9}},
    {DrillVariablesGroup,     GroupBox,   "Drill variables",          {  4,   2, 172,  36}},
    {NoControlId,             Static,     "Categorical:",             {  8,  14,  40,   8}},
    {DrillCategoricalCaption, Static,     "none",                     { 50,  14, 120,   8}},
    {NoControlId,             Static,     "Continuous:",              {  8,  26,  40,   8}},
    {DrillContinuousCaption,  Static,     "none",                     { 50,  25, 120,   8}},
    {NoControlId,             Static,     "Drill-down variables:",    {  4,  60,  74,   8}},
    {NoControlId,             Static,     "Drill-up variables:",      {  4, 124,  74,   8}},
    {DrillOperationsGroup,    GroupBox,   "Drill operations:",        { 81,  42,  95,  75}},
    {PageTabs,                TabControl, "Tab1",                     {  4, 188, 171, 140}},
};

inline constexpr ControlResource QuickControls[] = {
    // Id                Kind      Caption                                              x    y    w    h
    {SummaryButton,      Button,   "!249Summar&y: Drill-down selections",            {  2,   4, 164,  14}},
    {FrequenciesButton,  Button,   "e&Frequency tables",                             {  8,  55,  74,  14}},
    {HistogramsButton,   Button,   "!223&Histograms",                                { 86,  55,  74,  14}},
    {PieChartsButton,    Button,   "!280P&ie charts",                                {  8,  73,  74,  14}},
    {StackedPlotsButton, Button,   "!248Stacked p&lots",                             { 86,  73,  74,  14}},
    {DescriptivesButton, Button,   "eD&escriptives for continuous variables",        {  8,  37, 152,  14}},
    {SaveDataButton,     Button,   "!654Save current &raw data (all selected vars)", {  2, 100, 164,  14}},
    {StatisticsGroup,    GroupBox, "Statistics for all drill-down variables",        {  2,  24, 164,  69}},
};

inline constexpr ControlResource CategorizationControls[] = {
    // Id                    Kind          Caption                                               x    y    w    h
    {CategorizationGroup,    GroupBox,     "Categorization for selected drill-down variable", {  2,   5, 158, 117}},
    {DistinctValuesRadio,    RadioButton,  "A&ll distinct values",                            {  6,  18, 150,  10}},
    {ExactIntervalsRadio,    RadioButton,  "No. of e&xact intervals:",                        {  6,  32,  81,  10}},
    {ExactCountField,        IntegerField, "",                                                { 92,  32,  32,  12}},
    {NeatIntervalsRadio,     RadioButton,  "N&eat intervals; approximate no.:",               {  6,  46, 117,  10}},
    {NeatCountField,         IntegerField, "",                                                {123,  46,  32,  12}},
    {StepIntervalsRadio,     RadioButton,  "Step si&ze:",                                     {  6,  60,  44,  10}},
    {StepSizeField,          RealField,    "",                                                { 56,  60,  40,  12}},
    {StartingAtLabel,        Static,       "sta&rting at:",                                   { 18,  74,  33,   8}},
    {StepStartField,         RealField,    "",                                                { 56,  74,  40,  12}},
    {OrLabel,                Static,       "or",                                              { 98,  74,   8,   8}},
    {StartAtMinimumBox,      CheckBox,     "at &minimum",                                     {107,  74,  48,  10}},
    {IntegerCategoriesRadio, RadioButton,  "&Integer categories",                             {  6,  88, 150,  10}},
    {UserIntervalsRadio,     RadioButton,  "User-speci&fied categories",                      {  6, 102,  96,  10}},
    {BoundariesButton,       Button,       "j",                                               {104, 102,  20,  14}},
};

// The stacked plots, hidden at run time, and the deletion of missing data share a place.
inline constexpr ControlResource ReviewControls[] = {
    // Id                      Kind      Caption                       x    y    w    h
    {ReviewVariablesButton,    Button,   "hVariables for &review",  {  4,   4, 160,  14}},
    {ReviewCasewiseBox,        CheckBox, "MD &casewise deletion",   { 84, 107,  80,  14}},
    {ReviewFrequenciesButton,  Button,   "e&Frequency tables",      {  4,  47,  76,  14}},
    {ReviewDescriptivesButton, Button,   "eD&escriptives",          { 84,  47,  80,  14}},
    {ReviewHistogramsButton,   Button,   "!223&Histograms",         {  4,  67,  76,  14}},
    {Review3DHistogramsButton, Button,   "!2313D Histogra&ms",      { 84,  67,  80,  14}},
    {ReviewPieChartsButton,    Button,   "!280P&ie charts",         {  4,  87,  76,  14}},
    {ReviewStackedPlotsButton, Button,   "!248Stacked p&lots",      { 84, 107,  80,  14}},
    {ReviewScatterplotButton,  Button,   "!229Scatterplot matri&x", { 84,  87,  80,  14}},
    {ReviewBoxWhiskerButton,   Button,   "!225Box && whis&ker",     {  4, 107,  76,  14}},
    {ReviewCategoricalLabel,   Static,   "Categorical:",            {  6,  23,  42,   8}},
    {ReviewCategoricalCaption, Static,   "none",                    { 50,  23, 114,   8}},
    {ReviewContinuousLabel,    Static,   "Continuous:",             {  6,  34,  42,   8}},
    {ReviewContinuousCaption,  Static,   "none",                    { 50,  34, 114,   8}},
};

inline constexpr ControlResource OptionsControls[] = {
    // Id                    Kind      Caption                                           x    y    w    h
    {AutoUpdateBox,          CheckBox, "Create stand-alone results spreadsheets and graphs (for brushing); these documents will be u&pdated in-place after each drill-down and drill-up operation.",
                                                                                      {  4,   4, 160,  36}},
    {CountMissingBox,        CheckBox, "Count &missing data of drill-down variables", {  4,  45, 160,  10}},
    {BoxWhiskerGroup,        GroupBox, "Options for &Box-Whisker plots; plot:",       {  2,  60, 164,  62}},
    {MedianQuartileRangeBox, CheckBox, "Median/Quartiles/&Range",                     {  8,  72, 152,  10}},
    {MeanSEAndSDBox,         CheckBox, "M&ean/SE/SD",                                 {  8,  84, 152,  10}},
    {MeanSD196TimesSDBox,    CheckBox, "Mean/SD/&1.96*SD",                            {  8,  96, 152,  10}},
    {MeanSE196TimesSEBox,    CheckBox, "Mean/SE/1.&96*SE",                            {  8, 108, 152,  10}},
};

inline constexpr ControlResource CategoryControls[] = {
    // Id                     Kind        Caption         x    y    w    h
    {OkCommand,               Button,     "OK",        {126,  19,  40,  14}},
    {CancelCommand,           Button,     "Cancel",    {126,  37,  40,  14}},
    {NoControlId,             Static,     "Variable:", {  4,   7,  28,   8}},
    {CategoryVariableCaption, Static,     "none",      { 36,   7, 118,   8}},
    {CategoryListControl,     ReportList, "List3",     {  4,  19, 118,  78}},
};

inline constexpr ControlResource OrderControls[] = {
    // Id              Kind     Caption             x    y    w    h
    {CurrentOrderList, ListBox, "",              {  4,  19,  60,  78}},
    {NewOrderList,     ListBox, "",              {112,  19,  60,  78}},
    {PlaceButton,      Button,  ">>",            { 68,  65,  40,  14}},
    {TakeBackButton,   Button,  "<<",            { 68,  83,  40,  14}},
    {OkCommand,        Button,  "OK",            { 68,  19,  40,  14}},
    {CancelCommand,    Button,  "Cancel",        { 68,  37,  40,  14}},
    {NoControlId,      Static,  "Current order", {  4,   7,  50,   8}},
    {NoControlId,      Static,  "New order",     {112,   7,  50,   8}},
};

inline constexpr ControlResource BoundariesControls[] = {
    // Id                       Kind           Caption                                                     x    y    w    h
    {BoundariesEdit,            MultiLineEdit, "",                                                      {  7,  17, 144,  29}},
    {OkCommand,                 DefaultButton, "OK",                                                    {158,   7,  42,  14}},
    {CancelCommand,             Button,        "Cancel",                                                {158,  25,  42,  14}},
    {BoundariesLabel,           Static,        "Boundaries for variable:",                              {  7,   7,  74,   8}},
    {BoundariesVariableCaption, Static,        "none",                                                  { 87,   7,  59,   8}},
    {FirstBoundariesHelp,       HelpText,      "Enter a list of values representing the upper boundaries of ranges to be represented in the plot.",
                                                                                                        {  7,  53, 193,  18}},
    {FirstBoundariesHelp + 1,   HelpText,      "For example, if you enter the following three values:", {  7,  72, 193,  10}},
    {FirstBoundariesHelp + 2,   HelpText,      "     2  2.5  5",                                        {  7,  80, 193,  10}},
    {FirstBoundariesHelp + 3,   HelpText,      "then a graph with the following four ranges will be produced:",
                                                                                                        {  7,  88, 193,  10}},
    {FirstBoundariesHelp + 4,   HelpText,      "     (1) x<=2,   (2) 2<x<=2.5,   (3) 2.5<x<=5,   and  (4) 5<x",
                                                                                                        {  7,  99, 193,  10}},
};

}  // namespace DialogControls

inline constexpr std::array<DialogResource, 8> DialogTable{{
    // Id                Title                          w    h   Controls
    {StartupDialog,      "Drill-Down",                  179, 334, DialogControls::StartupControls},
    {QuickPage,          "Quick",                       168, 134, DialogControls::QuickControls},
    {CategorizationPage, "Categorization",              168, 134, DialogControls::CategorizationControls},
    {ReviewPage,         "Review",                      168, 134, DialogControls::ReviewControls},
    {OptionsPage,        "Options",                     168, 134, DialogControls::OptionsControls},
    {CategoryDialog,     "Select category",             170, 101, DialogControls::CategoryControls},
    {OrderDialog,        "Drill-down order",            176, 101, DialogControls::OrderControls},
    {BoundariesDialog,   "Specify Boundaries for ",     207, 116, DialogControls::BoundariesControls},
}};

/// The pages of the startup dialog.
inline constexpr std::array<TabRow, 5> StartupTabs{{
    {QuickPage,          {}},
    {CategorizationPage, {}},
    {ReviewPage,         {}},
    {OptionsPage,        {}},
    {0,                  {}},
}};
// clang-format on

namespace DialogFacts {

constexpr bool Overlap(const DialogRectangle& a, const DialogRectangle& b) {
    return a.X < b.X + b.Width && b.X < a.X + a.Width && a.Y < b.Y + b.Height && b.Y < a.Y + a.Height;
}

constexpr bool LiesWithin(const DialogResource& dialog, const DialogRectangle& place) {
    return place.X >= 0 && place.Y >= 0 && place.X + place.Width <= dialog.Width &&
           place.Y + place.Height <= dialog.Height;
}

/// Whether two controls may lie on one another: a group box, lines of help, or the pair of the Review page of which
/// one is hidden.
constexpr bool MayOverlap(const ControlResource& a, const ControlResource& b) {
    return a.Kind == ControlKind::GroupBox || b.Kind == ControlKind::GroupBox ||
           (a.Kind == ControlKind::HelpText && b.Kind == ControlKind::HelpText) ||
           (a.Id == ReviewCasewiseBox && b.Id == ReviewStackedPlotsButton);
}

constexpr bool CanStandTogether(const ControlResource& a, const ControlResource& b) {
    return (a.Id != b.Id || a.Id == NoControlId) && (MayOverlap(a, b) || !Overlap(a.Place, b.Place));
}

/// Whether all controls lie within the dialog, each id once and none on another.
constexpr bool IsSound(const DialogResource& dialog) {
    const std::span<const ControlResource> controls = dialog.Controls;
    for (std::size_t i = 0; i < controls.size(); ++i) {
        if (!LiesWithin(dialog, controls[i].Place)) {
            return false;
        }
        for (std::size_t j = i + 1; j < controls.size(); ++j) {
            if (!CanStandTogether(controls[i], controls[j])) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace DialogFacts

static_assert([] {
    int id = StartupDialog;
    for (const DialogResource& dialog : DialogTable) {
        if (dialog.Id != id++ || !DialogFacts::IsSound(dialog)) {
            return false;
        }
    }
    return true;
}());
