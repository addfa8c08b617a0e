// quillara run: an interpreter takes the place of this program and runs a script with the Python package.

#include "workbench/command/RunCommand.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include <unistd.h>

#include "workbench/command/CommandLine.h"
#include "workbench/command/DataReading.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/hosting/AnalysisModule.h"
#include "workbench/views/DocumentViews.h"

namespace quillara {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view CommandName = "run";
constexpr std::string_view OptionsEnd = "--";
constexpr const char* InterpreterVariable = "QUILLARA_PYTHON";
constexpr const char* Interpreter = "/usr/bin/python3";  // the one that the package is built for
constexpr const char* RunNotes =
    "The script runs in the distribution's Python (or in the one that the environment variable QUILLARA_PYTHON names) "
    "as python3 would run it, and finds the package quillara there. What stands behind SCRIPT is its own, "
    "also what looks like an option; -- goes before a SCRIPT whose name begins with a dash.\n"
    "With --format or --output the documents that its analyses have made and that it has left open follow behind all "
    "that it prints itself, in the shape of quillara drill; those of several analyses one after the other, in JSON as "
    "a "
    "list. A script that fails gives none.\n"
    "\n"
    "Exit status: that of the script; 1 when it fails, which a traceback tells, 130 interrupted.\n"
    "\n"
    "Examples:\n"
    "  quillara run monthly.py survey.sav\n"
    "  quillara run --format html --output report.html monthly.py survey.sav";

struct RunOptions {
    std::optional<std::string> Format;
    std::optional<std::string> OutputFile;
    bool Quiet = false;
    std::string Script;
};

bool TakesValue(std::string_view option) {
    return option == "--format" || option == "--output";
}

/// Beside the libraries: in a build below python, installed below the folder of the interpreter's packages.
std::vector<fs::path> PackageFolders() {
    const fs::path libraries = fs::path(AnalysisModule::DrillDownPath()).parent_path();
    std::vector<fs::path> folders{libraries / "python"};
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(libraries, ignored)) {
        if (entry.path().filename().string().starts_with("python3")) {
            folders.push_back(entry.path() / "dist-packages");
        }
    }
    return folders;
}

/// The file of the package that runs scripts. Throws DataError without the package.
std::string RunnerOfPackage() {
    for (const fs::path& folder : PackageFolders()) {
        const fs::path runner = folder / "quillara" / "_run.py";
        std::error_code ignored;
        if (fs::exists(runner, ignored)) {
            return runner.string();
        }
    }
    throw DataError("The Python package isn't installed beside this program; build it with -D QUILLARA_PYTHON=ON.");
}

std::string InterpreterInUse() {
    const char* named = std::getenv(InterpreterVariable);
    return named != nullptr && *named != '\0' ? named : Interpreter;
}

void CheckScript(const std::string& script) {
    if (access(script.c_str(), R_OK) != 0) {
        throw DataError("The script " + Quoted(script) + " can't be read: " + std::strerror(errno) + ".");
    }
    if (fs::is_directory(script)) {
        throw DataError("The script " + Quoted(script) + " is a folder.");
    }
}

/// Signals, streams and the exit status are the interpreter's from here on.
[[noreturn]] void Become(const std::vector<std::string>& arguments) {
    std::vector<char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    execvp(pointers.front(), pointers.data());
    throw DataError("Python can't be started: " + arguments.front() + ": " + std::strerror(errno) + ".");
}

void Run(const RunOptions& options, const std::vector<std::string>& forScript) {
    CheckScript(options.Script);
    if (options.OutputFile) {
        CheckOutputIsAnother("--output", *options.OutputFile, "script", options.Script);
    }
    const std::string byName = options.OutputFile ? std::string(WordOf(FormatOfFile(*options.OutputFile))) : "";
    const std::string format = options.Format.value_or(byName);
    std::vector<std::string> arguments{
        InterpreterInUse(),           RunnerOfPackage(), format, options.OutputFile.value_or(""),
        options.Quiet ? "quiet" : "", options.Script};
    arguments.insert(arguments.end(), forScript.begin(), forScript.end());
    Become(arguments);
}

}  // namespace

std::size_t OwnArguments(std::span<char* const> arguments) {
    if (arguments.empty() || arguments.front() != CommandName) {
        return arguments.size();
    }
    std::size_t place = 1;
    while (place < arguments.size() && arguments[place][0] == '-') {
        if (std::string_view(arguments[place]) == OptionsEnd) {
            ++place;
            break;
        }
        place += TakesValue(arguments[place]) ? 2 : 1;
    }
    return std::min(place + 1, arguments.size());
}

void AddRunCommand(CLI::App& program, const std::vector<std::string>& forScript) {
    const auto options = std::make_shared<RunOptions>();
    CLI::App* command = program.add_subcommand(std::string(CommandName), "run a Python script that drills");
    command->footer(RunNotes);
    const auto takeFormat = [options](const std::string& word) {
        static_cast<void>(FormatNamed(word));
        options->Format = word;
    };
    AddValue(*command, "--format", takeFormat,
             "show the documents: as text, json, csv (one tidy table), csv-blocks, html, or xlsx (a sheet for each)")
        ->type_name("text|json|csv|csv-blocks|html|xlsx");
    AddText(*command, "--output", options->OutputFile,
            "file for the documents; .json, .csv, .html, .xlsx give their format, any other name text")
        ->type_name("FILE");
    AddQuiet(*command, options->Quiet);
    AddValue(
        *command, "SCRIPT", [options](const std::string& script) { options->Script = script; },
        "Python script, with its arguments behind it")
        ->type_name("")
        ->required();
    command->callback([options, forScript] { Run(*options, forScript); });
}

}  // namespace quillara
