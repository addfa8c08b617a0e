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

std::string WeightedName(const char* weighted, const Subject& about, bool isWeighted, const char* plain) {
    return isWeighted ? weighted + std::string(about.WeightNote()) : plain;
}

// Names the axes of a graph and says what it shows.

std::string Name(Histogram& chart, const Subject& about, bool isWeighted) {
    chart.Y.Caption = WeightedName("Weighted cases", about, isWeighted, "Cases");
    return HeadingOf(about, chart.X);
}

std::string Name(PieChart& chart, const Subject& about, bool /*isWeighted*/) {
    return about.Noted(HeadingOf(about, chart.X));
}

std::string Name(StackedPlot& chart, const Subject& about, bool isWeighted) {
    chart.Y.Caption = WeightedName("Percent of weighted cases", about, isWeighted, "Percent of cases");
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
    plot.CountName = "Cases";
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

/// How many of the cases a plot shows that leaves out those without a value of two variables, and that it takes no
/// weight; empty: it shows all of them.
struct PairCounts {
    std::int64_t Least = 0;
    std::int64_t Most = 0;
    bool IsUnweighted = false;
};

std::optional<PairCounts> PairsIn(const GraphContent& content) {
    if (const auto* plot = std::get_if<Histogram3DPlot>(&content)) {
        return PairCounts{plot->Cases, plot->Cases, !plot->UnusedWeight.empty()};
    }
    const auto* matrix = std::get_if<ScatterMatrix>(&content);
    const std::size_t count = matrix == nullptr ? 0 : matrix->Variables.size();
    std::optional<PairCounts> pairs;
    for (std::size_t i = 0; count > 1 && i < matrix->Cells.size(); ++i) {
        const std::int64_t cases = matrix->Cells[i].Cases;
        if (i / count != i % count) {
            pairs = pairs ? PairCounts{std::min(pairs->Least, cases), std::max(pairs->Most, cases)}
                          : PairCounts{cases, cases};
        }
    }
    return pairs;  // a matrix says itself that it takes no weight
}

/// "1272 with values of both variables, each counted once"; empty where that is plain.
std::string PairsText(const GraphContent& content, const std::optional<SubsetSize>& left) {
    const std::optional<PairCounts> pairs = PairsIn(content);
    if (!pairs || !left || pairs->Most == 0) {
        return {};
    }
    const std::string cases = pairs->Least == pairs->Most
                                  ? std::to_string(pairs->Most)
                                  : std::to_string(pairs->Least) + " to " + std::to_string(pairs->Most) + " in a cell";
    const std::string both = pairs->Least < left->Cases ? cases + " with values of both variables" : "";
    const std::string once = pairs->IsUnweighted ? "each case counts once, not by its weight" : "";
    return both.empty() || once.empty() ? both + once : both + "; " + once;
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
        if (std::string pairs = PairsText(graph.Content, SizeBehind(run, step)); !pairs.empty()) {
            title.insert(title.begin() + (title.empty() ? 0 : 1), std::move(pairs));
        }
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
