#pragma once

#include <functional>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "workbench/formats/FileFormats.h"
#include "workbench/formats/ReadOptions.h"

namespace quillara {

/// Takes the value of an option. Throws UsageError or DataError when it can't be used: wrong usage in either case, and
/// the option's name is put before the text.
using ValueTaker = std::function<void(const std::string&)>;

/// An option with one value, given at most once; the lists of one that takes NAMES, LIST, TEXTS or TYPES add up. The
/// value is taken as it stands, whatever characters it holds.
CLI::Option* AddValue(CLI::App& command, const std::string& name, const ValueTaker& take, const std::string& help);

/// --quiet: remarks of the host aren't told.
CLI::Option* AddQuiet(CLI::App& command, bool& quiet);

/// An option for the format, by its extension, of data that go to the standard output.
CLI::Option* AddStandardFormat(CLI::App& command, const std::string& name, std::optional<std::string>& format);

/// The same as AddValue with a value that any text is good for.
CLI::Option* AddText(CLI::App& command, const std::string& name, std::optional<std::string>& text,
                     const std::string& help);

/// An option with one value that may be given any number of times; the values are taken in the order given.
CLI::Option* AddRepeated(CLI::App& command, const std::string& name, const ValueTaker& take, const std::string& help);

/// The file that a command works on.
void AddDataFile(CLI::App& command, const std::string& name, std::string& file);

/// The options that say how delimited text is read; --help shows them where they are added.
void AddReadingOptions(CLI::App& command, ReadOptions& reading);

/// What a data file is by its name; delimited text when that says nothing.
[[nodiscard]] FormatKind KindOfFile(const std::string& file);

/// Tells the user which of these options are given and change nothing, as the file isn't delimited text.
void TellReadingOptionsWithoutEffect(const CLI::App& command, const std::string& file, const ReadOptions& reading);

/// Adds the subcommands to the program; their callbacks do the work. A report shows the call of the program.
void AddDrillCommand(CLI::App& program, const std::string& call);
void AddInfoCommand(CLI::App& program);
void AddConvertCommand(CLI::App& program);
/// quillara desktop and quillara open.
void AddDesktopCommands(CLI::App& program);

}  // namespace quillara
