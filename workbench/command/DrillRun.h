#pragma once

#include "workbench/command/DrillOptions.h"
#include "workbench/documents/OutputCollection.h"

namespace quillara {

/// Drills as asked, from opening the file to the last result. Messages of the analysis and the progress of its passes
/// go to standard error. Throws DataError or UsageError when it can't be done, Interrupted when the user cancelled.
[[nodiscard]] OutputCollection RunDrill(const DrillOptions& options);

}  // namespace quillara
