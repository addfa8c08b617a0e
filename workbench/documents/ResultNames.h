#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "resources/ControlIds.h"

namespace quillara {

/// Results that the host makes itself have numbers below those of all buttons.
enum HostResult : int { DistributionResult = -1, WhatDiffersResult = -2 };

[[nodiscard]] constexpr bool IsOfHost(int result) {
    return result < 0;
}

/// A cross table as a picture: a document where there are pictures.
inline constexpr std::string_view MosaicName = "mosaic";

/// A kind of result by its name, which people and programs use, and the button that makes it.
struct ResultName {
    std::string_view Name;
    int Command;  ///< or a result of the host
};

/// All results of an analysis, in the order in which they are told.
inline constexpr std::array<ResultName, 16> ResultNames{{
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
    {"distribution", DistributionResult},
    {"what-differs", WhatDiffersResult},
}};

/// The name of the result that a button makes; empty for any other button.
[[nodiscard]] constexpr std::string_view NameOfResult(int command) {
    const auto* found = std::ranges::find(ResultNames, command, &ResultName::Command);
    return found == ResultNames.end() ? std::string_view() : found->Name;
}

}  // namespace quillara
