#include "workbench/command/ArgumentComplaint.h"

#include <algorithm>
#include <filesystem>

#include "workbench/data/QuotedText.h"
#include "workbench/data/Suggestion.h"

namespace quillara {
namespace {

/// The first argument that the parser could make nothing of.
std::string FirstUnknown(const CLI::App& program) {
    const std::vector<std::string> unknown = program.remaining(true);
    const auto first = std::ranges::find_if(unknown, [](const std::string& argument) { return argument != "--"; });
    return first == unknown.end() ? "" : *first;
}

bool LooksLikeFile(const std::string& argument) {
    std::error_code error;
    return argument.find_first_of("./") != std::string::npos || std::filesystem::exists(argument, error);
}

std::string AboutSubcommand(const CLI::App& program, const std::string& name) {
    const std::string complaint = "Unknown subcommand " + Quoted(name);
    if (LooksLikeFile(name)) {
        return complaint + "; did you mean " + Quoted(program.get_name() + " drill " + name) + "?";
    }
    return complaint + EndWithChoice(name, {"drill", "info", "convert", "run", "desktop", "open"});
}

/// The options of the subcommand that is given, else of the program.
std::vector<std::string> OptionNames(const CLI::App& program) {
    const std::vector<CLI::App*> commands = program.get_subcommands();
    const CLI::App& command = commands.empty() ? program : *commands.front();
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) {
        if (option->nonpositional()) {
            names.push_back("--" + option->get_lnames().front());
        }
    }
    return names;
}

std::string AboutOption(const CLI::App& program, const std::string& name) {
    const std::optional<std::string> meant = Suggestion(name, OptionNames(program));
    return "Unknown option " + name + (meant ? "; did you mean " + *meant + "?" : ".");
}

std::string AboutUnknown(const CLI::App& program) {
    const std::string unknown = FirstUnknown(program);
    if (unknown.size() > 1 && unknown.front() == '-') {
        return AboutOption(program, unknown.substr(0, unknown.find('=')));
    }
    if (program.get_subcommands().empty()) {
        return AboutSubcommand(program, unknown);
    }
    return "Unexpected argument " + Quoted(unknown) +
           "; names are separated by commas, and an argument with blanks stands in quotes.";
}

/// "a LIST", "NAMES", "each|last", "X1,X2:Y1,Y2"
std::string WithArticle(const std::string& type) {
    const bool isPlain = type.ends_with('S') || type.find_first_of("|,") != std::string::npos;
    return isPlain ? type : "a " + type;
}

/// The parser tells the option only as the beginning of its text.
std::string AboutMismatch(const CLI::App& program, const std::string& text) {
    for (const CLI::App* command : program.get_subcommands()) {
        for (const CLI::Option* option : command->get_options()) {
            const std::string name = option->get_name();
            if (text.starts_with(name + ":")) {
                return name + " needs " + WithArticle(option->get_type_name()) + ".";
            }
            if (("--" + text).starts_with(name + " ")) {
                return name + " takes no value.";
            }
        }
    }
    return text + ".";
}

}  // namespace

std::string ComplaintAbout(const CLI::App& program, const CLI::ParseError& error) {
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
        return AboutUnknown(program);
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        return AboutMismatch(program, error.what());
    }
    return std::string(error.what()) + ".";
}

}  // namespace quillara
