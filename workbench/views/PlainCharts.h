#pragma once

#include <string>
#include <vector>

#include "workbench/documents/OutputCollection.h"

namespace quillara {

/// How pictures of graphs are titled.
struct ChartTitles {
    std::string Own;  ///< on top of every picture, before what it shows; empty: none
    bool AreRaw = false;  ///< titles and axes are named as the analysis does
};

/// What a document of a run is made from, made behind so many steps: "357 of 2000 cases", then a line for each step
/// that is in force; without the first where the cases weren't counted.
[[nodiscard]] std::vector<std::string> SubsetLines(const OutputCollection& run, int step);

/// A graph of a run, made behind so many steps, as people read it: its title says what it shows, of how many cases and
/// behind which steps, and its axes are named in plain words. Its numbers are the same.
[[nodiscard]] GraphDocument Titled(GraphDocument graph, const OutputCollection& run, int step,
                                   const ChartTitles& titles);

/// The run with all graphs so.
[[nodiscard]] OutputCollection Titled(OutputCollection run, const ChartTitles& titles);

}  // namespace quillara
