#pragma once

#include <string>
#include <vector>

#include "workbench/command/ChartOptions.h"
#include "workbench/documents/OutputCollection.h"

namespace quillara {

/// A chart as it goes to a folder of charts.
struct PlotFile {
    std::string Name;  ///< without the folder: step1-histogram-02-age.svg
    std::string Bytes;
};

/// All charts among the documents, painted for the folder of the options; none without one. Throws DataError when they
/// can't be painted.
[[nodiscard]] std::vector<PlotFile> PaintedPlots(const ChartOptions& options, const OutputCollection& outputs);

/// Writes them into a folder, which is made when it isn't there; other files of the folder stay. Throws DataError when
/// that fails and Interrupted when the user cancelled; the file at which that happened is then as it was.
void WritePlots(const std::string& folder, const std::vector<PlotFile>& plots);

}  // namespace quillara
