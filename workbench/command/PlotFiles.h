#pragma once

#include <functional>
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

/// Paints as PaintChart does.
using ChartPainting = std::function<std::string(const GraphDocument&, const ChartLook&, ChartFormat)>;

/// All charts among the documents, painted for the folder of the options; none without one. Throws what `paint` throws.
[[nodiscard]] std::vector<PlotFile> PaintedPlots(const ChartOptions& options, const OutputCollection& outputs,
                                                 const ChartPainting& paint);

/// Writes them into a folder, which is made when it isn't there; other files of the folder stay. Throws DataError when
/// that fails and Interrupted when the user cancelled; the file at which that happened is then as it was.
void WritePlots(const std::string& folder, const std::vector<PlotFile>& plots);

}  // namespace quillara
