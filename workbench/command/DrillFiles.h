#pragma once

#include "workbench/command/DrillOptions.h"
#include "workbench/command/DrillRun.h"

namespace quillara {

/// Throws UsageError when a file to be written is one of those that are read, or two are the same.
void CheckFiles(const DrillOptions& options);

/// Writes the subset and the script, if there are any, the charts, if files of them are asked for, and then the
/// documents. Throws
/// DataError when charts can't be painted, and nothing is written, or when a file can't be written, Interrupted when
/// the user cancelled; that file is then as it was.
void WriteFiles(const DrillOptions& options, const DrillOutcome& outcome);

}  // namespace quillara
