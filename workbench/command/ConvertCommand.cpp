// quillara convert: one data file into another format.

#include <memory>

#include "workbench/command/CommandLine.h"
#include "workbench/command/DataReading.h"
#include "workbench/command/Interruption.h"
#include "workbench/formats/DataFile.h"

namespace quillara {
namespace {

constexpr const char* Notes =
    "The format of OUT goes by its extension. Labels and texts are written in place of coded values.\n"
    "A file that stands there is replaced.\n"
    "\n"
    "Example:\n"
    "  quillara convert survey.sav survey.csv";

struct ConvertOptions {
    std::string Input;
    std::string Output;
    ReadOptions Reading;
};

void Run(const ConvertOptions& options) {
    CheckOutputIsAnother("OUT", options.Output, "data", options.Input);
    const DataTable table = ReadDataWithProgress(options.Input, options.Reading);
    const InterruptibleWork work;
    WriteDataFile(table, options.Output, IsInterrupted);
}

}  // namespace

void AddConvertCommand(CLI::App& program) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* command = program.add_subcommand("convert", "write a data file in another format");
    command->footer(Notes);
    AddDataFile(*command, "IN", options->Input);
    const auto take = [options](const std::string& value) { options->Output = value; };
    AddValue(*command, "OUT", take, "file to write, csv")->type_name("")->required();
    AddReadingOptions(*command, options->Reading);
    command->callback([options] { Run(*options); });
}

}  // namespace quillara
