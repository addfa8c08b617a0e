// quillara convert: one data file into another format.

#include <memory>

#include "workbench/command/CommandLine.h"
#include "workbench/command/Interruption.h"
#include "workbench/formats/DataFile.h"

namespace quillara {
namespace {

struct ConvertOptions {
    std::string Input;
    std::string Output;
    ReadOptions Reading;
};

void Run(const ConvertOptions& options) {
    const DataTable table = ReadDataFile(options.Input, options.Reading);
    const InterruptibleWork work;
    WriteDataFile(table, options.Output, [] { return InterruptFlag().load(); });
}

}  // namespace

void AddConvertCommand(CLI::App& program) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* command = program.add_subcommand("convert", "write a data file in another format");
    AddDataFile(*command, "IN", options->Input, options->Reading);
    const auto take = [options](const std::string& value) { options->Output = value; };
    AddValue(*command, "OUT", take, "file to write, csv")->type_name("")->required();
    command->callback([options] { Run(*options); });
}

}  // namespace quillara
