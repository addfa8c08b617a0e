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

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "workbench/command/CommandLine.h"
#include "workbench/command/DataReading.h"
#include "workbench/command/ReportFacts.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/FileFormats.h"
#include "workbench/hosting/AnalysisModule.h"
#include "workbench/scripting/TableFiles.h"
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
    std::string Title;
    bool Quiet = false;
    std::string Script;
};

bool TakesValue(std::string_view option) {
    return option == "--format" || option == "--output" || option == "--title";
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

/// Whether a program runs what is a test of Python to Python and an error to others; all that it prints is dropped.
bool IsPython(const std::string& program) {
    constexpr int proof = 42;
    const std::string test = "import sys; sys.exit(" + std::to_string(proof) + " if sys.version_info > (3,) else 1)";
    std::vector<std::string> words{program, "-c", test};
    std::vector<char*> arguments{words[0].data(), words[1].data(), words[2].data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    }
    pid_t process = 0;
    const int error = posix_spawnp(&process, words[0].c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    return error == 0 && waitpid(process, &status, 0) == process && WIFEXITED(status) && WEXITSTATUS(status) == proof;
}

/// Throws DataError when the one that the environment names is no Python.
std::string InterpreterInUse() {
    const char* named = std::getenv(InterpreterVariable);
    if (named == nullptr || *named == '\0') {
        return Interpreter;
    }
    if (!IsPython(named)) {
        throw DataError("Python can't be started: " + std::string(InterpreterVariable) + " names " + Quoted(named) +
                        ", which is no Python 3.");
    }
    return named;
}

/// By its name; a text may be a script, too.
bool IsDataFile(const std::string& file) {
    const std::string extension = ExtensionOf(file);
    return extension != "txt" && FindFileFormat(extension) != nullptr;
}

void CheckScript(const std::string& script) {
    if (access(script.c_str(), R_OK) != 0) {
        throw DataError("The script " + Quoted(script) + " can't be read: " + std::strerror(errno) + ".");
    }
    if (fs::is_directory(script)) {
        throw DataError("The script " + Quoted(script) + " is a folder.");
    }
    if (IsDataFile(script)) {
        throw DataError(Quoted(script) + " is a file of data, not a Python script; quillara drill shows its results.");
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

/// As the output's name says; a folder gets tidy tables.
std::string FormatFor(const RunOptions& options) {
    if (!options.OutputFile) {
        return options.Format.value_or("");
    }
    const bool isFolder = NamesFolder(*options.OutputFile);
    const OutputFormat byName = isFolder ? OutputFormat::Csv : FormatOfFile(*options.OutputFile);
    if (isFolder && options.Format) {
        CheckGoesToFolder(FormatNamed(*options.Format));
    }
    return options.Format.value_or(std::string(WordOf(byName)));
}

void Run(const RunOptions& options, const std::string& call, const std::vector<std::string>& forScript) {
    CheckScript(options.Script);
    if (options.OutputFile) {
        CheckOutputIsAnother("--output", *options.OutputFile, "script", options.Script);
    }
    const std::string format = FormatFor(options);
    std::vector<std::string> arguments{InterpreterInUse(),
                                       RunnerOfPackage(),
                                       format,
                                       options.OutputFile.value_or(""),
                                       options.Quiet ? "quiet" : "",
                                       options.Title,
                                       MadeToday(),
                                       call,
                                       options.Script};
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

void AddRunCommand(CLI::App& program, const std::string& call, const std::vector<std::string>& forScript) {
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
            "file for the documents; .json, .csv, .html, .xlsx give their format, any other name text; a folder, which "
            "ends with / or is there, gets a file of each table, in csv unless --format says json, text or csv-blocks")
        ->type_name("FILE|FOLDER/");
    AddValue(
        *command, "--title", [options](const std::string& title) { options->Title = title; },
        "title of the report in html")
        ->type_name("TEXT");
    AddQuiet(*command, options->Quiet);
    AddValue(
        *command, "SCRIPT", [options](const std::string& script) { options->Script = script; },
        "Python script, with its arguments behind it")
        ->type_name("")
        ->required();
    command->callback([options, call, forScript] { Run(*options, call, forScript); });
}

}  // namespace quillara
