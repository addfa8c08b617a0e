#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/charts/ChartFile.h"
#include "workbench/views/PlainCharts.h"

namespace quillara {

/// Names of the review variables of 3D histograms: one for each of the first with each of the second.
struct VariablePairs {
    std::vector<std::string> Horizontal;
    std::vector<std::string> Vertical;
};

/// How charts are made and painted.
struct ChartOptions {
    std::set<int> BoxTypes;  ///< check boxes of the statistics that box plots show, a plot for each; empty: as they are
    std::optional<VariablePairs> Pairs;
    std::optional<std::string> Folder;  ///< for a file of each chart; nothing: none are written
    ChartFormat Format = ChartFormat::Svg;
    ChartLook Look;
    ChartTitles Titles;
};

/// Each throws UsageError saying what is wrong with the text.
[[nodiscard]] std::set<int> ParseBoxTypes(std::string_view text);  ///< median, se, sd, 1.96se with commas between
[[nodiscard]] VariablePairs ParsePairs(std::string_view text);  ///< X1,X2:Y1,Y2
[[nodiscard]] ChartFormat ParseChartFormat(std::string_view text);  ///< svg, png or pdf
[[nodiscard]] std::pair<int, int> ParseSize(std::string_view text);  ///< WIDTHxHEIGHT in pixels
[[nodiscard]] bool ParseDark(std::string_view text);  ///< light, or dark: true

/// How the files of charts in a format end, without a point.
[[nodiscard]] std::string_view FileEndOf(ChartFormat format);

}  // namespace quillara
