// The documents of several runs, in each of the formats.

#include <algorithm>
#include <string>
#include <vector>

#include "workbench/data/LetterCase.h"
#include "workbench/data/WordTable.h"
#include "workbench/documents/ResultNames.h"
#include "workbench/views/DocumentViews.h"
#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

using Runs = std::span<const OutputCollection>;

constexpr WordTable<OutputFormat, 6> FormatWords{{
    {"text", OutputFormat::Text},
    {"json", OutputFormat::Json},
    {"csv", OutputFormat::Csv},
    {"csv-blocks", OutputFormat::CsvBlocks},
    {"html", OutputFormat::Html},
    {"xlsx", OutputFormat::Workbook},
}};

constexpr WordTable<OutputFormat, 5> FileEndings{{
    {".json", OutputFormat::Json},
    {".csv", OutputFormat::Csv},
    {".html", OutputFormat::Html},
    {".htm", OutputFormat::Html},
    {".xlsx", OutputFormat::Workbook},
}};

std::string Heading(std::size_t place, const OutputCollection& run) {
    const std::string line = "Analysis " + std::to_string(place + 1) + " - " + ShownLine(run.FileName) + ", " +
                             std::to_string(run.Cases) + (run.Cases == 1 ? " case" : " cases");
    return line + '\n' + std::string(DisplayWidth(line), '#') + '\n';
}

std::string TextOf(Runs runs) {
    std::string text;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const std::string view = TextView(runs[i]);
        text += (text.empty() ? "" : "\n") + Heading(i, runs[i]) + (view.empty() ? "" : "\n") + view;
    }
    return text;
}

std::string JsonOf(Runs runs) {
    std::string text;
    for (const OutputCollection& run : runs) {
        std::string view = JsonView(run);
        view.pop_back();  // its line feed
        text += (text.empty() ? "" : ",\n") + view;
    }
    return "[" + text + "]\n";
}

std::string CsvBlocksOf(Runs runs) {
    std::string text;
    for (const OutputCollection& run : runs) {
        const std::string view = CsvBlocksView(run);
        text += (text.empty() || view.empty() ? "" : "\n") + view;
    }
    return text;
}

}  // namespace

OutputFormat FormatNamed(std::string_view word) {
    return Choose(FormatWords, word);
}

OutputFormat FormatOfFile(std::string_view file) {
    const std::string name = InSmallLetters(file);
    for (const auto& [ending, format] : FileEndings) {
        if (name.ends_with(ending)) {
            return format;
        }
    }
    return OutputFormat::Text;
}

std::string_view WordOf(OutputFormat format) {
    const auto isMeant = [format](const auto& entry) { return entry.second == format; };
    return std::ranges::find_if(FormatWords, isMeant)->first;
}

OutputCollection ShownIn(OutputFormat format, OutputCollection outputs) {
    if (!HasPictures(format)) {
        std::erase_if(outputs.Entries, [](const OutputEntry& entry) { return entry.Result == MosaicName; });
    }
    return outputs;
}

std::string ViewOf(std::span<const OutputCollection> made, OutputFormat format, const GraphPainter& paint) {
    std::vector<OutputCollection> runs;
    for (const OutputCollection& run : made) {
        runs.push_back(ShownIn(format, run));
    }
    const bool isOne = runs.size() == 1;
    switch (format) {
        case OutputFormat::Text:
            return isOne ? TextView(runs.front()) : TextOf(runs);
        case OutputFormat::Json:
            return isOne ? JsonView(runs.front()) : JsonOf(runs);
        case OutputFormat::Csv:
            return CsvView(runs);
        case OutputFormat::CsvBlocks:
            return CsvBlocksOf(runs);
        case OutputFormat::Workbook:
            return WorkbookView(runs, paint);
        case OutputFormat::Html:
            break;
    }
    return HtmlView(runs, paint);
}

}  // namespace quillara
