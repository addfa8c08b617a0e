#include "workbench/command/PlotFiles.h"

#include <string_view>

#include "workbench/command/ResultList.h"
#include "workbench/documents/BoxTypes.h"
#include "workbench/views/GraphJson.h"

namespace quillara {
namespace {

// What tells a chart from the others of its command: its variables, or the statistics that it shows.

std::string SubjectOf(const SeriesChart& chart) {
    return chart.X.Caption;
}

std::string SubjectOf(const BoxPlot& plot) {
    if (plot.Groups) {
        return plot.Groups->Variable + " by " + plot.Groups->By + " " + std::string(FactsOf(plot.Type).Word);
    }
    return std::string(FactsOf(plot.Type).Word);
}

std::string SubjectOf(const ScatterMatrix& /*the only one of its command*/) {
    return {};
}

std::string SubjectOf(const Histogram3DPlot& plot) {
    return plot.Y.Variable + " by " + plot.X.Variable;
}

std::string SubjectOf(const MosaicPlot& plot) {
    return plot.Columns.Variable + " by " + plot.Layers.Variable;
}

/// What the host makes itself comes from no button.
std::string KindOf(const OutputEntry& entry, const GraphDocument& graph) {
    const bool isByGroup = std::holds_alternative<BoxPlot>(graph.Content);
    return entry.Command != 0 ? std::string(ChartFileName(entry.Command))
           : isByGroup        ? "box-by-group"
                              : ChartName(graph);
}

std::string FileNameOf(const OutputCollection& outputs, const OutputEntry& entry, const GraphDocument& graph,
                       ChartFormat format) {
    const std::string subject =
        PlainFileName(std::visit([](const auto& shown) { return SubjectOf(shown); }, graph.Content));
    return "step" + std::to_string(entry.Step) + '-' + KindOf(entry, graph) + '-' + TwoDigits(entry.Sequence) +
           (subject.empty() ? "" : "-") + subject + GroupEnding(outputs, entry.Step) + '.' +
           std::string(FileEndOf(format));
}

}  // namespace

std::vector<FolderFile> PaintedPlots(const ChartOptions& options, const OutputCollection& outputs,
                                     const ChartPainting& paint) {
    std::vector<FolderFile> plots;
    if (!options.Folder) {
        return plots;
    }
    for (const OutputEntry& entry : outputs.Entries) {
        if (const auto* graph = std::get_if<GraphDocument>(&entry.Content)) {
            const GraphDocument titled = Titled(*graph, outputs, entry.Step, options.Titles);
            plots.push_back(
                {FileNameOf(outputs, entry, *graph, options.Format), paint(titled, options.Look, options.Format)});
        }
    }
    return plots;
}

}  // namespace quillara
