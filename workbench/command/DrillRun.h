#pragma once

#include <memory>
#include <string>
#include <vector>

#include "workbench/command/DrillOptions.h"
#include "workbench/data/DataTable.h"
#include "workbench/documents/OutputCollection.h"

namespace quillara {

/// What a drill has made.
struct DrillOutcome {
    OutputCollection Outputs;
    std::string Script;  ///< in Python, whose run gives the same documents; empty unless it is to be recorded
    std::shared_ptr<const DataTable> Subset;  ///< the cases left at its end; null unless they are to be saved
    std::vector<std::string> NotSaved{};  ///< variables that it hasn't because they aren't explored
};

/// Drills as asked, from opening the file to the last result. Messages of the analysis and the progress of its passes
/// go to standard error. Throws DataError or UsageError when it can't be done.
[[nodiscard]] DrillOutcome RunDrill(const DrillOptions& asked);

}  // namespace quillara
