#include "workbench/command/DrillFiles.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <utility>

#include "workbench/command/DataReading.h"
#include "workbench/command/Interruption.h"
#include "workbench/command/PlotCollisions.h"
#include "workbench/command/PlotFiles.h"
#include "workbench/command/ReportFacts.h"
#include "workbench/command/ShownPainting.h"
#include "workbench/command/StandardStreams.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/FileFormats.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/scripting/TableFiles.h"
#include "workbench/views/DocumentViews.h"

namespace quillara {
namespace {

/// How many times charts are painted: for files, for a workbook, and for either theme of a report.
std::int32_t Paintings(const DrillOptions& options, const OutputCollection& outputs) {
    const auto graphs = std::ranges::count_if(
        outputs.Entries, [](const auto& entry) { return std::holds_alternative<GraphDocument>(entry.Content); });
    const int perGraph = (options.Charts.Folder ? 1 : 0) + (options.Format == OutputFormat::Html ? 2 : 0) +
                         (options.Format == OutputFormat::Workbook ? 1 : 0);
    return static_cast<std::int32_t>(graphs) * perGraph;
}

/// With its title, which no picture repeats, and how it was made.
OutputCollection Report(const DrillOptions& options, const OutputCollection& outputs) {
    OutputCollection report = Titled(outputs, {.Own = {}, .AreRaw = options.Charts.Titles.AreRaw});
    report.Title = options.Charts.Titles.Own;
    report.Made = MadeToday();
    report.Call = options.Call;
    return report;
}

std::string Shown(const DrillOptions& options, const OutputCollection& outputs, const ChartPainting& paint) {
    const OutputCollection shown = HasPictures(options.Format) ? Report(options, outputs) : outputs;
    return ViewOf(std::span(&shown, 1), options.Format, [&](const GraphDocument& graph, PictureUse use) {
        ChartLook look = options.Charts.Look;
        look.Dark = use == PictureUse::DarkPage;
        return paint(graph, look, use == PictureUse::Workbook ? ChartFormat::Png : ChartFormat::Svg);
    });
}

/// What is written: the files of charts, and the documents as files of a folder or as one text.
struct Results {
    std::vector<FolderFile> Plots;
    std::vector<FolderFile> Tables;
    std::string Documents;
};

bool GoToFolder(const DrillOptions& options) {
    return options.OutputFile && NamesFolder(*options.OutputFile);
}

Results Painted(const DrillOptions& options, const OutputCollection& outputs) {
    ShownPainting painting(Paintings(options, outputs));
    const ChartPainting paint = std::bind_front(&ShownPainting::Paint, &painting);
    Results results{PaintedPlots(options.Charts, outputs, paint), {}, {}};
    if (GoToFolder(options)) {
        results.Tables = TableFiles(std::span(&outputs, 1), options.IsFormatNamed ? options.Format : OutputFormat::Csv);
    } else {
        results.Documents = Shown(options, outputs, paint);
    }
    return results;
}

void CheckTables(const DrillOptions& options, const std::vector<FolderFile>& tables) {
    std::vector<std::string> others{options.File};
    for (const auto& file : {options.DictionaryFile, options.SaveFile, options.RecordFile}) {
        if (file) {
            others.push_back(*file);
        }
    }
    CheckTablesHitNoOther(*options.OutputFile, tables, others);
}

void WriteOne(const std::string& path, const std::string& bytes) {
    const FileWriting writing(path);
    ReplaceFile(path, bytes, IsInterrupted);
}

void WriteTables(const std::string& folder, const std::vector<FolderFile>& tables) {
    const std::string replaced = WhatIsReplaced(folder, tables);
    WriteFolder(folder, tables, WriteOne);
    if (!replaced.empty()) {
        WriteMessage(replaced);
    }
}

void CheckFile(const std::string& option, const std::optional<std::string>& file, const DrillOptions& options) {
    if (file) {
        CheckOutputIsAnother(option, *file, "data", options.File);
        CheckOutputIsAnother(option, *file, "dictionary", options.DictionaryFile.value_or(""));
    }
}

void CheckApart(const std::string& option, const std::optional<std::string>& file, const std::string& otherOption,
                const std::optional<std::string>& other) {
    if (file && other && NameOneFile(*file, *other)) {
        throw UsageError(option + " and " + otherOption + " both name " + Quoted(*file) + "; choose two files.");
    }
}

std::string Counted(std::size_t count, const std::string& thing) {
    return std::to_string(count) + ' ' + thing + (count == 1 ? "" : "s");
}

bool SavesToStandardOutput(const DrillOptions& options) {
    return options.SaveFile == StandardOutputPath;
}

/// What takes the standard output alone, and what is for no terminal.
void CheckStandardOutput(const DrillOptions& options) {
    if (SavesToStandardOutput(options)) {
        RequireNoTerminal("--save", options.SaveFormat.value_or("csv"));
    }
    if (SavesToStandardOutput(options) && !options.OutputFile) {
        const bool isAskedFor =
            options.IsFormatNamed || options.Results.size() > options.DefaultResults || options.Groups.IsAnyAskedFor();
        if (options.IsOutputStandard || (isAskedFor && !options.Charts.Folder)) {
            throw UsageError("Data of --save and results can't both go to the standard output; name a file in " +
                             std::string(options.IsOutputStandard ? "one of them." : "--output."));
        }
    } else if (options.RecordFile == StandardOutputPath && (!options.OutputFile || SavesToStandardOutput(options))) {
        throw UsageError(
            "The script of --record can't go to the standard output beside results or data; name a file in " +
            std::string(options.OutputFile ? "--save." : "--output."));
    } else if (!options.OutputFile && options.Format == OutputFormat::Workbook) {
        RequireNoTerminal("--format", "xlsx");
    }
}

std::string WhatWasNotSaved(const std::vector<std::string>& names) {
    return names.empty() ? ""
                         : " Left out, because not explored: " + QuotedList(names) +
                               "; --save-variables all keeps all variables.";
}

std::string WhatWasSaved(const DataTable& subset, const DrillOptions& options) {
    const std::string& file = *options.SaveFile;
    const bool isStandard = SavesToStandardOutput(options);
    const FileFormat* format = FindFileFormat(isStandard ? options.SaveFormat.value_or("csv") : ExtensionOf(file));
    const bool keepsWeight = format != nullptr && format->Kind != FormatKind::DelimitedText;
    const std::string weight = subset.Weight ? ", weight " + Quoted(subset.Variables[*subset.Weight].Name) +
                                                   (keepsWeight ? "" : " as a variable only")
                                             : "";
    return "Saved " + Counted(static_cast<std::size_t>(subset.Cases), "case") + " and " +
           Counted(subset.Variables.size(), "variable") + " to " + (isStandard ? "the standard output" : Quoted(file)) +
           weight + ".";
}

/// Says that results are plain text in a file whose name promises something else.
void TellPlainText(const DrillOptions& options) {
    static constexpr std::array<std::string_view, 6> TextEndings{"", "txt", "text", "log", "md", "out"};
    const bool isChosen = options.IsFormatNamed || options.Format != OutputFormat::Text || options.Quiet;
    if (!isChosen && std::ranges::find(TextEndings, ExtensionOf(*options.OutputFile)) == TextEndings.end()) {
        WriteMessage(Quoted(*options.OutputFile) +
                     " holds plain text, as its name ends like no format of results; those are json, csv, html and "
                     "xlsx. --format text leaves this line out.");
    }
}

}  // namespace

void CheckFiles(const DrillOptions& options) {
    CheckFile("--output", options.OutputFile, options);
    if (GoToFolder(options) && options.IsFormatNamed) {
        CheckGoesToFolder(options.Format);
    }
    CheckFile("--record", options.RecordFile, options);
    CheckFile("--save", options.SaveFile, options);
    CheckApart("--save", options.SaveFile, "--output", options.OutputFile);
    CheckApart("--record", options.RecordFile, "--output", options.OutputFile);
    CheckApart("--record", options.RecordFile, "--save", options.SaveFile);
    CheckStandardOutput(options);
    CheckPlotsHitNoOther(options);
}

void WriteFiles(const DrillOptions& options, const DrillOutcome& outcome) {
    // All is painted before anything is written.
    const Results results = Painted(options, outcome.Outputs);
    if (GoToFolder(options)) {
        CheckTables(options, results.Tables);
    }
    if (options.SaveFile) {
        SaveDataFile(*outcome.Subset, *options.SaveFile, options.SaveFormat);
        if (!options.Quiet) {
            WriteMessage(WhatWasSaved(*outcome.Subset, options) + WhatWasNotSaved(outcome.NotSaved));
        }
    }
    if (options.RecordFile) {
        WriteOne(*options.RecordFile, outcome.Script);
    }
    if (options.Charts.Folder) {
        WriteFolder(*options.Charts.Folder, results.Plots, WriteOne);
    }
    if (GoToFolder(options)) {
        WriteTables(*options.OutputFile, results.Tables);
        return;
    }
    if (!options.OutputFile) {
        if (!SavesToStandardOutput(options)) {
            WriteToStandardOutput(results.Documents);
        }
        return;
    }
    const FileWriting writing(*options.OutputFile);
    ReplaceFile(*options.OutputFile, results.Documents, IsInterrupted);
    IgnoreInterrupts();
    TellPlainText(options);
}

}  // namespace quillara
