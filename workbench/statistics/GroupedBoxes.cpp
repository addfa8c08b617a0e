#include "workbench/statistics/GroupedBoxes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/OrderedBits.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/plots/BoxPlots.h"
#include "workbench/statistics/ValueGroups.h"

namespace quillara {
namespace {

/// The valid values of each group, and which groups have cases at all.
struct GroupSamples {
    std::vector<WeightedValues> Samples;
    std::vector<bool> HasCases;
    std::int64_t Cases = 0;  ///< with a value and a group
    std::int64_t LeftOut = 0;
};

GroupSamples SamplesOf(const StatisticsScope& scope, const Variable& variable, const ValueGroups& groups) {
    const std::size_t count = groups.Names().size();
    GroupSamples found{std::vector<WeightedValues>(count), std::vector<bool>(count)};
    const Column& weights = scope.Weights.Values;
    scope.Rows.ForEach([&](std::size_t row) {
        const double weight = weights.empty() ? 1.0 : weights[row];
        if (!IsPositiveWeight(weight) || !std::isfinite(weight)) {
            return;
        }
        const std::int32_t group = groups.GroupAt(row);
        const double value = variable.Values[row];
        const bool isShown = group != ValueGroups::NoGroup && IsValidValue(variable, value);
        ++(isShown ? found.Cases : found.LeftOut);
        if (group != ValueGroups::NoGroup) {
            found.HasCases[static_cast<std::size_t>(group)] = true;
        }
        if (isShown) {
            WeightedValues& sample = found.Samples[static_cast<std::size_t>(group)];
            sample.Values.push_back(value);
            if (!weights.empty()) {
                sample.Weights.push_back(weight);
            }
        }
    });
    return found;
}

std::string LeftOutText(const GroupSamples& samples) {
    return samples.LeftOut == 0 ? std::string()
                                : CountText(samples.LeftOut) + " without a value of both" +
                                      (samples.LeftOut == 1 ? " is" : " are") + " left out";
}

/// As in all box plots.
bool IsScaledUp(const BoxStatistics& box) {
    return box.Cases > 1 && box.WeightedCases < static_cast<double>(box.Cases);
}

}  // namespace

GraphDocument BoxesByGroup(const StatisticsScope& scope, std::size_t variable, const CrossVariable& by, BoxType type) {
    const Variable& shown = scope.Table.Variables.at(variable);
    const Variable& grouping = scope.Table.Variables.at(by.Index);
    if (shown.Kind == ValueKind::Text) {
        throw DataError("The variable " + Quoted(shown.Name) + " holds texts, of which there are no box plots.");
    }
    const ValueGroups groups(grouping, scope.Rows, by.How);
    const GroupSamples samples = SamplesOf(scope, shown, groups);
    BoxPlot plot;
    plot.Type = type;
    plot.Weight = scope.Weights.Variable;
    plot.Groups =
        BoxGroups{shown.Name, shown.LongName, grouping.Name, grouping.LongName, LeftOutText(samples), samples.LeftOut};
    for (std::size_t group = 0; group < samples.Samples.size(); ++group) {
        if (samples.HasCases[group]) {
            BoxStatistics& box = plot.Boxes.emplace_back(BoxOf(samples.Samples[group], type));
            box.Variable = groups.Names()[group];
        }
    }
    GraphDocument graph;
    graph.Title = {"Box plots of " + shown.Name + " by " + grouping.Name + WeightedBy(plot.Weight)};
    graph.Title.push_back(CountText(samples.Cases) + (samples.LeftOut == 0 ? "" : "; " + plot.Groups->Note));
    if (std::ranges::any_of(plot.Boxes, IsScaledUp)) {
        graph.Title.emplace_back("Weights of a group that sum to less than its cases are scaled up to their number");
    }
    graph.About.Variables = {{static_cast<int>(variable) + 1, shown.Name, shown.LongName, shown.Kind, {}}};
    graph.About.By = {grouping.Name};
    graph.About.Weights = UseOf(plot.Weight);
    graph.Content = std::move(plot);
    return graph;
}

}  // namespace quillara
