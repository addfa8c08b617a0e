#pragma once

#include <algorithm>
#include <array>

#include "platform/ModuleInstance.h"

// The module's string table: the only source of the texts it shows. Ids are used by hosts and scripts and never change.
// The texts of 10025 and 10026 are alike; both are kept.

/// Names of the ids that the module uses.
enum StringId : int {
    AnalysisNameText = 10000,
    SelectDrillVariablesText = 10001,
    CategoricalVariablesText = 10003,
    ContinuousVariablesText = 10004,
    NotEnoughMemoryText = 10005,
    ComputingText = 10006,
    SummaryTitleText = 10007,
    FrequencyTitleText = 10009,
    DescriptivesTitleText = 10010,
    CategoryText = 10015,
    VariableText = 10016,
    CountLineText = 10025,
    DescriptionText = 10027,
    SelectReviewVariablesText = 10028,
    CategoricalReviewVariablesText = 10029,
    ContinuousReviewVariablesText = 10030,
    MissingText = 10033,
    CountText = 10046,
    CumulativeCountText = 10047,
    PercentText = 10048,
    CumulativePercentText = 10049,
    MeanText = 10050,
    StandardDeviationText = 10051,
    MinimumText = 10052,
    MaximumText = 10053,
    CasesText = 10054,
    WeightedCasesText = 10055,
    NoCasesText = 10057,
};

// clang-format off
inline constexpr std::array<StringResource, 62> StringTable{{
    // Id     Text
    {10000, "Drill-Down Analysis"},
    {10001, "Select drill variables"},
    {10002, "Variables for review"},
    {10003, "Categorical variables"},
    {10004, "Continuous variables"},
    {10005, "Not enough memory to complete the requested computations; close other applications and try again."},
    {10006, "Computing ... "},
    {10007, "Summary of drill-down analysis"},
    {10008, "Histogram of drill-down variable: %s"},
    {10009, "Frequency table of %s"},
    {10010, "Descriptive statistics"},
    {10011, "Too many values."},
    {10012, "Invalid value (cannot be accepted)."},
    {10013, "Lower boundary greater than upper boundary."},
    {10014, "Not enough values."},
    {10015, "Category"},
    {10016, "Variable"},
    {10017, "Box and Whisker Plot for Review Variables"},
    {10018, "Spreadsheet after drill down"},
    {10019, "!372&Drill down"},
    {10020, "!373Drill &up"},
    {10021, "Histogram for brushing: "},
    {10022, "CATEGORY: %s"},
    {10023, "\nCOUNT: %f"},
    {10024, "Histogram of review variable: "},
    {10025, "N Total: %d, Selected: %d"},
    {10026, "N Total: %d, Selected: %d"},
    {10027, "Description"},
    {10028, "Select variables for review"},
    {10029, "Categorical variables for review"},
    {10030, "Continuous variables for review"},
    {10031, "Correlations"},
    {10032, "Correlations\n%s"},
    {10033, "Missing"},
    {10034, "Pie chart for review variable: "},
    {10035, "Pie chart for drill-down variable: "},
    {10036, "Stacked bar plot for review variables"},
    {10037, "Stacked bar plot for drill-down variables"},
    {10038, "3D histogram for drill-down variable: "},
    {10039, "Relative number of cases(%)"},
    {10040, "Number of counts"},
    {10041, "Weighted number of counts"},
    {10042, "Select two var. lists (horizontal and vertical vars in plots):"},
    {10043, "First (horizontal) variable list:"},
    {10044, "Second (vertical) variable list:"},
    {10045, "3D Histogram for variables: %s and %s"},
    {10046, "Count"},
    {10047, "Cumulative\nCount"},
    {10048, "Percent(%)"},
    {10049, "Cumulative\nPercent(%)"},
    {10050, "Mean          "},
    {10051, "Std.Dev.              "},
    {10052, "Minimum       "},
    {10053, "Maximum       "},
    {10054, "Cases  "},
    {10055, "Weighted cases"},
    {10056, "Please check the type of Box and Whisker plot"},
    {10057, "The number of cases is zero."},
    {10058, "Drill-Down analysis startup dialog"},
    {10059, "No review variables are selected. \nYou must select at least one review variable."},
    {10060, "No drill-down variables are selected. \nYou must select at least one drill-down variable."},
    {10061, "Weight"},
}};
// clang-format on

static_assert(StringTable.front().Id == 10000 && StringTable.back().Id == 10061);
static_assert(std::adjacent_find(StringTable.begin(), StringTable.end(),
                                 [](const StringResource& a, const StringResource& b) { return a.Id >= b.Id; }) ==
              StringTable.end());  // in rising order, each id once
