// quillara desktop and quillara open: the desktop takes the place of this program.

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

#include "workbench/command/CommandLine.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

constexpr const char* Desktop = "quillara-desktop";
constexpr const char* Notes =
    "Starts quillara-desktop, which stands beside this program.\n"
    "\n"
    "Exit status: that of the desktop; 1 when it isn't installed or there is no screen.";

std::filesystem::path BesideThisProgram() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path() / Desktop;
}

[[noreturn]] void BecomeDesktop(const std::string& file) {
    const std::string program = BesideThisProgram().string();
    if (access(program.c_str(), X_OK) != 0) {
        throw DataError("The desktop isn't installed beside this program: there is no " + program + '.');
    }
    std::vector<const char*> arguments{program.c_str()};
    if (!file.empty()) {
        arguments.push_back(file.c_str());
    }
    arguments.push_back(nullptr);
    execv(program.c_str(), const_cast<char* const*>(arguments.data()));
    throw DataError("The desktop can't be started: " + std::string(std::strerror(errno)) + '.');
}

void AddStarter(CLI::App& program, const std::string& name, const std::string& help, bool needsFile) {
    const auto file = std::make_shared<std::string>();
    CLI::App* command = program.add_subcommand(name, help);
    command->footer(Notes);
    CLI::Option* option = AddValue(
        *command, "FILE", [file](const std::string& value) { *file = value; }, "data file");
    option->type_name("")->required(needsFile);
    command->callback([file] { BecomeDesktop(*file); });
}

}  // namespace

void AddDesktopCommands(CLI::App& program) {
    AddStarter(program, "desktop", "start the desktop", false);
    AddStarter(program, "open", "open a data file in the desktop", true);
}

}  // namespace quillara
