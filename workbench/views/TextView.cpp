#include <algorithm>

#include "workbench/views/DocumentViews.h"
#include "workbench/views/ShownTable.h"
#include "workbench/views/ShownText.h"
#include "workbench/views/TextTable.h"

namespace quillara {
namespace {

/// With an empty line behind them; none above the later ones of several tables of a graph.
std::string TitleLines(const ShownTable& table) {
    if (table.IsContinued) {
        return {};
    }
    std::string text;
    const auto add = [&text](const std::string& line) {
        for (const std::string& part : Wrapped(line, TextWidth)) {
            text += part + '\n';
        }
    };
    add(table.Title);
    std::ranges::for_each(table.CaptionLines, add);
    return text + '\n';
}

std::string Heading(const OutputCollection& outputs, int step) {
    const std::string text = StepText(outputs, step);
    const std::string heading = "Step " + std::to_string(step) + (text.empty() ? "" : " ") + text;
    std::string lines = heading + '\n' + std::string(DisplayWidth(heading), '=') + '\n';
    for (const std::string& condition : StepsInForceText(outputs, step)) {
        lines += condition + '\n';
    }
    return lines;
}

/// Steps with results, and between them the others where all states are shown.
std::vector<StepResults> ShownSteps(const OutputCollection& outputs) {
    std::vector<StepResults> steps = ResultsByStep(outputs);
    if (!outputs.ShowsAllStates || !outputs.Selected || steps.empty()) {
        return steps;
    }
    for (int step = 0; step <= static_cast<int>(outputs.Steps.size()); ++step) {
        if (std::ranges::find(steps, step, &StepResults::Step) == steps.end()) {
            steps.push_back({step, 0, 0});
        }
    }
    std::ranges::sort(steps, {}, &StepResults::Step);
    return steps;
}

}  // namespace

std::string TextView(const OutputCollection& outputs) {
    std::string text;
    const auto begin = [&text] { text += text.empty() ? "" : "\n"; };
    const std::vector<StepResults> steps = ShownSteps(outputs);
    for (const StepResults& step : steps) {
        if (steps.size() > 1 || outputs.Selected) {
            begin();
            text += Heading(outputs, step.Step);
        }
        for (std::size_t i = step.First; i < step.Last; ++i) {
            for (const ShownTable& table : ShowTables(outputs, outputs.Entries[i])) {
                begin();
                text += TitleLines(table) + TextTable(table);
            }
        }
    }
    return text;
}

}  // namespace quillara
