#pragma once

#include <functional>
#include <string_view>

#include "workbench/data/DataTable.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// Writes a table as a column file, columns in the form in which they lie in memory. Throws DataError when a name or
/// label is no UTF-8; Interrupted when the monitor's work was cancelled; what `write` throws.
void WriteColumnFile(const DataTable& table, const ByteSink& write, WorkMonitor& monitor);

}  // namespace quillara
