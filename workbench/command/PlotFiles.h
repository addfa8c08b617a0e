#pragma once

#include <functional>
#include <string>
#include <vector>

#include "workbench/command/ChartOptions.h"
#include "workbench/documents/OutputCollection.h"
#include "workbench/scripting/FolderFiles.h"

namespace quillara {

/// Paints as PaintChart does.
using ChartPainting = std::function<std::string(const GraphDocument&, const ChartLook&, ChartFormat)>;

/// All charts among the documents, painted for the folder of the options; none without one. Throws what `paint` throws.
[[nodiscard]] std::vector<FolderFile> PaintedPlots(const ChartOptions& options, const OutputCollection& outputs,
                                                   const ChartPainting& paint);

}  // namespace quillara
