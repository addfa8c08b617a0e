// The command-line program: finds the subcommand, runs it, and turns failures into one line and an exit status.

#include <algorithm>
#include <exception>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

#include "workbench/command/ArgumentComplaint.h"
#include "workbench/command/CommandLine.h"
#include "workbench/command/ExitStatus.h"
#include "workbench/command/HelpFormatter.h"
#include "workbench/command/Interruption.h"
#include "workbench/command/ReportFacts.h"
#include "workbench/command/RunCommand.h"
#include "workbench/command/StandardStreams.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/RemovalOnSignal.h"
#include "workbench/hosting/LogFile.h"

namespace quillara {
namespace {

constexpr const char* ProgramName = "quillara";

void AddCommands(CLI::App& program, const std::vector<std::string>& own, const std::vector<std::string>& forScript) {
    program.require_subcommand(0, 1);
    std::vector<std::string> whole = own;
    whole.insert(whole.end(), forScript.begin(), forScript.end());
    AddDrillCommand(program, ShellCall(own));
    AddInfoCommand(program);
    AddConvertCommand(program);
    AddRunCommand(program, ShellCall(whole), forScript);
    AddDesktopCommands(program);
    program.callback([&program] {
        if (program.get_subcommands().empty()) {
            WriteToStandardOutput(program.help());
        }
    });
}

/// `--name=` with nothing behind it becomes `--name` and an empty argument: the parser would take the next one.
std::vector<std::string> ForParser(std::span<char*> arguments) {
    std::vector<std::string> texts;
    for (const std::string text : arguments) {
        const bool isEmptyValue = text.starts_with("--") && text.find('=') == text.size() - 1;
        texts.push_back(isEmptyValue ? text.substr(0, text.size() - 1) : text);
        if (isEmptyValue) {
            texts.emplace_back();
        }
    }
    std::ranges::reverse(texts);  // the parser takes them from the back
    return texts;
}

/// The call that shows the help that fits.
std::string HelpCall(const CLI::App& program) {
    const std::vector<CLI::App*> commands = program.get_subcommands();
    return ProgramName + (commands.empty() ? "" : " " + commands.front()->get_name()) + " --help";
}

/// The message with each long argument shortened, wherever it stands in it.
std::string WithShortArguments(std::string message, std::span<char*> arguments) {
    for (const std::string_view argument : arguments) {
        const std::string shortened = Shortened(argument);
        for (std::size_t at = message.find(argument); argument.size() > shortened.size() && at != std::string::npos;
             at = message.find(argument, at + shortened.size())) {
            message.replace(at, argument.size(), shortened);
        }
    }
    return message;
}

ExitStatus Complain(ExitStatus status, const std::string& problem, std::span<char*> arguments) {
    WriteMessage(WithShortArguments(std::string(ProgramName) + ": " + problem, arguments));
    return status;
}

ExitStatus WrongUsage(const CLI::App& program, const std::string& problem, std::span<char*> arguments) {
    Complain(WrongUsageStatus, problem, arguments);
    WriteMessage("Try '" + HelpCall(program) + "' for more.");
    return WrongUsageStatus;
}

/// Needs no memory.
ExitStatus ComplainAboutMemory() noexcept {
    constexpr std::string_view line = "quillara: There is not enough memory for this.\n";
    static_cast<void>(!write(STDERR_FILENO, line.data(), line.size()));
    return NotDoneStatus;
}

/// What nobody handles, which is mostly the lack of memory within a library.
[[noreturn]] void EndWithoutHandler() noexcept {
    static_cast<void>(RemoveUnfinishedFile());
    _exit(ComplainAboutMemory());
}

ExitStatus Run(std::span<char*> arguments) {
    CLI::App program("Drill-down exploration of data files.", ProgramName);
    try {
        program.formatter(std::make_shared<HelpFormatter>());
        program.set_help_flag("-h,--help", "print this help and exit");
        program.set_version_flag("-V,--version", std::string(ProgramName) + ' ' + QUILLARA_VERSION,
                                 "print the version and exit");
        const std::size_t own = OwnArguments(arguments);
        const auto scriptsOwn = arguments.begin() + static_cast<std::ptrdiff_t>(own);
        AddCommands(program, {arguments.begin(), scriptsOwn}, {scriptsOwn, arguments.end()});
        program.parse(ForParser(arguments.first(own)));
        return DoneStatus;
    } catch (const CLI::CallForHelp&) {
        WriteToStandardOutput(program.help());
        return DoneStatus;
    } catch (const CLI::CallForVersion& version) {
        WriteToStandardOutput(version.what() + std::string("\n"));
        return DoneStatus;
    } catch (const CLI::ParseError& error) {
        return WrongUsage(program, ComplaintAbout(program, error), arguments);
    } catch (const UsageError& error) {
        return WrongUsage(program, error.what(), arguments);
    }
}

}  // namespace
}  // namespace quillara

int main(int count, char** values) {
    using namespace quillara;
    WatchForInterrupt();
    std::set_terminate(EndWithoutHandler);
    const std::span<char*> arguments(values + std::min(count, 1), static_cast<std::size_t>(std::max(count - 1, 0)));
    try {
        try {
            OpenProgramLog();
            return Run(arguments);
        } catch (const Interrupted&) {
            return InterruptedStatus;
        } catch (const std::bad_alloc&) {
            return ComplainAboutMemory();
        } catch (const std::exception& error) {
            return Complain(NotDoneStatus, error.what(), arguments);
        }
    } catch (const std::bad_alloc&) {
        return ComplainAboutMemory();
    }
}
