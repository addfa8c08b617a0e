#include "workbench/command/CommandLine.h"

#include "workbench/data/Errors.h"
#include "workbench/formats/DelimitedText.h"

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
    if (text.size() != 1) {
        throw UsageError("\"" + text + "\" isn't a single character");
    }
    return text.front();
}

char SeparatorOf(const std::string& text) {
    return text == "tab" || text == "\\t" ? '\t' : SingleCharacter(text);
}

char DecimalOf(const std::string& text) {
    const char decimal = SingleCharacter(text);
    if (decimal != '.' && decimal != ',') {
        throw UsageError("the decimal character is a point or a comma");
    }
    return decimal;
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
        "decimal character, a point or a comma (default: a point)")
        ->type_name("CHARACTER");
    add(
        "--encoding", [&](const std::string& text) { reading.Encoding = text; },
        "character encoding of the file (default: UTF-8, else Windows-1252)")
        ->type_name("NAME");
    add(
        "--missing", [&](const std::string& text) { reading.MissingTexts = SplitRecord(text); },
        "texts that mean missing data, comma separated (default: NA,N/A,NaN,nan,null,NULL,None,.,?); an empty field "
        "always does")
        ->type_name("TEXTS");
    command
        .add_flag_callback(
            "--no-header", [&] { reading.HasHeader = false; }, "the file has no names; they become Var1, Var2, ...")
        ->group(group);
}

}  // namespace

CLI::Option* AddValue(CLI::App& command, const std::string& name, const ValueTaker& take, const std::string& help) {
    const CLI::callback_t callback = [name, take](const CLI::results_t& values) {
        Take(name, take, values.front());
        return true;
    };
    return command.add_option(name, callback, help)->multi_option_policy(CLI::MultiOptionPolicy::Throw);
}

CLI::Option* AddText(CLI::App& command, const std::string& name, std::optional<std::string>& text,
                     const std::string& help) {
    return AddValue(
        command, name, [&text](const std::string& value) { text = value; }, help);
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

void AddDataFile(CLI::App& command, const std::string& name, std::string& file, ReadOptions& reading) {
    const std::string help = "data file: csv and other delimited text, sav, zsav, por, dta, sas7bdat, xpt";
    AddValue(
        command, name, [&file](const std::string& value) { file = value; }, help)
        ->type_name("")
        ->required();
    AddReadingOptions(command, reading);
}

}  // namespace quillara
