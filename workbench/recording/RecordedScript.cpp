#include "workbench/recording/RecordedScript.h"

#include <algorithm>
#include <filesystem>

#include "workbench/recording/PythonText.h"

namespace quillara {
namespace {

/// Whether a file is found from one folder only; a source of data that isn't a file names where it is itself.
bool IsRelative(const std::string& file) {
    return !file.empty() && file != "-" && !file.starts_with("odbc:") && !std::filesystem::path(file).is_absolute() &&
           !file.starts_with("sqlite:/");
}

std::string ListOf(const std::vector<std::string>& texts) {
    std::string items;
    for (const std::string& text : texts) {
        items += (items.empty() ? "" : ", ") + PythonText(text);
    }
    return "[" + items + "]";
}

/// {"q1": ["98"], "q2": True}
std::string ValidArgument(const std::vector<ValidCodes>& valid) {
    std::vector<ValidCodes> joined;
    for (const ValidCodes& each : valid) {
        const auto known = std::ranges::find(joined, each.Variable, &ValidCodes::Variable);
        if (known == joined.end()) {
            joined.push_back(each);
        } else if (each.Codes.empty()) {
            known->Codes.clear();
        } else {
            known->Codes.insert(known->Codes.end(), each.Codes.begin(), each.Codes.end());
        }
    }
    std::string items;
    for (const ValidCodes& each : joined) {
        items += (items.empty() ? "" : ", ") + PythonText(each.Variable) + ": " +
                 (each.Codes.empty() ? "True" : ListOf(each.Codes));
    }
    return "{" + items + "}";
}

/// {"q1": ["98", "99"]}
std::string MissingValuesArgument(const std::vector<DeclaredMissing>& declared) {
    std::vector<DeclaredMissing> joined;
    for (const DeclaredMissing& each : declared) {
        auto known = std::ranges::find(joined, each.Variable, &DeclaredMissing::Variable);
        known = known == joined.end() ? joined.insert(joined.end(), {each.Variable}) : known;
        known->Codes.insert(known->Codes.end(), each.Codes.begin(), each.Codes.end());
    }
    std::string items;
    for (const DeclaredMissing& each : joined) {
        items += (items.empty() ? "" : ", ") + PythonText(each.Variable) + ": " + ListOf(each.Codes);
    }
    return "{" + items + "}";
}

std::string ReadingArguments(const ScriptOpening& opening) {
    const ReadOptions& reading = opening.Reading;
    std::string arguments;
    const auto add = [&arguments](const char* name, const std::string& value) {
        arguments += std::string(", ") + name + "=" + value;
    };
    if (reading.Separator) {
        add("separator", PythonText(std::string(1, *reading.Separator)));
    }
    if (reading.Decimal) {
        add("decimal", PythonText(std::string(1, *reading.Decimal)));
    }
    if (reading.Dates) {
        add("dates", PythonText(*reading.Dates == DateOrder::DayFirst ? "day-first" : "month-first"));
    }
    if (!reading.Encoding.empty()) {
        add("encoding", PythonText(reading.Encoding));
    }
    if (reading.TitleRecords > 0) {
        add("skip", std::to_string(reading.TitleRecords));
    }
    if (!reading.HasHeader) {
        add("header", "False");
    }
    if (reading.MissingTexts) {
        add("missing", ListOf(*reading.MissingTexts));
    }
    if (reading.KeepsTexts) {
        add("keep_texts", "True");
    }
    if (!reading.Texts.empty()) {
        add("texts", ListOf(reading.Texts));
    }
    if (!reading.Numbers.empty()) {
        add("numbers", ListOf(reading.Numbers));
    }
    if (!reading.MissingValues.empty()) {
        add("missing_values", MissingValuesArgument(reading.MissingValues));
    }
    if (!reading.Sheet.empty()) {
        add("sheet", PythonText(reading.Sheet));
    }
    if (!opening.Valid.empty()) {
        add("valid", ValidArgument(opening.Valid));
    }
    if (opening.DictionaryFile) {
        add("dictionary", PythonText(*opening.DictionaryFile));
    }
    return arguments;
}

}  // namespace

void RecordedScript::Write(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        Write(line);
    }
}

void RecordedScript::Offer(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        Lines.push_back({.Text = line, .IsWritten = false});
    }
}

void RecordedScript::Accept() {
    for (Line& line : Lines) {
        line.IsWritten = true;
    }
}

void RecordedScript::ChooseVariables(const std::string& first, const std::string& second, const std::string& both) {
    if (!HasVariables && Lines.empty()) {
        DrillArguments = first + (second.empty() ? "" : ", " + second);
    } else {
        Write("drill.Variables = " + PythonText(both));
    }
    HasVariables = true;
}

std::string RecordedScript::NameResult(const std::string& name) {
    const int count = ++Results[name];
    return count == 1 ? name : name + "_" + std::to_string(count);
}

std::string RecordedScript::Text() const {
    const bool isBound = IsRelative(Begins.File) || (Begins.DictionaryFile && IsRelative(*Begins.DictionaryFile));
    std::string text = isBound ? "# Paths are relative: run it in the folder in which it was recorded.\n" : "";
    text += "import quillara\n\n";
    text += "table = quillara.open(" + PythonText(Begins.File) + ReadingArguments(Begins) + ")\n";
    for (const DerivedVariable& derived : Begins.Derived) {
        text += "table.compute(" + PythonText(derived.Name) + ", " + PythonText(derived.Formula) + ")\n";
    }
    if (!Begins.Formula.empty()) {
        text += "table.select(" + PythonText(Begins.Formula) + ")\n";
    }
    if (!Begins.Weight.empty()) {
        text += "table.weight = " + PythonText(Begins.Weight) + "\n";
    }
    text += "drill = table.drill(" + DrillArguments + ")\n";
    for (const Line& line : Lines) {
        text += line.IsWritten ? (line.Result.empty() ? "" : line.Result + " = ") + line.Text + "\n" : "";
    }
    return text;
}

}  // namespace quillara
