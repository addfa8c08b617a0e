// The command-line program: finds the subcommand, runs it, and turns failures into one line and an exit status.

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "workbench/command/ArgumentComplaint.h"
#include "workbench/command/CommandLine.h"
#include "workbench/command/ExitStatus.h"
#include "workbench/command/HelpFormatter.h"
#include "workbench/command/Interruption.h"
#include "workbench/command/StandardStreams.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

constexpr const char* ProgramName = "quillara";
constexpr const char* NoDesktop = "This build has no desktop; drill, info and convert work without one.";

void AddOpenCommand(CLI::App& program) {
    CLI::App* command = program.add_subcommand("open", "open a data file in the desktop (not in this build)");
    AddValue(
        *command, "FILE", [](const std::string&) {}, "data file")
        ->type_name("");
    command->callback([] { throw UsageError(NoDesktop); });
}

void AddCommands(CLI::App& program) {
    program.require_subcommand(0, 1);
    AddDrillCommand(program);
    AddInfoCommand(program);
    AddConvertCommand(program);
    AddOpenCommand(program);
    program.callback([&program] {
        if (program.get_subcommands().empty()) {
            throw UsageError(NoDesktop);
        }
    });
}

/// `--name=` with nothing behind it becomes `--name` and an empty argument: the parser would take the next one.
std::vector<std::string> Arguments(int count, char** values) {
    std::vector<std::string> arguments;
    for (int argument = 1; argument < count; ++argument) {
        const std::string text = values[argument];
        const bool isEmptyValue = text.starts_with("--") && text.find('=') == text.size() - 1;
        arguments.push_back(isEmptyValue ? text.substr(0, text.size() - 1) : text);
        if (isEmptyValue) {
            arguments.emplace_back();
        }
    }
    std::ranges::reverse(arguments);  // the parser takes them from the back
    return arguments;
}

/// The call that shows the help that fits.
std::string HelpCall(const CLI::App& program) {
    const std::vector<CLI::App*> commands = program.get_subcommands();
    return ProgramName + (commands.empty() ? "" : " " + commands.front()->get_name()) + " --help";
}

ExitStatus Complain(ExitStatus status, const std::string& problem) {
    WriteMessage(std::string(ProgramName) + ": " + problem);
    return status;
}

ExitStatus WrongUsage(const CLI::App& program, const std::string& problem) {
    Complain(WrongUsageStatus, problem);
    WriteMessage("Try '" + HelpCall(program) + "' for more.");
    return WrongUsageStatus;
}

ExitStatus Run(int count, char** values) {
    CLI::App program("Drill-down exploration of data files.", ProgramName);
    try {
        program.formatter(std::make_shared<HelpFormatter>());
        program.set_help_flag("-h,--help", "print this help and exit");
        AddCommands(program);
        program.parse(Arguments(count, values));
        return DoneStatus;
    } catch (const CLI::CallForHelp&) {
        WriteToStandardOutput(program.help());
        return DoneStatus;
    } catch (const CLI::ParseError& error) {
        return WrongUsage(program, ComplaintAbout(program, error));
    } catch (const UsageError& error) {
        return WrongUsage(program, error.what());
    }
}

}  // namespace
}  // namespace quillara

int main(int count, char** values) {
    using namespace quillara;
    WatchForInterrupt();
    try {
        return Run(count, values);
    } catch (const Interrupted&) {
        return InterruptedStatus;
    } catch (const std::bad_alloc&) {
        return Complain(NotDoneStatus, "There is not enough memory for this data.");
    } catch (const std::exception& error) {
        return Complain(NotDoneStatus, error.what());
    }
}
