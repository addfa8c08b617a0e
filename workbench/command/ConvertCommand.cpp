// quillara convert: one data file into another format.

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "workbench/command/CommandLine.h"
#include "workbench/command/ComputeOption.h"
#include "workbench/command/DataReading.h"
#include "workbench/command/Interruption.h"
#include "workbench/command/StandardStreams.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/data/TableOfCases.h"
#include "workbench/formats/DataFile.h"
#include "workbench/formats/FileFormats.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/formats/OddCases.h"
#include "workbench/formats/TablePreparation.h"

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
    "  quillara convert survey.csv - --format sav --compute 'young=age < 30' | ssh server 'cat > survey.sav'\n"
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
    std::optional<std::string> Format;  ///< of what goes to the standard output
    ReadOptions Reading;
    TablePreparation Preparation;
    std::optional<std::string> Formula;
    bool Quiet = false;
};

DataTable TableToWrite(const ConvertOptions& options, std::vector<Remark>& noticed) {
    DataTable table = ReadDataWithProgress(options.Input, options.Reading, noticed);
    const std::vector<Remark> onFormulas = PrepareTable(table, options.Preparation, options.Reading.MaxMemory);
    noticed.insert(noticed.end(), onFormulas.begin(), onFormulas.end());
    if (!options.Formula) {
        return table;
    }
    const std::vector<CaseResult> selection = SelectCases(table, *options.Formula, &noticed);
    DropObeyed(noticed, selection);
    return TableOfCases(table, selection);
}

void CheckOutput(const ConvertOptions& options) {
    CheckOutputIsAnother("OUT", options.Output, "data", options.Input);
    if (options.Preparation.DictionaryFile) {
        CheckOutputIsAnother("OUT", options.Output, "dictionary", *options.Preparation.DictionaryFile);
    }
    if (options.Output == StandardOutputPath) {
        RequireNoTerminal("OUT", options.Format.value_or("csv"));
    }
}

void Run(const ConvertOptions& options) {
    CheckOutput(options);
    std::vector<Remark> noticed;
    const DataTable table = TableToWrite(options, noticed);
    if (!options.Quiet) {
        std::ranges::for_each(noticed, WriteMessage, &Remark::Line);
    }
    const FileWriting writing(options.Output);
    SaveDataFile(table, options.Output, options.Format);
    IgnoreInterrupts();
}

}  // namespace

void AddConvertCommand(CLI::App& program) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* command = program.add_subcommand("convert", "write a data file in another format");
    command->footer(FormulaNotes() + "\n" + ConvertNotes());
    AddDataFile(*command, "IN", options->Input);
    const auto take = [options](const std::string& value) {
        options->Output = value == "-" ? StandardOutputPath : value;
        CheckCanBeWritten(options->Output);
    };
    AddValue(*command, "OUT", take, "file to write: " + WrittenFormats() + "; - for the standard output")
        ->type_name("")
        ->required();
    AddStandardFormat(*command, "--format", options->Format);
    AddText(*command, "--dictionary", options->Preparation.DictionaryFile,
            "delimited file of labels with the columns variable, value, label, description")
        ->type_name("FILE");
    AddComputeOption(*command, options->Preparation.Derived);
    AddText(*command, "--select", options->Formula,
            "write only the cases for which this formula holds, as drill has it")
        ->type_name("FORMULA");
    AddValidOption(*command, options->Preparation.Valid);
    AddQuiet(*command, options->Quiet);
    AddReadingOptions(*command, options->Reading);
    command->callback([options, command] {
        if (options->Format && options->Output != StandardOutputPath) {
            WriteMessage("--format has no effect: the name of OUT says the format.");
        }
        TellReadingOptionsWithoutEffect(*command, options->Input, options->Reading);
        Run(*options);
    });
}

}  // namespace quillara
