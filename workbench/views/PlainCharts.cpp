#include "workbench/views/PlainCharts.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "workbench/views/ShownText.h"

namespace quillara {
namespace {

constexpr std::size_t MostNamed = 4;  // variables that a heading names one by one

bool IsWeighted(const OutputCollection& run) {
    return std::ranges::any_of(run.Settings, [](const std::string& text) { return text.starts_with("Weight: "); });
}

const std::string& LabelOf(const std::string& name, const std::string& longName) {
    return longName.empty() ? name : longName;
}

/// "age, hours and income", or "12 variables".
std::string Listed(const std::vector<std::string>& names) {
    if (names.size() > MostNamed) {
        return std::to_string(names.size()) + " variables";
    }
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
    }
    return text;
}

template <typename Variables, typename Name>
std::vector<std::string> NamesOf(const Variables& variables, Name name) {
    std::vector<std::string> names;
    for (const auto& variable : variables) {
        names.push_back(variable.*name);
    }
    return names;
}

/// The heading of a chart of one variable; the axis that shows it has its name.
std::string HeadingOf(const Subject& about, GraphAxis& axis) {
    const ShownVariable* variable = about.OnlyVariable();
    if (variable == nullptr) {
        return axis.Caption;
    }
    axis.Caption = variable->Name;
    return LabelOf(variable->Name, variable->LongName);
}

// Names the axes of a graph and says what it shows.

std::string Name(Histogram& chart, const Subject& about, bool isWeighted) {
    chart.Y.Caption = isWeighted ? "Weighted cases" : "Cases";
    return HeadingOf(about, chart.X);
}

std::string Name(PieChart& chart, const Subject& about, bool /*isWeighted*/) {
    return HeadingOf(about, chart.X);
}

std::string Name(StackedPlot& chart, const Subject& about, bool isWeighted) {
    chart.Y.Caption = isWeighted ? "Percent of weighted cases" : "Percent of cases";
    const std::vector<std::string> names = NamesOf(about.Variables, &ShownVariable::Name);
    return "Categories of " + (names.empty() ? "the variables" : Listed(names));
}

std::string Name(BoxPlot& plot, const Subject& /*about*/, bool /*isWeighted*/) {
    if (const std::optional<BoxGroups>& groups = plot.Groups) {
        return LabelOf(groups->Variable, groups->LongName) + " by " + LabelOf(groups->By, groups->ByLongName);
    }
    return Listed(NamesOf(plot.Boxes, &BoxStatistics::Variable));
}

std::string Name(ScatterMatrix& matrix, const Subject& /*about*/, bool /*isWeighted*/) {
    return Listed(NamesOf(matrix.Variables, &ScatterVariable::Name));
}

std::string Name(Histogram3DPlot& plot, const Subject& /*about*/, bool /*isWeighted*/) {
    return LabelOf(plot.Y.Variable, plot.Y.LongName) + " by " + LabelOf(plot.X.Variable, plot.X.LongName);
}

std::string Name(MosaicPlot& plot, const Subject& /*about*/, bool isWeighted) {
    return LabelOf(plot.Columns.Variable, plot.Columns.LongName) + " by " +
           LabelOf(plot.Layers.Variable, plot.Layers.LongName) + (isWeighted ? ", weighted" : "");
}

std::string CasesText(const SubsetSize& size, std::int32_t all) {
    return std::to_string(size.Cases) + " of " + std::to_string(all) + (all == 1 ? " case" : " cases");
}

std::size_t StepsBehind(const OutputCollection& run, int step) {
    return std::min(static_cast<std::size_t>(step), run.Steps.size());
}

const std::optional<SubsetSize>& SizeBehind(const OutputCollection& run, int step) {
    const std::size_t taken = StepsBehind(run, step);
    return taken == 0 ? run.Selected : run.Steps[taken - 1].Left;
}

/// Where the cases weren't counted the analysis says how many there are.
std::vector<std::string> CaptionOf(const std::vector<std::string>& title, const OutputCollection& run, int step) {
    std::vector<std::string> lines = SubsetLines(run, step);
    if (!SizeBehind(run, step) && title.size() > 1) {
        lines.insert(lines.begin(), ShownLines(title[1]).front());
    }
    return lines;
}

}  // namespace

std::vector<std::string> SubsetLines(const OutputCollection& run, int step) {
    std::vector<std::string> lines;
    if (const std::optional<SubsetSize>& size = SizeBehind(run, step)) {
        lines.push_back(CasesText(*size, run.Cases));
    }
    for (const StepTaken& down : StepsInForce(run.Steps, StepsBehind(run, step))) {
        lines.push_back(down.Condition());
    }
    return lines;
}

GraphDocument Titled(GraphDocument graph, const OutputCollection& run, int step, const ChartTitles& titles) {
    if (!titles.AreRaw) {
        std::vector<std::string> title = CaptionOf(graph.Title, run, step);
        const bool isWeighted = IsWeighted(run);
        title.insert(title.begin(),
                     std::visit([&](auto& content) { return Name(content, graph.About, isWeighted); }, graph.Content));
        graph.Title = std::move(title);
    }
    if (!titles.Own.empty()) {
        graph.Title.insert(graph.Title.begin(), titles.Own);
    }
    return graph;
}

OutputCollection Titled(OutputCollection run, const ChartTitles& titles) {
    std::vector<OutputEntry> entries = std::exchange(run.Entries, {});
    for (OutputEntry& entry : entries) {
        if (auto* graph = std::get_if<GraphDocument>(&entry.Content)) {
            *graph = Titled(std::move(*graph), run, entry.Step, titles);
        }
    }
    run.Entries = std::move(entries);
    return run;
}

}  // namespace quillara
