#include "workbench/command/PlotFiles.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "workbench/command/Interruption.h"
#include "workbench/command/ResultList.h"
#include "workbench/data/Errors.h"
#include "workbench/data/LetterCase.h"
#include "workbench/data/QuotedText.h"
#include "workbench/documents/BoxTypes.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/hosting/LongTexts.h"

namespace quillara {
namespace {

// What tells a chart from the others of its command: its variables, or the statistics that it shows.

std::string SubjectOf(const SeriesChart& chart) {
    return chart.X.Caption;
}

std::string SubjectOf(const BoxPlot& plot) {
    return std::string(FactsOf(plot.Type).Word);
}

std::string SubjectOf(const ScatterMatrix& /*the only one of its command*/) {
    return {};
}

std::string SubjectOf(const Histogram3DPlot& plot) {
    return plot.X.Variable + " " + plot.Y.Variable;
}

/// In lower-case letters, digits, single hyphens and the letters of other scripts.
std::string PlainFileName(std::string_view text) {
    constexpr std::size_t longest = 40;
    constexpr unsigned char firstOfOtherScripts = 0x80;
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::string name;
    for (const char character : text) {
        const char small = SmallLetter(character);
        const bool isOfOtherScript = static_cast<unsigned char>(character) >= firstOfOtherScripts;
        if (isOfOtherScript || letters.find(small) != std::string_view::npos) {
            name += small;
        } else if (!name.empty() && name.back() != '-') {
            name += '-';
        }
    }
    name = WithoutBrokenTail(name.substr(0, longest));
    name.erase(name.find_last_not_of('-') + 1);
    return name;
}

std::string TwoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string FileNameOf(const OutputEntry& entry, const GraphDocument& graph, ChartFormat format) {
    const std::string subject =
        PlainFileName(std::visit([](const auto& shown) { return SubjectOf(shown); }, graph.Content));
    return "step" + std::to_string(entry.Step) + '-' + std::string(ChartFileName(entry.Command)) + '-' +
           TwoDigits(entry.Sequence) + (subject.empty() ? "" : "-") + subject + '.' + std::string(FileEndOf(format));
}

void MakeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    std::error_code ignored;
    if (!std::filesystem::is_directory(folder, ignored)) {
        const std::string reason = error ? error.message() : "a file has this name";
        throw DataError("The folder " + Quoted(folder) + " can't be made: " + reason + ".");
    }
}

}  // namespace

std::vector<PlotFile> PaintedPlots(const ChartOptions& options, const OutputCollection& outputs,
                                   const ChartPainting& paint) {
    std::vector<PlotFile> plots;
    if (!options.Folder) {
        return plots;
    }
    for (const OutputEntry& entry : outputs.Entries) {
        if (const auto* graph = std::get_if<GraphDocument>(&entry.Content)) {
            plots.push_back({FileNameOf(entry, *graph, options.Format), paint(*graph, options.Look, options.Format)});
        }
    }
    return plots;
}

void WritePlots(const std::string& folder, const std::vector<PlotFile>& plots) {
    MakeFolder(folder);
    for (const PlotFile& plot : plots) {
        const std::string path = (std::filesystem::path(folder) / plot.Name).string();
        const FileWriting writing(path);
        ReplaceFile(path, plot.Bytes, IsInterrupted);
    }
}

}  // namespace quillara
