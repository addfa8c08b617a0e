#include "workbench/scripting/TableFiles.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/views/CsvText.h"
#include "workbench/views/GraphTables.h"
#include "workbench/views/ShownTable.h"
#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

/// What tells a document from the others of its result.
std::string SubjectName(const OutputEntry& entry) {
    const Subject& about =
        std::visit([](const auto& content) -> const Subject& { return content.About; }, entry.Content);
    return about.Name();
}

std::string BaseName(const OutputCollection& outputs, const OutputEntry& entry) {
    const std::string result = PlainFileName(entry.Result);
    const std::string subject = PlainFileName(SubjectName(entry));
    return "step" + std::to_string(entry.Step) + '-' + (result.empty() ? "table" : result) + '-' +
           TwoDigits(entry.Sequence) + (subject.empty() ? "" : "-") + subject + GroupEnding(outputs, entry.Step);
}

std::string EndOf(OutputFormat format) {
    switch (format) {
        case OutputFormat::Json:
            return ".json";
        case OutputFormat::Csv:
        case OutputFormat::CsvBlocks:
            return ".csv";
        case OutputFormat::Text:
            return ".txt";
        case OutputFormat::Workbook:
            return ".xlsx";
        case OutputFormat::Html:
            break;
    }
    return ".html";
}

/// The texts of a document's files: in CSV one of each of its tables.
std::vector<std::string> TextsOf(const OutputCollection& outputs, const OutputEntry& entry, OutputFormat format) {
    std::vector<std::string> texts;
    if (format == OutputFormat::Csv) {
        for (const SpreadsheetDocument& table : TablesOf(entry.Content)) {
            texts.push_back(CsvTable(table));
        }
        return texts;
    }
    OutputCollection alone = outputs;
    alone.Entries = {entry};
    texts.push_back(ViewOf(std::span(&alone, 1), format));
    return texts;
}

std::string PathOf(const std::string& folder, const FolderFile& file) {
    return (std::filesystem::path(folder) / file.Name).string();
}

constexpr const char* ContentsName = "contents.csv";

/// What is written of a file into the list of all.
CsvRecord ContentsRecord(const OutputCollection& outputs, const OutputEntry& entry, const std::string& file) {
    const auto place = static_cast<std::size_t>(entry.Step);
    std::string steps;
    for (const StepTaken& down : StepsInForce(outputs.Steps, std::min(place, outputs.Steps.size()))) {
        steps += (steps.empty() ? "" : "; ") + ShownLine(down.Condition());
    }
    const std::optional<SubsetSize> left = LeftBehind(outputs, entry.Step);
    const std::vector<std::string> title = TablesOf(entry.Content).front().Title;
    return {file,
            std::to_string(entry.Step),
            UnsteeringText(steps),
            left ? std::to_string(left->Cases) : "",
            entry.Result,
            UnsteeringText(ShownLine(SubjectName(entry))),
            title.empty() ? "" : UnsteeringText(ShownLine(title.front()))};
}

/// The first name that isn't taken: with -2, -3, ... behind it where it is.
std::string FreeName(const std::string& base, const std::string& end, std::set<std::string>& taken) {
    std::string name = base + end;
    for (int number = 2; !taken.insert(name).second; ++number) {
        name = base + '-' + std::to_string(number) + end;
    }
    return name;
}

}  // namespace

bool NamesFolder(const std::string& output) {
    std::error_code error;
    return output.ends_with('/') || std::filesystem::is_directory(output, error);
}

void CheckGoesToFolder(OutputFormat format) {
    if (format == OutputFormat::Html || format == OutputFormat::Workbook) {
        const std::string what = format == OutputFormat::Html ? "report" : "workbook";
        throw UsageError("--output: a " + what + " is one file, not a folder; name a file, or choose another format.");
    }
}

std::vector<FolderFile> TableFiles(std::span<const OutputCollection> runs, OutputFormat format) {
    const std::string end = EndOf(format);
    std::string contents = CsvText({"file", "step", "steps", "cases", "result", "variable", "title"});
    std::set<std::string> taken;
    std::vector<FolderFile> files;
    for (std::size_t run = 0; run < runs.size(); ++run) {
        const std::string begin = runs.size() == 1 ? "" : "analysis" + std::to_string(run + 1) + '-';
        OutputCollection head = ShownIn(format, runs[run]);
        const std::vector<OutputEntry> entries = std::exchange(head.Entries, {});
        for (const OutputEntry& entry : entries) {
            for (std::string& text : TextsOf(head, entry, format)) {
                files.push_back({FreeName(begin + BaseName(head, entry), end, taken), std::move(text)});
                contents += CsvText(ContentsRecord(head, entry, files.back().Name));
            }
        }
    }
    files.push_back({ContentsName, std::move(contents)});
    return files;
}

void CheckTablesHitNoOther(const std::string& folder, const std::vector<FolderFile>& files,
                           std::span<const std::string> others) {
    for (const FolderFile& file : files) {
        const std::string path = PathOf(folder, file);
        if (std::ranges::any_of(others, [&path](const std::string& other) { return NameOneFile(other, path); })) {
            throw UsageError("--output: a table in " + Quoted(folder) + " would overwrite " + Quoted(path) +
                             "; choose another folder.");
        }
    }
}

std::string WhatIsReplaced(const std::string& folder, const std::vector<FolderFile>& files) {
    std::error_code error;
    const auto count = std::ranges::count_if(
        files, [&](const FolderFile& file) { return std::filesystem::exists(PathOf(folder, file), error); });
    const std::string_view what = count == 1 ? " file that was there is" : " files that were there are";
    return count == 0 ? "" : std::to_string(count) + std::string(what) + " replaced in " + Quoted(folder) + ".";
}

}  // namespace quillara
