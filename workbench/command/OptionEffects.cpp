#include "workbench/command/OptionEffects.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "workbench/command/ResultList.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/FileReplacement.h"

namespace quillara {
namespace {

bool HasWeight(const DrillOptions& options) {
    return options.Weight.has_value();
}

bool IsAfterLastOrHasSteps(const DrillOptions& options) {
    return options.After == ShownAfter::Last || !options.Steps.empty();
}

bool HasSaveFile(const DrillOptions& options) {
    return options.SaveFile.has_value();
}

bool SavesToStandardOutput(const DrillOptions& options) {
    return options.SaveFile == StandardOutputPath;
}

bool HasPlots(const DrillOptions& options) {
    return options.Charts.Folder.has_value();
}

bool PaintsCharts(const DrillOptions& options) {
    const auto isChart = [](int button) { return !ChartFileName(button).empty(); };
    const bool makesCharts = options.Groups.HasGraphs() || std::ranges::any_of(options.Results, isChart);
    return HasPlots(options) || (HasPictures(options.Format) && makesCharts);
}

bool HasTitledFiles(const DrillOptions& options) {
    return HasPlots(options) || options.Format == OutputFormat::Html;
}

bool HasDrillVariables(const DrillOptions& options) {
    return !options.Names || !options.Names->Categorical.empty() || !options.Names->Continuous.empty();
}

bool HasReviewVariables(const DrillOptions& options) {
    return options.Names && (!options.Names->ReviewCategorical.empty() || !options.Names->ReviewContinuous.empty());
}

/// An option and what it works on.
struct OptionEffect {
    const char* Option;
    bool (*HasEffect)(const DrillOptions&);
    std::string_view Lack;
};

// clang-format off
constexpr std::array<OptionEffect, 11> Effects{{
    // Option              HasEffect            Lack
    {"--weighted-moments", HasWeight,           "no weight is named in --weight"},
    {"--casewise",         HasDrillVariables,   "there are no drill variables"},
    {"--review-casewise",  HasReviewVariables,  "there are no review variables"},
    {"--after",            IsAfterLastOrHasSteps, "there is no step"},
    {"--save-variables",   HasSaveFile,         "no file is named in --save"},
    {"--save-format",      SavesToStandardOutput, "the name of --save says the format, but for --save -"},
    {"--plot-format",      HasPlots,            "no folder is named in --plots"},
    {"--size",             PaintsCharts,        "no charts are painted; --plots and --format html or xlsx do that"},
    {"--title",            HasTitledFiles,      "it stands in reports and in files of charts; --format html and --plots make them"},
    {"--raw-titles",       PaintsCharts,        "no charts are painted; --plots and --format html or xlsx do that"},
    {"--theme",            HasPlots,            "no folder is named in --plots; a report follows its reader's theme"},
}};
// clang-format on

/// One line for each categorization that a later one of its variable replaces.
std::vector<std::string> ReplacedCategorizations(const std::vector<CategorizedVariable>& categorizations) {
    std::vector<std::string> lines;
    for (auto one = categorizations.begin(); one != categorizations.end(); ++one) {
        const auto isReplacement = [one](const CategorizedVariable& later) { return later.Variable == one->Variable; };
        if (std::any_of(one + 1, categorizations.end(), isReplacement)) {
            lines.push_back("--categorize of " + Quoted(one->Variable) + " has no effect: a later one replaces it.");
        }
    }
    return lines;
}

}  // namespace

std::vector<std::string> OptionsWithoutEffect(const CLI::App& command, const DrillOptions& options) {
    std::vector<std::string> lines = ReplacedCategorizations(options.Categorizations);
    for (const OptionEffect& effect : Effects) {
        if (command.count(effect.Option) > 0 && !effect.HasEffect(options)) {
            lines.push_back(std::string(effect.Option) + " has no effect: " + std::string(effect.Lack) + ".");
        }
    }
    return lines;
}

}  // namespace quillara
