#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "resources/ControlIds.h"

namespace quillara {

/// A kind of result by its name, which people and programs use, and the button that makes it.
struct ResultName {
    std::string_view Name;
    int Command;
};

/// All results of an analysis, in the order in which they are told.
inline constexpr std::array<ResultName, 14> ResultNames{{
    {"summary", SummaryButton},
    {"frequencies", FrequenciesButton},
    {"descriptives", DescriptivesButton},
    {"review-frequencies", ReviewFrequenciesButton},
    {"review-descriptives", ReviewDescriptivesButton},
    {"histograms", HistogramsButton},
    {"pies", PieChartsButton},
    {"stacked", StackedPlotsButton},
    {"review-histograms", ReviewHistogramsButton},
    {"review-pies", ReviewPieChartsButton},
    {"review-stacked", ReviewStackedPlotsButton},
    {"box", ReviewBoxWhiskerButton},
    {"scatter", ReviewScatterplotButton},
    {"hist3d", Review3DHistogramsButton},
}};

/// The name of the result that a button makes; empty for any other button.
[[nodiscard]] constexpr std::string_view NameOfResult(int command) {
    const auto* found = std::ranges::find(ResultNames, command, &ResultName::Command);
    return found == ResultNames.end() ? std::string_view() : found->Name;
}

}  // namespace quillara
