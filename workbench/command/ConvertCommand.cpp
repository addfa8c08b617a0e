// quillara convert: one data file into another format.

#include <memory>
#include <optional>
#include <string>

#include "workbench/command/CommandLine.h"
#include "workbench/command/DataReading.h"
#include "workbench/command/Interruption.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/data/TableOfCases.h"
#include "workbench/formats/DataFile.h"
#include "workbench/formats/Dictionary.h"
#include "workbench/formats/FileFormats.h"
#include "workbench/formats/FileReplacement.h"

namespace quillara {
namespace {

constexpr const char* HowItIsWritten =
    "Names and labels that sav, zsav and dta don't admit are kept in the notes of the file. csv and xlsx have no "
    "labels of "
    "variables; what they lose of the values, as a text None that reads as missing data, is said in a line per "
    "variable.\n"
    "OUT is read back and compared before it takes its name. A file that stands there is replaced, or kept as it was "
    "when anything goes wrong.\n"
    "\n"
    "Examples:\n"
    "  quillara convert survey.sav survey.csv\n"
    "  quillara convert survey.csv survey.dta\n"
    "  quillara convert survey.csv women.xlsx --dictionary labels.csv --select 'sex = \"Female\"'\n"
    "  zcat orders.csv.gz | quillara convert - orders.qtable\n"
    "  quillara convert 'sqlite:shop.db?query=SELECT * FROM orders WHERE paid' orders.csv";

std::string ConvertNotes() {
    std::string kept;
    for (const FileFormat& format : FileFormats) {
        if (format.IsWritten) {
            kept += (kept.empty() ? "" : "; ") + std::string(format.Extension) + " keeps " + std::string(format.Keeps);
        }
    }
    return "The format of OUT goes by its extension: " + WrittenFormats() +
           ". Of names, labels, values, missing data " + "and the declared weight " + kept + ". " + HowItIsWritten;
}

struct ConvertOptions {
    std::string Input;
    std::string Output;
    ReadOptions Reading;
    std::optional<std::string> DictionaryFile;
    std::optional<std::string> Formula;
};

DataTable TableToWrite(const ConvertOptions& options) {
    DataTable table = ReadDataWithProgress(options.Input, options.Reading);
    if (options.DictionaryFile) {
        ApplyDictionary(table, *options.DictionaryFile, options.Reading.MaxMemory);
    }
    return options.Formula ? TableOfCases(table, SelectCases(table, *options.Formula)) : table;
}

void Run(const ConvertOptions& options) {
    CheckOutputIsAnother("OUT", options.Output, "data", options.Input);
    if (options.DictionaryFile) {
        CheckOutputIsAnother("OUT", options.Output, "dictionary", *options.DictionaryFile);
    }
    const DataTable table = TableToWrite(options);
    const FileWriting writing(options.Output);
    SaveDataFile(table, options.Output);
    IgnoreInterrupts();
}

}  // namespace

void AddConvertCommand(CLI::App& program) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* command = program.add_subcommand("convert", "write a data file in another format");
    command->footer(ConvertNotes());
    AddDataFile(*command, "IN", options->Input);
    const auto take = [options](const std::string& value) {
        options->Output = value == "-" ? StandardOutputPath : value;
        CheckCanBeWritten(options->Output);
    };
    AddValue(*command, "OUT", take, "file to write: " + WrittenFormats() + "; - for csv to standard output")
        ->type_name("")
        ->required();
    AddText(*command, "--dictionary", options->DictionaryFile,
            "delimited file of labels with the columns variable, value, label, description")
        ->type_name("FILE");
    AddText(*command, "--select", options->Formula,
            "write only the cases for which this formula holds, as drill has it")
        ->type_name("FORMULA");
    AddReadingOptions(*command, options->Reading);
    command->callback([options, command] {
        TellReadingOptionsWithoutEffect(*command, options->Input);
        Run(*options);
    });
}

}  // namespace quillara
