#include "workbench/command/DrillFiles.h"

#include <algorithm>
#include <array>

#include "workbench/command/ChartLibrary.h"
#include "workbench/command/DataReading.h"
#include "workbench/command/Interruption.h"
#include "workbench/command/PlotCollisions.h"
#include "workbench/command/PlotFiles.h"
#include "workbench/command/StandardStreams.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/views/DocumentViews.h"

namespace quillara {
namespace {

struct DocumentView {
    OutputFormat Format;
    std::string (*View)(const OutputCollection&);
};

constexpr std::array<DocumentView, 3> Views{{
    {OutputFormat::Text, TextView},
    {OutputFormat::Json, JsonView},
    {OutputFormat::Csv, CsvView},
}};

std::string Shown(const DrillOptions& options, const OutputCollection& outputs) {
    if (options.Format == OutputFormat::Html) {
        return HtmlView(outputs, [&options](const GraphDocument& graph, bool isDark) {
            ChartLook look = options.Charts.Look;
            look.Dark = isDark;
            return PaintChart(graph, look, ChartFormat::Svg);
        });
    }
    return std::ranges::find(Views, options.Format, &DocumentView::Format)->View(outputs);
}

void CheckFile(const std::string& option, const std::optional<std::string>& file, const DrillOptions& options) {
    if (file) {
        CheckOutputIsAnother(option, *file, "data", options.File);
        CheckOutputIsAnother(option, *file, "dictionary", options.DictionaryFile.value_or(""));
    }
}

}  // namespace

void CheckFiles(const DrillOptions& options) {
    CheckFile("--output", options.OutputFile, options);
    CheckFile("--save", options.SaveFile, options);
    if (options.OutputFile && options.SaveFile && NameOneFile(*options.OutputFile, *options.SaveFile)) {
        throw UsageError("--save and --output both name " + Quoted(*options.SaveFile) + "; choose two files.");
    }
    CheckPlotsHitNoOther(options);
}

void WriteFiles(const DrillOptions& options, const DrillOutcome& outcome) {
    // All is painted before anything is written.
    const std::vector<PlotFile> plots = PaintedPlots(options.Charts, outcome.Outputs);
    const std::string documents = Shown(options, outcome.Outputs);
    if (options.SaveFile) {
        SaveDataFile(*outcome.Subset, *options.SaveFile);
    }
    if (options.Charts.Folder) {
        WritePlots(*options.Charts.Folder, plots);
    }
    if (!options.OutputFile) {
        WriteToStandardOutput(documents);
        return;
    }
    const FileWriting writing(*options.OutputFile);
    ReplaceFile(*options.OutputFile, documents, IsInterrupted);
    IgnoreInterrupts();
}

}  // namespace quillara
