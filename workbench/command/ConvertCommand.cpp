// quillara convert: one data file into another format.

#include <memory>

#include "workbench/command/CommandLine.h"
#include "workbench/command/DataReading.h"
#include "workbench/command/Interruption.h"
#include "workbench/formats/DataFile.h"

namespace quillara {
namespace {

constexpr const char* Notes =
    "The format of OUT goes by its extension: csv, sav, zsav or dta. sav, zsav and dta keep names, labels, value "
    "labels, "
    "dates, missing data and the declared weight; names and labels that the format doesn't admit are kept in its "
    "notes. "
    "A text variable with value labels becomes labelled numbers in dta. csv holds labels and texts in place of coded "
    "values, and no labels of variables; what it loses of the values, as a text None that reads as missing data, is "
    "said in a line per variable.\n"
    "OUT is read back and compared before it takes its name. A file that stands there is replaced, or kept as it was "
    "when anything goes wrong.\n"
    "\n"
    "Examples:\n"
    "  quillara convert survey.sav survey.csv\n"
    "  quillara convert survey.csv survey.dta";

struct ConvertOptions {
    std::string Input;
    std::string Output;
    ReadOptions Reading;
};

void Run(const ConvertOptions& options) {
    CheckOutputIsAnother("OUT", options.Output, "data", options.Input);
    CheckCanBeWritten(options.Output);
    const DataTable table = ReadDataWithProgress(options.Input, options.Reading);
    const FileWriting writing(options.Output);
    SaveDataFile(table, options.Output);
    IgnoreInterrupts();
}

}  // namespace

void AddConvertCommand(CLI::App& program) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* command = program.add_subcommand("convert", "write a data file in another format");
    command->footer(Notes);
    AddDataFile(*command, "IN", options->Input);
    const auto take = [options](const std::string& value) { options->Output = value; };
    AddValue(*command, "OUT", take, "file to write: csv, sav, zsav or dta")->type_name("")->required();
    AddReadingOptions(*command, options->Reading);
    command->callback([options, command] {
        TellReadingOptionsWithoutEffect(*command, options->Input);
        Run(*options);
    });
}

}  // namespace quillara
