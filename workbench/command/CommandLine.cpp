#include "workbench/command/CommandLine.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>
#include <string_view>

#include "workbench/command/DrillOptions.h"
#include "workbench/command/StandardStreams.h"
#include "workbench/data/Errors.h"
#include "workbench/data/LetterCase.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/WordTable.h"
#include "workbench/formats/DelimitedText.h"
#include "workbench/formats/FieldRules.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/FileFormats.h"
#include "workbench/formats/MemoryLimit.h"
#include "workbench/formats/SourceName.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

void Take(const std::string& option, const ValueTaker& take, const std::string& value) {
    try {
        take(value);
    } catch (const std::runtime_error& error) {
        throw UsageError(option + ": " + error.what());
    }
}

char SingleCharacter(const std::string& text) {
    if (text.size() != 1 || static_cast<unsigned char>(text.front()) >= 0x80) {
        throw UsageError(Quoted(text) + " isn't a single ASCII character.");
    }
    return text.front();
}

/// Bytes of "500M": a whole number, and K, M, G or T for a power of 1024.
std::size_t SizeOf(std::string_view text) {
    constexpr std::string_view powers = "KMGT";
    const std::size_t power = text.empty() ? powers.npos : powers.find(CapitalLetter(text.back()));
    const bool hasPower = power != powers.npos;
    const std::optional<int> count = WholeNumber(text.substr(0, text.size() - (hasPower ? 1 : 0)));
    const std::size_t shift = hasPower ? 10 * (power + 1) : 0;
    if (!count || *count == 0 || static_cast<std::size_t>(*count) > MemoryLimit::Unlimited >> shift) {
        throw UsageError(Quoted(text) + " isn't a size such as 500M or 4G.");
    }
    return static_cast<std::size_t>(*count) << shift;
}

std::size_t ThreadsOf(std::string_view text) {
    constexpr int most = 256;
    const std::optional<int> count = WholeNumber(text);
    if (!count || *count < 1 || *count > most) {
        throw UsageError(Quoted(text) + " isn't a number of threads from 1 to " + std::to_string(most) + ".");
    }
    return static_cast<std::size_t>(*count);
}

std::size_t CountOf(std::string_view text) {
    const std::optional<int> count = WholeNumber(text);
    if (!count) {
        throw UsageError(Quoted(text) + " isn't a number of lines.");
    }
    return static_cast<std::size_t>(*count);
}

char SeparatorOf(const std::string& text) {
    return text == "tab" || text == "\\t" ? '\t' : SingleCharacter(text);
}

char DecimalOf(const std::string& text) {
    const char decimal = SingleCharacter(text);
    if (decimal != '.' && decimal != ',') {
        throw UsageError("The decimal character is a point or a comma.");
    }
    return decimal;
}

/// Whether an option takes several things with commas between.
bool TakesList(const CLI::Option& option) {
    constexpr std::array<std::string_view, 4> types = {"NAMES", "LIST", "TEXTS", "TYPES"};
    return std::ranges::find(types, option.get_type_name()) != types.end();
}

/// Several lists as one.
std::string Joined(const std::vector<std::string>& lists) {
    std::string joined;
    for (const std::string& list : lists) {
        joined += (joined.empty() || list.empty() ? "" : ",") + list;
    }
    return joined;
}

constexpr WordTable<DateOrder, 2> OrderWords{{
    {"day-first", DateOrder::DayFirst},
    {"month-first", DateOrder::MonthFirst},
}};

/// Texts in place of the list of what means missing data, or beside it, or codes of a variable.
void TakeMissing(const std::string& text, ReadOptions& reading) {
    if (const std::optional<DeclaredMissing> declared = ParseDeclaredMissing(text)) {
        reading.MissingValues.push_back(*declared);
        return;
    }
    const bool isAdded = text.starts_with('+');
    std::vector<std::string> texts = SplitRecord(isAdded ? text.substr(1) : text);
    if (!reading.MissingTexts) {
        reading.MissingTexts = isAdded ? DefaultMissingTexts() : std::vector<std::string>();
    }
    std::ranges::move(texts, std::back_inserter(*reading.MissingTexts));
}

