// quillara info: the variables of a data file.

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "workbench/command/CommandLine.h"
#include "workbench/command/DataReading.h"
#include "workbench/command/StandardStreams.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/Suggestion.h"
#include "workbench/formats/Dictionary.h"
#include "workbench/formats/TableShape.h"
#include "workbench/views/VariableSummary.h"

namespace quillara {
namespace {

constexpr const char* InfoNotes =
    "Used as: what drill takes a variable for when no list names any. Cases: how many have each value or, "
    "of more than ten numbers, lie in ten parts of equal width from the smallest to the largest; of more than ten "
    "texts "
    "or labelled values the ten most frequent, from the first of them. Values: the labels "
    "of a variable, the texts of a text variable, and of any other the smallest and the largest value and the "
    "quartiles, by linear interpolation (definition 7 of Hyndman and Fan). On a terminal no line is wider than it is.\n"
    "\n"
    "Examples:\n"
    "  quillara info survey.sav\n"
    "  quillara info prices.txt --separator tab --decimal , --format json";

struct InfoOptions {
    std::string File;
    ReadOptions Reading;
    std::optional<std::string> DictionaryFile;
    bool AsJson = false;
    bool Quiet = false;
};

bool ParseAsJson(const std::string& text) {
    if (text != "text" && text != "json") {
        throw UsageError("Unknown value " + Quoted(text) + EndWithChoice(text, {"text", "json"}));
    }
    return text == "json";
}

void Run(const InfoOptions& options) {
    std::vector<Remark> remarks;
    DataTable table = ReadDataWithProgress(options.File, options.Reading, remarks);
    if (options.DictionaryFile) {
        ApplyDictionary(table, *options.DictionaryFile, options.Reading.MaxMemory);
    }
    if (const std::optional<Remark> empty = RemarkOnEmptyVariables(table)) {
        remarks.push_back(*empty);
    }
    if (!options.Quiet) {
        std::ranges::for_each(remarks, WriteMessage, &Remark::Line);
    }
    WriteToStandardOutput(options.AsJson ? VariablesAsJson(table, remarks) : VariablesAsText(table, TerminalWidth()));
}

}  // namespace

void AddInfoCommand(CLI::App& program) {
    const auto options = std::make_shared<InfoOptions>();
    CLI::App* command = program.add_subcommand("info", "show the variables of a data file");
    command->footer(InfoNotes);
    AddDataFile(*command, "FILE", options->File);
    AddText(*command, "--dictionary", options->DictionaryFile,
            "delimited file of labels with the columns variable, value, label, description; an empty value means the "
            "variable itself")
        ->type_name("FILE");
    const auto take = [options](const std::string& text) { options->AsJson = ParseAsJson(text); };
    AddValue(*command, "--format", take, "text (default) or json, which has all value labels")->type_name("text|json");
    AddQuiet(*command, options->Quiet);
    AddReadingOptions(*command, options->Reading);
    command->callback([options, command] {
        TellReadingOptionsWithoutEffect(*command, options->File, options->Reading);
        Run(*options);
    });
}

}  // namespace quillara
