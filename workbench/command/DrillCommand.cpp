// quillara drill: its options.

#include <algorithm>
#include <array>
#include <memory>
#include <tuple>

#include "resources/ControlIds.h"
#include "workbench/command/CommandLine.h"
#include "workbench/command/ComputeOption.h"
#include "workbench/command/DrillFiles.h"
#include "workbench/command/DrillOptions.h"
#include "workbench/command/DrillRun.h"
#include "workbench/command/OptionEffects.h"
#include "workbench/command/ResultList.h"
#include "workbench/command/StandardStreams.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/DataFile.h"
#include "workbench/formats/FileFormats.h"
#include "workbench/formats/FileReplacement.h"

namespace quillara {
namespace {

constexpr const char* DrillNotes =
    "NAMES: comma separated; a name with a comma, a quote or a = stands in double quotes, a quote in it twice.\n"
    "VAR: a name, which ends at the first =; one with a = stands in double quotes as in NAMES.\n"
    "METHOD: distinct, exact:N, neat:N (N from 2 to 999), step:SIZE (from the smallest value), step:SIZE@START (what "
    "lies below START counts in the first interval), integer, bounds:B1,B2,... (1 to 99 rising upper bounds of at most "
    "2047 characters in all), and of dates day, week (from Monday), month, quarter, year, with times hour. Bounds "
    "and START of dates are days YYYY-MM-DD, with times YYYY-MM-DD HH:MM:SS, of times of day HH:MM or HH:MM:SS, and "
    "SIZE is days, or seconds or a time, of dates with times days if START is a day: step:7@2019-03-04, "
    "step:00:30@09:00.\n"
    "CATEGORY: the first of these that the category list has: Missing (the missing data); #K, row K from 0; a row's "
    "name, then the same in letters of any case; a number, for the row whose interval it lies in or whose value it is; "
    "a text behind a label; of dates a day YYYY-MM-DD, with times YYYY-MM-DD HH:MM, of times HH:MM or HH:MM:SS. "
    "Several categories of a categorical "
    "variable are one step, as A|B, on a derived variable "
    "VAR_group; one with a bar in its name stands in double quotes.\n";

constexpr const char* ResultNotes =
    "LIST: the tables summary, frequencies, descriptives, review-frequencies, review-descriptives (default: those of "
    "them that apply); the charts histograms, pies, stacked, review-histograms, review-pies, review-stacked, and of "
    "review variables box, scatter, hist3d; of open and review variables distribution (N, mean, deviation, minimum, "
    "quartiles, maximum, skewness, missing; counts and percents of categories, of the valid ones too) and "
    "what-differs. What is named and doesn't apply is told on standard error. A step on Missing leaves no cases to "
    "box, "
    "scatter and hist3d.\n"
    "TYPES: the statistics of box plots, a plot for each: median (quartiles, range), se (mean, SE, SD), sd (mean, SD, "
    "1.96 SD), 1.96se (mean, SE, 1.96 SE).\n"
    "Std.Dev. of the tables divides by the number of cases less 1, under a weight too: the weighted squares over the "
    "plain count; box plots divide by the sum of the weights less 1.\n"
    "\n"
    "Without any of the four variable options, texts and labelled variables of at most 100 distinct values and whole "
    "numbers of at most 12 are categorical, all other numbers and dates continuous (quillara info shows which). "
    "Categorizations come first, then the steps in the order given, then the results.\n"
    "\n"
    "Exit status: 0 done, 1 the data or the drill could not be done as asked or memory was lacking (there are no "
    "results "
    "then), 2 wrong usage, 130 interrupted. Messages go to standard error and change nothing else.\n"
    "\n"
    "Examples:\n"
    "  quillara drill survey.sav --weight wt --weighted-moments --down sex=Female\n"
    "  quillara drill adult.csv --each education --continuous age --categorical sex,education\n"
    "  quillara drill adult.csv --categorical sex,education --continuous age \\\n"
    "      --categorize age=bounds:25,45,65 --down sex=Female --down age=30 \\\n"
    "      --show frequencies --after each --format json --output women.json";

/// Results that are asked for beside --show.
struct ImpliedResults {
    bool Box = false;
    bool HasBoxTypes = false;
};

std::string FolderNamed(const std::string& text) {
    if (text.empty()) {
        throw UsageError("No folder is named.");
    }
    return text;
}

void Run(const DrillOptions& options) {
    CheckFiles(options);
    WriteFiles(options, RunDrill(options));
}

void AddVariableOptions(CLI::App& command, DrillOptions& options) {
    struct NameOption {
        const char* Name;
        std::vector<std::string> VariableNames::*Names;
        const char* Help;
    };
    constexpr std::array<NameOption, 4> nameOptions{{
        {"--categorical", &VariableNames::Categorical, "categorical drill variables, in this order"},
        {"--continuous", &VariableNames::Continuous, "continuous drill variables"},
        {"--review-categorical", &VariableNames::ReviewCategorical, "categorical review variables"},
        {"--review-continuous", &VariableNames::ReviewContinuous, "continuous review variables"},
    }};
    for (const NameOption& option : nameOptions) {
        const auto take = [&options, names = option.Names](const std::string& text) {
            if (!options.Names) {
                options.Names.emplace();
            }
            (*options.Names).*names = ParseNames(text);
        };
        AddValue(command, option.Name, take, option.Help)->type_name("NAMES")->group("Variables");
    }
    AddRepeated(
        command, "--categorize",
        [&](const std::string& text) { options.Categorizations.push_back(ParseCategorizedVariable(text)); },
        "how a continuous drill variable is cut into categories; repeatable; a variable that is in no list joins the "
        "continuous ones")
        ->type_name("VAR=METHOD")
        ->group("Variables");
    AddComputeOption(command, options.Derived);
    AddValidOption(command, options.Valid);
    AddText(command, "--dictionary", options.DictionaryFile,
            "delimited file of labels with the columns variable, value, label, description; an empty value means the "
            "variable itself")
        ->type_name("FILE")
        ->group("Variables");
}

void AddCaseOptions(CLI::App& command, DrillOptions& options) {
    const std::string group = "Cases";
    AddText(
        command, "--select", options.Formula,
        "case selection, as: age > 30 and sex = \"Female\"; texts are compared with labels; a case that lacks a value "
        "of any variable named outside missing(VAR) isn't selected, with or as with and")
        ->type_name("FORMULA")
        ->group(group);
    AddValue(
        command, "--weight", [&](const std::string& name) { options.Weight = ParseName(name); },
        "weight variable; one that the file declares is used only when it is named here")
        ->type_name("VAR")
        ->group(group);
    const auto addFlag = [&](const std::string& name, bool& flag, const std::string& help) {
        command.add_flag(name, flag, help)->disable_flag_override()->group(group);
    };
    addFlag("--weighted-moments", options.WeightedMoments, "use fractional weights as they are");
    addFlag("--casewise", options.Casewise, "a case missing in one drill variable is missing in all");
    addFlag("--review-casewise", options.ReviewCasewise, "the same for the review variables");
    addFlag("--no-count-missing", options.NoCountMissing, "missing data is no category");
}

void AddResultOptions(CLI::App& command, DrillOptions& options) {
    const std::string group = "Results";
    const auto add = [&](const std::string& name, const ValueTaker& take, const std::string& help) {
        return AddValue(command, name, take, help)->group(group);
    };
    const auto takeResults = [&options](const std::string& text) {
        options.Results = ParseResultList(text);
        options.DefaultResults = 0;
    };
    add("--show", takeResults,
        "results, in the order of their documents; html shows the charts of a variable beside its tables")
        ->type_name("LIST");
    add(
        "--after", [&](const std::string& text) { options.After = ParseAfter(text); },
        "results after each step, after all (each, and before the first), or after the last (default)")
        ->type_name("each|all|last");
    const auto takeFormat = [&options](const std::string& text) {
        options.Format = FormatNamed(text);
        options.IsFormatNamed = true;
    };
    add("--format", takeFormat,
        "text for reading, html for a report, xlsx for a workbook, json and csv (one tidy table) for programs, "
        "csv-blocks for the tables as "
        "they are laid out (default: as the name of --output ends, else text)")
        ->type_name("text|json|csv|csv-blocks|html|xlsx");
    const auto takeOutput = [&options](const std::string& file) {
        options.IsOutputStandard = file == "-";
        options.OutputFile = options.IsOutputStandard ? std::nullopt : std::optional(file);
    };
    add("--output", takeOutput,
        "file for the results (default: -, the standard output); a folder, which ends with / or is there, gets a file "
        "of each table, in csv unless --format says json, text or csv-blocks")
        ->type_name("FILE|FOLDER/|-");
    AddQuiet(command, options.Quiet)->group(group);
    const auto takeRecordFile = [&options](const std::string& file) {
        options.RecordFile = file == "-" ? StandardOutputPath : file;
    };
    AddValue(command, "--record", takeRecordFile,
             "file for a Python script whose run (quillara run) gives the same documents, without the files of --save "
             "and --plots; - is the standard output, when the results go to a file of --output")
        ->type_name("SCRIPT|-")
        ->group(group);
    const auto takeSaveFile = [&options](const std::string& file) {
        options.SaveFile = file == "-" ? StandardOutputPath : file;
        CheckCanBeWritten(*options.SaveFile);
    };
    add("--save", takeSaveFile,
        "data file for the cases left after the last step: " + WrittenFormats() +
            "; a weight in force is kept; - is the standard output, and results go to --output only then")
        ->type_name("FILE|-");
    AddStandardFormat(command, "--save-format", options.SaveFormat)->group(group);
    add(
        "--save-variables", [&](const std::string& text) { options.SavedNames = ParseSavedVariables(text); },
        "variables of this file, in this order, or all (default: all drill and review variables)")
        ->type_name("NAMES|all");
}

void AddChartOptions(CLI::App& command, DrillOptions& options, ImpliedResults& implied) {
    const std::string group = "Charts";
    ChartOptions& charts = options.Charts;
    const auto add = [&](const std::string& name, const ValueTaker& take, const std::string& help) {
        return AddValue(command, name, take, help)->group(group);
    };
    const auto takeBox = [&](const std::string& names) {
        const std::vector<std::string> grouped = ParseNames(names);
        implied.Box = implied.Box || grouped.empty();
        options.Groups.Boxes.insert(options.Groups.Boxes.end(), grouped.begin(), grouped.end());
    };
    AddRepeated(command, "--box", takeBox,
                "box plots of the continuous review variables too, behind the results of --show; with NAMES, which any "
                "variables of numbers can be, and --by VAR box plots by group (default statistics: median)")
        ->expected(0, 1)
        ->type_name("[NAMES]")
        ->group(group);
    const auto takeBoxTypes = [&](const std::string& text) {
        charts.BoxTypes = ParseBoxTypes(text);
        implied.HasBoxTypes = true;
    };
    add("--box-type", takeBoxTypes, "box plots, with these statistics: median, se (default), sd, 1.96se")
        ->type_name("TYPES");
    add(
        "--hist3d", [&](const std::string& text) { charts.Pairs = ParsePairs(text); },
        "3D histograms too: of each variable X with each variable Y, by names of review variables, one with a colon in "
        "double quotes (default with "
        "--show hist3d: the first 30 pairs of all review variables)")
        ->type_name("X1,X2:Y1,Y2");
    add(
        "--plots", [&](const std::string& text) { charts.Folder = FolderNamed(text); },
        "folder for a file of each chart; made when it isn't there")
        ->type_name("DIR");
    add(
        "--plot-format", [&](const std::string& text) { charts.Format = ParseChartFormat(text); },
        "kind of these files (default: svg)")
        ->type_name("svg|png|pdf");
    add(
        "--size", [&](const std::string& text) { std::tie(charts.Look.Width, charts.Look.Height) = ParseSize(text); },
        "pixels of charts in files, html and xlsx (default: 900x600)")
        ->type_name("WIDTHxHEIGHT");
    add(
        "--title", [&](const std::string& text) { charts.Titles.Own = text; },
        "title of the report in html, and of charts in files above what they show")
        ->type_name("TEXT");
    command
        .add_flag("--raw-titles", charts.Titles.AreRaw,
                  "titles and axes of pictures are named as in the other formats, not in plain words")
        ->disable_flag_override()
        ->group(group);
    add(
        "--theme", [&](const std::string& text) { charts.Look.Dark = ParseDark(text); },
        "ground of charts in files (default: light); a report in html follows its reader's")
        ->type_name("light|dark");
}

/// Adds results that options beside --show ask for, and refuses charts that lack something.
void CompleteResults(DrillOptions& options, const ImpliedResults& implied) {
    std::vector<int>& results = options.Results;
    const auto isShown = [&results](int button) { return std::ranges::find(results, button) != results.end(); };
    const bool hasReviewBoxes = implied.Box || (implied.HasBoxTypes && options.Groups.Boxes.empty());
    if (hasReviewBoxes && !isShown(ReviewBoxWhiskerButton)) {
        results.push_back(ReviewBoxWhiskerButton);
    }
    if (options.Charts.Pairs && !isShown(Review3DHistogramsButton)) {
        results.push_back(Review3DHistogramsButton);
    }
    const auto isChart = [](int button) { return !ChartFileName(button).empty(); };
    if (options.Charts.Folder && !options.Groups.HasGraphs() && std::ranges::none_of(results, isChart)) {
        throw UsageError("--plots: no chart is asked for; name some in --show, as: --show histograms,pies.");
    }
}

/// The steps in the order in which --down and --up stand on the command line, whichever of the two they are.
std::vector<DrillStep> StepsInOrder(const CLI::App& command, const CLI::Option* down, const CLI::Option* up) {
    std::vector<DrillStep> steps;
    std::size_t downs = 0;
    std::size_t ups = 0;
    for (const CLI::Option* option : command.parse_order()) {
        if (option == down) {
            steps.push_back(ParseDown(down->results()[downs++]));
        } else if (option == up) {
            steps.push_back({ParseName(up->results()[ups++]), std::nullopt});
        }
    }
    return steps;
}

}  // namespace

void AddDrillCommand(CLI::App& program, const std::string& call) {
    const auto options = std::make_shared<DrillOptions>();
    options->Call = call;
    options->Results = DefaultResults();
    options->DefaultResults = options->Results.size();
    CLI::App* command = program.add_subcommand("drill", "drill without a screen and print results");
    command->footer(DrillNotes + FormulaNotes() + ResultNotes);
    AddDataFile(*command, "FILE", options->File);
    AddVariableOptions(*command, *options);
    AddCaseOptions(*command, *options);
    const CLI::Option* down =
        AddRepeated(*command, "--down", ParseDown,
                    "one drill step; repeatable, runs in order; a variable that is in no list joins them")
            ->type_name("VAR=CATEGORY")
            ->group("Steps");
    const CLI::Option* up = AddRepeated(
                                *command, "--up", [](const std::string&) {}, "undo the step on VAR; repeatable")
                                ->type_name("VAR")
                                ->group("Steps");
    command
        ->add_flag("--skip-impossible", options->SkipImpossible,
                   "steps that can't be taken are passed over with a remark")
        ->disable_flag_override()
        ->group("Steps");
    AddResultOptions(*command, *options);
    AddGroupOptions(*command, options->Groups);
    const auto implied = std::make_shared<ImpliedResults>();
    AddChartOptions(*command, *options, *implied);
    AddReadingOptions(*command, options->Reading);
    command->callback([=] {
        CompleteGroups(*options);
        CompleteResults(*options, *implied);
        if (!options->IsFormatNamed && options->OutputFile) {
            options->Format = FormatOfFile(*options->OutputFile);
        }
        options->Steps = StepsInOrder(*command, down, up);
        if (options->Names) {
            CheckForRepeats(*options->Names);
        }
        TellReadingOptionsWithoutEffect(*command, options->File, options->Reading);
        std::ranges::for_each(OptionsWithoutEffect(*command, *options), WriteMessage);
        Run(*options);
    });
}

}  // namespace quillara