/// "-" in place of a path.
std::string OrStandardInput(const std::string& file) {
    return file == "-" ? "/dev/stdin" : file;
}

/// Tells which of some options are given and change nothing.
void TellWithoutEffect(const CLI::App& command, std::initializer_list<const char*> options, const std::string& why) {
    for (const char* option : options) {
        if (command.count(option) > 0) {
            WriteMessage(std::string(option) + " has no effect: " + why + ".");
        }
    }
}

}  // namespace

FormatKind KindOfFile(const std::string& file) {
    if (DatabaseSourceOf(file)) {
        return FormatKind::Database;
    }
    const FileFormat* format = FindFileFormat(ExtensionOf(file));
    return format == nullptr ? FormatKind::DelimitedText : format->Kind;
}

CLI::Option* AddValue(CLI::App& command, const std::string& name, const ValueTaker& take, const std::string& help) {
    const CLI::callback_t callback = [&command, name, take](const CLI::results_t& values) {
        const bool isList = TakesList(*command.get_option(name));
        if (values.size() > 1 && !isList) {
            throw UsageError(name + " is given twice.");
        }
        Take(name, take, isList ? Joined(values) : values.front());
        return true;
    };
    return command.add_option(name, callback, help)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

CLI::Option* AddText(CLI::App& command, const std::string& name, std::optional<std::string>& text,
                     const std::string& help) {
    return AddValue(
        command, name, [&text](const std::string& value) { text = value; }, help);
}

CLI::Option* AddStandardFormat(CLI::App& command, const std::string& name, std::optional<std::string>& format) {
    const auto take = [&format](const std::string& text) {
        const FileFormat* found = FindFileFormat(text);
        if (found == nullptr || !found->IsWritten) {
            throw UsageError(Quoted(text) + " can't be written; choose " + WrittenFormats() + ".");
        }
        format = text;
    };
    return AddValue(command, name, take, "format of data that go to the standard output (default: csv)")
        ->type_name(WrittenFormats("|"));
}

CLI::Option* AddQuiet(CLI::App& command, bool& quiet) {
    return command.add_flag("--quiet", quiet, "no remarks on standard error")->disable_flag_override();
}

CLI::Option* AddRepeated(CLI::App& command, const std::string& name, const ValueTaker& take, const std::string& help) {
    const CLI::callback_t callback = [name, take](const CLI::results_t& values) {
        for (const std::string& value : values) {
            Take(name, take, value);
        }
        return true;
    };
    return command.add_option(name, callback, help)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void AddDataFile(CLI::App& command, const std::string& name, std::string& file) {
    const auto take = [&file](const std::string& value) { file = OrStandardInput(value); };
    AddValue(command, name, take,
             "data file: " + ReadFormats() +
                 "; sqlite:FILE?table=NAME or sqlite:FILE?query=SQL, of a database, odbc:NAME?query=SQL or "
                 "parquet:FILE; - for "
                 "delimited text from standard "
                 "input, also packed")
        ->type_name("")
        ->required();
}

void AddReadingOptions(CLI::App& command, ReadOptions& reading) {
    const std::string group = "Reading delimited text";
    const auto add = [&](const std::string& name, const ValueTaker& take, const std::string& help) {
        return AddValue(command, name, take, help)->group(group);
    };
    add(
        "--separator", [&](const std::string& text) { reading.Separator = SeparatorOf(text); },
        "character between fields, or tab; found from the text when not given")
        ->type_name("CHARACTER");
    add(
        "--decimal", [&](const std::string& text) { reading.Decimal = DecimalOf(text); },
        "decimal character, a point or a comma (default: a comma where the file plainly has decimal commas, else a "
        "point; a remark says what is read so)")
        ->type_name("CHARACTER");
    add(
        "--dates", [&](const std::string& text) { reading.Dates = Choose(OrderWords, text); },
        "what stands first in dates such as 03/04/2024 (default: what other values of the variable show; where none "
        "does, they stay texts)")
        ->type_name("day-first|month-first");
    add(
        "--encoding", [&](const std::string& text) { reading.Encoding = text; },
        "character encoding of the file (default: UTF-8, else Windows-1252)")
        ->type_name("NAME");
    AddRepeated(
        command, "--missing", [&](const std::string& text) { TakeMissing(text, reading); },
        "texts that mean missing data, comma separated, in place of NA,N/A,NaN,nan,null,NULL,None,.,? or, with a + in "
        "front (+k.A.,-), beside them; an empty field always does. VAR=CODES: values of one variable that mean missing "
        "data, in any file: 99, 97..99, ..0, a text or a label; they keep their names. Repeatable")
        ->type_name("TEXTS|VAR=CODES")
        ->group(group);
    add(
        "--texts", [&](const std::string& text) { reading.Texts = ParseNames(text); },
        "variables that are texts, whatever they look like: zip codes, account numbers")
        ->type_name("NAMES");
    add(
        "--numbers", [&](const std::string& text) { reading.Numbers = ParseNames(text); },
        "variables that are numbers though they look like codes: 007 and 012 have leading zeros and one length, and "
        "are texts otherwise")
        ->type_name("NAMES");
    add(
        "--skip", [&](const std::string& text) { reading.TitleRecords = CountOf(text); },
        "lines, or rows of a sheet, above the names that are passed over, such as titles")
        ->type_name("N");
    command
        .add_flag_callback(
            "--no-header", [&] { reading.HasHeader = false; }, "the file has no names; they become Var1, Var2, ...")
        ->disable_flag_override()
        ->group(group);
    command
        .add_flag(
            "--keep-texts", reading.KeepsTexts,
            "texts such as 1,234, 10% or 31.12.2024 stay texts; without this, those of a variable are read as numbers, "
            "10% as 0.1, or dates when all are written in one way, and a remark says so")
        ->disable_flag_override()
        ->group(group);
    AddValue(
        command, "--sheet", [&](const std::string& text) { reading.Sheet = text; },
        "sheet of a workbook, by its name or its number from 1 (default: the first)")
        ->type_name("NAME|N")
        ->group("Reading workbooks");
    AddValue(
        command, "--max-memory", [&](const std::string& text) { reading.MaxMemory = SizeOf(text); },
        "memory that the program may take while it reads, as 500M or 4G (default: three quarters of the machine's)")
        ->type_name("SIZE")
        ->group("Reading");
    AddValue(
        command, "--threads", [&](const std::string& text) { reading.Threads = ThreadsOf(text); },
        "threads that read the file, go through the cases and compute plots side by side (default: as many as the "
        "machine has cores); results are the same with any number")
        ->type_name("N")
        ->group("Reading");
}

void TellReadingOptionsWithoutEffect(const CLI::App& command, const std::string& file, const ReadOptions& reading) {
    const FormatKind kind = KindOfFile(file);
    if (kind != FormatKind::Workbook) {
        TellWithoutEffect(command, {"--sheet"}, Quoted(file) + " is no workbook");
    }
    if (kind == FormatKind::DelimitedText || kind == FormatKind::PackedText) {
        return;
    }
    const std::string noText = Quoted(file) + " isn't delimited text";
    TellWithoutEffect(command, {"--separator", "--decimal"}, noText);
    if (kind != FormatKind::Workbook && kind != FormatKind::Database) {
        TellWithoutEffect(command, {"--keep-texts", "--dates", "--texts", "--numbers"}, noText);
        if (reading.MissingTexts) {
            TellWithoutEffect(command, {"--missing"}, noText);
        }
    }
    if (kind != FormatKind::Workbook) {
        TellWithoutEffect(command, {"--no-header", "--skip"}, noText);
    }
}

}  // namespace quillara
