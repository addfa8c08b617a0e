#pragma once

#include "workbench/command/DrillOptions.h"

namespace quillara {

/// Throws UsageError when a file of a chart could become the data file, the dictionary or another output of the same
/// command, under whatever name: links are followed, and the folder needn't be there yet.
void CheckPlotsHitNoOther(const DrillOptions& options);

}  // namespace quillara
